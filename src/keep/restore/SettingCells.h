// Which cells of the EEPROM are settings.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/ParameterAddresses.h"
#include "keep/point/Snapshot.h"
#include "link/EcuEeprom.h"

namespace korvane::keep {

inline constexpr int kLastSetting = 2998;  // behind it are version and type of the firmware, which are no cells

// Not a cell of a map, and within the EEPROM.
[[nodiscard]] bool isSetting(const core::ParameterAddresses& places, int address);

// What a point knows of the EEPROM. The misc block lies there in nine cells, from the RPM limit on: it fills those of
// them that were not told one by one.
[[nodiscard]] link::EepromCells cellsOf(const core::ParameterAddresses& places, const Snapshot& point);

// Whether this is a cell of the misc block, and the ECU runs on another byte: the block may be sent and not stored.
[[nodiscard]] bool runsOnAnother(const core::ParameterAddresses& places, const std::optional<MiscBytes>& running,
                                 int address, std::uint8_t byte);

struct SettingChange {
    int address = 0;
    std::optional<std::uint8_t> now;  // nothing where the ECU has not told it
    std::uint8_t point = 0;

    friend bool operator==(const SettingChange&, const SettingChange&) = default;
};
// The settings that `wanted` knows and `now` has otherwise, or for which it has no word of the ECU itself; in rising
// order of address.
[[nodiscard]] std::vector<SettingChange> settingChanges(const core::ParameterAddresses& places,
                                                        const link::EepromCells& now, const link::EepromCells& wanted);

}  // namespace korvane::keep
