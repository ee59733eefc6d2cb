#include "live/readout/FrmBigText.h"

#include <string>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "live/readout/BigTextShape.h"

namespace korvane::live {

namespace {

constexpr double kNoChannel = 999;
constexpr int kDesignHeight = 3750;  // twips; the width follows from it

// In twips.
constexpr int kMargin = kBesideFigures / 2;
constexpr int kBarTop = 240;
constexpr int kBarHeight = 480;
constexpr int kChannelWidth = 2100;
constexpr int kAlarmsWidth = 1200;

}  // namespace

FrmBigText::FrmBigText(platform::Machine& machine, const core::LiveTable& live, BigTexts& bigTexts)
    : Window(machine, "frmBigText"), live_(live), bigTexts_(bigTexts), handle_(bigTexts.newHandle()) {
    Caption = "Big readout";
    Label1.Caption = "9999";
    Check1.Caption = "Alarms";
    Combo1.place(kMargin, kBarTop, kChannelWidth, kBarHeight);
    Check1.place(2 * kMargin + kChannelWidth, kBarTop, kAlarmsWidth, kBarHeight);
    Label1.Left = kMargin;
    Label1.Top = kAboveAndBelowFigures - kMargin;
    Width = (kDesignHeight - kAboveAndBelowFigures) * 3 + kBesideFigures;
    Height = kDesignHeight;
    Timer1.Tick = [this] { tick(); };
}

void FrmBigText::Form_Load() {
    bigTexts_.add(*this);
    initialWidth_ = core::toInt16(Width);
    initialHeight_ = core::toInt16(Height);
    for (const auto& channel : live_.liveValues) {
        Combo1.AddItem(channel.name);
    }
    Combo1.ListIndex = 0;
    resize(Width, Height);
}

bool FrmBigText::Form_Unload() {
    bigTexts_.remove(*this);
    return true;
}

void FrmBigText::Form_Resize() {
    const auto shape = shapeAround(Width, Height);
    Width = shape.width;
    Height = shape.height;
    Label1.Width = shape.figuresWidth();
    Label1.Height = shape.figuresHeight();
    Label1.FontSize = shape.fontSize;
    Caption = std::to_string(shape.figuresWidth()) + " x " + std::to_string(shape.figuresHeight());
}

// Without a channel the rest fails and is left for the next tick.
void FrmBigText::tick() try {
    const int channel = Combo1.ListIndex;
    Label1.Caption = core::numberText(channel < 0 ? kNoChannel : core::checked(live_.liveValues, channel).value).view();
    const auto& shown = core::checked(live_.liveValues, channel);
    Caption = shown.name + "  " + core::textOf(shown.value);
    showAlarm(shown.limit);
} catch (const platform::RuntimeError&) {
}

void FrmBigText::showAlarm(double limit) {
    const bool alarm = Check1.Value == 1 && core::val(Label1.Caption.get()) > limit;
    Label1.BackColor = controls::kButtonFace;
    Label1.ForeColor = alarm ? controls::kRed : controls::kButtonText;
}

}  // namespace korvane::live
