#include "analysis/clsSteadyAgent.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/SteadyWords.h"
#include "core/Numbers.h"
#include "core/TimeText.h"
#include "link/Frames.h"
#include "platform/EventPump.h"

namespace korvane::analysis {

namespace {

constexpr int kTick = 100;  // ms
constexpr platform::Micros kAskedFor = 10 * platform::kMicrosPerSecond;

std::string counted(std::size_t cells) {
    return std::to_string(cells) + (cells == 1 ? " cell" : " cells");
}

std::string cantBeUsed(const std::string& damage) {
    return "the baseline can't be used: " + damage;
}

}  // namespace

clsSteadyAgent::clsSteadyAgent(const Parts& parts)
    : parts_(parts),
      choices_(parts.machine.preferences),
      sender_(parts.tables, parts.connection, parts.history, parts.machine.pump),
      log_(parts.machine),
      timer_(parts.machine.pump, parts.machine.log) {
    timer_.Interval = kTick;
    timer_.TimerElapsed = [this] { tick(); };
    sender_.refused = [this] { agent_.sendRefused(); };
    parts_.connection.witnesses.add(*this);
    choices_.addObserver(*this);
}

clsSteadyAgent::~clsSteadyAgent() {
    choices_.removeObserver(*this);
    parts_.connection.witnesses.remove(*this);
}

bool clsSteadyAgent::runs() const {
    return agent_.state() != steady::State::Off && agent_.state() != steady::State::Stopped;
}

std::string clsSteadyAgent::state() const {
    using steady::State;
    const bool refused = agent_.state() == State::Off && !reason_.empty();
    const bool onItsWay = agent_.state() == State::Stopped && !sender_.isEmpty();
    const auto shown = refused ? State::Stopped : onItsWay ? State::PuttingBack : agent_.state();
    return std::string(steady::wordsOf(shown)) +
           (shown == State::PuttingBack && sender_.isHeldUp() ? ": waits until the ECU answers" : "");
}

std::string clsSteadyAgent::whyStopped() const {
    return reason_.empty() ? std::string(steady::wordsOf(agent_.stopReason())) : reason_;
}

std::optional<std::uint8_t> clsSteadyAgent::baselineOf(std::size_t cell) const {
    return baseline_ && cell < baseline_->cells.size() ? std::optional(baseline_->cells[cell]) : std::nullopt;
}

steady::CellReport clsSteadyAgent::cell(std::size_t index) const {
    return index < agent_.setup().grid.cells() ? agent_.cell(index) : steady::CellReport();
}

std::string clsSteadyAgent::cellWords(int index) const {
    const auto place = static_cast<std::size_t>(std::max(index, 0));
    const auto baseline = baselineOf(place);
    return baseline && agent_.state() != steady::State::Off ? analysis::wordsOf(cell(place), *baseline) : std::string();
}

bool clsSteadyAgent::isWatchedLong() const {
    constexpr double kAfterStart = 20.0;  // seconds
    return seconds_ - watchedFrom_ > kAfterStart;
}

std::string clsSteadyAgent::cellReasons(int cell) const {
    const auto place = static_cast<std::size_t>(std::max(cell, 0));
    return cell >= 0 && place < verdicts_.size() ? reasonsOf(verdicts_.at(place), isWatchedLong()) : std::string();
}

std::string clsSteadyAgent::zoneWords(std::size_t index) const {
    return analysis::wordsOf(agent_.zone(index));
}

std::vector<std::string> clsSteadyAgent::sampleWords() const {
    return samplesOf(agent_, isWatchedLong());
}

maps::BaselineOwner clsSteadyAgent::owner(const maps::MapGeometry& geometry) const {
    const auto& tables = parts_.tables;
    return {.type = tables.SWType,
            .version = static_cast<int>(std::lround(double{tables.HwVersion} * 1000)),
            .columns = geometry.columns,
            .rows = geometry.rows};
}

std::span<const std::uint8_t> clsSteadyAgent::cellsOf(const steady::Grid& grid) const {
    return std::span(parts_.tables.FuelMapOut).first(grid.cells());
}

// What the agent takes for the fuel must be what the engine gets.
std::string clsSteadyAgent::mapRefusal(const maps::MapGeometry& geometry) const {
    const auto& ecu = parts_.connection.ecuMaps.fuel;
    const auto cells = cellsOf(gridOf(geometry));
    std::size_t unsent = 0;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        const auto working = ecu.working(cell);
        if (!working || !ecu.isFresh(cell)) {
            return unread("the fuel map has", parts_.connection);
        }
        unsent += *working != cells[cell] ? 1 : 0;
    }
    return unsent == 0 ? std::string() : counted(unsent) + " of the fuel map not sent to the ECU";
}

