// A window for tests, with the settings of a limiter box, and what is read and written for it.
#pragma once

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/EepromAccess.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "fields/Fields.h"
#include "fields/Reader.h"
#include "fields/Saver.h"
#include "link/ConnectionPanel.h"
#include "support/MachineBench.h"
#include "support/PropertyWatch.h"

namespace korvane::fields {

using A = core::ParameterAddresses;

struct LimiterControls : controls::Window {
    explicit LimiterControls(platform::Machine& machine) : Window(machine, "limiter") {
        for (auto* list : {&Combolaunchmode, &ComboAccellimiter}) {
            addRows(*list, 6);
        }
        addRows(Combosensortype, 2);
        for (auto* lists : {&ComboInputFuncLow, &comboInputFuncHi}) {
            for (auto& list : *lists) {
                addRows(list, 7);
            }
        }
    }

    static void addRows(controls::ComboBox& list, int count) {
        for (int i = 0; i < count; ++i) {
            list.AddItem("row " + std::to_string(i));
        }
        list.ListIndex = 0;
    }

    controls::TextBox txtSigPerRev{*this, "txtSigPerRev"};
    controls::TextBox txtCylCount{*this, "txtCylCount"};
    controls::ComboBox Combosensortype{*this, "Combosensortype"};
    controls::TextBox txtrpmlimitLOW{*this, "txtrpmlimitLOW"};
    controls::TextBox txtrpmlimitLOWpre{*this, "txtrpmlimitLOWpre"};
    controls::TextBox txtrpmlimitHIGH{*this, "txtrpmlimitHIGH"};
    controls::TextBox txtrpmlimitHIGHpre{*this, "txtrpmlimitHIGHpre"};
    controls::ControlArray<controls::TextBox> txtInputvolt{*this, "txtInputvolt", 3};
    // 0 to 2 of the inputs, 3 to 6 of the limits.
    controls::ControlArray<controls::ComboBox> ComboInputFuncLow{*this, "ComboInputFuncLow", 7};
    controls::ControlArray<controls::ComboBox> comboInputFuncHi{*this, "comboInputFuncHi", 3};
    controls::ControlArray<controls::TextBox> txtInputFuncVal{*this, "txtInputFuncVal", 3};
    controls::TextBox txtLaunchControlLimit{*this, "txtLaunchControlLimit"};
    controls::ComboBox Combolaunchmode{*this, "Combolaunchmode"};
    controls::TextBox txtLaunchFixedDelay{*this, "txtLaunchFixedDelay"};
    controls::ComboBox ComboAccellimiter{*this, "ComboAccellimiter"};
    controls::TextBox txtMaxAccel{*this, "txtMaxAccel"};
};

inline std::vector<Field> limiterFields(LimiterControls& w) {
    constexpr Codec kVolts{Width::Word, 0.02};
    constexpr Stepping kVoltKeys{250, &controls::Control::ToolTipText};
    const auto functions = [&](int i) { return Lists{w.ComboInputFuncLow(i), w.comboInputFuncHi(i)}; };
    return {
        {&A::DEG_COUNT_FOR_RPM_OFF, w.txtSigPerRev, kWord},
        {&A::CYL_COUNT_OFF, w.txtCylCount, kWord},
        {&A::IGN_EDGE_OFFSET, w.Combosensortype},
        {&A::LAUNCH_LIMIT_OFF, w.txtrpmlimitLOW, kWord},
        {&A::LAUNCH_LIMIT_PRE_OFF, w.txtrpmlimitLOWpre, kWord},
        {&A::RPM_LIMIT_OFF, w.txtrpmlimitHIGH, kWord},
        {&A::RPM_LIMIT_PRE_OFF, w.txtrpmlimitHIGHpre, kWord},
        {&A::INPUT5_LIMIT_FUNC_OFF, w.ComboInputFuncLow(3)},
        {&A::INPUT6_LIMIT_FUNC_OFF, w.ComboInputFuncLow(4)},
        {&A::INPUT7_LIMIT_FUNC_OFF, w.ComboInputFuncLow(5)},
        {&A::INPUT8_LIMIT_FUNC_OFF, w.ComboInputFuncLow(6)},
        {&A::INPUT1_LIMIT_OFF, w.txtInputvolt(0), kVolts, kVoltKeys},
        {&A::INPUT2_LIMIT_OFF, w.txtInputvolt(1), kVolts, kVoltKeys},
        {&A::INPUT3_LIMIT_OFF, w.txtInputvolt(2), kVolts, kVoltKeys},
        {&A::INPUT1_LIMIT_FUNC_OFF, functions(0), kTwoBytes},
        {&A::INPUT2_LIMIT_FUNC_OFF, functions(1), kTwoBytes},
        {&A::INPUT3_LIMIT_FUNC_OFF, functions(2), kTwoBytes},
        {&A::INPUT1_LIMIT_F_VAL_OFF, w.txtInputFuncVal(0), kWord},
        {&A::INPUT2_LIMIT_F_VAL_OFF, w.txtInputFuncVal(1), kWord},
        {&A::INPUT3_LIMIT_F_VAL_OFF, w.txtInputFuncVal(2), kWord},
        {&A::LAUNCHCONTROL_LO, w.txtLaunchControlLimit, kTwoBytes},
        {&A::LAUNCH_MODE_OFF, w.Combolaunchmode},
        {&A::LAUNCH_DELAY_OFF, w.txtLaunchFixedDelay},
        {&A::ACCEL_LIMITER_MODE_OFF, w.ComboAccellimiter},
        {&A::ACCEL_LIMITER_VALUE_OFF, w.txtMaxAccel},
    };
}

inline constexpr std::array kReadSteps{
    word(&A::DEG_COUNT_FOR_RPM_OFF, 5),   word(&A::CYL_COUNT_OFF, 10),          one(&A::IGN_EDGE_OFFSET, 12),
    one(&A::LAUNCH_MODE_OFF, 15),         word(&A::LAUNCH_LIMIT_OFF, 20),       word(&A::LAUNCH_LIMIT_PRE_OFF, 25),
    word(&A::RPM_LIMIT_OFF, 30),          word(&A::RPM_LIMIT_PRE_OFF, 35),      word(&A::INPUT5_LIMIT_FUNC_OFF, 36),
    word(&A::INPUT6_LIMIT_FUNC_OFF, 37),  word(&A::INPUT7_LIMIT_FUNC_OFF, 38),  word(&A::INPUT8_LIMIT_FUNC_OFF, 39),
    word(&A::INPUT1_LIMIT_OFF, 40),       word(&A::INPUT2_LIMIT_OFF, 45),       word(&A::INPUT3_LIMIT_OFF, 50),
    word(&A::INPUT1_LIMIT_FUNC_OFF, 55),  word(&A::INPUT2_LIMIT_FUNC_OFF, 60),  word(&A::INPUT3_LIMIT_FUNC_OFF, 65),
    word(&A::INPUT1_LIMIT_F_VAL_OFF, 70), word(&A::INPUT2_LIMIT_F_VAL_OFF, 80), word(&A::INPUT3_LIMIT_F_VAL_OFF, 100),
};
inline constexpr ReadPlan kReadData{
    kReadSteps,
    150,
    {"Receiving data from target device!:  Loading.. ", "Receiving data from target device!:  Received 100%"}};

inline constexpr Pause k150{150};
inline constexpr std::array kSendSteps{
    SaveStep{&A::DEG_COUNT_FOR_RPM_OFF, k150, {5}},   SaveStep{&A::CYL_COUNT_OFF, k150, {10}},
    SaveStep{&A::IGN_EDGE_OFFSET, k150, {15}},        SaveStep{&A::RPM_LIMIT_OFF, k150, {20}},
    SaveStep{&A::RPM_LIMIT_PRE_OFF, k150, {25}},      SaveStep{&A::LAUNCH_LIMIT_OFF, k150, {30}},
    SaveStep{&A::LAUNCH_LIMIT_PRE_OFF, k150, {35}},   SaveStep{&A::INPUT1_LIMIT_OFF, k150, {40}},
    SaveStep{&A::INPUT1_LIMIT_FUNC_OFF, k150, {45}},  SaveStep{&A::INPUT1_LIMIT_F_VAL_OFF, k150, {50}},
    SaveStep{&A::INPUT2_LIMIT_OFF, k150, {55}},       SaveStep{&A::INPUT2_LIMIT_FUNC_OFF, k150, {60}},
    SaveStep{&A::INPUT2_LIMIT_F_VAL_OFF, k150, {65}}, SaveStep{&A::INPUT3_LIMIT_OFF, k150, {70}},
    SaveStep{&A::INPUT3_LIMIT_FUNC_OFF, k150, {75}},  SaveStep{&A::INPUT3_LIMIT_F_VAL_OFF, k150, {76}},
    SaveStep{&A::INPUT5_LIMIT_FUNC_OFF, k150, {77}},  SaveStep{&A::INPUT6_LIMIT_FUNC_OFF, k150, {78}},
    SaveStep{&A::INPUT7_LIMIT_FUNC_OFF, k150, {79}},  SaveStep{&A::INPUT8_LIMIT_FUNC_OFF, k150},
};
inline constexpr SavePlan kSendSettings{
    kSendSteps, false, {"Sending data to device: Sending.. ", "Data sent and stored to device."}};

inline constexpr std::array kReadLaunchSteps{
    one(&A::LAUNCHCONTROL_LO), one(&A::LAUNCHCONTROL_HI),       one(&A::LAUNCH_MODE_OFF),
    one(&A::LAUNCH_DELAY_OFF), one(&A::ACCEL_LIMITER_MODE_OFF), one(&A::ACCEL_LIMITER_VALUE_OFF),
};
inline constexpr ReadPlan kReadLaunch{kReadLaunchSteps, 150};

inline constexpr Pause k50{50};
inline constexpr std::array kSaveLaunchSteps{
    SaveStep{&A::LAUNCHCONTROL_LO, k50}, SaveStep{&A::LAUNCH_MODE_OFF, k50}, SaveStep{&A::LAUNCH_DELAY_OFF, k50},
    SaveStep{&A::ACCEL_LIMITER_MODE_OFF, k50}, SaveStep{&A::ACCEL_LIMITER_VALUE_OFF, k50}};
inline constexpr SavePlan kSaveLaunch{kSaveLaunchSteps};

using support::Lines;

// The window is open, and so is the port unless a test closes it. The clock is at 0.
class LimiterBench : public support::NotingBench {
protected:
    LimiterBench() {
        core::InitModule(tables_, virtual_.preferences);
        core::InitTimeUnits(tables_);
        window_.show();
        panel_.MSComm1.Settings = "57600,N,8,1";
        panel_.MSComm1.setPortOpen(true);
        line_.notes.clear();
    }

    int addressOf(Address address) const { return tables_.addresses.*address; }

    core::SharedTables tables_;
    controls::Window main_{machine_, "main"};
    link::ConnectionPanel panel_{main_};
    core::EepromAccess eeprom_{panel_.MSComm1, pump_, tables_};
    LimiterControls window_{machine_};
    Context context_{window_, tables_, eeprom_, panel_.TimerRequestData};
    Fields fields_{tables_, limiterFields(window_)};
    Saver saver_{context_, fields_};
    support::PropertyValues<std::string> captions_{window_, window_.Caption};
};

}  // namespace korvane::fields
