#include "live/Lamps.h"

#include <algorithm>

namespace korvane::live {

namespace {
constexpr int kLampsToScreen = 45;
constexpr int kLargestLamp = 255;
constexpr int kGapBetweenLamps = 20;
constexpr int kGapToLabel = 300;
constexpr int kFrameMargin = 400;
constexpr int kFirstLeft = 120;
constexpr int kFirstTop = 240;
constexpr int kLabelHeight = 195;
constexpr int kLabelWidth = 1500;
}  // namespace

void layOutLamps(FrmSarn2& window, int screenHeight) {
    const int size = std::min(screenHeight / kLampsToScreen, kLargestLamp);
    window.imgLed(0).Left = kFirstLeft;
    window.imgLed(0).Top = kFirstTop;
    for (int n = 0; n < window.imgLed.count(); ++n) {
        auto& lamp = window.imgLed(n);
        lamp.Height = size;
        lamp.Width = size;
        lamp.Left = window.imgLed(0).Left;
        lamp.Top = window.imgLed(0).Top + n * (size + kGapBetweenLamps);
        lamp.Shown = controls::Picture::Grey;
        lamp.Visible = true;
        auto& label = window.lblLED(n);
        label.Left = lamp.Left + lamp.Width + kGapToLabel;
        label.Top = lamp.Top;
        label.Height = kLabelHeight;
        label.Width = kLabelWidth;
    }
    auto& last = window.imgLed(window.imgLed.count() - 1);
    window.FrameLeds.Height = last.Top + last.Height + kFrameMargin;
    window.FrameLeds.Width = window.lblLED(0).Left + kLabelWidth;
}

}  // namespace korvane::live
