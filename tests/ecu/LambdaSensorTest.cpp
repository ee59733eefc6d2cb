// The way of the exhaust to the lambda sensor, and the sensor. A step is 5 ms.
#include <gtest/gtest.h>

#include "ecu/engine/LambdaSensor.h"
#include "ecu/engine/Noise.h"

namespace korvane::ecu {
namespace {

constexpr double kIdle = TransportDelay::kIdleBar;
constexpr double kFull = TransportDelay::kFullLoadBar;
constexpr double kRpm = 3000.0;

EngineConditions delayed(double idleMs, double fullLoadMs, double lagMs = 0.0) {
    EngineConditions conditions;
    conditions.lambdaDelay = TransportDelay{idleMs, fullLoadMs};
    conditions.lambdaLagMs = lagMs;
    return conditions;
}

class LambdaSensorTest : public testing::Test {
protected:
    void burn(double mixture, int steps, double bar = kIdle) {
        for (int i = 0; i < steps; ++i) {
            sensor.step(mixture, kRpm, bar, conditions);
        }
    }
    // Steps until a mixture that begins now is seen.
    int stepsToSee(double mixture, double bar) {
        int steps = 0;
        for (sensor.step(mixture, kRpm, bar, conditions); std::abs(sensor.reading() - mixture) > 0.001; ++steps) {
            if (steps > 1000) {
                ADD_FAILURE() << "never seen";
                break;
            }
            sensor.step(mixture, kRpm, bar, conditions);
        }
        return steps;
    }

    EngineConditions conditions = delayed(400, 80);
    LambdaSensor sensor;
};

TEST_F(LambdaSensorTest, ReadsFreshAirUntilTheFirstGasArrives) {
    burn(12.5, 80);
    EXPECT_EQ(sensor.reading(), 20.0);
    burn(12.5, 1);
    EXPECT_EQ(sensor.reading(), 12.5);
}

TEST_F(LambdaSensorTest, TheDelayFollowsTheLoad) {
    for (const auto& [bar, ms] : {std::pair{kIdle, 400}, {0.2, 400}, {0.675, 240}, {kFull, 80}, {1.35, 80}}) {
        burn(12.5, 200, bar);
        EXPECT_EQ(stepsToSee(14.0, bar) * 5, ms) << bar;
        EXPECT_NEAR(sensor.delayMs(), ms, 1e-6) << bar;
        EXPECT_NEAR(transportMs(conditions, kRpm, bar), ms, 1e-6) << bar;
    }
}

TEST_F(LambdaSensorTest, NoDelayIsOneStep) {
    conditions = delayed(0, 0);
    burn(12.5, 10);
    EXPECT_EQ(stepsToSee(14.0, kIdle), 1);
}

TEST_F(LambdaSensorTest, TheLongestDelayFits) {
    conditions = delayed(2000, 2000);
    burn(12.5, 1000);
    EXPECT_EQ(stepsToSee(14.0, kIdle), 400);
}

TEST_F(LambdaSensorTest, TheDelayIsStillExactAfterALongDrive) {
    conditions = delayed(70, 5);
    burn(12.5, 2'000'000, kFull);
    burn(12.5, 200, kIdle);
    EXPECT_EQ(stepsToSee(14.0, kIdle) * 5, 70);
}

TEST_F(LambdaSensorTest, GasThatIsHalfWayGoesTheRestAtTheNewPace) {
    burn(12.5, 200);
    burn(14.0, 1);
    burn(12.5, 40);
    burn(12.5, 7, kFull);
    EXPECT_EQ(sensor.reading(), 12.5);
    burn(12.5, 1, kFull);
    EXPECT_EQ(sensor.reading(), 14.0) << "half of 80 steps, then half of 16";
}

TEST_F(LambdaSensorTest, GasArrivesInItsOrderWhateverTheLoadDoes) {
    Noise noise(3);
    double seen = 20.0;
    for (int i = 0; i < 20'000; ++i) {
        sensor.step(20.0 - 0.0004 * i, kRpm, noise.uniform() * 1.2, conditions);
        ASSERT_LE(sensor.reading(), seen);
        seen = sensor.reading();
    }
    EXPECT_LT(seen, 12.1);
}

TEST_F(LambdaSensorTest, TheUsualDelayIsAFixedTimeAndATurn) {
    conditions.lambdaDelay.reset();
    burn(12.5, 200);
    EXPECT_EQ(stepsToSee(14.0, kIdle) * 5, 60) << "40 ms, and 20 ms for a turn at 3000";
    EXPECT_NEAR(transportMs(conditions, 1000.0, kIdle), 100.0, 1e-6);
}

TEST_F(LambdaSensorTest, TheLagIsOfFirstOrder) {
    conditions = delayed(0, 0, 100);
    burn(12.5, 1000);
    burn(14.5, 21);
    EXPECT_NEAR((sensor.reading() - 12.5) / 2.0, 0.632, 0.015) << "100 ms after the step";
    burn(14.5, 20);
    EXPECT_NEAR((sensor.reading() - 12.5) / 2.0, 0.865, 0.015);
}

TEST_F(LambdaSensorTest, ASlowSensorLagsTenTimesAndThreeSecondsAtLeast) {
    for (const auto& [lagMs, seconds] : {std::pair{100.0, 3.0}, {500.0, 5.0}}) {
        conditions = delayed(0, 0, lagMs);
        sensor.setFault(LambdaFault::None);
        burn(12.5, 10'000);
        sensor.setFault(LambdaFault::Slow);
        burn(14.5, static_cast<int>(seconds * 200) + 1);
        EXPECT_NEAR((sensor.reading() - 12.5) / 2.0, 0.632, 0.005) << lagMs;
    }
}

TEST_F(LambdaSensorTest, AStuckSensorHoldsWhatItReadAndRecovers) {
    burn(13.7, 200);
    sensor.setFault(LambdaFault::Stuck);
    burn(11.0, 200);
    EXPECT_EQ(sensor.reading(), 13.7);
    sensor.setFault(LambdaFault::None);
    EXPECT_EQ(sensor.reading(), 11.0) << "the gas has gone on";
}

TEST_F(LambdaSensorTest, ARailedOrAbsentSensorReadsAnEndOfItsRange) {
    burn(12.5, 200);
    for (const auto& [fault, reading] :
         {std::pair{LambdaFault::Lean, 20.0}, {LambdaFault::Rich, 10.0}, {LambdaFault::Absent, 10.0}}) {
        sensor.setFault(fault);
        EXPECT_EQ(sensor.reading(), reading);
    }
}

}  // namespace
}  // namespace korvane::ecu
