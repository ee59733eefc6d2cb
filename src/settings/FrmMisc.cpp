#include "settings/FrmMisc.h"

#include <algorithm>
#include <limits>
#include <string>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/SettingsFile.h"
#include "fields/VerifyProperties.h"
#include "link/Commands.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"
#include "settings/MiscFields.h"
#include "settings/MiscLayout.h"
#include "settings/SavePlans.h"

namespace korvane::settings {

namespace {

constexpr int kBesideMain = 600;  // twips, right of and below the main window's corner
constexpr int kAccelBit = 4;      // of the feature word
constexpr int kVoltBit = 8;
constexpr int kLambdaBit = 9;

constexpr const char* kLaunchHelp =
    "Launch: Enabloi Launch kartta sivulta, aseta Lauch rpm limit. Launch voidaan laittaa kytkeytymään pois viiveen "
    "kanssa (MODE fixed ja launch stop delay)\r\n"
    "Launch kytkeytyy päälle maadoittamalla IN1 nasta\r\n"
    "ALS: aseta ensin Launch käyttöön kuten edellä. Tämän lisäksi enabloi Antilag Misc2 välilehdeltä. Asettele "
    "sytytyksen ja bensan rikastukset kohdilleen.\r\n"
    "Launch + ALS kytkeytyvät nyt IN1 liittimestä.\r\n"
    "IN2 liittimestä kytkeytyy Flat Shift toimito päälle, tämäkin voidaan asetella viiveelliseksi\r\n"
    "ALS ollessa aktiivinen Idle ohjaus avaa tyhjäkäyntiventtiilin täysin auki (jos PWM1 ohjaa Idle venttiiliä)";

// The two PWM frames are saved by one button, which stands outside of them.
std::string groupOf(const controls::CommandButton& button) {
    const std::string title = fields::titleOf(button.container());
    return title.empty() ? "PWM outputs" : title;
}

}  // namespace

FrmMisc::FrmMisc(platform::Machine& machine, core::SharedTables& tables, link::ConnectionPanel& connection,
                 core::EepromAccess& eeprom)
    : MiscControls(machine),
      context_{*this, tables, connection, eeprom, verifyReport_},
      report_(tables),
      opening_(connection.MSComm1,
               [this] {
                   report_.lineOpened();
                   readAnswers_.lineOpened();
                   verifyReport_.lineOpened();
               }),
      fields_(tables, miscFields(*this, tables)),
      replies_(context_, fields_),
      fullRead_(context_, readAnswers_),
      saver_(context_.fieldsContext(), fields_),
      rawVerification_(context_.fieldsContext()),
      parameterTools_(*this, tables, eeprom, &rawVerification_) {
    hideOnClose();
    fields_.watch(marks_, report_);
    readAnswers_.tallied = [this] { context_.connection.settingsTally.Text = readAnswers_.tally(); };
    marks_.compareWith(connection.ecuEeprom);
    for (const auto* const box : {&TextOs, &TextArvo, &txtParOffset, &txtParScale, &txtParWarning}) {
        marks_.addOwn(*box);
    }
    for (const SaveButton& each : saveButtons()) {
        (this->*each.button).Click = [this, &each] { saver_.run(each.plan, groupOf(this->*each.button)); };
    }
    tbsOptions.Click = [this] { tbsOptions_Click(); };
    btnLoad.Click = [this] { readAll(); };
    btnReadFromFile.Click = [this] { btnReadFromFile_Click(); };
    btn0thr.Click = [this] { calibrateThrottle(link::kThrottleIsClosed); };
    btn100thr.Click = [this] { calibrateThrottle(link::kThrottleIsOpen); };
    btnLaunchHelp.Click = [this] { btnLaunchHelp_Click(); };
    TimeOutTimer.Tick = [this] {
        if (TimeOutCount < std::numeric_limits<std::int16_t>::max()) {
            ++TimeOutCount;
        }
    };
    TimerInitialGetData.Tick = [this] {
        TimerInitialGetData.Enabled = false;
        readAll();
    };
}

std::vector<std::span<const controls::PropertyInfo>> FrmMisc::propertyTables() const {
    return controls::withTable<Window>(*this, fields::kVerifyProperties<FrmMisc>);
}

void FrmMisc::Form_Load() {
    place();
    tbsOptions.SelectedItem = 1;
    tbsOptions_Click();
    FrameMisc2.Visible = true;
    ListView1.Visible = true;
    applyFeatures();
    context_.eeprom.ReadEE(core::toInt16(context_.tables.addresses.WBO2_MODE_OFF));
    opt_injofftype(0).Value = context_.tables.InjOff_type != 0;
    opt_injofftype(1).Value = context_.tables.InjOff_type == 0;
    parameterTools_.fill();
    Combolaunchmode.ListIndex = 0;
    ComboMapSensorType.ListIndex = 0;
    TimerInitialGetData.Enabled = true;
}

void FrmMisc::place() {
    Width = kMiscWidth;
    Height = kMiscHeight;
    Left = context_.connection.window.Left + kBesideMain;
    Top = context_.connection.window.Top + kBesideMain;
}

void FrmMisc::readAll() {
    fullRead_.run();
    allRead();
}

void FrmMisc::applyFeatures() {
    enable(txtLambdaTav, kLambdaBit);
    enable(txtLambdaVaik, kLambdaBit);
    enable(txtAccel, kAccelBit);
    enable(txtVolt, kVoltBit);
}

void FrmMisc::enable(controls::ControlArray<controls::TextBox>& boxes, int bit) {
    const bool offered = (context_.tables.Features & core::checked(context_.tables.BitMask, bit)) != 0;
    for (auto& box : boxes) {
        box.Enabled = offered;
    }
}

void FrmMisc::tbsOptions_Click() {
    showPage(*this, tbsOptions.SelectedItem - 1);
}

void FrmMisc::Form_KeyDown(int keyCode, int shift) {
    if (keyCode == controls::kKeyTab && shift == controls::kControlMask) {
        tbsOptions.SelectedItem = tbsOptions.SelectedItem % tbsOptions.tabCount() + 1;
    }
}

// These two are called without Window::enter(), and events run in the first.
void FrmMisc::LoadMisc2(std::span<const std::uint8_t> payload, bool& handled) {
    const Stay stay(*this);
    replies_.LoadMisc2(payload, handled);
}

void FrmMisc::UpdateReadEE(std::int32_t value, int addr, bool is16) {
    const Stay stay(*this);
    readAnswers_.heard(addr);
    replies_.UpdateReadEE(value, addr, is16);
}

void FrmMisc::setLambdaSetpoint(int row, std::uint8_t value) {
    showLambda(txtLambdaTav(row), &core::ParameterAddresses::LAMBDATAV_OFF, row, value);
}

void FrmMisc::setLambdaAuthority(int row, std::uint8_t value) {
    showLambda(txtLambdaVaik(row), &core::ParameterAddresses::LAMBDAVAIK_OFF, row, value);
}

void FrmMisc::showLambda(controls::TextBox& box, fields::Address first, int row, std::uint8_t value) {
    const auto address = std::int64_t{context_.tables.addresses.*first} + row;
    context_.connection.ecuEeprom.told(address, value);
    box.Text = std::to_string(value);
    marks_.heard(box);
    report_.heard(address, value, false);
}

bool FrmMisc::awaitsLambda() {
    const auto isAwaited = [this](const controls::TextBox& box) { return !marks_.wasHeard(box); };
    return std::any_of(txtLambdaTav.begin(), txtLambdaTav.end(), isAwaited) ||
           std::any_of(txtLambdaVaik.begin(), txtLambdaVaik.end(), isAwaited);
}

template <class Handler>
void FrmMisc::trapped(const std::string& text, Handler&& handler) {
    try {
        handler();
    } catch (const platform::RuntimeError& failure) {
        machine().dialogs.show({"Korvane Tuner", text + failure.what(), platform::MessageIcon::Exclamation});
    }
}

void FrmMisc::btnReadFromFile_Click() {
    const std::string path =
        machine().dialogs.choose({platform::FileDialog::Kind::Open, "Open Settings file", "All Files (*.txt)|*.txt"});
    if (!path.empty()) {
        context_.tables.LoadFileName = path;
        trapped("Error loadfile: ", [&] { loadFile(path); });
    }
}

// The values are only shown: the map windows do not change, and each group's button sends its own values.
void FrmMisc::loadFile(const std::string& path) {
    const auto take = [this](std::int32_t value, std::int32_t addr, bool is16) {
        replies_.UpdateReadEE(value, addr, is16, fields::From::File);
    };
    const int status = core::LoadSettingsFile(path, context_.tables, take, machine().dialogs);
    if (status != core::kSettingsRead) {
        machine().dialogs.show({"", "Error loading data:\r\n" + core::settingsStatusText(status)});
    }
}

// The ECU measures the throttle itself. With the port closed the serial control raises its own failure.
void FrmMisc::calibrateThrottle(std::uint8_t command) {
    const auto& places = context_.tables.addresses;
    const auto address = command == link::kThrottleIsOpen ? places.MAXTHR_OFF : places.MINTHR_OFF;
    context_.eeprom.announceStore("throttle end", {core::Overwritten::Part::Settings, {address}});
    trapped("", [&] { context_.connection.MSComm1.Output(link::shortCommand(command)); });
    context_.connection.ecuEeprom.lost(address);
}

void FrmMisc::btnLaunchHelp_Click() {
    machine().dialogs.show({"Help", kLaunchHelp, platform::MessageIcon::Information});
}

}  // namespace korvane::settings