std::string clsSteadyAgent::loadBaseline(const maps::MapGeometry& geometry) {
    owner_ = owner(geometry);
    const auto found = baselines_.load ? baselines_.load(owner_) : maps::FoundBaseline();
    if (!found.damage.empty()) {
        return cantBeUsed(found.damage);
    }
    if (found.baseline || baselines_.load) {
        baseline_ = found.baseline;
    }
    if (baseline_ && baseline_->cells.size() != gridOf(geometry).cells()) {
        baseline_.reset();
    }
    return {};
}

std::string clsSteadyAgent::saveBaseline(const maps::MapGeometry& geometry) {
    const auto cells = cellsOf(gridOf(geometry));
    maps::FuelBaseline fresh{
        .owner = owner(geometry), .time = parts_.machine.pump.wallTime(), .cells = {cells.begin(), cells.end()}};
    const auto failure = baselines_.save ? baselines_.save(fresh) : std::string();
    if (!failure.empty()) {
        return "the baseline can't be kept: " + failure;
    }
    owner_ = fresh.owner;
    baseline_ = std::move(fresh);
    return {};
}

std::string clsSteadyAgent::findBaseline(const maps::MapGeometry& geometry) {
    auto failure = loadBaseline(geometry);
    return !failure.empty() || baseline_ ? failure : saveBaseline(geometry);
}

std::string clsSteadyAgent::targetRefusal(const maps::MapGeometry& geometry) const {
    for (std::size_t cell = 0; cell < gridOf(geometry).cells(); ++cell) {
        if (!steady::isTarget(parts_.analyser.Setpointget(static_cast<std::int32_t>(cell)))) {
            return "the target of cell " + std::to_string(cell + 1) + " is not from 10 to 16";
        }
    }
    return {};
}

// Where the map was never the agent's, as another tune's or another car's.
std::size_t clsSteadyAgent::cellsBeyond(const maps::MapGeometry& geometry) const {
    const auto setup = setupFor(geometry, facts_);
    return cellsBeyond(setup, cellsOf(setup.grid), baseline_->cells);
}

std::size_t clsSteadyAgent::cellsBeyond(const steady::SteadySetup& setup, std::span<const std::uint8_t> cells,
                                        std::span<const std::uint8_t> baseline) {
    std::size_t beyond = 0;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        beyond += authorityOf(setup, baseline[cell]).holds(cells[cell]) ? 0 : 1;
    }
    return beyond;
}

std::string clsSteadyAgent::wordsOf(const maps::FuelBaseline& baseline) {
    return "the baseline of " + core::dateText(baseline.time) + ' ' + core::timeText(baseline.time);
}

RehearsalStart clsSteadyAgent::rehearsalStart(const maps::MapGeometry& geometry) const {
    RehearsalStart start;
    const auto found = factsOf(parts_.tables, parts_.connection, geometry);
    start.missing = found.facts ? targetRefusal(geometry) : found.missing;
    if (!start.missing.empty()) {
        return start;
    }
    start.setup = setupFor(geometry, *found.facts);
    start.load = found.facts->load;
    start.geometry = geometry;
    const auto cells = cellsOf(start.setup.grid);
    start.map.assign(cells.begin(), cells.end());
    start.baseline = start.map;
    const auto [kept, damage] = baselines_.load ? baselines_.load(owner(geometry)) : maps::FoundBaseline();
    if (!damage.empty()) {
        start.missing = cantBeUsed(damage);
    } else if (kept && kept->cells.size() == cells.size()) {
        start.baseline = kept->cells;
        const auto beyond = cellsBeyond(start.setup, cells, kept->cells);
        start.missing = beyond == 0 ? std::string() : beyondWords(beyond, *kept);
    }
    return start;
}

std::string clsSteadyAgent::beyondWords(std::size_t cells, const maps::FuelBaseline& baseline) {
    return counted(cells) + " farther from " + wordsOf(baseline) +
           " than the agent may go: take a new baseline, or put back (F8)";
}

