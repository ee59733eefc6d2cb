#include "core/history/MapHistory.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "core/Checked.h"
#include "platform/RuntimeError.h"

namespace korvane::core {

namespace {

using Kind = Cause::Kind;

constexpr std::int64_t kRepeated = 3000;   // ms from a command to an equal one that is counted with it
constexpr std::int64_t kSameRead = 2000;   // ms between two frames of one read
constexpr std::size_t kStepBytes = 120;    // of a step beside its cells, with what the allocation adds
constexpr std::size_t kEngineSearch = 16;  // steps

std::size_t bytesOf(const MapStep& step) {
    return kStepBytes + step.cells.size() * sizeof(CellChange);
}

std::size_t numberOf(EditedMap map, std::size_t cell) {
    return static_cast<std::size_t>(map) * kMapSize + cell;
}

bool fills(Kind kind) {
    return kind == Kind::Read || kind == Kind::File;
}

// A command that may come many times in a row. A key on a single cell is a step each time.
bool repeats(Kind kind) {
    return kind == Kind::BlockUp || kind == Kind::BlockDown;
}

// Whoever causes these shows them in no window.
bool isShownByNobody(Kind kind) {
    return kind == Kind::RevertCell || kind == Kind::RevertBlock || kind == Kind::Restore || kind == Kind::Copy ||
           kind == Kind::Steady;
}

// All that it does in a row is one step.
bool isRun(Kind kind) {
    return kind == Kind::Agent || kind == Kind::Steady;
}

bool before(const CellChange& one, const CellChange& other) {
    return one.number() < other.number();
}

std::vector<CellPlace> placesOf(const std::bitset<kWorkingCells>& numbers) {
    std::vector<CellPlace> places;
    for (std::size_t number = 0; number < numbers.size(); ++number) {
        if (numbers[number]) {
            places.push_back({static_cast<EditedMap>(number / kMapSize), number % kMapSize});
        }
    }
    return places;
}

// A cell that changed twice: from what it was first to what it is now.
CellChange joined(const CellChange& earlier, const CellChange& later) {
    CellChange both(earlier.place(), earlier.before, later.after);
    if (earlier.reachedEngine() || later.reachedEngine()) {
        both.setReachedEngine();
    }
    return both;
}

CellChange inverse(const CellChange& change) {
    CellChange back(change.place(), change.after, change.before);
    if (change.reachedEngine()) {
        back.setReachedEngine();
    }
    return back;
}

// A cell that is what it was is no change, unless the engine may have another byte.
bool isVoid(const CellChange& change) {
    return change.before == change.after && !change.reachedEngine();
}

}  // namespace

MapHistory::MapHistory(MapImages& tables, const platform::EventPump& pump) : tables_(tables), pump_(pump) {
    for (std::size_t map = 0; map < copy_.size(); ++map) {
        copy_[map] = tables_.*kWorkingMaps[map];
    }
    scratch_.reserve(kWorkingCells);
}

MapHistory::Change::Change(MapHistory* history, const Cause& cause) : history_(history), cause_(cause) {
    if (history_ != nullptr) {
        history_->look();
    }
}

MapHistory::Change::~Change() {
    if (history_ != nullptr) {
        history_->noted(cause_);
    }
}

void MapHistory::noted(const Cause& cause) {
    collect(cause);
    if (scratch_.empty()) {
        return;
    }
    keepUndone();
    auto* const earlier = stepToJoin(cause);
    mayJoin_ = true;
    if (earlier != nullptr) {
        join(*earlier);
        dropVoid(*earlier);
    } else {
        append(cause, scratch_);
    }
    dropOldest();
    tell(cause);
}

void MapHistory::collect(const Cause& cause) {
    scratch_.clear();
    for (std::size_t map = 0; map < copy_.size(); ++map) {
        if (copy_[map] != tables_.*kWorkingMaps[map]) {
            collectMap(static_cast<EditedMap>(map), fills(cause.kind));
        }
    }
    markFilled(cause);
}

void MapHistory::collectMap(EditedMap map, bool fills) {
    auto& copy = copy_[static_cast<std::size_t>(map)];
    const auto& image = workingMap(tables_, map);
    for (std::size_t cell = 0; cell < kMapSize; ++cell) {
        if (copy[cell] == image[cell]) {
            continue;
        }
        const auto number = numberOf(map, cell);
        if (!fills || filled_[number]) {
            scratch_.emplace_back(CellPlace{map, cell}, copy[cell], image[cell]);
        }
        filled_.set(number);
        copy[cell] = image[cell];
    }
}

// A byte that is 0 before and behind a read has been read all the same. So has one of a map that was brought back.
void MapHistory::markFilled(const Cause& cause) {
    if (cause.kind == Kind::Restore) {
        return markRestored();
    }
    if (!fills(cause.kind) && cause.kind != Kind::Copy) {
        return;
    }
    const bool whole = cause.kind == Kind::File;
    const auto first = whole ? 0 : numberOf(cause.map, static_cast<std::size_t>(cause.first));
    const auto last = numberOf(cause.map, whole ? kMapSize - 1 : static_cast<std::size_t>(cause.last));
    for (auto number = first; number <= last; ++number) {
        filled_.set(number);
    }
}

// A restore brings whole maps.
void MapHistory::markRestored() {
    std::bitset<kWorkingMaps.size()> maps;
    for (const auto& change : scratch_) {
        maps.set(static_cast<std::size_t>(change.place().map));
    }
    for (std::size_t number = 0; number < filled_.size(); ++number) {
        filled_[number] = filled_[number] || maps[number / kMapSize];
    }
}

// Undone steps that come to nothing need no undoing.
void MapHistory::keepUndone() {
    const auto undone = steps_.size() - place_;
    const Changes cells = undone > 0 ? undoing() : Changes();
    place_ = steps_.size();
    if (!cells.empty()) {
        auto& step = append({Kind::Undone}, cells);
        step.times = static_cast<std::uint32_t>(undone);
        step.time = walked_;
    }
}

// All that leads from behind the last step back to the place.
MapHistory::Changes MapHistory::undoing() const {
    std::array<std::optional<CellChange>, kWorkingCells> all;
    for (auto number = place_; number < steps_.size(); ++number) {
        for (const auto& change : steps_[number].cells) {
            auto& known = all.at(change.number());
            known = known ? joined(*known, change) : change;
        }
    }
    Changes cells;
    for (const auto& change : all) {
        if (change && !isVoid(*change)) {
            cells.push_back(inverse(*change));
        }
    }
    return cells;
}

MapStep* MapHistory::stepToJoin(const Cause& cause) {
    if (!mayJoin_ || steps_.empty()) {
        return nullptr;
    }
    if (cause.kind == Kind::Read) {
        return readToJoin(cause);
    }
    auto& last = steps_.back();
    const bool again = repeats(cause.kind) && pump_.milliseconds() - last.moment <= kRepeated;
    return last.cause == cause && (again || isRun(cause.kind)) ? &last : nullptr;
}

// The halves and cells of reads of several maps come mixed.
MapStep* MapHistory::readToJoin(const Cause& cause) {
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        if (step->cause.kind != Kind::Read || pump_.milliseconds() - step->moment > kSameRead) {
            return nullptr;
        }
        if (step->cause.map == cause.map) {
            return &*step;
        }
    }
    return nullptr;
}

