#include "maps/transfer/PwmTransfer.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "fields/Progress.h"
#include "link/Commands.h"
#include "maps/grid/MapImages.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

constexpr int kFirstSent = kPwmImages.firstSent;
constexpr int kLastSent = kPwmImages.lastSent;
constexpr int kQuietPause = 200;  // ms, for the replies that the poll has asked for
constexpr int kCellPause = 50;    // ms

}  // namespace

PwmTransfer::PwmTransfer(PaneWindow& window, MapGrid& grid) : window_(window), grid_(grid), line_(window.line()) {}

void PwmTransfer::read() {
    line_.showWithTime("Receiving data from Device...");
    line_.expectAnswer(link::kAskPwmTable);
    if (line_.isOpen()) {
        ask();
    }
    line_.showWithTime("PWM table Received ");
}

void PwmTransfer::ask() {
    const link::LinkState::Transfer transfer(&window_.context().connection.linkState);
    line_.stopPoll();
    line_.wait(kQuietPause);
    line_.sendIfOpen({link::kAskPwmTable, 0, link::complement(link::kAskPwmTable)});
    line_.pump();
    line_.startPoll();
}

void PwmTransfer::save() {
    SentCells sent(link::EcuMap::kHalf);
    if (!window_.verifySwitch().On) {
        line_.trapped([&] { send(sent); });
        return;
    }
    MapVerification verification(window_, "PWM", {link::kAskPwmTable}, [this] { save(); });
    line_.trapped([&] { send(sent); });
    verification.pwm(sent);
}

void PwmTransfer::send(SentCells& sent) {
    const core::MapHistory::Hold hold(window_.context().history);
    window_.context().eeprom.announceStore("PWM table", {core::Overwritten::Part::Pwm});
    const TransferWatch::Sending sending(line_.watch(), link::kSendPwmCell, 1);
    fields::Progress progress(window_.prgTransfer, kLastSent - kFirstSent + 1);
    line_.stopPoll();
    line_.wait(kQuietPause);
    line_.showWithTime("Sending PWM table ");
    for (int cell = kFirstSent; cell <= kLastSent; ++cell) {
        sendCell(cell, sent);
        progress.step();
        line_.wait(kCellPause);
        line_.pump();
    }
    if (line_.isOpen()) {
        line_.send({link::kStorePwmTable, link::complement(link::kStorePwmTable), link::kRestartDevice,
                    link::complement(link::kRestartDevice)});
        window_.context().connection.ecuMaps.pwm.stored();
    }
    line_.showWithTime("PWM table have been sent to ECU ");
    line_.startPoll();
}

// Cells that the ECU does not keep can't be compared behind its restart.
void PwmTransfer::sendCell(int cell, SentCells& sent) {
    const std::uint8_t value = core::checked(window_.context().tables.PwmMapOut, cell);
    if (window_.isFormLoaded && line_.isOpen()) {
        line_.send(link::cellCommand(link::kSendPwmCell, static_cast<std::uint8_t>(cell), value));
        const auto place = static_cast<std::size_t>(cell);
        window_.context().connection.ecuMaps.pwm.sending(place, value);
        if (place >= link::EcuMaps::kFirstKeptPwm) {
            sent.at(place) = value;
        }
    }
    grid_(cell).ToolTipText = core::numberText(value).view();
}

}  // namespace korvane::maps
