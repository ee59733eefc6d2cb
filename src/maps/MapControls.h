// The controls that both map windows have, under their own names.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "maps/MapGrid.h"

namespace korvane::maps {

// Bits of the feature word.
inline constexpr std::int32_t kInjectionBit = 1 << 3;
inline constexpr std::int32_t kIgnitionBit = 1 << 5;
inline constexpr std::int32_t kShiftLightBit = 1 << 14;
inline constexpr std::int32_t kRpmLimitBit = 1 << 15;

// The boxes of txtMisc.
inline constexpr int kRpmLimit = 0;
inline constexpr int kRpmShift = 1;
inline constexpr int kInjectionOffset = 2;
inline constexpr int kIgnitionOffset = 3;

inline constexpr int kMiscBits = 16;  // of the enable word

// The large window shows its grids on pages of a tab strip; the other swaps its frames.
class MapControls : public controls::Window {
public:
    // `name` must outlive the window.
    MapControls(platform::Machine& machine, std::string_view name, std::string_view caption, MapGeometry shape);

    controls::Frame FrameFuel{*this, "FrameFuel"};
    controls::Frame FrameIgn{*this, "FrameIgn"};
    controls::Frame FramePWM{*this, "FramePWM"};
    controls::Frame FrameInjAnalys{*this, "FrameInjAnalys"};
    MapGrid fuel;    // txtFuel, lblRpmF, lblMapF
    MapGrid ign;     // txtIgn, lblRpmI, lblMapI
    MapGrid pwm;     // txtPWM, lblRpmP, lblMapP
    MapGrid analys;  // txtInjAnalys, lblRpmIA, lblMapIA

    controls::CommandButton btnReadFuel{*this, "btnReadFuel"};
    controls::CommandButton btnWriteFuel{*this, "btnWriteFuel"};
    controls::CommandButton btnReadIgn{*this, "btnReadIgn"};
    controls::CommandButton btnWriteIgn{*this, "btnWriteIgn"};
    controls::CommandButton btnReadPWM{*this, "btnReadPWM"};
    controls::CommandButton btnSavePWM{*this, "btnSavePWM"};
    controls::CommandButton btnReadMisc{*this, "btnReadMisc"};
    controls::CommandButton btnSaveMisc{*this, "btnSaveMisc"};
    controls::CommandButton btnSave{*this, "btnSave"};
    controls::CommandButton btnLoad{*this, "btnLoad"};
    controls::CommandButton btnShow3D{*this, "btnShow3D"};
    controls::CommandButton btnInjScale{*this, "btnInjScale"};
    controls::CommandButton btnHelp{*this, "btnHelp"};
    controls::ProgressBar prgTransfer{*this, "prgTransfer"};  // of a map on its way to the ECU

    controls::Frame FrameMisc{*this, "FrameMisc"};
    controls::ControlArray<controls::Label> lblMisc{*this, "lblMisc", 4};    // the names beside txtMisc
    controls::ControlArray<controls::TextBox> txtMisc{*this, "txtMisc", 4};  // kRpmLimit to kIgnitionOffset
    controls::ControlArray<controls::CheckBox> CheckMisc{*this, "CheckMisc", kMiscBits};  // the bits of the enable word
    controls::Frame FrameINJMaxOpen{*this, "FrameINJMaxOpen"};                            // "Suutin max aukiolo"
    controls::ControlArray<controls::OptionButton> optINJMaxOpen{*this, "optINJMaxOpen", 2};  // "4.4ms", "2.2ms"

    controls::CheckBox chkOnlineChanges{*this, "chkOnlineChanges"};
    controls::CheckBox chkTrace{*this, "chkTrace"};
    controls::CheckBox chkInjAnal{*this, "chkInjAnal"};
    controls::CheckBox chkUseTuningAgent{*this, "chkUseTuningAgent"};
    controls::CheckBox chkSimplemode{*this, "chkSimplemode"};
    controls::CheckBox chkModifyInjSetpoint{*this, "chkModifyInjSetpoint"};
    controls::Image imgAgentLed{*this, "imgAgentLed"};
    controls::CommandButton btnSaveLambdaSetpoint{*this, "btnSaveLambdaSetpoint"};
    controls::CommandButton btnloadLambdaSetpoint{*this, "btnloadLambdaSetpoint"};

    controls::Timer Timer1{*this, "Timer1", true, 333};                             // focus and analyser
    controls::Timer TimerInitialGetData{*this, "TimerInitialGetData", false, 100};  // from the load to the first reads
    controls::Timer TimeOutTimer{*this, "TimeOutTimer", false, 1000};               // seconds of a blocking read

    // Milliseconds for one fuel count, rounded to single precision.
    float InjTimeScale = 0.0F;
    std::int16_t timeOutCounter = 0;  // seconds
    bool isFormLoaded = false;        // the load event has ended

    // What the feature word of the ECU offers is enabled: ignition, injection, RPM limit, shift light, and each
    // CheckMisc by its own bit.
    void applyFeatures(std::int32_t features);
    // Small cells on a small screen, bold ones on a wide one.
    void sizeFonts(int screenWidth);
    void placeGrids();

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

private:
    void describeButtons();
    void describeMisc();
    void describeAnalyser();
    void placeMisc();
};

}  // namespace korvane::maps