// Both are sorted.
void MapHistory::join(MapStep& step) {
    bytes_ -= bytesOf(step);
    Changes all;
    all.reserve(step.cells.size() + scratch_.size());
    std::merge(step.cells.begin(), step.cells.end(), scratch_.begin(), scratch_.end(), std::back_inserter(all),
               &before);
    step.cells.clear();
    for (const auto& change : all) {
        const bool again = !step.cells.empty() && step.cells.back().number() == change.number();
        if (again) {
            step.cells.back() = joined(step.cells.back(), change);
        } else {
            step.cells.push_back(change);
        }
    }
    std::erase_if(step.cells, &isVoid);
    step.cells.shrink_to_fit();
    ++step.times;
    stamp(step);
    bytes_ += bytesOf(step);
}

// A step whose cells are all what they were is gone.
void MapHistory::dropVoid(const MapStep& step) {
    if (!step.cells.empty()) {
        return;
    }
    bytes_ -= bytesOf(step);
    steps_.erase(std::find_if(steps_.begin(), steps_.end(), [&](const auto& each) { return &each == &step; }));
    place_ = steps_.size();
    mayJoin_ = false;
}

MapStep& MapHistory::append(const Cause& cause, const Changes& cells) {
    auto& step = steps_.emplace_back();
    step.cause = cause;
    step.cells.assign(cells.begin(), cells.end());
    stamp(step);
    bytes_ += bytesOf(step);
    place_ = steps_.size();
    return step;
}

