// The engine behind the firmware: speed, air, fuel, temperatures.
#pragma once

#include <cstdint>

#include "ecu/engine/Calibration.h"
#include "ecu/engine/DriveScript.h"
#include "ecu/engine/EngineConditions.h"
#include "ecu/engine/EngineTruth.h"
#include "ecu/engine/FuelFilm.h"
#include "ecu/engine/LambdaSensor.h"
#include "ecu/engine/Noise.h"
#include "ecu/engine/Step.h"

namespace korvane::ecu {

// A snapshot of the engine and of what the firmware makes of it.
struct EngineState {
    double rpm = 0.0;
    double throttle = 0.0;     // 0 to 1
    double manifoldBar = 1.0;  // absolute
    double loadPercent = 0.0;  // as the rows of the maps count it
    int cell = 0;              // of the maps
    double pulseMs = 0.0;      // 0 while the fuel is cut
    double duty = 0.0;         // of the injectors, 0 to 1
    double afr = 20.0;         // at the lambda sensor, 10 to 20
    double advance = 0.0;      // degrees
    double waterC = 20.0;
    double airC = 20.0;
    double oilC = 20.0;
    double exhaustC = 20.0;
    double volts = 12.5;
    double speedKmh = 0.0;
    double idleValve = 0.0;       // percent
    double boostValve = 0.0;      // percent
    double runningSeconds = 0.0;  // since the last start of the engine
    bool running = false;
    bool idling = false;
    bool injecting = false;
    bool igniting = false;
    bool engineBrake = false;
    bool accelPump = false;
    bool startHelp = false;
    bool choke = false;
    bool shiftLight = false;
    bool limiter = false;
};

class EngineModel {
public:
    // Length of a step, seconds.
    static constexpr double kStep = kStepSeconds;

    explicit EngineModel(std::uint64_t seed);

    void drive(const Drive& drive);
    void reseed(std::uint64_t seed);
    // From now on; what is in the exhaust stays there. A cold start begins when it is asked for.
    void setConditions(const EngineConditions& conditions);
    [[nodiscard]] const EngineConditions& conditions() const { return conditions_; }
    // Moves on by one step under the firmware's present calibration.
    void step(const Calibration& calibration);

    [[nodiscard]] const EngineState& state() const { return state_; }
    [[nodiscard]] const EngineTruth& truth() const { return truth_; }
    // Sensor value 0 to 255; what it means in percent is the firmware's business.
    [[nodiscard]] std::uint8_t throttleSensor() const;

private:
    void turn(const Calibration& calibration, const Demand& demand);
    [[nodiscard]] double wantedRpm(const Calibration& calibration, const Demand& demand);
    void watchLimits(const Calibration& calibration, const Demand& demand);
    void movePedal(const Calibration& calibration, const Demand& demand);
    void senseThrottle();
    void breathe(const Calibration& calibration, const Demand& demand);
    void watchFuelCut(const Calibration& calibration);
    void meterFuel(const Calibration& calibration);
    [[nodiscard]] bool byPlace() const { return conditions_.interpolate || conditions_.needByPlace; }
    [[nodiscard]] double needHere(const Calibration& calibration) const;
    [[nodiscard]] double injectedFuel(const Calibration& calibration) const;
    [[nodiscard]] double enrichedBy(const Calibration& calibration) const;
    [[nodiscard]] double fuelInCylinders(double injectedMs);
    [[nodiscard]] double lackWhenCold(const Calibration& calibration) const;
    [[nodiscard]] double lackWhenAccelerating(const Calibration& calibration) const;
    [[nodiscard]] double mixture(const Calibration& calibration) const;
    void burn(const Calibration& calibration);
    void exhale();
    void warm(const Demand& demand);
    void work(const Calibration& calibration);
    void roll(const Demand& demand);

    EngineState state_;
    DriveScript script_;
    Noise noise_;
    Noise throttleTrack_;         // of the throttle sensor
    double wander_ = 0.0;         // slow noise of the idle speed, rpm
    double foot_ = 0.0;           // noise of the throttle pedal
    double throttleError_ = 0.0;  // of the throttle sensor, counts
    double limiterSeconds_ = 0.0;
    double pumpSeconds_ = 0.0;
    double enrichment_ = 0.0;  // share of more fuel
    double spool_ = 0.0;       // bar of boost
    double coldness_ = 1.0;    // 1 at 0 degrees C and below, 0 when warm
    EngineConditions conditions_;
    EngineTruth truth_;
    FuelFilm film_;
    LambdaSensor lambda_;
};

}  // namespace korvane::ecu
