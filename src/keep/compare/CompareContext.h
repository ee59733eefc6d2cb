// What comparisons work with.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/tables/SharedTables.h"
#include "keep/compare/Side.h"
#include "keep/point/Snapshot.h"
#include "settings/FrmMisc.h"

namespace korvane::keep {

struct PointName {
    std::string name;   // by which it is loaded
    std::string words;  // for the user

    friend bool operator==(const PointName&, const PointName&) = default;
};

// All of it outlives the windows.
struct CompareContext {
    core::SharedTables& tables;
    settings::FrmMisc& frmMisc;
    // What is known of the ECU now.
    std::function<Snapshot()> now;
    // What was known of it before.
    std::function<ReadBefore()> before = [] { return ReadBefore(); };
    // What the box of the misc block says, by which the fuel map is shown.
    std::function<double()> injectionOffset;
    // The restore points, the newest first.
    std::function<std::vector<PointName>()> points;
    // RuntimeError, with a sentence for the user, for one that can't be read.
    std::function<Snapshot(const std::string& name)> point;
    // Changes cells of a working map (0 fuel, 1 ignition, 2 PWM) by `change`, as one step that can be undone, and has
    // it drawn. Says why it has not.
    using Change = std::function<void(core::MapImage& desk)>;
    std::function<std::string(std::size_t map, int first, int last, const Change& change)> copy;
    // The keys of undo and redo: what came of it in words, nothing for another key.
    std::function<std::optional<std::string>(int keyCode, int shift)> walkBy = {};
    // The misc block that the boxes of the map window have, if they have one.
    std::function<std::optional<MiscBytes>()> miscOfBoxes = {};
    // The map that the steady agent proposed last, nothing before it has.
    std::function<std::optional<Side>()> proposal = {};
};

}  // namespace korvane::keep
