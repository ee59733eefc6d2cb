#include "maps/boxes/IgnitionBoxControls.h"

#include <array>
#include <string>

namespace korvane::maps {

namespace {

using A = core::ParameterAddresses;
using fields::one;
using fields::SaveStep;

constexpr std::array kLaunchReads{
    one(&A::LAUNCHCONTROL_LO), one(&A::LAUNCHCONTROL_HI),       one(&A::LAUNCH_MODE_OFF),
    one(&A::LAUNCH_DELAY_OFF), one(&A::ACCEL_LIMITER_MODE_OFF), one(&A::ACCEL_LIMITER_VALUE_OFF),
};
constexpr int kReadPause = 150;  // ms, behind each parameter
constexpr int kWritePause = 50;

constexpr std::array<SaveStep, 5> launchWrites(int betweenBytes) {
    return {{
        {.address = &A::LAUNCHCONTROL_LO, .pause = {kWritePause}, .betweenBytes = betweenBytes},
        {&A::LAUNCH_MODE_OFF, {kWritePause}},
        {&A::LAUNCH_DELAY_OFF, {kWritePause}},
        {&A::ACCEL_LIMITER_MODE_OFF, {kWritePause}},
        {&A::ACCEL_LIMITER_VALUE_OFF, {kWritePause}},
    }};
}
constexpr auto kLaunchWrites = launchWrites(0);
constexpr auto kSlowLaunchWrites = launchWrites(50);

}  // namespace

IgnitionBoxControls::IgnitionBoxControls(controls::Window& window, link::ConnectionPanel& line)
    : txtLaunchControlLimit(window, "txtLaunchControlLimit"),
      Combolaunchmode(window, "Combolaunchmode"),
      txtLaunchFixedDelay(window, "txtLaunchFixedDelay"),
      ComboAccellimiter(window, "ComboAccellimiter"),
      txtMaxAccel(window, "txtMaxAccel"),
      Combosensortype(window, "Combosensortype"),
      ear_(line.witnesses, answers),
      opening_(line.MSComm1, [this] { answers.lineOpened(); }) {
    fillList(Combolaunchmode,
             {"Launch -normal", "Launch with delay (analog input)", "Launch with delay (fixed, stored)",
              "Accel limit (time analog input)", "Accel limit (time fixed, stored)", "Accel limit (all time)"});
    fillList(ComboAccellimiter, {"retard ign 15deg 1/3", "retard ign 15deg 3/4", "retard ign 15deg all",
                                 "waste spark 1/3", "waste spark 3/4", "waste spark all"});
    fillList(Combosensortype, {"Falling edge", "Rising edge, Hamlin"});
    txtLaunchControlLimit.setLabel("Launch control rpm limit");
    Combolaunchmode.setLabel("Launch mode");
    txtLaunchFixedDelay.setLabel("Fixed time");
    ComboAccellimiter.setLabel("Accel limiter");
    txtMaxAccel.setLabel("max accel speed");
    Combosensortype.setLabel("Sensor type");
}

std::vector<fields::Field> IgnitionBoxControls::launchFields() {
    return {
        {&A::LAUNCHCONTROL_LO, txtLaunchControlLimit, fields::kTwoBytes},
        {&A::LAUNCH_MODE_OFF, Combolaunchmode},
        {&A::LAUNCH_DELAY_OFF, txtLaunchFixedDelay},
        {&A::ACCEL_LIMITER_MODE_OFF, ComboAccellimiter},
        {&A::ACCEL_LIMITER_VALUE_OFF, txtMaxAccel},
    };
}

ParameterGroupPlan IgnitionBoxControls::launchPlan(BytePause pause) {
    return {{"FrameLaunch", "Launch control"},
            {"btnReadLaunch", "Read Launch"},
            {"btnSaveLaunch", "Save Launch"},
            {kLaunchReads, kReadPause},
            {pause == BytePause::None ? kLaunchWrites : kSlowLaunchWrites}};
}

void IgnitionBoxControls::placeLaunch(ParameterGroup& launchControl, int left, int top) {
    launchControl.place(
        left, top, {&txtLaunchControlLimit, &Combolaunchmode, &txtLaunchFixedDelay, &ComboAccellimiter, &txtMaxAccel});
}

void fillList(controls::ComboBox& list, std::initializer_list<std::string_view> rows) {
    for (const auto row : rows) {
        list.AddItem(std::string(row));
    }
    list.ListIndex = 0;
}

}  // namespace korvane::maps
