// Tells of edits on the tuner's desk that bytes from the ECU are about to replace.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "core/history/MapStep.h"
#include "core/tables/MapImages.h"
#include "link/EcuMap.h"

namespace korvane::link {

class ReplacedEdits {
public:
    // Both outlive it.
    ReplacedEdits(core::MapImages& tables, const EcuMaps& inEcu) : tables_(tables), inEcu_(inEcu) {}

    // Told once for a row of arrivals: as long as nobody edits in between, what is kept at the first has all that the
    // next ones replace.
    std::function<void()> announce;

    // Called before these bytes take the place of the cells from `first` on. A cell counts as edited when the ECU does
    // not run on it, as far as that is known, and else when it is not as it was received.
    void arriving(core::EditedMap map, std::size_t first, std::span<const std::uint8_t> bytes);

private:
    using Desk = std::array<core::MapImage, core::kWorkingMaps.size()>;

    [[nodiscard]] bool replaces(core::EditedMap map, std::size_t first, std::span<const std::uint8_t> bytes) const;
    [[nodiscard]] Desk desk() const;

    core::MapImages& tables_;
    const EcuMaps& inEcu_;
    std::optional<Desk> announced_;  // with what has arrived since
};

}  // namespace korvane::link
