#include "maps/transfer/MapLine.h"

#include "core/TimeText.h"
#include "core/tables/Module1.h"
#include "link/Commands.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

constexpr int kMiscBytes = 9;
constexpr int kOrdinaryCells = 160;  // the PWM table has as many on every ECU
constexpr int kLargeCells = 320;

int bytesOf(std::uint8_t command, std::int32_t swType) {
    if (command == link::kAskMiscBlock) {
        return kMiscBytes;
    }
    return command != link::kAskPwmTable && core::hasLargeMaps(swType) ? kLargeCells : kOrdinaryCells;
}

}  // namespace

MapLine::MapLine(controls::Window& window, const MapContext& context)
    : window_(window), context_(context), watch_(window.machine().pump, context.connection) {}

void MapLine::send(std::span<const std::uint8_t> bytes) {
    context_.connection.MSComm1.Output(bytes);
    ownBytes_ += bytes.size();
}

std::uint64_t MapLine::bytesOfOthers() const {
    return context_.connection.MSComm1.bytesSent() - ownBytes_;
}

void MapLine::sendIfOpen(std::span<const std::uint8_t> bytes) {
    if (isOpen()) {
        send(bytes);
    }
}

void MapLine::wait(int milliseconds) {
    window_.machine().pump.wait(milliseconds);
}

void MapLine::block(int milliseconds) {
    window_.machine().pump.sleep(milliseconds);
}

void MapLine::pump() {
    window_.machine().pump.pump();
}

void MapLine::showWithTime(std::string_view caption) {
    show(std::string(caption) + core::timeText(window_.machine().pump.wallTime()));
}

void MapLine::request(std::uint8_t command) {
    showWithTime("Receiving data from Device...");
    sendIfOpen({command});
    expectAnswer(command);
}

void MapLine::expectAnswer(std::uint8_t command) {
    if (isOpen()) {
        context_.announceReplacing("read");
    }
    context_.connection.diversion.askedOrdinarily({command});
    watch_.begin(command, bytesOf(command, context_.tables.SWType));
}

void MapLine::requestFirst(std::uint8_t command) {
    request(command);
    pump();
}

void MapLine::trapped(const std::function<void()>& handler) {
    const link::LinkState::Transfer transfer(&context_.connection.linkState);
    try {
        handler();
    } catch (const platform::RuntimeError& failure) {
        show(failure.what());
    }
}

}  // namespace korvane::maps
