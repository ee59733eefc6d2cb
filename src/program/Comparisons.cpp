#include "program/Comparisons.h"

#include <array>
#include <memory>

#include "core/Checked.h"
#include "core/TimeText.h"
#include "core/files/TextFile.h"
#include "core/history/MapHistory.h"
#include "keep/compare/FrmCompare.h"
#include "maps/grid/MapImages.h"
#include "maps/history/MapUndo.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

namespace korvane::program {

namespace {

constexpr std::array kMaps{&maps::kFuelImages, &maps::kIgnitionImages, &maps::kPwmImages};

// "2026-01-05 12:00:00, before fuel map"
std::string wordsOf(const keep::PointEntry& entry) {
    if (!entry.damage.empty()) {
        return entry.name + ": " + entry.damage;
    }
    return core::dateText(entry.time) + ' ' + core::timeText(entry.time) + ", " + entry.reason +
           (entry.note.empty() ? "" : " (" + entry.note + ')');
}

}  // namespace

Comparisons::Comparisons(platform::Machine& machine, const maps::MapContext& maps, settings::FrmMisc& frmMisc,
                         MapWindows& mapWindows)
    : machine_(machine),
      maps_(maps),
      context_{.tables = maps.tables,
               .frmMisc = frmMisc,
               .now = [this] { return now(); },
               .before = [this] { return before(); },
               .injectionOffset = [&mapWindows] { return mapWindows.injectionOffset(); },
               .points = {},
               .point = {},
               .copy = [this](std::size_t map, int first, int last,
                              const keep::CompareContext::Change& change) { return copy(map, first, last, change); }},
      shelf_(machine.pump) {
    context_.miscOfBoxes = [&mapWindows] { return mapWindows.miscOfBoxes(); };
    if (maps.undo != nullptr) {
        context_.walkBy = [&maps](int keyCode, int shift) { return maps.undo->walkBy(keyCode, shift, nullptr); };
    }
}

void Comparisons::usePoints(const keep::PointStore& points) {
    context_.points = [&points] {
        std::vector<keep::PointName> names;
        for (const auto& entry : points.list()) {
            names.push_back({entry.name, wordsOf(entry)});
        }
        return names;
    };
    context_.point = [&points](const std::string& name) {
        const auto point = points.load(name);
        if (!point.content) {
            throw platform::RuntimeError(core::kErrorFileNotFound, "The restore point can't be read: " + point.damage);
        }
        return *point.content;
    };
}

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
    return keep::snapshotOf(maps_.tables, maps_.connection, maps_.connection.ecuMisc.bytes(), machine_.pump.wallTime());
}

// The cells of the EEPROM are forgotten by a connect, so that only the number of connects tells of earlier ones.
keep::ReadBefore Comparisons::before() const {
    const auto& ecu = maps_.connection.ecuMaps;
    return {.maps = ecu.fuel.wasTold() || ecu.ignition.wasTold() || ecu.pwm.wasTold(),
            .settings = maps_.connection.openings > 1};
}

std::string Comparisons::copy(std::size_t map, int first, int last, const keep::CompareContext::Change& change) {
    using core::Cause;
    if (maps_.history != nullptr && maps_.history->isHeld()) {
        return core::MapHistory::kHeldText;
    }
    if (first != last) {
        maps_.announceReplacing("map copied");
    }
    const auto& images = *core::checked(kMaps, map);
    const core::MapHistory::Change step(
        maps_.history, Cause::cells(Cause::Kind::Copy, images.inHistory, static_cast<std::size_t>(first),
                                    static_cast<std::size_t>(last)));
    change(maps_.tables.*images.edited);
    return {};
}

}  // namespace korvane::program
