#include "keep/restore/SettingCells.h"

#include "link/EcuMap.h"

namespace korvane::keep {

bool isSetting(const core::ParameterAddresses& places, int address) {
    return address >= 0 && address <= kLastSetting && !link::mapCellAt(places, address);
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
