#include "analysis/steady/SteadyAgent.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace korvane::steady {

namespace {

constexpr double kProofHolds = 100.0;  // seconds

}  // namespace

void SteadyAgent::start(const SteadySetup& setup, std::span<const std::uint8_t> map, double seconds,
                        std::span<const std::uint8_t> baseline) {
    setup_ = setup;
    map_.reset(setup, map);
    baseline_ = map_.bytes();
    std::ranges::copy(baseline.first(std::min(baseline.size(), baseline_.size())), baseline_.begin());
    seconds_ = seconds;
    begun_ = true;
    provedAt_ = seconds;
    changed_ = 0;
    next_ = 0;
    stopReason_ = StopReason::None;
    if (state_ != State::Off) {
        state_ = State::Stopped;
    }
    handle(Event::SwitchOn);
}

void SteadyAgent::stop() {
    handle(Event::SwitchOff);
}

void SteadyAgent::putBack() {
    if (!begun_) {
        return;
    }
    stopReason_ = StopReason::PutBack;
    handle(Event::PutBack);
}

void SteadyAgent::setAuthority(double richPercent, double leanPercent) {
    setup_.richAuthority = richPercent;
    setup_.leanAuthority = leanPercent;
    for (std::size_t cell = 0; cell < kMostCells; ++cell) {
        setRange(cell);
    }
    if (state_ == State::PuttingBack) {
        keepBackInside();
    }
}

// A byte that was beyond the old range too is the tuner's.
void SteadyAgent::setRange(std::size_t cell) {
    const ByteRange range = authorityOf(setup_, baseline_[cell]);
    const int byte = map_.bytes()[cell];
    beyond_[cell] = (beyond_[cell] || ranges_[cell].holds(byte)) && !range.holds(byte);
    ranges_[cell] = range;
}

void SteadyAgent::setTarget(std::size_t cell, float lambda) {
    if (cell < setup_.targets.size() && isTarget(lambda)) {
        setup_.targets[cell] = lambda;
    }
}

void SteadyAgent::handle(Event event) {
    const Decision decision = decide(state_, event);
    state_ = decision.next;
    act(decision.action);
}

void SteadyAgent::act(Action action) {
    switch (action) {
        case Action::None:
            break;
        case Action::Begin:
            begin();
            break;
        case Action::Commit:
            cells_.commit();
            break;
        case Action::Forget:
            cells_.discard();
            break;
        case Action::PutBack:
            cells_.discard();
            beginPutBack(wayBackOf(stopReason_));
            break;
    }
}

void SteadyAgent::begin() {
    setAuthority(setup_.richAuthority, setup_.leanAuthority);
    gate_.reset();
    history_.reset();
    guess_.reset();
    cuts_.reset();
    delays_.reset(setup_.fixedDelayMs);
    forgetNeeds();
    proof_.proved(map_.bytes());
    minute_.reset(seconds_, map_.bytes());
    again_.reset();
    pulse_.reset();
    watch_.reset();
    edited_.reset();
    beyond_.reset();
    used_.fill(0);
    rejected_.fill(0);
    learntFor_ = Firmware::Unknown;
}

void SteadyAgent::forgetNeeds() {
    cells_.reset(setup_, map_);
    contradiction_.reset();
}

void SteadyAgent::fault(StopReason reason) {
    const bool running = wasProved() || state_ == State::Waiting;
    if (running && reason != StopReason::None) {
        stopReason_ = reason;
        handle(Event::Fault);
    }
}

MapBytes SteadyAgent::lastGood() const {
    constexpr double kMinute = 60.0;
    return seconds_ - provedAt_ > kMinute ? proof_.atProof() : minute_.minuteAgo();
}

// Cells that were edited by hand go back on the tuner's key alone.
void SteadyAgent::beginPutBack(WayBack way) {
    back_ = way == WayBack::Baseline ? baseline_ : lastGood();
    for (std::size_t cell = 0; way == WayBack::Richer && cell < kMostCells; ++cell) {
        back_[cell] = edited_[cell] ? back_[cell] : std::max(back_[cell], baseline_[cell]);
    }
    keepBackInside();
    next_ = 0;
    wentBackAt_.reset();
}

