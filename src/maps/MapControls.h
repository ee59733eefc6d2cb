// The controls that both map windows have, under their own names.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "maps/MapGrid.h"
#include "platform/Controls.h"
#include "platform/Timer.h"
#include "platform/Window.h"

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
class MapControls : public platform::Window {
public:
    // `name` must outlive the window.
    MapControls(platform::Machine& machine, std::string_view name, std::string_view caption, MapGeometry shape);

    platform::Frame FrameFuel{*this, "FrameFuel"};
    platform::Frame FrameIgn{*this, "FrameIgn"};
    platform::Frame FramePWM{*this, "FramePWM"};
    platform::Frame FrameInjAnalys{*this, "FrameInjAnalys"};
    MapGrid fuel;    // txtFuel, lblRpmF, lblMapF
    MapGrid ign;     // txtIgn, lblRpmI, lblMapI
    MapGrid pwm;     // txtPWM, lblRpmP, lblMapP
    MapGrid analys;  // txtInjAnalys, lblRpmIA, lblMapIA

    platform::CommandButton btnReadFuel{*this, "btnReadFuel"};
    platform::CommandButton btnWriteFuel{*this, "btnWriteFuel"};
    platform::CommandButton btnReadIgn{*this, "btnReadIgn"};
    platform::CommandButton btnWriteIgn{*this, "btnWriteIgn"};
    platform::CommandButton btnReadPWM{*this, "btnReadPWM"};
    platform::CommandButton btnSavePWM{*this, "btnSavePWM"};
    platform::CommandButton btnReadMisc{*this, "btnReadMisc"};
    platform::CommandButton btnSaveMisc{*this, "btnSaveMisc"};
    platform::CommandButton btnSave{*this, "btnSave"};
    platform::CommandButton btnLoad{*this, "btnLoad"};
    platform::CommandButton btnShow3D{*this, "btnShow3D"};
    platform::CommandButton btnInjScale{*this, "btnInjScale"};
    platform::CommandButton btnHelp{*this, "btnHelp"};
    platform::ProgressBar prgTransfer{*this, "prgTransfer"};  // of a map on its way to the ECU

    platform::Frame FrameMisc{*this, "FrameMisc"};
    platform::ControlArray<platform::Label> lblMisc{*this, "lblMisc", 4};    // the names beside txtMisc
    platform::ControlArray<platform::TextBox> txtMisc{*this, "txtMisc", 4};  // kRpmLimit to kIgnitionOffset
    platform::ControlArray<platform::CheckBox> CheckMisc{*this, "CheckMisc", kMiscBits};  // the bits of the enable word
    platform::Frame FrameINJMaxOpen{*this, "FrameINJMaxOpen"};                            // "Suutin max aukiolo"
    platform::ControlArray<platform::OptionButton> optINJMaxOpen{*this, "optINJMaxOpen", 2};  // "4.4ms", "2.2ms"

    platform::CheckBox chkOnlineChanges{*this, "chkOnlineChanges"};
    platform::CheckBox chkTrace{*this, "chkTrace"};
    platform::CheckBox chkInjAnal{*this, "chkInjAnal"};
    platform::CheckBox chkUseTuningAgent{*this, "chkUseTuningAgent"};
    platform::CheckBox chkSimplemode{*this, "chkSimplemode"};
    platform::CheckBox chkModifyInjSetpoint{*this, "chkModifyInjSetpoint"};
    platform::Image imgAgentLed{*this, "imgAgentLed"};
    platform::CommandButton btnSaveLambdaSetpoint{*this, "btnSaveLambdaSetpoint"};
    platform::CommandButton btnloadLambdaSetpoint{*this, "btnloadLambdaSetpoint"};

    platform::Timer Timer1{*this, "Timer1", true, 333};                             // focus and analyser
    platform::Timer TimerInitialGetData{*this, "TimerInitialGetData", false, 100};  // from the load to the first reads
    platform::Timer TimeOutTimer{*this, "TimeOutTimer", false, 1000};               // seconds of a blocking read

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

    [[nodiscard]] std::vector<std::span<const platform::PropertyInfo>> propertyTables() const override;

private:
    void describeButtons();
    void describeMisc();
    void describeAnalyser();
    void placeMisc();
};

}  // namespace korvane::maps
