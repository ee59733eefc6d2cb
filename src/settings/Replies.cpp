#include "settings/Replies.h"

#include <algorithm>
#include <array>
#include <variant>
#include <vector>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/ParameterNumber.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::settings {

namespace {

using A = core::ParameterAddresses;
using C = MiscControls;
using core::checked;

constexpr int kBlockPause = 300;  // ms, before and behind the settings block
// Blocks that arrive inside the pause of another one pause as well; a line that sends nothing else must not pile them
// up.
constexpr int kNestedPauses = 3;
constexpr int kByteValues = 256;
constexpr int kNibble = 4;
constexpr double kVoltScale = 2.0;

// How a value is shown, where it takes no handler of its own.
using Text = controls::TextBox C::*;
using Texts = controls::ControlArray<controls::TextBox> C::*;
using Caption = controls::Label C::*;
struct Scaled {
    controls::TextBox C::*box;
};
struct Doubled {
    controls::TextBox C::*box;
};
// The two bytes of the image that begin at the row's first address.
struct Word {
    controls::TextBox C::*box;
};
struct AccelCells {};

template <class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

// The addresses from `first` on, `cells` of them, and what shows their values.
struct Replies::Row {
    using Handler = void (Replies::*)(std::int32_t value);

    int A::*first;
    std::variant<Text, Texts, Caption, Scaled, Doubled, Word, AccelCells, Handler> target;
    int cells = 1;
};

std::span<const Replies::Row> Replies::rows() {
    static constexpr std::array kRows{
        Row{&A::CHARGE_TIME_OFF, Scaled{&C::txtchargetime}},
        Row{&A::VOLT_OFF, &Replies::showVolt},
        Row{&A::MISC2_OFF, &Replies::showFlags},
        Row{&A::ACCEL_OFF, AccelCells{}, 10},
        Row{&A::RYYPPY_OFF, Scaled{&C::txtRyyppy}},
        Row{&A::START_HELP_OFF, Scaled{&C::txtStart}},
        Row{&A::STARTHELP_LEN_OFF_8, &C::txtStartHelpLen},
        Row{&A::RYYPPY_END, &C::txtChokeEnd},
        Row{&A::MINTHR_OFF, &C::lblMINTHR},
        Row{&A::MAXTHR_OFF, &C::lblMAXTHR},
        Row{&A::MAPOFFSET_OFF, &C::txtLoadOffset},
        Row{&A::MAPGAIN_OFF, &C::txtLoadGain},
        Row{&A::LOAD_MODE, &Replies::showLoadMode},
        Row{&A::BOOSTPID_SETPOINT, &C::txtBoostTav, 16},
        Row{&A::MOTORBRAKE_LOW, Word{&C::txtMotorBrakeLow}, 2},
        Row{&A::MOTORBRAKE_HIGH, Word{&C::txtMotorBrakeHigh}, 2},
        Row{&A::LAUNCHCONTROL_LO, Word{&C::txtLaunchcontrol}, 2},
        Row{&A::LAUNCH_MODE_OFF, &Replies::showLaunchMode},
        Row{&A::IGN_EDGE_OFFSET, &C::txtIgnEdge},
        Row{&A::INJ_MODE_OFFSET, &C::txtInjMode},
        Row{&A::INJ_MULTIPLIER_OFF, &Replies::showMultiplier},
        Row{&A::PWM_MODE, &Replies::showPwmMode},
        Row{&A::NTC1_OFF, &C::txtNTC1},
        Row{&A::NTC2_OFF, &C::txtNTC2},
        Row{&A::WBO2_MODE_OFF, &Replies::showLambdaType},
        Row{&A::INJADV_OFF0, &C::txtInjAdv, 16},
        Row{&A::IDLEMAP_OFF, &C::txtInjIdleMap, 16},
        Row{&A::IDLE_ADV0, &C::txtIdleAdv, 5},
        Row{&A::ALS_ADV_OFF, Scaled{&C::txtALS_ign_retard}},
        Row{&A::ALS_FUEL_OFF, Scaled{&C::txtALS_fuel}},
        Row{&A::LAUNCH_DELAY_OFF, &C::txtlaunchdelay},
        Row{&A::FLATSHIFT_STARTDELAY_OFF, &C::txtflatshiftstartdelay},
        Row{&A::FLATSHIFT_STOPDELAY_OFF, &C::txtflatshiftstopdelay},
        Row{&A::ACCEL_DELAY_OFF, &C::txtAccelDelay},
        Row{&A::ACCEL_LIMITER_MODE_OFF, &C::txtAccelLimiterMode},
        Row{&A::ACCEL_LIMITER_VALUE_OFF, &C::txtAccelLimiterValue},
        Row{&A::IDLEPID_MAX, &C::txtIdleValveMax},
        Row{&A::IDLEPID_MIN, &C::txtIdleValveMin},
        Row{&A::IDLEPID_SETPOINT_LO, &C::txtIdleValveSetpoint},
        Row{&A::IDLEPID_SETPOINT_HI, &Replies::addSetpointHigh},
        Row{&A::OIL_WARNING_OFF, &C::txtOilWarning},
        Row{&A::AIR_WARNING_OFF, &C::txtAirWarning},
        Row{&A::WATER_WARNING_OFF, &C::txtWaterWarning},
        Row{&A::TEMP4_WARNING_OFF, &C::txtTemp4Warning},
        Row{&A::VOLT1_WARNING_OFF, Doubled{&C::txtVolt1Warning}},
        Row{&A::VOLT2_WARNING_OFF, Doubled{&C::txtVolt2Warning}},
        Row{&A::VOLT3_WARNING_OFF, Doubled{&C::txtVolt3Warning}},
        Row{&A::VOLT4_WARNING_OFF, Doubled{&C::txtVolt4Warning}},
        Row{&A::RPMLIMIT_COLD_LOW_OFF, &C::txtColdRPMlimit},
        Row{&A::NTC3_OFF, &C::txtNTC3},
        Row{&A::NTC4_OFF, &C::txtNTC4},
        Row{&A::NTC_MULTIPLIER_OFF, &C::txtNTCMultiplier},
        Row{&A::BOOST_IGNCUT_OFF, &C::txtBoostIgnCut},
    };
    return kRows;
}

void Replies::UpdateReadEE(std::int32_t value, int addr, bool is16) {
    keepImage(value, addr, is16);
    const auto& addresses = context_.tables.addresses;
    const auto holds = [&](const Row& row) {
        return addr >= addresses.*row.first && addr < addresses.*row.first + row.cells;
    };
    const auto all = rows();
    if (const auto row = std::find_if(all.begin(), all.end(), holds); row != all.end()) {
        dispatch(*row, value, addr - addresses.*row->first);
    } else {
        context_.window.TextArvo.Text = core::numberText(value).view();
    }
}

// A settings file hands over words as it does bytes; such a word leaves the image alone unless it fits one byte.
void Replies::keepImage(std::int32_t value, int addr, bool is16) {
    auto& tables = context_.tables;
    auto& cell = checked(tables.EEImage, addr);
    if (!is16 && !checked(tables.EEParams, addr).is16bit) {
        cell = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) & 0xFFU);
    } else if (value < kByteValues) {
        cell = core::toByte(value);
    }
}

