#include "maps/panes/MiscPane.h"

#include <array>

#include "core/Numbers.h"
#include "link/Commands.h"
#include "maps/panes/MiscBoxes.h"

namespace korvane::maps {

namespace {

constexpr std::array<std::string_view, 4> kBoxNames{"RPM Limit", "RPM Shift", "Inj offset", "Ign offset"};

}  // namespace

MiscPane::MiscPane(PaneWindow& window, const MiscCaptions& captions)
    : MapPane(window),
      btnReadMisc(window, "btnReadMisc"),
      btnSaveMisc(window, "btnSaveMisc"),
      FrameMisc(window, "FrameMisc"),
      lblMisc(window, "lblMisc", 4),
      txtMisc(window, "txtMisc", 4),
      CheckMisc(window, "CheckMisc", kMiscBits),
      FrameINJMaxOpen(window, "FrameINJMaxOpen"),
      optINJMaxOpen(window, "optINJMaxOpen", 2),
      TimeOutTimer(window, "TimeOutTimer", false, 1000),
      transfer_(*this, window, captions.receiving),
      marks_(*this, window.context().connection.ecuMisc) {
    btnReadMisc.Caption = "Read Misc";
    btnReadMisc.Click = [&window] { window.line().request(link::kAskMiscBlock); };
    btnSaveMisc.Caption = "Send Misc";
    btnSaveMisc.Click = [this] { transfer_.save(); };
    TimeOutTimer.Tick = [this] { timeOutCounter = core::toInt16(timeOutCounter + 1); };
    describe(captions);
    describeMiscBoxes(txtMisc);
}

void MiscPane::describe(const MiscCaptions& captions) {
    FrameMisc.Caption = "Misc";
    FrameINJMaxOpen.Caption = "Suutin max aukiolo";
    FrameINJMaxOpen.setContainer(&FrameMisc);
    optINJMaxOpen(0).Caption = "4.4ms";
    optINJMaxOpen(1).Caption = "2.2ms";
    for (auto& option : optINJMaxOpen) {
        option.setContainer(&FrameINJMaxOpen);
    }
    for (int i = 0; i < txtMisc.count(); ++i) {
        lblMisc(i).Caption = kBoxNames.at(static_cast<std::size_t>(i));
        lblMisc(i).setContainer(&FrameMisc);
        txtMisc(i).setContainer(&FrameMisc);
    }
    for (int bit = 0; bit < kMiscBits; ++bit) {
        CheckMisc(bit).Caption = captions.bits.at(static_cast<std::size_t>(bit));
        CheckMisc(bit).setContainer(&FrameMisc);
    }
}

void MiscPane::loadPane(std::int32_t features) {
    place();
    const auto offers = [features](std::int32_t bit) { return (features & bit) != 0; };
    txtMisc(kRpmLimit).Enabled = offers(kRpmLimitBit);
    txtMisc(kRpmShift).Enabled = offers(kShiftLightBit);
    txtMisc(kInjectionOffset).Enabled = offers(kInjectionBit);
    txtMisc(kIgnitionOffset).Enabled = offers(kIgnitionBit);
    for (int bit = 0; bit < kMiscBits; ++bit) {
        CheckMisc(bit).Enabled = offers(1 << bit);
    }
}

void MiscPane::place() {
    constexpr int kRow = 300;  // twips
    for (int i = 0; i < txtMisc.count(); ++i) {
        lblMisc(i).place(120, 240 + i * kRow, 1000, 255);
        txtMisc(i).place(1200, 240 + i * kRow, 800, 255);
    }
    for (int bit = 0; bit < kMiscBits; ++bit) {
        CheckMisc(bit).place(120 + 2000 * (bit / 8), 1500 + kRow * (bit % 8), 1900, 255);
    }
    for (int i = 0; i < optINJMaxOpen.count(); ++i) {
        optINJMaxOpen(i).place(120, 240 + i * kRow, 1200, 255);
    }
}

void MiscPane::readPane() {
    paneWindow().line().requestFirst(link::kAskMiscBlock);
}

// The dispatcher calls it without Window::enter(), and events run in it.
void MiscPane::LoadMisc(bool skipTimer) {
    const controls::Window::Stay stay(paneWindow());
    transfer_.LoadMisc(skipTimer);
}

void MiscPane::UpdateReadEE(std::int32_t value, int addr, bool) {
    const auto& addresses = paneWindow().context().tables.addresses;
    if (addr == addresses.RPM_LIMIT_LOW_OFF) {
        txtMisc(kRpmLimit).Text = core::numberText(value).view();
        marks_.heard(kRpmLimit, value);
    } else if (addr == addresses.RPM_SHIFT_LOW_OFF) {
        txtMisc(kRpmShift).Text = core::numberText(value).view();
        marks_.heard(kRpmShift, value);
    }
}

std::optional<MapPane::Sends> MiscPane::sends() const {
    const bool isRead = paneWindow().context().connection.ecuMisc.bytes().has_value();
    return Sends{"misc", core::Overwritten::Part::Misc, isRead};
}

std::optional<UnsentOfMap> MiscPane::unsentStatus() const {
    return UnsentOfMap{"misc", {marks_.count(), 0}, "box", "boxes"};
}

}  // namespace korvane::maps
