#include "maps/FrmMaps_QV_ign.h"

#include <array>

namespace korvane::maps {

namespace {

using A = core::ParameterAddresses;
using fields::Pause;
using fields::SaveStep;

// The four bits that the other boxes leave without a meaning have one here.
constexpr MiscCaptions kMiscCaptions{
    .bits = {"Enable PWM", "Enable Choke", "Enable StartHelp", "Enable Injection", "Enable Accel pump",
             "Enable Ignition", "brute RPM suodin", "Enable Paukku", "Enable Voltage", "Enable Lambda",
             "Enable motor brake", "Enable Launch/ALS", "Enable LCD", "Reset to defaults", "Enable SHift light",
             "Enable RPM limit"},
    .receiving = "Getting data from ECU!",
};

constexpr int kReadPause = 150;  // ms, behind each parameter
constexpr Pause kWritePause{50};

constexpr std::array kIdleReads{fields::range(&A::IDLE_ADV0, 5)};
constexpr std::array kIdleWrites{SaveStep{&A::IDLE_ADV0, kWritePause}};
constexpr std::array kSetupReads{fields::one(&A::CHARGE_TIME_OFF), fields::one(&A::IGN_EDGE_OFFSET)};
constexpr std::array kSetupWrites{
    SaveStep{&A::CHARGE_TIME_OFF, kWritePause},
    SaveStep{&A::IGN_EDGE_OFFSET, kWritePause},
};

constexpr fields::Codec kFiftieths{fields::Width::Byte, 0.02};
constexpr int kFirstIdleSpeed = 500;  // 1/min, of the idle ignition
constexpr int kIdleSpeedStep = 100;

constexpr fields::Stepping kChargeTimeKeys{250, &controls::Control::ToolTipText};
constexpr int kRisingEdge = 1;  // the row of Combosensortype

// Where the frames stand, twips.
constexpr int kGridWidth = 9600;
constexpr int kGridHeight = 3300;
constexpr int kGroupTop = 3600;
constexpr int kGroupWidth = 4600;

}  // namespace

FrmMaps_QV_ign::FrmMaps_QV_ign(platform::Machine& machine, const MapContext& mapContext)
    : PaneWindow(machine, mapContext, {"frmMaps_QV_ign", "Korvane Tuner, Maps QV"}, kOrdinaryMaps),
      MiscPane(ground(), kMiscCaptions),
      IgnitionPane(ground(), Halves::One, Pointing::Keys),
      FilePane(ground()),
      EnginePlacePane(ground(), {&ign}),
      ToolPane(ground()),
      IgnitionBoxControls(ground(), mapContext.connection),
      chkFocusOnIGN(*this, "chkFocusOnIGN"),
      lblIdleAdv(*this, "lblIdleAdv"),
      txtIdleAdv(*this, "txtIdleAdv", 5),
      txtchargetime(*this, "txtchargetime"),
      fields_(mapContext.tables, rows()),
      idleIgnition(fieldsContext(), fields_,
                   {{"FrameIdleAdv", "Idle Ignition"},
                    {"btnReadIdleAdv", "Read Idle"},
                    {"btnSaveIdleAdv", "Save Idle"},
                    {kIdleReads, kReadPause},
                    {kIdleWrites}},
                   {&prgTransfer}),
      launchControl(fieldsContext(), fields_, launchPlan(BytePause::Ms50), {&prgTransfer}),
      ignitionSetup(fieldsContext(), fields_,
                    {{"FrameIgn2", "Ignition"},
                     {"btnreadign_2", "Read Ignition"},
                     {"btnsaveign_2", "Save Ignition"},
                     {kSetupReads, kReadPause},
                     {kSetupWrites}},
                    {&prgTransfer}) {
    chkFocusOnIGN.Caption = "Focus on Ignition";
    lblIdleAdv.Caption = "RPM    500           600           700           800            900";
    for (int i = 0; i < txtIdleAdv.count(); ++i) {
        txtIdleAdv(i).setLabel(std::to_string(kFirstIdleSpeed + i * kIdleSpeedStep) + " RPM");
    }
    txtchargetime.setLabel("Charge time");
}

std::vector<fields::Field> FrmMaps_QV_ign::rows() {
    auto rows = launchFields();
    rows.push_back({&A::IDLE_ADV0, txtIdleAdv});
    rows.push_back({&A::CHARGE_TIME_OFF, txtchargetime, kFiftieths, kChargeTimeKeys});
    rows.push_back({&A::IGN_EDGE_OFFSET, sensorType()});
    return rows;
}

fields::Own FrmMaps_QV_ign::sensorType() {
    return {[this](std::int32_t value) { Combosensortype.choose(value); },
            [this] { return Combosensortype.ListIndex == kRisingEdge ? 1 : 0; }};
}

fields::Context FrmMaps_QV_ign::fieldsContext() {
    auto& connection = context().connection;
    return {*this,    context().tables, context().eeprom, connection.TimerRequestData, &connection.linkState,
            &answers, &connection,      &verifyReport()};
}

void FrmMaps_QV_ign::Form_Load() {
    context().tables.ignWindowOpen = true;
    PaneWindow::Form_Load();
}

void FrmMaps_QV_ign::Form_Shown() {
    if (line().isOpen()) {
        for (auto* button : {&btnReadMisc, &btnReadIgn, &ignitionSetup.btnRead, &launchControl.btnRead}) {
            button->press();
        }
    }
}

bool FrmMaps_QV_ign::Form_Unload() {
    context().tables.ignWindowOpen = false;
    return PaneWindow::Form_Unload();
}

// The misc block shows words alone: a byte would be half of a limit.
void FrmMaps_QV_ign::UpdateReadEE(std::int32_t value, int addr, bool is16) {
    const Stay stay(*this);
    if (is16) {
        MiscPane::UpdateReadEE(value, addr, is16);
    }
    fields_.take(value, addr, is16);
}

void FrmMaps_QV_ign::arrangePanes() {
    chkFocusOnIGN.Enabled = (context().tables.Features & kIgnitionBit) != 0;
    FrameIgn.Width = kGridWidth;
    FrameIgn.Height = kGridHeight;
    std::initializer_list<controls::Control*> idle{&lblIdleAdv,    &txtIdleAdv(0), &txtIdleAdv(1),
                                                   &txtIdleAdv(2), &txtIdleAdv(3), &txtIdleAdv(4)};
    idleIgnition.place(0, kGroupTop, idle);
    placeLaunch(launchControl, kGroupWidth, kGroupTop);
    ignitionSetup.place(2 * kGroupWidth, kGroupTop, {&txtchargetime, &Combosensortype});
}

void FrmMaps_QV_ign::followEngine() {
    if (chkFocusOnIGN.Value == 1) {
        focusOn(ign);
    }
}

}  // namespace korvane::maps