// The authority may have been wider when a cell stood where it is to go. The baseline is in any. A byte beyond it that
// is the tuner's comes no nearer than it is now, and goes no further.
void SteadyAgent::keepBackInside() {
    for (std::size_t cell = 0; cell < setup_.grid.cells(); ++cell) {
        if (!edited_[cell]) {
            const ByteRange& range = ranges_[cell];
            const int now = beyond_[cell] ? range.least : map_.bytes()[cell];
            back_[cell] = static_cast<std::uint8_t>(
                std::clamp<int>(back_[cell], std::min(range.least, now), std::max(range.most, now)));
        }
    }
}

void SteadyAgent::cellEdited(std::size_t cell, std::uint8_t byte) {
    if (cell >= setup_.grid.cells()) {
        return;
    }
    map_.set(cell, byte);
    proof_.settle(cell, byte);
    minute_.settle(cell, byte);
    again_.drop(cell);
    edited_.set(cell);
    back_[cell] = byte;
}

std::span<const CellChange> SteadyAgent::onTime(double seconds) {
    changed_ = 0;
    if (state_ == State::PuttingBack) {
        putBackSome(seconds);
    } else if (seconds - seconds_ > Watch::kLinkGap) {
        fault(StopReason::LinkLate);
    }
    return {changes_.data(), changed_};
}

std::span<const CellChange> SteadyAgent::onFrame(const Frame& frame) {
    changed_ = 0;
    if (state_ == State::Off || state_ == State::Stopped || !frame.sound()) {
        return {};
    }
    seconds_ = frame.seconds;
    provedAt_ = std::min(provedAt_, seconds_);
    if (state_ == State::PuttingBack) {
        verdict_ = Verdict::PuttingBack;
        gate_.count(verdict_);
        putBackSome(seconds_);
    } else {
        minute_.pass(seconds_, map_.bytes());
        observe(frame);
        if (state_ == State::Working && seconds_ - provedAt_ > kProofHolds) {
            handle(Event::ProofAged);
        }
        cells_.relax();
        if (wasProved()) {
            lookAtSome();
        }
    }
    return {changes_.data(), changed_};
}

void SteadyAgent::observe(const Frame& frame) {
    const Burn burn = burnOf(frame);
    delays_.pass(frame.seconds);
    history_.setLag(delays_.lag());
    history_.add(frame.seconds, burn);
    guessFirmware(frame, burn);
    reading_ = gate_.reading(frame);
    const auto cut = followCut(frame, burn.verdict);
    judge(frame, burn.verdict, cut);
}

Burn SteadyAgent::burnOf(const Frame& frame) {
    const Grid& grid = setup_.grid;
    const Place told = Grid::placeOf(frame.rpm, frame.load);
    const Place place = grid.contains(told) ? grid.within(told, frame.cell) : grid.near(told);
    const std::size_t cell = grid.cellAt(place);
    Burn burn{.place = place,
              .cell = cell,
              .oneByte = map_.oneByte(cell),
              .fourBytes = map_.fourBytes(grid.cornersOf(place)),
              .rate = SampleGate::cut(frame) ? 0.0 : map_.fuel(cell) * frame.rpm,
              .verdict = gate_.mixture(frame, setup_, told)};
    burn.verdict = checkPulse(frame, burn);
    return burn;
}

Verdict SteadyAgent::checkPulse(const Frame& frame, const Burn& burn) {
    const auto off = guess_.off(frame.duty, frame.rpm, burn.oneByte, burn.fourBytes);
    if (burn.verdict == Verdict::AccelEnrichment) {
        pulse_.expect(frame.seconds);
    }
    if (burn.verdict != Verdict::Used || !off) {
        return burn.verdict;
    }
    return pulse_.fits(frame.seconds, *off, frame.duty) ? Verdict::Used : Verdict::PulseOff;
}

void SteadyAgent::guessFirmware(const Frame& frame, const Burn& burn) {
    const bool fuelled = SampleGate::turning(frame) && !SampleGate::cut(frame) && burn.verdict != Verdict::LinkLate;
    if (!fuelled || !setup_.grid.contains(burn.place)) {
        return;
    }
    cells_.enginePassed(burn.place, burn.cell);
    constexpr auto kTelling = std::array{Verdict::Used, Verdict::EngineCold, Verdict::PulseOff};
    if (std::ranges::find(kTelling, burn.verdict) != kTelling.end()) {
        guess_.add(frame.duty, frame.rpm, burn.oneByte, burn.fourBytes);
    }
    if (guess_.firmware() != learntFor_) {
        learntFor_ = guess_.firmware();
        forgetNeeds();
    }
}

void SteadyAgent::proved(double seconds) {
    handle(Event::Proved);
    provedAt_ = seconds;
    proof_.proved(map_.bytes());
    if (contradiction_.atProof()) {
        forgetNeeds();
    }
}

