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
        ranges_[cell] = authorityOf(setup_, baseline_[cell]);
    }
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
            setAuthority(setup_.richAuthority, setup_.leanAuthority);
            gate_.reset();
            history_.reset();
            guess_.reset();
            cuts_.reset();
            delays_.reset(setup_.fixedDelayMs);
            cells_.reset(setup_, map_);
            speed_.reset(seconds_, map_.bytes());
            watch_.reset();
            used_.fill(0);
            rejected_.fill(0);
            learntFor_ = Firmware::Unknown;
            break;
        case Action::Commit:
            cells_.commit();
            break;
        case Action::Forget:
            cells_.discard();
            break;
        case Action::PutBackNew:
            cells_.discard();
            beginPutBack(seconds_ - provedAt_ > 60.0 ? speed_.atProof() : speed_.minuteAgo());
            break;
        case Action::PutBackAll:
            beginPutBack(baseline_);
            break;
    }
}

void SteadyAgent::fault(StopReason reason) {
    const bool running = learning() || state_ == State::Waiting;
    if (running && reason != StopReason::None) {
        stopReason_ = reason;
        handle(Event::Fault);
    }
}

void SteadyAgent::beginPutBack(const MapBytes& to) {
    back_ = to;
    next_ = 0;
}

void SteadyAgent::cellEdited(std::size_t cell, std::uint8_t byte) {
    if (cell >= setup_.grid.cells()) {
        return;
    }
    map_.set(cell, byte);
    speed_.settle(cell, byte);
    back_[cell] = byte;
}

std::span<const CellChange> SteadyAgent::onTime(double seconds) {
    constexpr double kLate = 2.0;
    changed_ = 0;
    if (state_ == State::PuttingBack) {
        putBackSome();
    } else if (seconds - seconds_ > kLate) {
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
        putBackSome();
    } else {
        speed_.pass(seconds_, map_.bytes());
        observe(frame);
        if (state_ == State::Working && seconds_ - provedAt_ > kProofHolds) {
            handle(Event::ProofAged);
        }
        cells_.relax();
        if (state_ == State::Working) {
            correctSome();
        }
    }
    return {changes_.data(), changed_};
}

void SteadyAgent::observe(const Frame& frame) {
    const Grid& grid = setup_.grid;
    const Place told = Grid::placeOf(frame.rpm, frame.load);
    const Verdict mixture = gate_.mixture(frame, setup_, told);
    const Place place = grid.contains(told) ? grid.within(told, frame.cell) : grid.near(told);
    const std::size_t cell = grid.cellAt(place);
    const Burn burn{.place = place,
                    .cell = cell,
                    .oneByte = map_.oneByte(cell),
                    .fourBytes = map_.fourBytes(grid.cornersOf(place)),
                    .rate = SampleGate::cut(frame) ? 0.0 : map_.fuel(cell) * frame.rpm,
                    .verdict = mixture};
    history_.setLag(delays_.lag());
    history_.add(frame.seconds, burn);
    guessFirmware(frame, burn);
    reading_ = gate_.reading(frame);
    followCut(frame, mixture);
    judge(frame, mixture);
}

void SteadyAgent::guessFirmware(const Frame& frame, const Burn& burn) {
    const bool fuelled = SampleGate::turning(frame) && !SampleGate::cut(frame) && burn.verdict != Verdict::LinkLate;
    if (!fuelled || !setup_.grid.contains(burn.place)) {
        return;
    }
    cells_.ran(burn.place, burn.cell);
    if (burn.verdict == Verdict::Used || burn.verdict == Verdict::EngineCold) {
        guess_.add(frame.duty, frame.rpm, burn.oneByte, burn.fourBytes);
    }
    if (guess_.firmware() != learntFor_) {
        learntFor_ = guess_.firmware();
        cells_.reset(setup_, map_);
    }
}

void SteadyAgent::followCut(const Frame& frame, Verdict mixture) {
    if (mixture == Verdict::LinkLate || mixture == Verdict::Cranking) {
        cuts_.reset();
        return;
    }
    cuts_.expectLag(delays_.lagKnown() ? delays_.lag() : 0.0);
    const auto outcome = cuts_.add(frame.seconds, frame.lambda, SampleGate::cut(frame));
    learnDelay();
    if (outcome == CutTrace::Outcome::Proved && mixture != Verdict::EngineCold) {
        handle(Event::Proved);
        provedAt_ = frame.seconds;
        speed_.proved(map_.bytes());
    }
    if (mixture != Verdict::EngineCold && mixture != Verdict::WarmUp) {
        fault(Watch::check(outcome));
    }
}