void Replies::dispatch(const Row& row, std::int32_t value, int cell) {
    auto& window = context_.window;
    const auto text = core::numberText(value);
    std::visit(Overloaded{
                   [&](Text box) { (window.*box).Text = text.view(); },
                   [&](Texts boxes) { (window.*boxes)(cell).Text = text.view(); },
                   [&](Caption label) { (window.*label).Caption = text.view(); },
                   [&](Scaled scaled) { scaled_.show(window.*scaled.box, value); },
                   [&](Doubled doubled) { (window.*doubled.box).Text = core::numberText(value * kVoltScale).view(); },
                   [&](Word word) { showWord(window.*word.box, context_.tables.addresses.*row.first); },
                   [&](AccelCells) { scaled_.showAccel(cell, value); },
                   [&](Row::Handler handler) { (this->*handler)(value); },
               },
               row.target);
}

void Replies::showWord(controls::TextBox& box, int addr) {
    const auto& image = context_.tables.EEImage;
    box.Text = core::numberText(checked(image, addr) + kByteValues * checked(image, addr + 1)).view();
}

bool Replies::bit(std::int32_t value, int number) const {
    return (value & checked(context_.tables.BitMask, number)) != 0;
}

void Replies::showVolt(std::int32_t value) {
    scaled_.show(context_.window.txtVolt(0), value);
}

