#include "maps/FrmMaps_ign_limiter.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/tables/LiveChannel.h"
#include "core/tables/ModuleReg.h"
#include "fields/PollStop.h"
#include "fields/VerifyProperties.h"
#include "link/Commands.h"
#include "maps/MapHelp.h"
#include "maps/transfer/MiscTransfer.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

using A = core::ParameterAddresses;
using fields::one;
using fields::Pause;
using fields::SaveStep;
using fields::word;

constexpr int kPause = 150;         // ms, behind each read and each step of a send
constexpr int kRestartPause = 250;  // ms, from the end of a send to the restart

constexpr std::array kReadSteps{
    word(&A::DEG_COUNT_FOR_RPM_OFF, 5),   word(&A::CYL_COUNT_OFF, 10),          one(&A::IGN_EDGE_OFFSET, 12),
    one(&A::LAUNCH_MODE_OFF, 15),         word(&A::LAUNCH_LIMIT_OFF, 20),       word(&A::LAUNCH_LIMIT_PRE_OFF, 25),
    word(&A::RPM_LIMIT_OFF, 30),          word(&A::RPM_LIMIT_PRE_OFF, 35),      word(&A::INPUT5_LIMIT_FUNC_OFF, 36),
    word(&A::INPUT6_LIMIT_FUNC_OFF, 37),  word(&A::INPUT7_LIMIT_FUNC_OFF, 38),  word(&A::INPUT8_LIMIT_FUNC_OFF, 39),
    word(&A::INPUT1_LIMIT_OFF, 40),       word(&A::INPUT2_LIMIT_OFF, 45),       word(&A::INPUT3_LIMIT_OFF, 50),
    word(&A::INPUT1_LIMIT_FUNC_OFF, 55),  word(&A::INPUT2_LIMIT_FUNC_OFF, 60),  word(&A::INPUT3_LIMIT_FUNC_OFF, 65),
    word(&A::INPUT1_LIMIT_F_VAL_OFF, 70), word(&A::INPUT2_LIMIT_F_VAL_OFF, 80), word(&A::INPUT3_LIMIT_F_VAL_OFF, 100),
};
constexpr fields::ReadPlan kReadData{
    kReadSteps,
    kPause,
    {"Receiving data from target device!:  Loading.. ", "Receiving data from target device!:  Received 100%"}};

constexpr Pause kStep{kPause};
constexpr std::array kSendSteps{
    SaveStep{&A::DEG_COUNT_FOR_RPM_OFF, kStep, {5}},   SaveStep{&A::CYL_COUNT_OFF, kStep, {10}},
    SaveStep{&A::IGN_EDGE_OFFSET, kStep, {15}},        SaveStep{&A::RPM_LIMIT_OFF, kStep, {20}},
    SaveStep{&A::RPM_LIMIT_PRE_OFF, kStep, {25}},      SaveStep{&A::LAUNCH_LIMIT_OFF, kStep, {30}},
    SaveStep{&A::LAUNCH_LIMIT_PRE_OFF, kStep, {35}},   SaveStep{&A::INPUT1_LIMIT_OFF, kStep, {40}},
    SaveStep{&A::INPUT1_LIMIT_FUNC_OFF, kStep, {45}},  SaveStep{&A::INPUT1_LIMIT_F_VAL_OFF, kStep, {50}},
    SaveStep{&A::INPUT2_LIMIT_OFF, kStep, {55}},       SaveStep{&A::INPUT2_LIMIT_FUNC_OFF, kStep, {60}},
    SaveStep{&A::INPUT2_LIMIT_F_VAL_OFF, kStep, {65}}, SaveStep{&A::INPUT3_LIMIT_OFF, kStep, {70}},
    SaveStep{&A::INPUT3_LIMIT_FUNC_OFF, kStep, {75}},  SaveStep{&A::INPUT3_LIMIT_F_VAL_OFF, kStep, {76}},
    SaveStep{&A::INPUT5_LIMIT_FUNC_OFF, kStep, {77}},  SaveStep{&A::INPUT6_LIMIT_FUNC_OFF, kStep, {78}},
    SaveStep{&A::INPUT7_LIMIT_FUNC_OFF, kStep, {79}},  SaveStep{&A::INPUT8_LIMIT_FUNC_OFF, kStep},
};
constexpr fields::SavePlan kSendSettings{
    kSendSteps, false, {"Sending data to device: Sending.. ", "Data sent and stored to device."}};

constexpr fields::Codec kVolts{fields::Width::UnsignedWord, 0.02};
constexpr fields::Stepping kVoltKeys{250, &controls::Control::ToolTipText};

constexpr int kFirstInput = 4;  // of the live channels that take turns
constexpr double kFullScale = 255;
constexpr double kFullVolts = 5;

constexpr int kWidth = 1080 * 15;  // twips
constexpr int kHeight = 510 * 15;
constexpr int kFrameWidth = 4500;
constexpr int kLowerTop = 3600;
constexpr int kMargin = 360;

