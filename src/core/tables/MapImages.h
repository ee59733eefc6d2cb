// The ECU's maps: In as last received, Out as edited.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <tuple>

#include "core/tables/Members.h"

namespace korvane::core {

inline constexpr std::size_t kMapSize = 320;  // cells of the large maps; the others use the first 160

using MapImage = std::array<std::uint8_t, kMapSize>;

struct MapImages {
    MapImage FuelMapIn{};
    MapImage FuelMapOut{};
    MapImage IgnMapIn{};
    MapImage IgnMapOut{};
    MapImage PwmMapIn{};
    MapImage PwmMapOut{};
    std::array<std::uint8_t, 10> MiscBlock{};  // indices 1 to 9 are used

    // Acknowledged halves of a map write: 1 for the first, 10 for the second.
    std::int16_t FuelSendAcks = 0;
    std::int16_t IgnSendAcks = 0;

    std::int32_t InjOff_type = 0;  // not 0: the injection offset counts in map counts
    std::int32_t Inj8ms_mode = 0;
    float OldInjectorSize = 450.0F;  // ccm per minute
    float NewInjectorSize = 550.0F;
};

template <>
inline constexpr auto kMembers<MapImages> = std::tuple{Member{"FuelMapIn", &MapImages::FuelMapIn},
                                                       Member{"FuelMapOut", &MapImages::FuelMapOut},
                                                       Member{"IgnMapIn", &MapImages::IgnMapIn},
                                                       Member{"IgnMapOut", &MapImages::IgnMapOut},
                                                       Member{"PwmMapIn", &MapImages::PwmMapIn},
                                                       Member{"PwmMapOut", &MapImages::PwmMapOut},
                                                       Member{"MiscBlock", &MapImages::MiscBlock},
                                                       Member{"FuelSendAcks", &MapImages::FuelSendAcks},
                                                       Member{"IgnSendAcks", &MapImages::IgnSendAcks},
                                                       Member{"InjOff_type", &MapImages::InjOff_type},
                                                       Member{"Inj8ms_mode", &MapImages::Inj8ms_mode},
                                                       Member{"OldInjectorSize", &MapImages::OldInjectorSize},
                                                       Member{"NewInjectorSize", &MapImages::NewInjectorSize}};

}  // namespace korvane::core