void Replies::showFlags(std::int32_t value) {
    for (int i = 0; i < context_.window.chkMisc2.count(); ++i) {
        context_.window.chkMisc2(i).Value = bit(value, i) ? 1 : 0;
    }
}

void Replies::showLoadMode(std::int32_t value) {
    context_.window.optLoadMode(value == 0 ? 0 : 1).Value = true;
}

void Replies::showLaunchMode(std::int32_t value) {
    context_.window.Combolaunchmode.choose(value);
}

void Replies::showMultiplier(std::int32_t value) {
    auto& window = context_.window;
    window.txtInjMultiplier.Text = core::numberText(value).view();
    window.optInj8ms(longestInjection(value)).Value = true;
}

int Replies::longestInjection(std::int32_t multiplier) const {
    const double mode = core::parameterNumber(context_.tables, context_.tables.addresses.INJ_MODE_OFFSET);
    if (mode == 1) {
        return 3;
    }
    if (mode == 4) {
        return 0;
    }
    return mode == 2 && multiplier == 3 ? 2 : 1;
}

void Replies::showPwmMode(std::int32_t value) {
    auto& window = context_.window;
    for (int i = 0; i < kNibble; ++i) {
        window.OptionPWM1(i).Value = bit(value, i);
        window.OptionPWM2(i).Value = bit(value, i + kNibble);
    }
}

void Replies::showLambdaType(std::int32_t value) {
    context_.window.LambdaType = value;
    context_.window.optLambdaType(value != 0 ? 0 : 1).Value = true;
}

// The low byte is there already: the full read asks for it first.
void Replies::addSetpointHigh(std::int32_t value) {
    auto& box = context_.window.txtIdleValveSetpoint;
    box.Text = core::numberText(core::val(box.Text.get()) + double{kByteValues} * value).view();
}

void Replies::LoadMisc2(std::span<const std::uint8_t> payload, bool& handled) {
    // The pauses let more frames in, for which the line has but one buffer.
    const std::vector<std::uint8_t> block(payload.begin(), payload.end());
    auto& window = context_.window;
    window.TimeOutCount = 0;
    context_.connection.TimerRequestData.Enabled = false;
    pause();
    showBlock(block);
    window.TimeOutTimer.Enabled = false;
    window.TimeOutCount = 0;
    pause();
    context_.connection.TimerRequestData.Enabled = true;
    handled = true;
}

void Replies::showBlock(std::span<const std::uint8_t> payload) {
    auto& window = context_.window;
    for (int i = 0; i < window.txtAccel.count(); ++i) {
        scaled_.showAccel(i, checked(payload, i));
    }
    scaled_.show(window.txtStart, checked(payload, 10));
    scaled_.show(window.txtRyyppy, checked(payload, 11));
    for (int i = 0; i < window.txtVolt.count(); ++i) {
        scaled_.show(window.txtVolt(i), checked(payload, 12 + i));
    }
    scaled_.show(window.txtchargetime, checked(payload, 16));
    context_.tables.ThrottleMin = checked(payload, 17);
    window.lblMINTHR.Caption = core::numberText(context_.tables.ThrottleMin).view();
    context_.tables.ThrottleMax = checked(payload, 18);
    window.lblMAXTHR.Caption = core::numberText(context_.tables.ThrottleMax).view();
}

void Replies::pause() {
    if (pauses_ < kNestedPauses) {
        ++pauses_;
        context_.window.machine().pump.wait(kBlockPause);
        --pauses_;
    }
}

void Replies::MarkAccelCell(int index) {
    auto& cells = context_.window.txtAccel;
    if (index < 0 || index >= cells.count() || index == markedCell_) {
        return;
    }
    if (markedCell_ >= 0) {
        cells(markedCell_).BackColor = controls::kWhite;
    }
    cells(index).BackColor = controls::kRed;
    markedCell_ = index;
}

}  // namespace korvane::settings