std::string clsSteadyAgent::refusal(const maps::MapGeometry& geometry) {
    if (putsBack() || !sender_.isEmpty()) {
        return "cells are still being put back";
    }
    if (!parts_.connection.MSComm1.PortOpen()) {
        return "port closed";
    }
    auto found = factsOf(parts_.tables, parts_.connection, geometry);
    if (!found.facts) {
        return std::move(found.missing);
    }
    facts_ = *found.facts;
    if (facts_.lambdaControl) {
        return std::string(steady::wordsOf(steady::StopReason::LambdaControl));
    }
    for (auto failure : {mapRefusal(geometry), targetRefusal(geometry)}) {
        if (!failure.empty()) {
            return failure;
        }
    }
    if (auto failure = findBaseline(geometry); !failure.empty()) {
        return failure;
    }
    const auto beyond = cellsBeyond(geometry);
    return beyond == 0 ? std::string() : beyondWords(beyond, *baseline_);
}

bool clsSteadyAgent::start(const maps::MapGeometry& geometry, const void* window) {
    stop();
    reason_ = refusal(geometry);
    if (!reason_.empty()) {
        return false;
    }
    window_ = window;
    begin(geometry);
    return true;
}

void clsSteadyAgent::begin(const maps::MapGeometry& geometry) {
    geometry_ = geometry;
    openings_ = parts_.connection.openings;
    last_ = parts_.machine.pump.now();
    paused_ = false;
    log_.begin();
    unsent_.reset();
    verdicts_ = {};
    watchedFrom_ = seconds_;
    errors_.begin("Steady agent", seconds_);
    parts_.history.agentBegins();
    agent_.start(setupFor(geometry, facts_), cellsOf(gridOf(geometry)), seconds_, baseline_->cells);
    timer_.StartTimer();
}

steady::SteadySetup clsSteadyAgent::setupFor(const maps::MapGeometry& geometry, const EngineFacts& facts) const {
    steady::SteadySetup setup;
    setup.grid = gridOf(geometry);
    setup.offsetCounts = facts.offsetCounts;
    setup.highest = facts.highest;
    setup.throttleKnown = facts.throttleKnown;
    setup.lambdaControl = facts.lambdaControl;
    setup.richAuthority = choices_.RichAuthority;
    setup.leanAuthority = choices_.LeanAuthority;
    setup.carry = choices_.Carry;
    for (std::size_t cell = 0; cell < setup.grid.cells(); ++cell) {
        setup.targets.at(cell) = parts_.analyser.Setpointget(static_cast<std::int32_t>(cell));
    }
    for (std::size_t zone = 0; zone < steady::kZones; ++zone) {
        setup.fixedDelayMs.at(zone) = choices_.FixedDelayMs.at(zone);
    }
    return setup;
}

void clsSteadyAgent::stop() {
    if (runs()) {
        agent_.stop();
    }
    window_ = nullptr;
}

void clsSteadyAgent::stopFor(std::string reason) {
    reason_ = std::move(reason);
    agent_.stop();
    log_.stopped(reason_);
}

void clsSteadyAgent::closes(const void* window) {
    if (window_ == window) {
        stop();
    }
}

std::string clsSteadyAgent::putBack(const maps::MapGeometry& geometry) {
    if (!runs()) {
        if (auto failure = loadBaseline(geometry); !failure.empty()) {
            return "Nothing is put back: " + failure;
        }
        if (!baseline_) {
            return "Nothing to put back: no baseline is kept for this ECU";
        }
        if (const auto beyond = cellsBeyond(geometry); beyond > 0 && !isConfirmed()) {
            return counted(beyond) + " farther from " + wordsOf(*baseline_) +
                   " than the agent may go. Once more within ten seconds puts them back";
        }
        begin(geometry);
    }
    reason_.clear();
    parts_.history.agentBegins();
    const auto differing = prepareWayBack();
    agent_.putBack();
    return "Put back to " + wordsOf(*baseline_) + ": " + counted(differing) +
           (parts_.connection.MSComm1.PortOpen() ? "" : ", in the program only: the port is closed");
}

bool clsSteadyAgent::isConfirmed() {
    const auto now = parts_.machine.pump.now();
    const auto asked = std::exchange(asked_, now);
    const bool confirmed = asked && now - *asked <= kAskedFor;
    if (confirmed) {
        asked_.reset();
    }
    return confirmed;
}