// What the last fuel cut has shown, as far as it tells of the sensor of a warm engine.
CutTrace::Outcome SteadyAgent::followCut(const Frame& frame, Verdict mixture) {
    if (!turnsWithoutGap(mixture)) {
        cuts_.reset();
        return CutTrace::Outcome::None;
    }
    cuts_.expectLag(delays_.lagKnown() ? delays_.lag() : 0.0);
    const auto outcome = cuts_.add(frame.seconds, frame.lambda, SampleGate::cut(frame));
    learnDelay();
    if (outcome == CutTrace::Outcome::Proved && mixture != Verdict::EngineCold) {
        proved(frame.seconds);
    }
    return isWarm(mixture) ? outcome : CutTrace::Outcome::None;
}

// What was learnt with a guessed delay is forgotten when the delay is known.
void SteadyAgent::learnDelay() {
    const bool known = delays_.anyKnown();
    while (const auto answer = cuts_.takeAnswer()) {
        delays_.learn(*answer, history_);
    }
    if (delays_.anyKnown() && !known) {
        forgetNeeds();
    }
}

// The gas at the sensor is that of a warm engine with fuel.
bool SteadyAgent::clear(Verdict mixture, double age) const {
    constexpr double kSpare = 0.3;
    constexpr double kUnknown = 1.6;
    const Smeared& now = history_.before(0.0);
    const bool known = delays_.anyKnown() && delays_.isKnownAt(now.row);
    const double needed = age + SampleGate::clearingTime(delays_.lag()) + kSpare;
    return isWarm(mixture) && now.sinceCut > (known ? needed : std::max(needed, kUnknown));
}

void SteadyAgent::judge(const Frame& frame, Verdict mixture, CutTrace::Outcome cut) {
    const double age = delays_.transportNow(history_, frame.rpm);
    const Smeared& burnt = history_.before(age);
    verdict_ = verdictOn(mixture, burnt);
    if (verdict_ == Verdict::Used) {
        take(frame, burnt);
    }
    gate_.count(verdict_);
    lastCell_ = burnt.cell;
    ++(verdict_ == Verdict::Used ? used_ : rejected_)[burnt.cell];
    const double target = setup_.targets[burnt.cell];
    const bool leaned = !edited_[burnt.cell] && map_.bytes()[burnt.cell] < baseline_[burnt.cell];
    const Sight sight{
        .reading = reading_, .clear = clear(mixture, age), .target = target, .leaned = leaned, .cut = cut};
    fault(watch_.check(frame, setup_, sight));
}

Verdict SteadyAgent::verdictOn(Verdict mixture, const Smeared& burnt) const {
    if (!turnsWithoutGap(mixture) || mixture == Verdict::EngineCold) {
        return mixture;
    }
    const Verdict passed = SampleGate::passed(burnt, delays_.lag());
    if (passed != Verdict::Used) {
        return passed;
    }
    if (reading_ != Verdict::Used) {
        return reading_;
    }
    if (guess_.firmware() == Firmware::Unknown) {
        return Verdict::FirmwareUnknown;
    }
    return state_ == State::Working ? Verdict::Used : Verdict::NoProofOfLife;
}

void SteadyAgent::take(const Frame& frame, const Smeared& burnt) {
    constexpr double kSteady = 2.0;  // rows in a second
    constexpr double kSteadier = 0.7;
    constexpr double kPure = 0.85;
    const double fuel = guess_.firmware() == Firmware::OneByte ? burnt.oneByte : burnt.fourBytes;
    const double steady = delays_.isKnownAt(burnt.row) ? kSteady : kSteadier;
    const NeedSample sample{.place = burnt.place,
                            .cell = burnt.cell,
                            .need = std::log(frame.lambda) + fuel,
                            .weight = 1.0 / (1.0 + burnt.pace * burnt.pace / (steady * steady)),
                            .departures = burnt.departures,
                            .pure = burnt.purity > kPure,
                            .seconds = frame.seconds};
    if (contradicts(sample)) {
        verdict_ = Verdict::Outlier;
        contradiction_.contradicted();
        return;
    }
    contradiction_.agreed();
    cells_.add(sample);
}

bool SteadyAgent::contradicts(const NeedSample& sample) const {
    constexpr double kFar = 0.25;
    constexpr double kFarFromKnown = 0.06;
    constexpr double kKnown = 0.8;  // confidence
    const bool known = cells_.cell(setup_.grid.cellAt(sample.place), guess_.firmware()).confidence > kKnown;
    return std::fabs(sample.need - cells_.at(sample.place)) > (known ? kFarFromKnown : kFar);
}

