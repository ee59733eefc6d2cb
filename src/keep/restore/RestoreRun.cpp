#include "keep/restore/RestoreRun.h"

#include <algorithm>
#include <array>
#include <utility>

#include "controls/PropertyTable.h"
#include "core/TimeText.h"
#include "link/Frames.h"

namespace korvane::keep {

namespace {

constexpr auto kNothing = "Nothing to restore: the ECU has these settings.";

template <auto Member>
controls::Value valueOf(const controls::Object& object) {
    return controls::detail::toValue((dynamic_cast<const RestoreRun&>(object).*Member).get());
}

constexpr std::array kProperties{
    controls::readOnlyProperty<&valueOf<&RestoreRun::Text>>("text"),
    controls::readOnlyProperty<&valueOf<&RestoreRun::Offer>>("offer"),
    controls::readOnlyProperty<&valueOf<&RestoreRun::Running>>("running"),
    controls::readOnlyProperty<&valueOf<&RestoreRun::Done>>("done"),
    controls::readOnlyProperty<&valueOf<&RestoreRun::Total>>("total"),
};

std::string offerText(const RestoreJournal& journal) {
    const bool goesBack = journal.goal == RestoreJournal::Goal::Before;
    const auto& time = journal.pointTime;
    return std::string(goesBack ? "Going back from" : "A restore of") + " the point of " + core::dateText(time) + ' ' +
           core::timeText(time) + (journal.pointReason.empty() ? "" : " (" + journal.pointReason + ")") +
           " was not completed: " + std::to_string(journal.written) + " of " + std::to_string(journal.cells.size()) +
           " settings written.";
}

std::string damageText(const std::string& damage) {
    return "A restore was not completed, and its journal can't be used: " + damage +
           ". A restore point from before it has the old settings.";
}

std::string wordsOf(RestoreJournal::Goal side) {
    return side == RestoreJournal::Goal::Before ? "before it" : "the point has them";
}

std::string wholeText(RestoreJournal::Goal side) {
    return " The ECU on the line has all of them as " + wordsOf(side) + ": it may be another one of this kind.";
}

// 'y': features, version, and in most firmware the type.
EcuKind kindIn(std::span<const std::uint8_t> payload, int lastType) {
    return {payload.size() >= 5 ? payload[4] : lastType, payload[2] * 256 + payload[3], payload[0] * 256 + payload[1]};
}

constexpr auto kEndFirst = " \"Go on\", \"Go back\" or \"Leave it so\" ends it first.";
constexpr auto kPressAgain = " Pressed again, \"Go on\" and \"Go back\" write over ";

}  // namespace

RestoreRun::RestoreRun(const Surroundings& surroundings, std::filesystem::path folder)
    : in_(surroundings), file_(folder, surroundings.machine.toDisk), store_(std::move(folder)) {
    in_.connection.witnesses.add(*this);
    in_.connection.MSComm1.addObserver(*this);
    in_.connection.ecuEeprom.addObserver(*this);
}

RestoreRun::~RestoreRun() {
    in_.connection.ecuEeprom.removeObserver(*this);
    in_.connection.MSComm1.removeObserver(*this);
    in_.connection.witnesses.remove(*this);
}

std::string RestoreRun::refusalNow() const {
    if (Running) {
        return "A restore is running.";
    }
    if (!in_.connection.MSComm1.PortOpen()) {
        return "The port is closed.";
    }
    if (!ecu_) {
        return "The ECU has not told its type yet.";
    }
    return in_.connection.linkState.isBusy() ? "Another transfer is running." : "";
}

std::string RestoreRun::refusal(const Snapshot& point) const {
    const auto why = refusalNow();
    if (!why.empty() || point.ecu.swType == ecu_->type) {
        return why;
    }
    return "The restore point is of an ECU of type " + std::to_string(point.ecu.swType) + ", this one has type " +
           std::to_string(ecu_->type) + ".";
}

std::vector<SettingChange> RestoreRun::changes(const Snapshot& point) const {
    const auto& places = in_.tables.addresses;
    const auto wanted = cellsOf(places, point);
    auto now = in_.connection.ecuEeprom.cells();
    for (int address = 0; address <= kLastSetting; ++address) {
        const auto at = static_cast<std::size_t>(address);
        if (runsOnAnother(places, in_.connection.ecuMisc.bytes(), address, wanted.at(at).byte)) {
            now.at(at).known = link::Known::No;
        }
    }
    return settingChanges(places, now, wanted);
}

bool RestoreRun::restore(const Snapshot& point, const std::string& pointName) {
    if (const auto why = refusal(point); !why.empty()) {
        if (!Running) {
            Text = why;
        }
        return false;
    }
    auto found = file_.load(*ecu_);
    if (!found.damage.empty()) {
        Text = damageText(found.damage) + " \"Leave it so\" ends it first.";
        look();
        return false;
    }
    RestoreTask task{.journal = {}, .earlier = std::move(found.journal)};
    auto& journal = task.journal;
    journal.ecu = *ecu_;
    journal.pointName = pointName;
    journal.pointTime = point.time;
    journal.pointReason = point.reason;
    for (const auto& change : changes(point)) {
        journal.cells.push_back({change.address, 0, change.point});
    }
    takeOver(point, task);
    if (journal.cells.empty()) {
        Text = kNothing;
        return true;
    }
    return run(std::move(task));
}

void RestoreRun::takeOver(const Snapshot& point, RestoreTask& task) const {
    if (!task.earlier) {
        return;
    }
    auto& cells = task.journal.cells;
    const auto wanted = cellsOf(in_.tables.addresses, point);
    for (const auto& cell : task.earlier->cells) {
        if (std::any_of(cells.begin(), cells.end(), [&](const auto& each) { return each.address == cell.address; })) {
            continue;
        }
        const auto& [byte, known] = wanted.at(static_cast<std::size_t>(cell.address));
        cells.push_back({cell.address, 0, byte});
        if (known == link::Known::No) {
            task.stays.insert(cell.address);
        }
    }
    std::sort(cells.begin(), cells.end(),
              [](const auto& one, const auto& other) { return one.address < other.address; });
}

bool RestoreRun::goOn() {
    return interrupted_ && resume(interrupted_->goal);
}

bool RestoreRun::goBack() {
    return interrupted_ && resume(interrupted_->goal == RestoreJournal::Goal::Point ? RestoreJournal::Goal::Before
                                                                                    : RestoreJournal::Goal::Point);
}

bool RestoreRun::resume(RestoreJournal::Goal goal) {
    if (const auto why = refusalNow(); !why.empty()) {
        if (!Running) {
            Text = why;
        }
        return false;
    }
    RestoreTask task{.journal = *interrupted_, .isNew = false};
    task.journal.goal = goal;
    task.overwritten = strange_;
    if (const auto point = store_.load(task.journal.pointName); point.content) {
        task.known = cellsOf(in_.tables.addresses, *point.content);
    }
    return run(std::move(task));
}

bool RestoreRun::run(RestoreTask task) {
    const bool isNew = task.isNew;
    // What a run in another connection has left open is not known.
    task.left = left_.value_or(Leftovers{.bytes = {}, .inFlight = {}, .missed = !isNew});
    stopped_ = false;
    offer("");
    interrupted_.reset();
    Done = 0;
    Total = static_cast<int>(task.journal.cells.size());
    Running = true;
    const link::QuietLine quiet(in_.connection);
    link::ReadBack line(in_.machine.pump, in_.connection);
    line.unwanted = [this] { return stopped_ || !in_.connection.window.isLoaded(); };
    RestoreWork work(in_, file_, line);
    work.progress = [this](std::string text, int done, int total) {
        Text = std::move(text);
        Done = done;
        Total = total;
    };
    auto outcome = work.run(std::move(task));
    Running = false;
    isLeft_ = isLeft_ || outcome.wrote;
    const bool refuses = !outcome.strange.empty();
    if (refuses) {
        outcome.text += isNew ? kEndFirst : std::string(kPressAgain) + (outcome.strange.size() == 1 ? "it." : "them.");
    } else {
        left_ = std::move(outcome.left);
    }
    strange_ = isNew ? FoundBytes() : std::move(outcome.strange);
    Text = std::move(outcome.text);
    look();
    return outcome.agrees;
}

void RestoreRun::stop() {
    stopped_ = true;
}

void RestoreRun::forget() {
    if (ecu_ && !Running) {
        file_.remove(*ecu_);
        look();
    }
}

void RestoreRun::look() {
    auto found = ecu_ ? file_.load(*ecu_) : JournalFound();
    interrupted_ = std::move(found.journal);
    offer(interrupted_ ? offerText(*interrupted_) : found.damage.empty() ? "" : damageText(found.damage));
}

void RestoreRun::offer(const std::string& text) {
    Offer = text;
    in_.connection.keepNotice.offer(text, interrupted_ ? interrupted_->pointName : std::string());
}

void RestoreRun::endWhenDone() {
    if (!interrupted_ || Running) {
        return;
    }
    const auto& told = in_.connection.ecuEeprom.cells();
    isLeft_ = isLeft_ || isAsLeft(*interrupted_, told);
    const auto side = sideOf(*interrupted_, told);
    if (!side || !isLeft_) {
        offer(offerText(*interrupted_) + (side ? wholeText(*side) : std::string()));
        return;
    }
    Text = "The restore that was not completed has ended: the ECU has all its settings as " + wordsOf(*side) + '.';
    file_.remove(interrupted_->ecu);
    interrupted_.reset();
    offer("");
}

void RestoreRun::frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) {
    if (code != link::kIdentityFrame || payload.size() < 4) {
        return;
    }
    ecu_ = kindIn(payload, in_.tables.SWType);
    if (!Running) {
        look();
    }
}

void RestoreRun::propertyChanged(controls::Object& object, const void* property) {
    if (&object == static_cast<controls::Object*>(&in_.connection.ecuEeprom)) {
        endWhenDone();
        return;
    }
    if (property != in_.connection.MSComm1.portOpenProperty()) {
        return;
    }
    ecu_.reset();
    strange_.clear();
    left_.reset();
    isLeft_ = false;
    if (!Running) {
        look();
    }
}

std::vector<std::span<const controls::PropertyInfo>> RestoreRun::propertyTables() const {
    return {kProperties};
}

}  // namespace korvane::keep
