#include "core/ParameterAddresses.h"

#include <array>

#include "core/ParameterNames.h"

namespace korvane::core {

namespace {

constexpr int kIgnitionOnlyType = 30;

constexpr std::array kVariables = {
#define KORVANE_VARIABLE(name) ParameterVariable{#name, &ParameterAddresses::name},
    KORVANE_PARAMETERS(KORVANE_VARIABLE)
#undef KORVANE_VARIABLE
};

// The one parameter whose name begins with a blank; its variable's name can't.
constexpr std::string_view kIgnitionOrderName = " IGNORDER_OFF";

std::string_view parameterOf(std::string_view variable) {
    return variable == kIgnitionOrderName.substr(1) ? kIgnitionOrderName : variable;
}

}  // namespace

std::span<const ParameterVariable> parameterVariables() {
    return kVariables;
}

ParameterAddresses parameterAddresses(int swType) {
    ParameterAddresses addresses;
    for (const ParameterVariable& variable : kVariables) {
        addresses.*variable.member = addressOf(parameterOf(variable.name));
    }
    if (swType == kIgnitionOnlyType) {
        addresses.LAUNCHCONTROL_LO = addresses.IDLEPID_SPEED;
        addresses.LAUNCHCONTROL_HI = addresses.IDLEPID_STEP;
    }
    return addresses;
}

}  // namespace korvane::core