SteadyAgent::Need SteadyAgent::needOf(std::size_t cell) const {
    const CellNeed own = cells_.cell(cell, guess_.firmware());
    if (own.weight > 0.0 || !setup_.carry) {
        return {own, false};
    }
    const CellNeed carried = cells_.carried(cell, guess_.firmware());
    return {carried, carried.weight > 0.0};
}

Correction SteadyAgent::correctionOf(std::size_t cell, const CellNeed& need) const {
    const auto byte = map_.bytes()[cell];
    const auto found = Corrector::correct(map_, need, byte, ranges_[cell], setup_.targets[cell]);
    if (edited_[cell]) {
        return found.heldBack(WhyHeld::EditedByHand);
    }
    return beyond_[cell] && !ranges_[cell].holds(byte) ? found.into(ranges_[cell], byte) : found;
}

void SteadyAgent::lookAtSome() {
    constexpr std::size_t kLooked = 16;
    for (std::size_t i = 0; i < kLooked && changed_ < kAtOnce && counts_.left(seconds_) > 0; ++i) {
        next_ = next_ + 1 < setup_.grid.cells() ? next_ + 1 : 0;
        if (again_.isDue(next_, seconds_)) {
            sendAgain(next_);
        } else if (state_ == State::Working) {
            correctCell(next_);
        }
    }
}

void SteadyAgent::sendAgain(std::size_t cell) {
    change(cell, map_.bytes()[cell], false, false);
    counts_.spend(seconds_, 1);
    again_.drop(cell);
}

bool SteadyAgent::mayMove(std::size_t cell, int step) const {
    return proof_.allows(cell, map_.bytes()[cell] + step);
}

void SteadyAgent::correctCell(std::size_t cell) {
    const Need need = needOf(cell);
    const int most = counts_.left(seconds_);
    int step = std::clamp(correctionOf(cell, need.need).step, -most, most);
    const int way = step > 0 ? 1 : -1;
    while (step != 0 && !mayMove(cell, step)) {
        step -= way;
    }
    if (step == 0) {
        return;
    }
    change(cell, map_.bytes()[cell] + step, need.carried, false);
    proof_.spend(cell, map_.bytes()[cell]);
    counts_.spend(seconds_, std::abs(step));
    again_.changed(cell, seconds_);
}

void SteadyAgent::change(std::size_t cell, int byte, bool carried, bool back) {
    changes_.at(changed_++) = {.cell = cell,
                               .from = map_.bytes()[cell],
                               .to = static_cast<std::uint8_t>(byte),
                               .carried = carried,
                               .putBack = back};
    map_.set(cell, static_cast<std::uint8_t>(byte));
}

// Twice, since the first time may get lost on the line.
void SteadyAgent::putBackSome(double seconds) {
    constexpr double kPause = 0.5;  // seconds
    if (wentBackAt_ && seconds - *wentBackAt_ < kPause && seconds >= *wentBackAt_) {
        return;
    }
    for (; next_ < setup_.grid.cells() && changed_ < kAtOnce; ++next_) {
        if (map_.bytes()[next_] != back_[next_] || again_.isWaiting(next_)) {
            change(next_, back_[next_], false, true);
            wentBackAt_ ? again_.drop(next_) : again_.changed(next_, seconds);
        }
    }
    if (next_ < setup_.grid.cells()) {
        return;
    }
    next_ = 0;
    if (wentBackAt_) {
        handle(Event::Done);
    } else {
        wentBackAt_ = seconds;
    }
}

CellReport SteadyAgent::cell(std::size_t index) const {
    const Need need = needOf(index);
    const Correction correction = correctionOf(index, need.need);
    const bool waits = correction.step != 0 && !mayMove(index, correction.step > 0 ? 1 : -1);
    WhyHeld held = waits ? WhyHeld::Waiting : correction.held;
    return {.weight = need.need.weight,
            .errorPercent = correction.errorPercent,
            .spread = 100.0 * need.need.spread,
            .confidence = need.need.confidence,
            .baseline = baseline_[index],
            .byte = map_.bytes()[index],
            .used = used_[index],
            .rejected = rejected_[index],
            .limited = correction.limited,
            .carried = need.carried,
            .held = state_ == State::Working ? held : WhyHeld::NotWorking};
}

}  // namespace korvane::steady
