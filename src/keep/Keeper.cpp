#include "keep/Keeper.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/TimeText.h"
#include "core/tables/Module1.h"
#include "keep/point/NewestKnown.h"
#include "keep/point/Overwriting.h"
#include "link/Frames.h"
#include "platform/DebugLog.h"
#include "platform/EventPump.h"

namespace korvane::keep {

namespace {

constexpr std::string_view kFolder = "restore";
constexpr std::size_t kMostShown = 100;  // points

bool isFresh(const link::EcuMap& map, std::size_t first, std::size_t end) {
    for (std::size_t cell = first; cell < end; ++cell) {
        if (!map.isFresh(cell)) {
            return false;
        }
    }
    return true;
}

std::array<controls::Object*, 5> observedOf(link::ConnectionPanel& connection) {
    auto& maps = connection.ecuMaps;
    return {&maps.fuel, &maps.ignition, &maps.pwm, &connection.ecuMisc, &connection.MSComm1};
}

std::string whenAndWhy(const Snapshot& point) {
    return core::dateText(point.time) + ' ' + core::timeText(point.time) + " (" + point.reason + ')';
}

}  // namespace

Keeper::Keeper(const Surroundings& surroundings)
    : in_(surroundings), store_(surroundings.machine.folder / kFolder, surroundings.machine.toDisk) {
    auto& connection = in_.connection;
    connection.witnesses.add(*this);
    for (auto* known : observedOf(connection)) {
        known->addObserver(*this);
    }
}

Keeper::~Keeper() {
    auto& connection = in_.connection;
    connection.witnesses.remove(*this);
    for (auto* known : observedOf(connection)) {
        known->removeObserver(*this);
    }
}

// Told before a frame acts: the identity is in the tables when the next one comes.
void Keeper::frameHeard(std::uint8_t code, std::span<const std::uint8_t>) {
    look();
    identityHeard_ = identityHeard_ || (code == link::kIdentityFrame && in_.connection.MSComm1.PortOpen());
}

void Keeper::propertyChanged(controls::Object& object, const void* property) {
    const auto& port = in_.connection.MSComm1;
    if (&object != &port) {
        look();
    } else if (property == port.portOpenProperty() && !port.PortOpen()) {
        keepWhatIsNew("disconnect");
    }
}

void Keeper::begin() {
    opening_ = in_.connection.openings;
    identityHeard_ = false;
    mapsKept_ = false;
    settingsKept_ = false;
    last_.reset();
    added_.clear();
    notice().say({}, {});
}

void Keeper::look() {
    if (opening_ != in_.connection.openings) {
        begin();
    }
    if (identityHeard_ && !mapsKept_ && in_.connection.MSComm1.PortOpen() && mapsAreRead()) {
        mapsKept_ = true;
        keepRead("maps read");
    }
}

bool Keeper::mapsAreRead() const {
    const auto& maps = in_.connection.ecuMaps;
    const auto swType = in_.tables.SWType;
    const std::size_t size = core::hasLargeMaps(swType) ? core::kMapSize : link::EcuMap::kHalf;
    return !core::limitsOnly(swType) && in_.connection.ecuMisc.bytes() && isFresh(maps.ignition, 0, size) &&
           (core::ignitesOnly(swType) ||
            (isFresh(maps.fuel, 0, size) && isFresh(maps.pwm, link::EcuMaps::kFirstKeptPwm, link::EcuMap::kHalf)));
}

void Keeper::settingsRead() {
    look();
    if (!settingsKept_ && in_.connection.MSComm1.PortOpen() && hasSettings()) {
        settingsKept_ = true;
        keepRead("settings read");
    }
}

bool Keeper::hasSettings() const {
    const auto& cells = in_.connection.ecuEeprom.cells();
    return std::any_of(cells.begin(), cells.end(), [](const auto& cell) { return cell.known == link::Known::Told; });
}

// Nothing is kept of an ECU that has not told its type, or nothing that a point has. The end of the program closes the
// port: the folder is looked through once for both.
void Keeper::keepWhatIsNew(std::string_view reason) {
    auto known = now();
    known.time = {};
    if (identityHeard_ && shares(known, known) && known != last_) {
        last_ = std::move(known);
        keepUnlessKnown(reason);
    }
}

// Compared first: the new point is not what the ECU may differ from.
void Keeper::keepRead(std::string_view reason) {
    compare();
    keepUnlessKnown(reason);
}

void Keeper::beforeStore(std::string_view what) {
    look();
    keepUnlessKnown(std::string("before: ").append(what));
}

// An older point may have what this connection has not read, or not since the ECU has restarted.
void Keeper::beforeOverwriting(std::string_view what, const core::Overwritten& overwritten) {
    const auto known = knownOf(overwritten, now());
    if (known == HowMuch::All) {
        return;
    }
    std::string older;
    eachPoint([&](const Found& point) {
        if (knownOf(overwritten, point.content) == HowMuch::All) {
            older = whenAndWhy(point.content);
        }
        return older.empty();
    });
    notice().overwrites(overwritten.part, overwritingText(overwritten, what, known, older));
}

// The history has them too, but only until the program ends.
void Keeper::beforeReplacing(std::string_view what) {
    look();
    const auto known = now();
    if (!identityHeard_ || !hasEdits(known)) {
        return;
    }
    keepDesk(std::string("before: ").append(what));
}

void Keeper::keepDesk(std::string_view reason) {
    if (auto point = newest(); point && coversDesk(point->content, now())) {
        desk_ = std::move(*point);
    } else {
        add(reason, {});
    }
}

std::string Keeper::keepUndone(const Snapshot& undone) {
    const auto point = newest();
    return point && coversDesk(point->content, undone) ? std::string() : write(undone).failure;
}

bool Keeper::hasDesk(const Snapshot& known) const {
    std::error_code error;
    return !desk_.name.empty() && coversDesk(desk_.content, known) &&
           std::filesystem::exists(store_.folder() / desk_.name, error);
}

void Keeper::keepUnlessKnown(std::string_view reason) {
    if (const auto point = newest(); !point || !covers(point->content, now())) {
        add(reason, {});
    }
}

std::string Keeper::addByHand(std::string_view note) {
    look();
    return add("by hand", note);
}

std::string Keeper::add(std::string_view reason, std::string_view note) {
    auto point = now();
    point.reason = reason;
    auto [name, failure] = write(point);
    if (!name.empty()) {
        failure = note.empty() ? std::string() : setNote(name, note);
        desk_ = {std::move(name), std::move(point)};
    }
    return failure;
}

PointStore::Added Keeper::write(const Snapshot& point) {
    auto added = store_.add(point);
    if (!added.name.empty()) {
        added_.insert(added.name);
    }
    const std::string text = added.failure.empty() ? std::string() : added.failure + " (" + point.reason + ')';
    notice().cannotKeep(link::Kept::Points, text);
    if (!text.empty() && text != failure_) {
        in_.machine.log.write(text);
    }
    failure_ = text;
    pointsChanged();
    return added;
}

std::optional<Keeper::Found> Keeper::newest() const {
    std::optional<Found> found;
    eachPoint([&](Found point) {
        found = std::move(point);
        return false;
    });
    return found;
}

void Keeper::eachPoint(const std::function<bool(Found point)>& wants) const {
    const EcuIdentity ecu = now().ecu;
    std::size_t shown = 0;
    for (auto& name : store_.names()) {
        auto point = store_.mayBeOf(name, ecu) ? store_.load(name) : Decoded<Snapshot>();
        if (!point.content || !isSameEcu(point.content->ecu, ecu)) {
            continue;
        }
        if (!wants({std::move(name), std::move(*point.content)}) || ++shown == kMostShown) {
            return;
        }
    }
}

// Of each thing the newest point counts that knows it: one that was made before a send may know a map and no setting.
void Keeper::compare() {
    const auto known = now();
    NewestKnown told;
    std::string text;
    std::string name;
    eachPoint([&](Found point) {
        if (added_.contains(point.name)) {
            return true;
        }
        told.takeOut(point.content);
        if (const auto difference = changesSince(point.content, known); difference.total() > 0) {
            text += (text.empty() ? "The ECU differs from restore point " : "; from restore point ") +
                    whenAndWhy(point.content) + ": " + wordsOf(difference);
            name = name.empty() ? point.name : name;
        }
        return !told.hasAll(known);
    });
    notice().say(text, name);
}

const std::vector<PointEntry>& Keeper::points() {
    if (!points_) {
        read_ = store_.lastChange();
        points_ = store_.list();
    }
    return *points_;
}

void Keeper::refresh() {
    pointsChanged();
}

void Keeper::follow() {
    if (points_ && read_ != store_.lastChange()) {
        refresh();
    }
}

void Keeper::pointsChanged() {
    points_.reset();
    changed(pointsProperty());
}

std::string Keeper::remove(const std::string& name) {
    auto failure = store_.remove(name);
    pointsChanged();
    return failure;
}

std::string Keeper::setNote(const std::string& name, std::string_view text) {
    auto failure = store_.setNote(name, text);
    pointsChanged();
    return failure;
}

std::string Keeper::differsText(const std::string& name) const {
    const auto point = store_.load(name);
    if (!point.content) {
        return {};
    }
    const auto known = now();
    if (!isSameEcu(point.content->ecu, known.ecu)) {
        return "other ECU";
    }
    return shares(*point.content, known) ? std::to_string(differenceOf(*point.content, known).total()) : "unknown";
}

Snapshot Keeper::now() const {
    return snapshotOf(in_.tables, in_.connection, in_.connection.ecuMisc.bytes(), in_.machine.pump.wallTime());
}

}  // namespace korvane::keep