void MapHistory::stamp(MapStep& step) {
    step.time = pump_.wallTime();
    step.moment = pump_.milliseconds();
}

void MapHistory::dropOldest() {
    while (bytes_ > kMostBytes && steps_.size() > 1) {
        bytes_ -= bytesOf(steps_.front());
        steps_.pop_front();
        --place_;
        ++dropped_;
    }
}

void MapHistory::tell(const Cause& cause) {
    MapSet maps;
    for (const auto& change : scratch_) {
        maps.set(static_cast<std::size_t>(change.place().map));
    }
    changed(this);
    if (isShownByNobody(cause.kind)) {
        tellMaps(maps);
    }
}

void MapHistory::tellMaps(const MapSet& maps) {
    newMaps_ |= maps;
    ++telling_;
    changed(mapsProperty());
    if (--telling_ == 0) {
        newMaps_.reset();
    }
}

// The newest step that changed the cell: events may have run since, and brought other steps.
void MapHistory::reachedEngine(CellPlace place) {
    const CellChange sought(place, 0, 0);
    const auto oldest = place_ - std::min(place_, kEngineSearch);
    for (auto number = place_; number > oldest; --number) {
        auto& cells = steps_[number - 1].cells;
        const auto found = std::lower_bound(cells.begin(), cells.end(), sought, &before);
        if (found != cells.end() && found->number() == sought.number()) {
            found->setReachedEngine();
            return;
        }
    }
}

const MapStep& MapHistory::step(std::size_t number) const {
    return checked(steps_, number - 1);
}

WorkingMaps MapHistory::mapsAt(std::size_t place) const {
    if (place > steps_.size()) {
        platform::raiseSubscript();
    }
    auto maps = copy_;
    const auto set = [&maps](const MapStep& step, std::uint8_t CellChange::*byte) {
        for (const auto& change : step.cells) {
            const auto at = change.place();
            maps.at(static_cast<std::size_t>(at.map)).at(at.cell) = change.*byte;
        }
    };
    for (auto number = place_; number > place; --number) {
        set(steps_[number - 1], &CellChange::before);
    }
    for (auto number = place_; number < place; ++number) {
        set(steps_[number], &CellChange::after);
    }
    return maps;
}

struct MapHistory::Walk {
    MapSet maps;
    std::bitset<kWorkingCells> reached;
};

std::vector<CellPlace> MapHistory::goTo(std::size_t place) {
    look();
    if (place > steps_.size()) {
        platform::raiseSubscript();
    }
    Walk walk;
    for (; place_ > place; --place_) {
        apply(steps_[place_ - 1], &CellChange::before, walk);
    }
    for (; place_ < place; ++place_) {
        apply(steps_[place_], &CellChange::after, walk);
    }
    mayJoin_ = false;
    walked_ = pump_.wallTime();
    changed(this);
    tellMaps(walk.maps);
    return placesOf(walk.reached);
}

void MapHistory::apply(const MapStep& step, std::uint8_t CellChange::*byte, Walk& walk) {
    for (const auto& change : step.cells) {
        const auto place = change.place();
        const auto map = static_cast<std::size_t>(place.map);
        workingMap(tables_, place.map)[place.cell] = change.*byte;
        copy_[map][place.cell] = change.*byte;
        walk.maps.set(map);
        walk.reached[change.number()] = walk.reached[change.number()] || change.reachedEngine();
    }
}

}  // namespace korvane::core
