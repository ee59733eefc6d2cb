#include "live/readout/FrmMeter.h"

#include <algorithm>

namespace korvane::live {

namespace {

// In twips. The list stands below the dial.
constexpr int kDialLeft = 100;
constexpr int kDialTop = 300;
constexpr int kBelowDial = 725;
constexpr int kListHeight = 480;
constexpr int kListWidth = 1800;
constexpr int kSmallestDial = 300;
constexpr int kDesignDial = 5125;
constexpr int kSteps = 100;  // of a sweep

}  // namespace

FrmMeter::FrmMeter(platform::Machine& machine) : Window(machine, "frmMeter") {
    Caption = "Meter";
    SarnMeter1.readProperties({});
    Combo1.Left = kDialLeft;
    Combo1.Width = kListWidth;
    Combo1.Height = kListHeight;
    Width = kDesignDial + 2 * kDialLeft;
    Height = kDialTop + kDesignDial + kBelowDial;
    Combo1.Click = [this] { SarnMeter1.setMeterType(Combo1.ListIndex); };
    Timer1.Tick = [this] { sweep(); };
}

void FrmMeter::Form_Load() {
    for (const char* type : {"Boost", "Rpm", "Throttle"}) {
        Combo1.AddItem(type);
    }
    Combo1.ListIndex = 0;
    SarnMeter1.Left = kDialLeft;
    SarnMeter1.Top = kDialTop;
    resize(Width, Height);
}

int FrmMeter::dialSide(int width, int height) {
    return std::max(std::min(width - 2 * kDialLeft, height - kDialTop - kBelowDial), kSmallestDial);
}

void FrmMeter::Form_Resize() {
    SarnMeter1.resize(dialSide(Width, Height));
    Combo1.Top = kDialTop + SarnMeter1.Height + (kBelowDial - kListHeight) / 2;
}

void FrmMeter::sweep() {
    SarnMeter1.setValue(SarnMeter1.value() + SarnMeter1.Max / kSteps);
    if (SarnMeter1.value() >= SarnMeter1.Max) {
        SarnMeter1.setValue(SarnMeter1.Min);
    }
}

}  // namespace korvane::live
