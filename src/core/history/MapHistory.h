// The history of the working maps: every change of a cell, to be taken back and done again.
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "controls/Object.h"
#include "core/history/MapStep.h"
#include "core/tables/MapImages.h"
#include "platform/EventPump.h"

namespace korvane::core {

// One history for all three maps, as long as the program runs. It has a copy of the maps and finds changes by comparing
// with it, so that none is lost: what nobody has noted becomes a step of its own at the next look.
//
// The first bytes that a cell gets from a read or a file are no step: behind an undo of that the map would be one that
// nobody has made. Observers are told of each change of the history.
//
// No step is ever lost but for want of room. A change behind an undo leaves the undone steps where they are; the undo
// follows them as a step of its own, and then the change: whoever undoes further comes back to what was undone.
class MapHistory : public controls::Object {
public:
    // A history of `tables`, with the clock of `pump`.
    MapHistory(MapImages& tables, const platform::EventPump& pump);

    // Code that changes the maps: what it changes while the object exists is of this cause. No events may run in it. A
    // null pointer means that nobody keeps a history.
    class Change {
    public:
        Change(MapHistory* history, const Cause& cause);
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change();

    private:
        MapHistory* history_;
        Cause cause_;
    };
    // Code that takes the maps byte by byte while events run, as a send does: as long as the object exists nobody may
    // walk, nor bring in other maps. A null pointer means that nobody keeps a history.
    class Hold {
    public:
        explicit Hold(MapHistory* history) : history_(history) { count(1); }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold() { count(-1); }

    private:
        void count(int change) {
            if (history_ != nullptr) {
                history_->holds_ += change;
            }
        }
        MapHistory* history_;
    };
    [[nodiscard]] bool isHeld() const { return holds_ > 0; }
    // What whoever refuses to change the maps meanwhile says.
    static constexpr auto kHeldText = "Not while a map is being sent";
    // What has changed since the last look is of this cause. For who has changed the maps without a Change.
    void noted(const Cause& cause);
    void look() { noted({}); }
    // The engine got what the maps have of this cell, by a "Realtime change".
    void reachedEngine(CellPlace place);
    // The agent begins a run: what it does from now on is a step apart from its last run.
    void agentBegins() { mayJoin_ = false; }

    [[nodiscard]] std::size_t count() const { return steps_.size(); }
    // How many steps are in force. Those behind are undone; with the next change their undoing becomes a step.
    [[nodiscard]] std::size_t place() const { return place_; }
    // Steps count from 1, the oldest; RuntimeError 9 for another number.
    [[nodiscard]] const MapStep& step(std::size_t number) const;
    // How many of the oldest steps were dropped for want of room.
    [[nodiscard]] std::size_t dropped() const { return dropped_; }

    // The maps with so many steps in force, as far as the history has been told of their changes; RuntimeError 9 if
    // there are fewer.
    [[nodiscard]] WorkingMaps mapsAt(std::size_t place) const;
    // Undoes or does again until so many steps are in force; RuntimeError 9 if there are fewer. Returns the cells with
    // which these steps had reached the engine.
    std::vector<CellPlace> goTo(std::size_t place);

    // Observers are told with it when a walk, or a change that is shown by no window itself, has changed the maps: each
    // open window draws those for which isNew() is true.
    [[nodiscard]] const void* mapsProperty() const { return &newMaps_; }
    [[nodiscard]] bool isNew(EditedMap map) const { return newMaps_[static_cast<std::size_t>(map)]; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

    // Bytes that all steps may take; the oldest are dropped beyond. Ten thousand steps of all cells of all maps fit.
    static constexpr std::size_t kMostBytes = 44'000'000;

private:
    using Changes = std::vector<CellChange>;
    using MapSet = std::bitset<kWorkingMaps.size()>;

    // Takes what differs from the copy into it and into scratch_.
    void collect(const Cause& cause);
    void collectMap(EditedMap map, bool fills);
    void markFilled(const Cause& cause);
    void markRestored();
    void keepUndone();
    [[nodiscard]] Changes undoing() const;
    [[nodiscard]] MapStep* stepToJoin(const Cause& cause);
    [[nodiscard]] MapStep* readToJoin(const Cause& cause);
    void join(MapStep& step);
    void dropVoid(const MapStep& step);
    MapStep& append(const Cause& cause, const Changes& cells);
    void dropOldest();
    void stamp(MapStep& step);
    void tell(const Cause& cause);
    void tellMaps(const MapSet& maps);
    struct Walk;
    void apply(const MapStep& step, std::uint8_t CellChange::*byte, Walk& walk);

    MapImages& tables_;
    const platform::EventPump& pump_;
    WorkingMaps copy_;
    std::bitset<kWorkingCells> filled_;  // cells that have had a byte from anywhere
    std::deque<MapStep> steps_;
    std::size_t place_ = 0;
    std::size_t bytes_ = 0;
    std::size_t dropped_ = 0;
    int holds_ = 0;
    platform::WallTime walked_;  // when the last walk was
    bool mayJoin_ = false;       // the newest step was the last thing that happened
    Changes scratch_;
    MapSet newMaps_;
    int telling_ = 0;  // observers may let events run, which walk further
};

}  // namespace korvane::core
