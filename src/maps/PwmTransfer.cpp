#include "maps/PwmTransfer.h"

#include "core/Checked.h"
#include "core/Numbers.h"

namespace korvane::maps {

namespace {

// Three cells that the grid shows disabled are sent along.
constexpr int kFirstSent = 61;
constexpr int kLastSent = 159;
constexpr int kQuietPause = 200;  // ms, for the replies that the poll has asked for
constexpr int kCellPause = 50;    // ms

}  // namespace

PwmTransfer::PwmTransfer(MapControls& window, const MapContext& context)
    : window_(window), context_(context), line_(window, context) {
    window_.btnReadPWM.Click = [this] { read(); };
    window_.btnSavePWM.Click = [this] { line_.trapped([this] { save(); }); };
}

void PwmTransfer::read() {
    line_.showWithTime("Receiving data from Device...");
    if (line_.isOpen()) {
        request();
    }
    line_.showWithTime("PWM table Received ");
}

void PwmTransfer::request() {
    line_.stopPoll();
    line_.wait(kQuietPause);
    line_.sendIfOpen({'p', 0, complement('p')});
    line_.pump();
    line_.startPoll();
}

void PwmTransfer::save() {
    Progress progress(window_.prgTransfer, kLastSent - kFirstSent + 1);
    line_.stopPoll();
    line_.wait(kQuietPause);
    line_.showWithTime("Sending PWM table ");
    for (int cell = kFirstSent; cell <= kLastSent; ++cell) {
        sendCell(cell);
        progress.step();
        line_.wait(kCellPause);
        line_.pump();
    }
    line_.sendIfOpen({'o', complement('o'), 'X', complement('X')});
    line_.showWithTime("PWM table have been sent to ECU ");
    line_.startPoll();
}

// Cell and value go twice, so that the ECU can check them.
void PwmTransfer::sendCell(int cell) {
    const std::uint8_t value = core::checked(context_.tables.PwmMapOut, cell);
    if (window_.isFormLoaded) {
        const auto index = static_cast<std::uint8_t>(cell);
        line_.sendIfOpen({'P', index, index, value, value, complement('P')});
    }
    window_.pwm(cell).ToolTipText = core::numberText(value).view();
}

}  // namespace korvane::maps