// The agent hears of the edits since its last turn. Cells that lost their way to the engine, and those of which nobody
// knows what it has, go out again.
std::size_t clsSteadyAgent::prepareWayBack() {
    const auto cells = cellsOf(agent_.setup().grid);
    std::size_t differing = 0;
    const auto& engine = parts_.connection.ecuMaps.fuel;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        if (cells[cell] != agent_.map()[cell]) {
            agent_.cellEdited(cell, cells[cell]);
        }
        if (cells[cell] != baseline_->cells[cell]) {
            ++differing;
        } else if (!engine.isFresh(cell) || engine.working(cell) != cells[cell]) {
            sender_.add(cell);
        }
    }
    return differing;
}

std::string clsSteadyAgent::newBaseline(const maps::MapGeometry& geometry) {
    if (runs()) {
        return "The baseline stays while the steady agent works";
    }
    const auto failure = saveBaseline(geometry);
    return failure.empty() ? "The baseline is the map as it is now" : "No new baseline: " + failure;
}

// The ECU answers, but behind a lost byte it may take seconds until a frame is found whole again. Without frames
// nothing is learnt or changed.
bool clsSteadyAgent::isGarbled() {
    constexpr auto kFrom = platform::kMicrosPerSecond / 2;
    constexpr auto kLongest = 10 * platform::kMicrosPerSecond;
    const auto& line = parts_.connection.linkState;
    const auto bytes = line.counts().bytes;
    const bool answers = std::exchange(bytes_, bytes) != bytes;
    return answers && line.age() >= kFrom && line.age() < kLongest;
}

// The way back needs no frames.
bool clsSteadyAgent::isPaused() {
    const auto& line = parts_.connection.linkState;
    const bool garbled = isGarbled();
    return line.isBusy() || (!putsBack() && (garbled || line.state() == link::LinkState::State::Paused));
}

// A transfer that somebody has ordered is no late link: however long it takes, it counts as one gap.
double clsSteadyAgent::advance() {
    constexpr double kGap = 1.0;  // seconds
    const auto now = parts_.machine.pump.now();
    const double passed = static_cast<double>(now - last_) / platform::kMicrosPerSecond;
    const double counted = std::exchange(paused_, false) ? std::min(passed, kGap) : passed;
    seconds_ += counted;
    agent_.rested(passed - counted);
    last_ = now;
    return seconds_;
}

std::string clsSteadyAgent::reasonToStop() const {
    const auto& connection = parts_.connection;
    if (!connection.MSComm1.PortOpen() || connection.openings != openings_) {
        return "port closed";
    }
    if (owner(geometry_) != owner_) {
        return "another ECU";
    }
    if (parts_.analyser.AgentEnable()) {
        return "the tuning agent was switched on";
    }
    const auto found = factsOf(parts_.tables, connection, geometry_);
    if (found.facts && !found.facts->calibratedAs(facts_)) {
        return "the calibration of load, throttle or lambda was changed";
    }
    return found.facts == facts_ ? std::string() : "settings of the injection or of the load were changed";
}

bool clsSteadyAgent::ecuCorrects() const {
    const auto found = factsOf(parts_.tables, parts_.connection, geometry_);
    return found.facts && found.facts->lambdaControl;
}

bool clsSteadyAgent::stopsNow() {
    if (putsBack()) {
        return false;
    }
    if (parts_.connection.MSComm1.PortOpen() && ecuCorrects()) {
        agent_.lambdaControlBegan();
        return false;
    }
    auto reason = reasonToStop();
    if (reason.empty()) {
        return false;
    }
    stopFor(std::move(reason));
    return true;
}

void clsSteadyAgent::tick() {
    sender_.send();
    if (!runs()) {
        if (sender_.isEmpty()) {
            timer_.StopTimer();
        }
        return;
    }
    if (stopsNow()) {
        return;
    }
    if (isPaused()) {
        paused_ = true;
        return;
    }
    takeEdits();
    watchEdits();
    if (!runs()) {
        return;
    }
    takeTargets();
    make(agent_.onTime(advance()));
    noteErrors();
}

// Of the cells that the agent is sure of to a half or more.
void clsSteadyAgent::noteErrors() {
    constexpr double kSure = 0.5;
    if (!runs() || putsBack() || !errors_.isDue(seconds_)) {
        return;
    }
    maps::ErrorSum sum;
    for (std::size_t cell = 0; cell < agent_.setup().grid.cells(); ++cell) {
        const auto report = agent_.cell(cell);
        if (report.confidence >= kSure && !report.carried) {
            sum.add(report.errorPercent, report.weight);
        }
    }
    note(sum, seconds_);
}

