#include "ecu/engine/EngineModel.h"

#include <algorithm>
#include <cmath>

#include "ecu/engine/EngineNeed.h"

namespace korvane::ecu {

namespace {

constexpr double kOthersMixture = 13.2;  // where another ECU or a carburettor meters the fuel
constexpr double kClosedPedal = 0.02;
constexpr double kEnrichmentSeconds = 0.8;  // with which an acceleration enrichment fades
constexpr double kFiringRpm = 400.0;
constexpr double kOutsideC = 20.0;
constexpr double kWinterC = -10.0;
constexpr double kSensorTravel = 210.0;  // counts of the throttle sensor
constexpr std::uint64_t kThrottleSensorSeed = 0x5468726F;

// Pressure behind the throttle plate without boost, from the engine's air demand and the plate's opening.
double drawnPressure(double throttle, double rpm) {
    const double passed = 0.03 + 12.0 * throttle * throttle;
    const double drawn = rpm / 7000.0;
    return 0.22 + 0.77 * passed / (passed + drawn);
}

}  // namespace

EngineModel::EngineModel(std::uint64_t seed) : noise_(seed), throttleTrack_(seed ^ kThrottleSensorSeed) {
    script_.begin(Drive{}, 0.0);
}

void EngineModel::drive(const Drive& drive) {
    script_.begin(drive, state_.rpm);
}

void EngineModel::reseed(std::uint64_t seed) {
    noise_ = Noise(seed);
    throttleTrack_ = Noise(seed ^ kThrottleSensorSeed);
}

void EngineModel::setConditions(const EngineConditions& conditions) {
    if (conditions.lambdaFault != conditions_.lambdaFault) {
        lambda_.setFault(conditions.lambdaFault);
        state_.afr = lambda_.reading();
    }
    if (conditions.coldStart && !conditions_.coldStart) {
        state_.waterC = state_.airC = state_.oilC = state_.exhaustC = kWinterC;
    }
    conditions_ = conditions;
}

std::uint8_t EngineModel::throttleSensor() const {
    const double counts = 20.0 + kSensorTravel * state_.throttle + throttleError_;
    return static_cast<std::uint8_t>(std::lround(std::clamp(counts, 0.0, 255.0)));
}

void EngineModel::step(const Calibration& calibration) {
    const double idleRpm = calibration.idleRpm + 60.0 * coldness_;
    const Demand demand = script_.advance(kStep, idleRpm, noise_);
    movePedal(calibration, demand);
    senseThrottle();
    turn(calibration, demand);
    watchLimits(calibration, demand);
    breathe(calibration, demand);
    watchFuelCut(calibration);
    meterFuel(calibration);
    burn(calibration);
    exhale();
    warm(demand);
    work(calibration);
    roll(demand);
}

void EngineModel::movePedal(const Calibration& calibration, const Demand& demand) {
    const double before = state_.throttle;
    follow(foot_, 0.15 * noise_.bell(), 0.5);
    follow(enrichment_, 0.0, kEnrichmentSeconds);
    const bool pressed = demand.throttle > 0.05 && demand.throttle < 1.0;
    follow(state_.throttle, std::max(demand.throttle + (pressed ? foot_ : 0.0), 0.0), 0.1);
    if (demand.bench) {
        state_.throttle = demand.throttle;
    } else if (state_.throttle - before > 0.5 * kStep) {
        pumpSeconds_ = 0.3;
        enrichment_ = conditions_.enrichment / 100.0;
    }
    pumpSeconds_ = std::max(pumpSeconds_ - kStep, 0.0);
    state_.accelPump = pumpSeconds_ > 0.0 && state_.running && calibration.enabled(Function::AccelPump);
}

void EngineModel::senseThrottle() {
    const double deviation = kSensorTravel * conditions_.throttleNoise / 100.0;
    throttleError_ = deviation > 0.0 ? deviation * throttleTrack_.bell() : 0.0;
}

double EngineModel::wantedRpm(const Calibration& calibration, const Demand& demand) {
    const bool fuelled = !calibration.type.injects || calibration.enabled(Function::Injection);
    const bool sparked = !calibration.type.ignites || calibration.enabled(Function::Ignition);
    if (demand.rpm > 0.0 && !demand.cranking && !(fuelled && sparked)) {
        return 0.0;
    }
    follow(wander_, 150.0 * noise_.bell(), 0.25);
    if (demand.idle || demand.cranking) {
        return demand.rpm + wander_;
    }
    return limiterSeconds_ > 0.0 ? std::min(demand.rpm, calibration.rpmLimit - 300.0) : demand.rpm;
}

void EngineModel::turn(const Calibration& calibration, const Demand& demand) {
    if (demand.bench) {
        state_.rpm = demand.rpm;
    } else {
        follow(state_.rpm, wantedRpm(calibration, demand), 0.12);
    }
    if (demand.rpm == 0.0 && state_.rpm < 20.0) {
        state_.rpm = 0.0;
    }
    state_.running = state_.rpm > kFiringRpm;
    state_.runningSeconds = state_.running ? state_.runningSeconds + kStep : 0.0;
}

void EngineModel::watchLimits(const Calibration& calibration, const Demand& demand) {
    const bool limited = calibration.enabled(Function::RpmLimit) && state_.rpm >= calibration.rpmLimit;
    if (limited) {
        limiterSeconds_ = demand.bench ? kStep : 0.08;
    }
    state_.limiter = limiterSeconds_ > 0.0;
    limiterSeconds_ = std::max(limiterSeconds_ - kStep, 0.0);
    state_.shiftLight = calibration.enabled(Function::ShiftLight) && state_.rpm >= calibration.rpmShift;
}

void EngineModel::breathe(const Calibration& calibration, const Demand& demand) {
    const double spinning = std::clamp((state_.rpm - 2500.0) / 1500.0, 0.0, 1.0);
    const double asked = std::clamp((state_.throttle - 0.6) / 0.4, 0.0, 1.0);
    const auto setpoint = static_cast<std::size_t>(std::clamp((state_.rpm - 1000.0) / 500.0, 0.0, 15.0));
    const double limit = std::max(calibration.boostLimit.at(setpoint) - 1.0, 0.0);
    const double boost = std::min(limit, 1.2) * spinning * asked;
    follow(spool_, boost, boost > spool_ ? 0.5 : 0.15);
    state_.boostValve = spool_ < 0.02 ? 0.0 : std::clamp(30.0 + 80.0 * (boost - spool_ + limit), 0.0, 95.0);
    follow(state_.manifoldBar, drawnPressure(state_.throttle, state_.rpm) + spool_, 0.06);
    state_.loadPercent = calibration.loadOf(state_.manifoldBar, calibration.throttleOf(throttleSensor()));
    if (demand.bench) {
        state_.loadPercent = demand.load;
        state_.manifoldBar = calibration.manifoldOf(demand.load);
    }
}

void EngineModel::watchFuelCut(const Calibration& calibration) {
    const bool closed = calibration.throttleOf(throttleSensor()) < kClosedPedal;
    const double above = state_.engineBrake ? calibration.brakeBelow : calibration.brakeAbove;
    state_.engineBrake = calibration.enabled(Function::EngineBrake) && closed && state_.rpm > above;
}

void EngineModel::meterFuel(const Calibration& calibration) {
    state_.cell = calibration.cellOf(state_.rpm, state_.loadPercent);
    const auto cell = static_cast<std::size_t>(state_.cell);
    const bool turning = state_.rpm > 0.0;
    state_.igniting = turning && calibration.type.ignites && calibration.enabled(Function::Ignition);
    state_.injecting =
        turning && calibration.type.injects && calibration.enabled(Function::Injection) && !state_.engineBrake;
    state_.advance = state_.igniting ? std::max(calibration.advance.at(cell), 0.0) : 0.0;
    // Above the last row the firmware lengthens the pulse with the pressure.
    const double beyond = std::max(state_.loadPercent / (10.0 * calibration.type.rows()), 1.0);
    const double pulse =
        conditions_.interpolate ? calibration.pulseAt(state_.rpm, state_.loadPercent) : calibration.pulse.at(cell);
    state_.pulseMs = state_.injecting ? pulse * beyond * enrichedBy(calibration) : 0.0;
    truth_.lengthening = byPlace() ? beyond : 1.0;
    const double cycleMs = 120000.0 / std::max(state_.rpm, 1.0);
    state_.duty = std::min(state_.pulseMs * calibration.injectionsPerCycle / cycleMs, 1.0);
}

double EngineModel::needHere(const Calibration& calibration) const {
    return byPlace() ? neededPulse(state_.rpm, state_.manifoldBar)
                     : calibration.need.at(static_cast<std::size_t>(state_.cell));
}

double EngineModel::injectedFuel(const Calibration& calibration) const {
    if (!state_.injecting) {
        return 0.0;
    }
    return byPlace() ? state_.pulseMs
                     : calibration.pulse.at(static_cast<std::size_t>(state_.cell)) * enrichedBy(calibration);
}

double EngineModel::enrichedBy(const Calibration& calibration) const {
    return calibration.enabled(Function::AccelPump) ? 1.0 + enrichment_ : 1.0;
}

double EngineModel::fuelInCylinders(double injectedMs) {
    if (conditions_.wetting <= 0.0) {
        return injectedMs;
    }
    return film_.pass(injectedMs * state_.rpm, conditions_.wetting / 100.0, conditions_.wettingTime) /
           std::max(state_.rpm, 1.0);
}

double EngineModel::lackWhenCold(const Calibration& calibration) const {
    const double chokeLess = calibration.enabled(Function::Choke) ? 0.0 : 0.15;
    const double winter = conditions_.coldStart ? 0.10 : 0.0;
    return 1.0 + (chokeLess + winter) * coldness_;
}

double EngineModel::lackWhenAccelerating(const Calibration& calibration) const {
    if (pumpSeconds_ <= 0.0) {
        return 1.0;
    }
    return calibration.enabled(Function::AccelPump) ? 0.985 : 1.06;
}

double EngineModel::mixture(const Calibration& calibration) const {
    if (!state_.running) {
        return kFreshAir;
    }
    if (!calibration.type.injects) {
        return state_.engineBrake ? kFreshAir : kOthersMixture;
    }
    if (truth_.givenMs <= 0.0) {
        return kFreshAir;
    }
    const double warm = kBestMixture * truth_.needMs / truth_.givenMs;
    return std::min(warm * lackWhenCold(calibration) * lackWhenAccelerating(calibration), kFreshAir);
}

void EngineModel::burn(const Calibration& calibration) {
    truth_.column = Calibration::columnAt(state_.rpm);
    truth_.row = Calibration::rowAt(state_.loadPercent);
    truth_.needMs = needHere(calibration);
    truth_.neededMs = truth_.needMs * lackWhenCold(calibration) * lackWhenAccelerating(calibration);
    truth_.givenMs = fuelInCylinders(injectedFuel(calibration));
    truth_.mixture = mixture(calibration);
}

void EngineModel::exhale() {
    lambda_.step(std::max(truth_.mixture, kRichestReading), state_.rpm, state_.manifoldBar, conditions_);
    state_.afr = lambda_.reading();
    truth_.delayMs = lambda_.delayMs();
}

void EngineModel::warm(const Demand& demand) {
    const bool running = state_.running;
    const double outside = conditions_.coldStart ? kWinterC : kOutsideC;
    const double warming = conditions_.coldStart ? 600.0 : 90.0;
    follow(state_.waterC, running ? 86.0 + 3.0 * state_.manifoldBar : outside, running ? warming : 900.0);
    const double charge = 25.0 * std::max(state_.manifoldBar - 1.0, 0.0);
    follow(state_.airC, outside + charge + 0.15 * (state_.waterC - outside), 15.0);
    follow(state_.oilC, running ? 75.0 + 0.006 * state_.rpm : outside, running ? 2.0 * warming : 900.0);
    const double burning = 300.0 + 0.04 * state_.rpm + 330.0 * state_.manifoldBar;
    const double exhaust = state_.engineBrake ? 250.0 : burning;
    follow(state_.exhaustC, running ? exhaust : outside, running ? 2.5 : 60.0);
    const double resting = demand.cranking ? 10.3 : 12.5;
    follow(state_.volts, running ? 13.9 : resting, 0.15);
    coldness_ = std::clamp((65.0 - state_.waterC) / 65.0, 0.0, 1.0);
}

void EngineModel::work(const Calibration& calibration) {
    const bool closed = calibration.throttleOf(throttleSensor()) < kClosedPedal;
    state_.idling = state_.running && closed && state_.rpm < calibration.idleRpm + 400.0;
    const double valve = state_.idling ? 12.0 + 30.0 * coldness_ - 0.05 * wander_ : 10.0;
    const double wanted = std::clamp(calibration.idleValveMin + valve, 0.0, double(calibration.idleValveMax));
    follow(state_.idleValve, wanted, 0.3);
    state_.startHelp = state_.running && state_.runningSeconds < calibration.startHelpSeconds &&
                       calibration.enabled(Function::StartHelp);
    state_.choke = state_.running && state_.waterC < calibration.chokeEnd && calibration.enabled(Function::Choke);
}

void EngineModel::roll(const Demand& demand) {
    constexpr std::array kKmhPer1000 = {0.0, 8.0, 14.0, 20.0, 26.0, 33.0};
    if (demand.gear > 0) {
        follow(state_.speedKmh, state_.rpm * 0.001 * kKmhPer1000.at(static_cast<std::size_t>(demand.gear)), 0.5);
    } else if (demand.idle) {
        follow(state_.speedKmh, 0.0, 2.0);
    }
}

}  // namespace korvane::ecu