std::string comparisonName(int input) {
    return "InputCompare" + std::to_string(input + 1);
}

}  // namespace

FrmMaps_ign_limiter::FrmMaps_ign_limiter(platform::Machine& machine, const MapContext& context)
    : Window(machine, "frmMaps_ign_limiter"),
      IgnitionBoxControls(static_cast<Window&>(*this), context.connection),
      context_(context),
      opening_(context.connection.MSComm1, [this] { verifyReport_.lineOpened(); }),
      fields_(context.tables, rows()),
      launchControl(fieldsContext(), fields_, launchPlan(BytePause::None)),
      line_(*this, context),
      reader_(fieldsContext(), kReadData),
      saver_(fieldsContext(), fields_) {
    Caption = "Korvane Tuner, Ignition limiter";
    Width = kWidth;
    Height = kHeight;
    fillLists();
    labelBoxes();
    place();
    btnReadData.Click = [this] { btnReadData_Click(); };
    btnSendSettings.Click = [this] { btnSendSettings_Click(); };
    btnHelp.Click = [this] { showMapHelp(this->machine().dialogs); };
    TimerinitialRead.Tick = [this] {
        TimerinitialRead.Enabled = false;
        btnReadData_Click();
    };
    Timer1.Tick = [this] { showInputs(); };
    TimeOutTimer.Tick = [this] {
        if (timeOutCounter < std::numeric_limits<std::int16_t>::max()) {
            ++timeOutCounter;
        }
    };
}

std::vector<fields::Field> FrmMaps_ign_limiter::rows() {
    const auto functions = [this](int i) { return fields::Lists{ComboInputFuncLow(i), comboInputFuncHi(i)}; };
    const auto function = [this](int limit) { return fields::lowByteOf(ComboInputFuncLow(kInputs + limit)); };
    std::vector<fields::Field> rows{
        {&A::DEG_COUNT_FOR_RPM_OFF, txtSigPerRev, fields::kUnsignedWord},
        {&A::CYL_COUNT_OFF, txtCylCount, fields::kUnsignedWord},
        {&A::IGN_EDGE_OFFSET, Combosensortype},
        {&A::LAUNCH_LIMIT_OFF, txtrpmlimitLOW, fields::kUnsignedWord},
        {&A::LAUNCH_LIMIT_PRE_OFF, txtrpmlimitLOWpre, fields::kUnsignedWord},
        {&A::RPM_LIMIT_OFF, txtrpmlimitHIGH, fields::kUnsignedWord},
        {&A::RPM_LIMIT_PRE_OFF, txtrpmlimitHIGHpre, fields::kUnsignedWord},
        {&A::INPUT5_LIMIT_FUNC_OFF, function(0)},
        {&A::INPUT6_LIMIT_FUNC_OFF, function(1)},
        {&A::INPUT7_LIMIT_FUNC_OFF, function(2)},
        {&A::INPUT8_LIMIT_FUNC_OFF, function(3)},
        {&A::INPUT1_LIMIT_OFF, txtInputvolt(0), kVolts, kVoltKeys},
        {&A::INPUT2_LIMIT_OFF, txtInputvolt(1), kVolts, kVoltKeys},
        {&A::INPUT3_LIMIT_OFF, txtInputvolt(2), kVolts, kVoltKeys},
        {&A::INPUT1_LIMIT_FUNC_OFF, functions(0), fields::kTwoBytes},
        {&A::INPUT2_LIMIT_FUNC_OFF, functions(1), fields::kTwoBytes},
        {&A::INPUT3_LIMIT_FUNC_OFF, functions(2), fields::kTwoBytes},
        {&A::INPUT1_LIMIT_F_VAL_OFF, txtInputFuncVal(0), fields::kUnsignedWord},
        {&A::INPUT2_LIMIT_F_VAL_OFF, txtInputFuncVal(1), fields::kUnsignedWord},
        {&A::INPUT3_LIMIT_F_VAL_OFF, txtInputFuncVal(2), fields::kUnsignedWord},
    };
    const auto launch = launchFields();
    rows.insert(rows.end(), launch.begin(), launch.end());
    return rows;
}

fields::Context FrmMaps_ign_limiter::fieldsContext() {
    auto& connection = context_.connection;
    return {*this,    context_.tables, context_.eeprom, connection.TimerRequestData, &connection.linkState,
            &answers, &connection,     &verifyReport_};
}

void FrmMaps_ign_limiter::fillLists() {
    for (auto* lists : {&ComboInputFuncLow, &comboInputFuncHi}) {
        for (auto& list : *lists) {
            fillList(list, {"Do nothing", "Disable 1 CYL", "Disable 33% CYL", "Disable 50& CYL", "RPM-limit cut 50%",
                            "RPM-limit cut 100%", "Unknown"});
        }
    }
    for (auto& list : ComboInputCompare) {
        fillList(list, {">", "<", "!?!"});
    }
    rememberComparisons();
}

