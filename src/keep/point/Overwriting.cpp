#include "keep/point/Overwriting.h"

#include <algorithm>

#include "core/ParameterAddresses.h"
#include "core/tables/Module1.h"

namespace korvane::keep {

namespace {

using Part = core::Overwritten::Part;

HowMuch howMuch(std::ptrdiff_t known, std::size_t all) {
    if (known == static_cast<std::ptrdiff_t>(all)) {
        return HowMuch::All;
    }
    return known == 0 ? HowMuch::Nothing : HowMuch::Some;
}

HowMuch cellsOf(const MapSnapshot& map, std::size_t first, std::size_t end) {
    const auto begin = map.working.begin();
    const auto known = std::count_if(begin + static_cast<std::ptrdiff_t>(first),
                                     begin + static_cast<std::ptrdiff_t>(end), [](const auto& byte) { return !!byte; });
    return howMuch(known, end - first);
}

bool isInside(std::int32_t address) {
    return address >= 0 && address < static_cast<std::int32_t>(core::kEepromSize);
}

HowMuch settingsOf(const std::vector<std::int32_t>& addresses, const Snapshot& point) {
    const auto all = std::count_if(addresses.begin(), addresses.end(), isInside);
    const auto known = std::count_if(addresses.begin(), addresses.end(), [&](auto address) {
        return isInside(address) && point.eeprom.at(static_cast<std::size_t>(address)).known != link::Known::No;
    });
    return howMuch(known, static_cast<std::size_t>(all));
}

HowMuch miscOf(const Snapshot& point) {
    if (point.misc) {
        return HowMuch::All;
    }
    const auto first = core::parameterAddresses(point.ecu.swType).RPM_LIMIT_LOW_OFF;
    std::vector<std::int32_t> addresses;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(MiscBytes().size()); ++i) {
        addresses.push_back(first + i);
    }
    return first < 0 ? HowMuch::Nothing : settingsOf(addresses, point);
}

std::string subjectOf(Part part, std::string_view what, HowMuch known) {
    const std::string read = known == HowMuch::Some ? " was not all read" : " was not read";
    switch (part) {
        case Part::Fuel:
            return "The fuel map of the ECU" + read;
        case Part::Ignition:
            return "The ignition map of the ECU" + read;
        case Part::Pwm:
            return "The PWM table of the ECU" + read;
        case Part::Misc:
            return "The misc block of the ECU" + read;
        case Part::Settings:
        case Part::Other:
            break;
    }
    return "What the ECU had of \"" + std::string(what) + '"' + read;
}

}  // namespace

HowMuch knownOf(const core::Overwritten& overwritten, const Snapshot& point) {
    const std::size_t size = core::hasLargeMaps(point.ecu.swType) ? core::kMapSize : link::EcuMap::kHalf;
    switch (overwritten.part) {
        case Part::Fuel:
            return cellsOf(point.fuel, 0, size);
        case Part::Ignition:
            return cellsOf(point.ignition, 0, size);
        case Part::Pwm:
            return cellsOf(point.pwm, link::EcuMaps::kFirstKeptPwm, link::EcuMap::kHalf);
        case Part::Misc:
            return miscOf(point);
        case Part::Settings:
            return settingsOf(overwritten.addresses, point);
        case Part::Other:
            break;
    }
    return HowMuch::All;
}

std::string overwritingText(const core::Overwritten& overwritten, std::string_view what, HowMuch known,
                            const std::string& older) {
    return subjectOf(overwritten.part, what, known) +
           (older.empty() ? ": no restore point has what was overwritten."
                          : ": the newest restore point that has one is of " + older + '.');
}

}  // namespace korvane::keep
