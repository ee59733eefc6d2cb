#include "maps/MapControls.h"

#include <array>

#include "core/Numbers.h"

namespace korvane::maps {

namespace {

constexpr std::array<std::string_view, kMiscBits> kMiscCaptions{"Enable PWM",
                                                                "Enable Choke",
                                                                "Enable StartHelp",
                                                                "Enable Injection",
                                                                "Enable Accel pump",
                                                                "Enable Ignition",
                                                                "",
                                                                "",
                                                                "Enable Voltage",
                                                                "Enable Lambda",
                                                                "Enable motor brake",
                                                                "Enable Launch/ALS",
                                                                "",
                                                                "",
                                                                "Enable SHift light",
                                                                "Enable RPM limit"};
constexpr std::array<std::string_view, 4> kMiscNames{"RPM Limit", "RPM Shift", "Inj offset", "Ign offset"};

constexpr int kNarrowScreen = 12001;  // twips: below, cells have to be small
constexpr int kWideScreen = 15700;    // above, there is room for bold text
constexpr int kSmallFont = 6;
constexpr int kSmallButtonFont = 7;

controls::Value scaleOf(const controls::Object& object) {
    return core::val(core::textOf(dynamic_cast<const MapControls&>(object).InjTimeScale));
}

constexpr std::array kMembers{controls::readOnlyProperty<&scaleOf>("InjTimeScale")};

}  // namespace

std::vector<std::span<const controls::PropertyInfo>> MapControls::propertyTables() const {
    auto tables = Window::propertyTables();
    tables.emplace_back(kMembers);
    return tables;
}

MapControls::MapControls(platform::Machine& machine, std::string_view name, std::string_view caption, MapGeometry shape)
    : Window(machine, name),
      fuel(*this, {"txtFuel", "lblRpmF", "lblMapF"}, shape, FrameFuel),
      ign(*this, {"txtIgn", "lblRpmI", "lblMapI"}, shape, FrameIgn),
      pwm(*this, {"txtPWM", "lblRpmP", "lblMapP"}, shape, FramePWM),
      analys(*this, {"txtInjAnalys", "lblRpmIA", "lblMapIA"}, shape, FrameInjAnalys) {
    Caption = caption;
    FrameFuel.Caption = "Fuel [ms]";
    FrameIgn.Caption = "Ignition [deg]";
    FramePWM.Caption = "PWM [ms]";
    FrameInjAnalys.Caption = "Injection analyser [lambda]";
    describeButtons();
    describeMisc();
    describeAnalyser();
}

void MapControls::describeButtons() {
    btnReadFuel.Caption = "Read Fuel Values";
    btnWriteFuel.Caption = "Send Fuel Values";
    btnReadIgn.Caption = "Read Ign Values";
    btnWriteIgn.Caption = "Send Ign Values";
    btnReadPWM.Caption = "Read PWM values";
    btnSavePWM.Caption = "Save PWM values";
    btnReadMisc.Caption = "Read Misc";
    btnSaveMisc.Caption = "Send Misc";
    btnSave.Caption = "Talleta arvot tiedostoon";
    btnLoad.Caption = "Hae arvot tiedostosta";
    btnShow3D.Caption = "3D map";
    btnInjScale.Caption = "Injector scaling";
    btnHelp.Caption = "Ohje";
    chkOnlineChanges.Caption = "Realtime changes";
}

void MapControls::describeMisc() {
    FrameMisc.Caption = "Misc";
    FrameINJMaxOpen.Caption = "Suutin max aukiolo";
    FrameINJMaxOpen.setContainer(&FrameMisc);
    optINJMaxOpen(0).Caption = "4.4ms";
    optINJMaxOpen(1).Caption = "2.2ms";
    for (auto& option : optINJMaxOpen) {
        option.setContainer(&FrameINJMaxOpen);
    }
    for (int i = 0; i < txtMisc.count(); ++i) {
        lblMisc(i).Caption = kMiscNames.at(static_cast<std::size_t>(i));
        lblMisc(i).setContainer(&FrameMisc);
        txtMisc(i).setContainer(&FrameMisc);
    }
    for (int bit = 0; bit < kMiscBits; ++bit) {
        CheckMisc(bit).Caption = kMiscCaptions.at(static_cast<std::size_t>(bit));
        CheckMisc(bit).setContainer(&FrameMisc);
    }
}

void MapControls::describeAnalyser() {
    chkInjAnal.Caption = "Show Injection analyser";
    chkUseTuningAgent.Caption = "Use Tuning Agent";
    chkSimplemode.Caption = "Simple mode";
    chkModifyInjSetpoint.Caption = "Modify lambda setpoints";
    btnSaveLambdaSetpoint.Caption = "Save Lambda";
    btnloadLambdaSetpoint.Caption = "Load Lambda";
    imgAgentLed.Shown = controls::Picture::Grey;
    chkUseTuningAgent.Visible = chkSimplemode.Visible = chkModifyInjSetpoint.Visible = imgAgentLed.Visible = false;
    btnSaveLambdaSetpoint.Enabled = false;
    btnloadLambdaSetpoint.Enabled = false;
}

void MapControls::applyFeatures(std::int32_t features) {
    const auto offers = [features](std::int32_t bit) { return (features & bit) != 0; };
    btnReadIgn.Enabled = btnWriteIgn.Enabled = txtMisc(kIgnitionOffset).Enabled = offers(kIgnitionBit);
    btnReadFuel.Enabled = btnWriteFuel.Enabled = txtMisc(kInjectionOffset).Enabled = offers(kInjectionBit);
    txtMisc(kRpmLimit).Enabled = offers(kRpmLimitBit);
    txtMisc(kRpmShift).Enabled = offers(kShiftLightBit);
    for (int bit = 0; bit < kMiscBits; ++bit) {
        CheckMisc(bit).Enabled = offers(1 << bit);
    }
}

void MapControls::sizeFonts(int screenWidth) {
    const bool small = screenWidth < kNarrowScreen;
    const bool bold = screenWidth > kWideScreen;
    for (auto* grid : {&fuel, &ign, &pwm, &analys}) {
        const auto size = [&](auto& controls) {
            for (auto& control : controls) {
                control.FontSize = small ? kSmallFont : control.FontSize.get();
                control.FontBold = bold;
            }
        };
        size(grid->cells);
        size(grid->columnLabels);
        size(grid->rowLabels);
    }
    for (auto* control : controls()) {
        if (small && dynamic_cast<controls::CommandButton*>(control) != nullptr) {
            control->FontSize = kSmallButtonFont;
        }
    }
}

void MapControls::placeGrids() {
    for (auto* grid : {&fuel, &ign, &pwm, &analys}) {
        grid->place();
    }
    placeMisc();
}

void MapControls::placeMisc() {
    constexpr int kRow = 300;  // twips
    for (int i = 0; i < txtMisc.count(); ++i) {
        lblMisc(i).Left = 120;
        lblMisc(i).Width = 1000;
        txtMisc(i).Left = 1200;
        txtMisc(i).Width = 800;
        lblMisc(i).Top = txtMisc(i).Top = 240 + i * kRow;
        lblMisc(i).Height = txtMisc(i).Height = 255;
    }
    for (int bit = 0; bit < kMiscBits; ++bit) {
        CheckMisc(bit).Left = 120 + 2000 * (bit / 8);
        CheckMisc(bit).Top = 1500 + kRow * (bit % 8);
        CheckMisc(bit).Width = 1900;
        CheckMisc(bit).Height = 255;
    }
    for (int i = 0; i < optINJMaxOpen.count(); ++i) {
        optINJMaxOpen(i).Left = 120;
        optINJMaxOpen(i).Top = 240 + i * kRow;
        optINJMaxOpen(i).Width = 1200;
        optINJMaxOpen(i).Height = 255;
    }
}

}  // namespace korvane::maps
