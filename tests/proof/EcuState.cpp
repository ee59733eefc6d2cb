#include "EcuState.h"

#include <algorithm>
#include <cstddef>

namespace korvane::proof {

namespace {

using Cells = std::array<std::uint8_t, ecu::kEepromCells>;

Outcome storedOutcome(const Cells& before, const Cells& wanted, const CellSet& written, const Cells& now) {
    if (now == wanted) {
        return Outcome::New;
    }
    if (now == before) {
        return Outcome::Old;
    }
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (!written[i] && now[i] != before[i]) {
            return Outcome::Elsewhere;
        }
    }
    return Outcome::Mixed;
}

}  // namespace

EcuState stateOf(const ecu::VirtualEcu& ecu) {
    EcuState state;
    std::ranges::copy(ecu.eeprom(), state.stored.begin());
    state.working = {ecu.workingMap(ecu::MapKind::Fuel), ecu.workingMap(ecu::MapKind::Ignition),
                     ecu.workingMap(ecu::MapKind::Pwm), ecu.miscBlock()};
    state.afterRestart = {
        ecu.storedMap(ecu::MapKind::Fuel), ecu.storedMap(ecu::MapKind::Ignition), ecu.storedMap(ecu::MapKind::Pwm), {}};
    std::copy_n(ecu.eeprom().begin() + ecu::kMiscAddress, ecu::kMiscBytes, state.afterRestart.misc.begin());
    return state;
}

std::string_view nameOf(Outcome outcome) {
    constexpr std::array<std::string_view, kOutcomes> kNames = {"old", "new", "not stored", "mixed", "elsewhere"};
    return kNames.at(static_cast<std::size_t>(outcome));
}

Outcome outcomeOf(const EcuState& before, const EcuState& wanted, const CellSet& written, const EcuState& now) {
    const Outcome stored = storedOutcome(before.stored, wanted.stored, written, now.stored);
    if (stored != Outcome::Old && stored != Outcome::New) {
        return stored;
    }
    const auto& expected = stored == Outcome::Old ? before.working : wanted.working;
    return now.working == expected || now.working == now.afterRestart ? stored : Outcome::NotStored;
}

}  // namespace korvane::proof