// What was learnt with a guessed delay is forgotten when the delay is known.
void SteadyAgent::learnDelay() {
    const bool known = delays_.anyKnown();
    while (const auto answer = cuts_.takeAnswer()) {
        delays_.learn(*answer, history_);
    }
    if (delays_.anyKnown() && !known) {
        cells_.reset(setup_, map_);
    }
}

// The gas at the sensor is that of a warm engine with fuel.
bool SteadyAgent::clear(Verdict mixture, double age) const {
    constexpr double kSpare = 0.3;
    constexpr double kUnknown = 1.6;
    const bool warm = mixture != Verdict::LinkLate && mixture != Verdict::Cranking && mixture != Verdict::EngineCold &&
                      mixture != Verdict::WarmUp;
    const double after = delays_.anyKnown() ? age + SampleGate::clearingTime(delays_.lag()) + kSpare : kUnknown;
    return warm && history_.before(0.0).sinceCut > after;
}

void SteadyAgent::judge(const Frame& frame, Verdict mixture) {
    const double age = delays_.transportNow(history_, frame.rpm);
    const Smeared& burnt = history_.before(age);
    verdict_ = verdictOn(mixture, burnt);
    if (verdict_ == Verdict::Used) {
        take(frame, burnt);
    }
    gate_.count(verdict_);
    ++(verdict_ == Verdict::Used ? used_ : rejected_)[burnt.cell];
    const double target = setup_.targets[burnt.cell];
    fault(watch_.check(frame, setup_, reading_, clear(mixture, age), target));
}

Verdict SteadyAgent::verdictOn(Verdict mixture, const Smeared& burnt) const {
    constexpr auto kNow = std::array{Verdict::LinkLate, Verdict::Cranking, Verdict::EngineCold};
    if (std::ranges::find(kNow, mixture) != kNow.end()) {
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
    return learning() ? Verdict::Used : Verdict::NoProofOfLife;
}

void SteadyAgent::take(const Frame& frame, const Smeared& burnt) {
    constexpr double kSteady = 2.0;  // rows in a second
    constexpr double kFar = 0.25;
    constexpr double kPure = 0.85;
    const double fuel = guess_.firmware() == Firmware::OneByte ? burnt.oneByte : burnt.fourBytes;
    const NeedSample sample{.place = burnt.place,
                            .cell = burnt.cell,
                            .need = std::log(frame.lambda) + fuel,
                            .weight = 1.0 / (1.0 + burnt.pace * burnt.pace / (kSteady * kSteady)),
                            .departure = burnt.departure,
                            .pure = burnt.purity > kPure};
    if (std::fabs(sample.need - cells_.at(sample.place)) > kFar) {
        verdict_ = Verdict::Outlier;
        return;
    }
    cells_.add(sample);
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
    return Corrector::correct(map_, need, map_.bytes()[cell], ranges_[cell], setup_.targets[cell]);
}

void SteadyAgent::correctSome() {
    constexpr std::size_t kLooked = 16;
    for (std::size_t i = 0; i < kLooked && changed_ < kAtOnce && speed_.ready(); ++i) {
        next_ = next_ + 1 < setup_.grid.cells() ? next_ + 1 : 0;
        correctCell(next_);
    }
}

void SteadyAgent::correctCell(std::size_t cell) {
    const Need need = needOf(cell);
    const int step = correctionOf(cell, need.need).step;
    const int byte = map_.bytes()[cell];
    const int way = step > 0 ? 1 : -1;
    for (int to = byte + step; to != byte; to -= way) {
        if (speed_.allows(cell, to)) {
            speed_.spend(cell, byte, to);
            change(cell, to, need.carried, false);
            return;
        }
    }
}

void SteadyAgent::change(std::size_t cell, int byte, bool carried, bool back) {
    changes_.at(changed_++) = {.cell = cell,
                               .from = map_.bytes()[cell],
                               .to = static_cast<std::uint8_t>(byte),
                               .carried = carried,
                               .putBack = back};
    map_.set(cell, static_cast<std::uint8_t>(byte));
}

void SteadyAgent::putBackSome() {
    while (next_ < setup_.grid.cells() && changed_ < kAtOnce) {
        if (map_.bytes()[next_] != back_[next_]) {
            change(next_, back_[next_], false, true);
        }
        ++next_;
    }
    if (next_ == setup_.grid.cells()) {
        next_ = 0;
        handle(Event::Done);
    }
}

CellReport SteadyAgent::cell(std::size_t index) const {
    const Need need = needOf(index);
    const Correction correction = correctionOf(index, need.need);
    const bool waits =
        correction.step != 0 && !speed_.allows(index, map_.bytes()[index] + (correction.step > 0 ? 1 : -1));
    Held held = waits ? Held::Waiting : correction.held;
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
            .held = state_ == State::Working ? held : Held::NotWorking};
}

}  // namespace korvane::steady
