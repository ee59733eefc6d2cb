#include "program/Comparisons.h"

#include <array>
#include <memory>

#include "core/Checked.h"
#include "keep/compare/FrmCompare.h"
#include "maps/grid/MapImages.h"
#include "platform/EventPump.h"

namespace korvane::program {

namespace {

constexpr std::array kMaps{&maps::kFuelImages, &maps::kIgnitionImages, &maps::kPwmImages};

}  // namespace

Comparisons::Comparisons(platform::Machine& machine, const maps::MapContext& maps, settings::FrmMisc& frmMisc,
                         MapWindows& mapWindows)
    : machine_(machine),
      maps_(maps),
      context_{.tables = maps.tables,
               .frmMisc = frmMisc,
               .now = [this] { return now(); },
               .injectionOffset = [&mapWindows] { return mapWindows.injectionOffset(); },
               .points = {},
               .point = {},
               .copy = [this](std::size_t map, int first, int last,
                              const keep::CompareContext::Change& change) { copy(map, first, last, change); }},
      shelf_(machine.pump) {}

void Comparisons::open() {
    shelf_.one<keep::FrmCompare>([this] { return std::make_unique<keep::FrmCompare>(machine_, context_); }).show();
}

void Comparisons::open(const keep::Source& left, const keep::Source& right) {
    auto& window =
        shelf_.one<keep::FrmCompare>([this] { return std::make_unique<keep::FrmCompare>(machine_, context_); });
    window.compare(left, right);
    window.show();
}

keep::Snapshot Comparisons::now() const {
    return keep::snapshotOf(maps_.tables, maps_.connection, {}, machine_.pump.wallTime());
}

void Comparisons::copy(std::size_t map, int, int, const keep::CompareContext::Change& change) {
    change(maps_.tables.*core::checked(kMaps, map)->edited);
}

}  // namespace korvane::program
