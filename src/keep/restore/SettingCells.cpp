#include "keep/restore/SettingCells.h"

#include "link/EcuMap.h"

namespace korvane::keep {

bool isSetting(const core::ParameterAddresses& places, int address) {
    return address >= 0 && address <= kLastSetting && !link::mapCellAt(places, address);
}

link::EepromCells cellsOf(const core::ParameterAddresses& places, const Snapshot& point) {
    auto cells = point.eeprom;
    int address = places.RPM_LIMIT_LOW_OFF;
    for (const auto byte : point.misc.value_or(MiscBytes{})) {
        if (point.misc && isSetting(places, address)) {
            auto& cell = cells.at(static_cast<std::size_t>(address));
            cell = cell.known == link::Known::No ? link::EepromCell{byte, link::Known::Told} : cell;
        }
        ++address;
    }
    return cells;
}

bool runsOnAnother(const core::ParameterAddresses& places, const std::optional<MiscBytes>& running, int address,
                   std::uint8_t byte) {
    const int index = address - places.RPM_LIMIT_LOW_OFF;
    return running && index >= 0 && index < static_cast<int>(running->size()) &&
           running->at(static_cast<std::size_t>(index)) != byte;
}

std::vector<SettingChange> settingChanges(const core::ParameterAddresses& places, const link::EepromCells& now,
                                          const link::EepromCells& wanted) {
    std::vector<SettingChange> changes;
    for (int address = 0; address <= kLastSetting; ++address) {
        const auto& cell = wanted.at(static_cast<std::size_t>(address));
        const auto& here = now.at(static_cast<std::size_t>(address));
        const bool told = here.known == link::Known::Told;
        if (cell.known != link::Known::No && !(told && here.byte == cell.byte) && isSetting(places, address)) {
            changes.push_back({address, told ? std::optional(here.byte) : std::nullopt, cell.byte});
        }
    }
    return changes;
}

}  // namespace korvane::keep
