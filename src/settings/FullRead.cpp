#include "settings/FullRead.h"

#include <string>

#include "core/Numbers.h"
#include "maps/MapLine.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::settings {

namespace {

constexpr int kFirstPause = 30;     // ms
constexpr int kReadPause = 150;     // ms
constexpr int kPollInterval = 500;  // ms; the settings block starts the poll again while the list still runs
constexpr std::uint8_t kReadBlock = 'e';

// Each pass that is started inside another one needs room on the stack until it ends.
constexpr int kNestedPasses = 8;

constexpr const char* kReceiving = "Receiving data from target device!:  ";

}  // namespace

FullRead::Pass::Pass(int& passes, controls::Timer& poll) : passes_(passes), poll_(poll), interval_(poll.Interval) {
    ++passes_;
    poll_.Enabled = false;
    poll_.Interval = kPollInterval;
}

FullRead::Pass::~Pass() {
    --passes_;
    poll_.Enabled = true;
    poll_.Interval = interval_;
}

void FullRead::run() {
    if (passes_ == kNestedPasses) {
        return;
    }
    {
        const Pass pass(passes_, context_.connection.TimerRequestData);
        readAll();
    }
    context_.window.Caption = std::string(kReceiving) + "Received 100%";
}

void FullRead::readAll() {
    maps::Progress progress(context_.window.prgLoad, readCount());
    maps::Progress mainProgress(context_.connection.prgSettings, readCount());
    showPercent(0);
    context_.window.machine().pump.wait(kFirstPause);
    context_.window.machine().pump.pump();
    requestBlock();
    for (const ReadRow& row : readList()) {
        for (int cell = 0; cell < row.cells; ++cell) {
            if (!context_.window.isLoaded()) {
                return;
            }
            read(row, cell);
            progress.step();
            mainProgress.step();
            if (row.percent >= 0) {
                showPercent(row.percent + cell * row.percentStep);
            }
        }
    }
}

void FullRead::requestBlock() {
    auto& pump = context_.window.machine().pump;
    if (context_.connection.MSComm1.PortOpen()) {
        context_.connection.MSComm1.Output(kReadBlock);
    }
    pump.pump();
    pump.wait(kReadPause);
}

void FullRead::read(const ReadRow& row, int cell) {
    const auto address = core::toInt16(context_.tables.addresses.*row.first + row.offset + cell);
    if (row.word) {
        context_.eeprom.ReadEE16(address);
    } else {
        context_.eeprom.ReadEE(address);
    }
    for (int i = 0; i < row.waits; ++i) {
        pause();
    }
}

void FullRead::pause() {
    auto& pump = context_.window.machine().pump;
    pump.pump();
    pump.wait(kReadPause);
    pump.pump();
}

void FullRead::showPercent(double percent) {
    context_.window.Caption = std::string(kReceiving) + "Loading.. " + core::textOf(percent) + "%";
}

}  // namespace korvane::settings
