#include "settings/MiscLayout.h"

#include <algorithm>

namespace korvane::settings {

namespace {

using controls::Control;

constexpr int kPageLeft = 50;  // twips, of the page that is shown
constexpr int kPageTop = 50;
constexpr int kAway = -20000;
constexpr int kPageWidth = 7600;
constexpr int kPageHeight = 5600;
constexpr int kGap = 60;
constexpr int kFrameWidth = 7400;
constexpr int kFrameHead = 330;  // twips: the caption, and the column headers below it
constexpr int kLine = 285;

// Places controls from left to right, row below row.
class Flow {
public:
    Flow(int width, int top) : width_(width), top_(top) {}

    void place(Control& control, int width, int height) {
        if (left_ > kGap && left_ + width > width_) {
            top_ += rowHeight_ + kGap;
            left_ = kGap;
            rowHeight_ = 0;
        }
        control.place(left_, top_, width, height);
        left_ += width + kGap;
        right_ = std::max(right_, left_);
        rowHeight_ = std::max(rowHeight_, height);
    }
    [[nodiscard]] int bottom() const { return top_ + rowHeight_ + kGap; }
    [[nodiscard]] int right() const { return right_; }

private:
    int width_;
    int top_;
    int left_ = kGap;
    int right_ = 0;
    int rowHeight_ = 0;
};

void stand(Control& container, Control& control) {
    control.setContainer(&container);
}

template <class Kind>
void stand(Control& container, controls::ControlArray<Kind>& controls) {
    for (auto& control : controls) {
        control.setContainer(&container);
    }
}

template <class... Controls>
void fill(Control& container, Controls&... controls) {
    (stand(container, controls), ...);
}

void fillIgnition(MiscControls& w) {
    fill(w.picOptions(0), w.FrameIdleAdv, w.FrameIgnEdge, w.FrameChargeTime, w.FrameMotorbrake);
    fill(w.FrameIdleAdv, w.txtIdleAdv, w.btnSaveIdleAdv);
    fill(w.FrameIgnEdge, w.txtIgnEdge, w.btnIgnEdge);
    fill(w.FrameChargeTime, w.txtchargetime, w.btnSaveChargeTime);
    fill(w.FrameMotorbrake, w.txtMotorBrakeLow, w.txtMotorBrakeHigh, w.btnSaveMotorbrake);
}

void fillInjection(MiscControls& w) {
    fill(w.picOptions(1), w.FrameInjMode, w.FrameInj8ms, w.FrameInjAdv, w.FrameStartHelp, w.FrameVolt, w.FrameAccel);
    fill(w.FrameInjMode, w.txtInjMode, w.txtInjMultiplier, w.btnInjMode);
    fill(w.FrameInj8ms, w.optInj8ms);
    fill(w.FrameInjAdv, w.txtInjAdv, w.btnSaveInjAdv);
    fill(w.FrameStartHelp, w.txtStart, w.txtStartHelpLen, w.txtRyyppy, w.txtChokeEnd, w.btnStartHelp);
    fill(w.FrameVolt, w.txtVolt, w.btnSaveVolt);
    fill(w.FrameAccel, w.txtAccel, w.txtAccelDelay, w.btnAccel);
}

void fillPwm(MiscControls& w) {
    fill(w.picOptions(2), w.FramePWM1, w.FramePWM2, w.btnPWMmode, w.FrameIdleValve, w.FrameBoost);
    fill(w.FramePWM1, w.OptionPWM1);
    fill(w.FramePWM2, w.OptionPWM2);
    fill(w.FrameIdleValve, w.txtIdleValveSetpoint, w.txtIdleValveMin, w.txtIdleValveMax, w.btnSaveIdleValve);
    fill(w.FrameBoost, w.txtBoostTav, w.btnSaveBoost);
}

void fillLambda(MiscControls& w) {
    fill(w.picOptions(3), w.FrameLambdaType, w.FrameLambda, w.FrameIdlemap);
    fill(w.FrameLambdaType, w.optLambdaType, w.btnSaveLambdaType);
    fill(w.FrameLambda, w.txtLambdaTav, w.txtLambdaVaik, w.btnSaveLambda);
    fill(w.FrameIdlemap, w.txtInjIdleMap, w.btnSaveIdlemap);
}

void fillMisc(MiscControls& w) {
    fill(w.picOptions(4), w.FrameMapSensor, w.FrameNTC, w.FrameLoadCalc, w.FrameThrottle);
    fill(w.FrameMapSensor, w.ComboMapSensorType);
    fill(w.FrameNTC, w.txtNTC1, w.txtNTC2, w.txtNTC3, w.txtNTC4, w.txtNTCMultiplier, w.btnSaveNTCCal);
    fill(w.FrameLoadCalc, w.txtLoadOffset, w.txtLoadGain, w.optLoadMode, w.btnLoadCalc);
    fill(w.FrameThrottle, w.btn0thr, w.lblMINTHR, w.btn100thr, w.lblMAXTHR);
    fill(w.picOptions(5), w.FrameFlags);
    fill(w.FrameFlags, w.chkMisc2, w.btnSaveMisc3);
}

void fillWarnings(MiscControls& w) {
    fill(w.picOptions(6), w.FrameWarnings);
    fill(w.FrameWarnings, w.txtBoostIgnCut, w.txtColdRPMlimit, w.txtWaterWarning, w.txtOilWarning, w.txtAirWarning,
         w.txtTemp4Warning, w.txtVolt1Warning, w.txtVolt2Warning, w.txtVolt3Warning, w.txtVolt4Warning,
         w.btnSaveWarnings);
    fill(w.picOptions(7), w.FrameLaunch);
    fill(w.FrameLaunch, w.txtLaunchcontrol, w.Combolaunchmode, w.txtAccelLimiterMode, w.txtAccelLimiterValue,
         w.txtALS_fuel, w.txtALS_ign_retard, w.txtlaunchdelay, w.txtflatshiftstartdelay, w.txtflatshiftstopdelay,
         w.btnSaveALSsettings, w.btnLaunchHelp);
}

void fillTools(MiscControls& w) {
    fill(w.picOptions(8), w.FrameParams, w.FrameMisc2, w.Frame13, w.Command3, w.ListView1);
    fill(w.FrameParams, w.Combo1, w.txtParName, w.txtParDesc, w.txtParOffset, w.txtParScale, w.txtParWarning,
         w.btnSaveParam);
    fill(w.FrameMisc2, w.TextOs, w.TextArvo, w.Command1, w.Command2, w.btnEEread16bit, w.btnWriteEE16bit);
    fill(w.Frame13, w.opt_injofftype);
}

int widthOf(const Control& control) {
    const auto kind = control.kind();
    if (kind == "text box") {
        return control.index() ? 390 : 900;
    }
    if (kind == "check box") {
        return kFrameWidth - 2 * kGap;
    }
    return kind == "list view" ? kFrameWidth : kind == "button" || kind == "label" ? 1500 : 1680;
}

void placeInFrame(MiscControls& window, Control& frame, Flow& page) {
    Flow flow(kFrameWidth, kFrameHead);
    for (auto* const control : window.controls()) {
        if (control->container() == &frame) {
            flow.place(*control, widthOf(*control), kLine);
        }
    }
    page.place(frame, flow.right(), flow.bottom());
}

void placeOnPage(MiscControls& window, Control& container) {
    constexpr int kListHeight = 2000;
    Flow flow(kPageWidth, kGap);
    for (auto* const control : window.controls()) {
        if (control->container() != &container) {
            continue;
        }
        if (control->kind() == "frame") {
            placeInFrame(window, *control, flow);
        } else {
            flow.place(*control, widthOf(*control), control->kind() == "list view" ? kListHeight : kLine);
        }
    }
}

void placeFoot(MiscControls& window) {
    Flow foot(kMiscWidth, kPageTop + kPageHeight + kGap);
    foot.place(window.tbsOptions, kPageWidth, kLine);
    foot.place(window.btnLoad, widthOf(window.btnLoad), kLine);
    foot.place(window.btnReadFromFile, widthOf(window.btnReadFromFile), kLine);
    foot.place(window.prgLoad, 2 * widthOf(window.btnLoad), kLine);
}

}  // namespace

void layOutControls(MiscControls& window) {
    fillIgnition(window);
    fillInjection(window);
    fillPwm(window);
    fillLambda(window);
    fillMisc(window);
    fillWarnings(window);
    fillTools(window);
    for (auto& page : window.picOptions) {
        page.Width = kPageWidth;
        page.Height = kPageHeight;
        placeOnPage(window, page);
    }
    showPage(window, -1);
    placeFoot(window);
}

void showPage(MiscControls& window, int page) {
    for (int i = 0; i < window.picOptions.count(); ++i) {
        auto& panel = window.picOptions(i);
        const bool shown = i == page;
        panel.Left = shown ? kPageLeft : kAway;
        panel.Top = kPageTop;
        panel.Visible = shown;
    }
}

}  // namespace korvane::settings
