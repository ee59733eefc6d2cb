#include "settings/OwnFields.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/ParameterNumber.h"

namespace korvane::settings {

namespace {

using core::SharedTables;
using fields::Own;

constexpr int kNibble = 4;

bool bit(const SharedTables& tables, std::int32_t value, int number) {
    return (value & core::checked(tables.BitMask, number)) != 0;
}

// `bit` of a byte, if it is on.
int bitIf(bool on, const SharedTables& tables, int number) {
    return on ? core::checked(tables.BitMask, number) : 0;
}

void showNumber(controls::TextBox& box, double number) {
    box.Text = core::numberText(number).view();
}

// The option of optInj8ms for the injection mode and its multiplier.
int longestInjection(const SharedTables& tables, std::int32_t multiplier) {
    const double mode = core::parameterNumber(tables, tables.addresses.INJ_MODE_OFFSET);
    if (mode == 1) {
        return 3;
    }
    if (mode == 4) {
        return 0;
    }
    return mode == 2 && multiplier == 3 ? 2 : 1;
}

}  // namespace

Own flags(MiscControls& window, const SharedTables& tables) {
    auto& boxes = window.chkMisc2;
    const auto show = [&](std::int32_t value) {
        for (int i = 0; i < boxes.count(); ++i) {
            boxes(i).Value = bit(tables, value, i) ? 1 : 0;
        }
    };
    const auto stored = [&] {
        int byte = 0;
        for (int i = 0; i < boxes.count(); ++i) {
            byte |= bitIf(boxes(i).Value == 1, tables, i);
        }
        return core::toByte(byte);
    };
    return {show, stored};
}

Own pwmMode(MiscControls& window, const SharedTables& tables) {
    const auto show = [&](std::int32_t value) {
        for (int i = 0; i < kNibble; ++i) {
            window.OptionPWM1(i).Value = bit(tables, value, i);
            window.OptionPWM2(i).Value = bit(tables, value, i + kNibble);
        }
    };
    const auto stored = [&] {
        int byte = 0;
        for (int i = 0; i < kNibble; ++i) {
            byte |= bitIf(window.OptionPWM1(i).Value, tables, i);
            byte |= bitIf(window.OptionPWM2(i).Value, tables, i + kNibble);
        }
        return core::toByte(byte);
    };
    return {show, stored};
}

Own loadMode(MiscControls& window) {
    auto& options = window.optLoadMode;
    return {[&](std::int32_t value) { options(value == 0 ? 0 : 1).Value = true; },
            [&] { return options(0).Value ? 0 : 1; }};
}

Own lambdaType(MiscControls& window) {
    const auto show = [&](std::int32_t value) {
        window.LambdaType = value;
        window.optLambdaType(value != 0 ? 0 : 1).Value = true;
    };
    return {show, [&] { return window.optLambdaType(0).Value ? 1 : 0; }};
}

Own ignitionEdge(MiscControls& window) {
    auto& box = window.txtIgnEdge;
    return {[&](std::int32_t value) { showNumber(box, value); }, [&] { return core::val(box.Text.get()) == 1 ? 1 : 0; },
            &box};
}

Own injectionMode(MiscControls& window) {
    auto& box = window.txtInjMode;
    const auto stored = [&] {
        const double mode = core::val(box.Text.get());
        return mode == 1 ? 1 : mode == 4 ? 4 : 2;
    };
    return {[&](std::int32_t value) { showNumber(box, value); }, stored, &box};
}

Own shownMultiplier(MiscControls& window, const SharedTables& tables) {
    const auto show = [&](std::int32_t value) {
        showNumber(window.txtInjMultiplier, value);
        window.optInj8ms(longestInjection(tables, value)).Value = true;
    };
    return {show, {}, &window.txtInjMultiplier};
}

Own shownSetpointLow(MiscControls& window) {
    auto& box = window.txtIdleValveSetpoint;
    return {[&](std::int32_t value) { showNumber(box, value); }, {}, &box};
}

Own shownSetpointHigh(MiscControls& window) {
    auto& box = window.txtIdleValveSetpoint;
    const auto show = [&](std::int32_t value) {
        showNumber(box, core::val(box.Text.get()) + double{fields::kByteValues} * value);
    };
    return {show, {}, &box};
}

}  // namespace korvane::settings