// Of the tuning agent: what the analyser has measured since the last correction of each cell.
void clsSteadyAgent::noteOtherErrors() {
    constexpr float kSome = 20.0F;  // samples
    const double now = static_cast<double>(parts_.machine.pump.now()) / platform::kMicrosPerSecond;
    if (!std::exchange(otherRuns_, true)) {
        errors_.begin("Tuning agent", now);
    }
    if (!errors_.isDue(now)) {
        return;
    }
    maps::ErrorSum sum;
    for (std::size_t cell = 0; cell < parts_.analyser.SampleCount.size(); ++cell) {
        const auto index = static_cast<std::int32_t>(cell);
        const float target = parts_.analyser.Setpointget(index);
        if (parts_.analyser.SampleCount.at(cell) >= kSome && steady::isTarget(target)) {
            sum.add(100.0 * (double{parts_.analyser.LambdaAvg(index)} / double{target} - 1.0),
                    double{parts_.analyser.SampleCount.at(cell)});
        }
    }
    note(sum, now);
}

void clsSteadyAgent::note(const maps::ErrorSum& sum, double seconds) {
    if (sum.isEmpty()) {
        errors_.skip(seconds);
    } else {
        errors_.add(seconds, sum.mean(), sum.worst());
    }
}

void clsSteadyAgent::liveFrame() {
    if (parts_.analyser.AgentEnable()) {
        noteOtherErrors();
    } else {
        otherRuns_ = false;
    }
    if (!runs()) {
        return;
    }
    if (parts_.connection.linkState.isBusy()) {
        paused_ = true;
        return;
    }
    takeEdits();
    const double seconds = advance();
    const auto frame = frameOf(parts_.tables, facts_.load, geometry_, seconds);
    const bool judges = runs() && !putsBack() && frame.sound();
    const auto changes = agent_.onFrame(frame);
    if (judges) {
        judged();
    }
    make(changes);
}

// In the cell that the agent counts the sample in.
void clsSteadyAgent::judged() {
    ++verdicts_.at(agent_.lastCell()).at(static_cast<std::size_t>(agent_.lastVerdict()));
}

// What others have changed in the map. The agent has to know what the engine runs on.
void clsSteadyAgent::takeEdits() {
    const auto cells = cellsOf(agent_.setup().grid);
    if (!runs() || std::equal(cells.begin(), cells.end(), agent_.map().begin())) {
        return;
    }
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        if (cells[cell] != agent_.map()[cell]) {
            agent_.cellEdited(cell, cells[cell]);
            unsent_.add(cell, parts_.machine.pump.now());
        }
    }
}

void clsSteadyAgent::watchEdits() {
    if (putsBack()) {
        unsent_.reset();
    }
    const auto& engine = parts_.connection.ecuMaps.fuel;
    const auto late = unsent_.late(parts_.machine.pump.now(), [&](std::size_t cell) {
        return engine.working(cell) == parts_.tables.FuelMapOut.at(cell);
    });
    if (!late.empty()) {
        stopFor(wordsOfUnsent(late));
    }
}

void clsSteadyAgent::takeTargets() {
    const auto& setup = agent_.setup();
    for (std::size_t cell = 0; cell < setup.grid.cells(); ++cell) {
        agent_.setTarget(cell, parts_.analyser.Setpointget(static_cast<std::int32_t>(cell)));
    }
}

// The changes hold until the next call of the agent, and events may run where a window shows them.
void clsSteadyAgent::make(std::span<const steady::CellChange> changes) {
    log_.follow(agent_);
    if (changes.empty()) {
        return;
    }
    log_.write(changes, agent_);
    {
        const core::MapHistory::Change step(&parts_.history, {core::Cause::Kind::Steady});
        for (const auto& change : changes) {
            parts_.tables.FuelMapOut.at(change.cell) = change.to;
            sender_.add(change.cell);
        }
    }
    sender_.send();
}

// It acts with the next tick.
void clsSteadyAgent::frameHeard(std::uint8_t code, std::span<const std::uint8_t>) {
    if (code == link::kDeviceStartedFrame && runs()) {
        agent_.ecuRestarted();
    }
}

void clsSteadyAgent::propertyChanged(controls::Object&, const void* property) {
    for (std::size_t zone = 0; zone < steady::kZones; ++zone) {
        if (property == &choices_.FixedDelayMs.at(zone)) {
            agent_.fixDelay(zone, choices_.FixedDelayMs.at(zone));
        }
    }
    agent_.setAuthority(choices_.RichAuthority, choices_.LeanAuthority);
}

}  // namespace korvane::analysis