void FrmMaps_ign_limiter::labelBoxes() {
    txtSigPerRev.setLabel("Signals per engine rev");
    txtCylCount.setLabel("Cylinder count");
    const std::array limits{&txtrpmlimitLOW, &txtrpmlimitLOWpre, &txtrpmlimitHIGH, &txtrpmlimitHIGHpre};
    int row = 0;
    for (const char* name :
         {"Launch RPM limit", "Pre limit (Launch RPM limit)", "RPM limit", "Pre limit (RPM limit)"}) {
        limits.at(static_cast<std::size_t>(row))->setLabel(name);
        ComboInputFuncLow(kInputs + row++).setLabel(std::string(name) + " function");
    }
    for (int i = 0; i < kInputs; ++i) {
        txtInputvolt(i).setLabel("Voltage limit");
        ComboInputFuncLow(i).setLabel("Function");
        comboInputFuncHi(i).setLabel("Function, high byte");
        txtInputFuncVal(i).setLabel("Value");
    }
}

void FrmMaps_ign_limiter::rememberComparisons() {
    for (int input = 0; input < kInputs; ++input) {
        auto& list = ComboInputCompare(input);
        auto& preferences = machine().preferences;
        const int row = core::RegReadNumber(preferences, core::kSettingsKey, comparisonName(input));
        list.ListIndex = row >= 0 && row < list.ListCount() ? row : 0;
        list.Click = [&list, &preferences, input] {
            core::RegWriteString(preferences, core::kSettingsKey, comparisonName(input),
                                 std::to_string(list.ListIndex.get()));
        };
    }
}

void FrmMaps_ign_limiter::place() {
    stack(FrameRpmSensor, 0, 0, kMargin, {&txtSigPerRev, &txtCylCount, &Combosensortype});
    stack(FrameRpmLimit, kFrameWidth, 0, kMargin,
          {&txtrpmlimitLOW, &ComboInputFuncLow(3), &txtrpmlimitLOWpre, &ComboInputFuncLow(4), &txtrpmlimitHIGH,
           &ComboInputFuncLow(5), &txtrpmlimitHIGHpre, &ComboInputFuncLow(6)});
    const std::array labels{&lblInput1, &lblInput2, &lblInput3};
    for (int i = 0; i < kInputs; ++i) {
        FrameInput(i).Caption = "INPUT " + std::to_string(i + 1) + ", voltage limit";
        stack(FrameInput(i), i * kFrameWidth, kLowerTop, kMargin,
              {&ComboInputCompare(i), &txtInputvolt(i), &ComboInputFuncLow(i), &comboInputFuncHi(i),
               &txtInputFuncVal(i), labels.at(static_cast<std::size_t>(i))});
    }
    placeLaunch(launchControl, 2 * kFrameWidth, 0);
}

std::vector<std::span<const controls::PropertyInfo>> FrmMaps_ign_limiter::propertyTables() const {
    return controls::withTable<Window>(*this, fields::kVerifyProperties<FrmMaps_ign_limiter>);
}

void FrmMaps_ign_limiter::Form_Load() {
    TimerinitialRead.Enabled = true;
}

bool FrmMaps_ign_limiter::Form_Unload() {
    context_.tables.ignWindowOpen = false;
    return true;
}

void FrmMaps_ign_limiter::UpdateReadEE(std::int32_t value, int addr, bool is16) {
    const Stay stay(*this);
    fields_.take(value, addr, is16);
}

// The dispatcher calls it past the window's door.
void FrmMaps_ign_limiter::LoadMisc(bool skipTimer) {
    const Stay stay(*this);
    MiscReply{line_, TimeOutTimer, timeOutCounter, "Getting data from ECU!"}.take(skipTimer, [] {});
}

void FrmMaps_ign_limiter::btnReadData_Click() {
    const fields::PollStop stop(context_.connection.TimerRequestData);
    reader_.run();
}

// The box starts anew with what it was sent.
void FrmMaps_ign_limiter::btnSendSettings_Click() {
    const link::LinkState::Transfer transfer(&context_.connection.linkState);
    const fields::PollStop stop(context_.connection.TimerRequestData);
    if (saver_.run(kSendSettings, "limiter settings")) {
        line_.wait(kRestartPause);
        line_.sendIfOpen(link::shortCommand(link::kRestartDevice));
    }
}

void FrmMaps_ign_limiter::showInputs() {
    int input = kFirstInput;
    for (auto* label : {&lblInput1, &lblInput2, &lblInput3}) {
        const auto& channel = context_.tables.liveValues.at(core::indexOf(core::inputChannel(input++)));
        const double volts = std::floor(channel.raw / kFullScale * kFullVolts * 100) / 100;
        label->Caption = core::numberText(volts).view();
    }
}

}  // namespace korvane::maps
