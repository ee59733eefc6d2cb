// The keys that make the engine hard to tune, seen over the line and against the truth that the model tells.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

constexpr double kTick = 512.0 / 18432.0;  // ms of a count

void setCell(Wire& wire, std::uint8_t cell, std::uint8_t count) {
    wire.send({'g', cell, cell, count, count, 0x98});
}

const EngineState& engineAt(Wire& wire, const std::string& drive) {
    EXPECT_EQ(wire.ecu.set("drive", drive, wire.now), "");
    wire.pass(1.0);
    wire.poll();
    return wire.ecu.engine();
}

// At 3000 rpm and 50 % load four cells meet: 67 and 68, and above them 83 and 84.
Wire withFourCells(const std::string& list) {
    Wire wire("drive=3000:50:20," + list);
    wire.poll();
    setCell(wire, 67, 100);
    setCell(wire, 68, 104);
    setCell(wire, 83, 120);
    setCell(wire, 84, 140);
    return wire;
}

TEST(HardEngine, InterpolatesBetweenTheCentresOfFourCells) {
    Wire wire = withFourCells("interpolate=1");
    EXPECT_NEAR(engineAt(wire, "3000:50:20").pulseMs, 116 * kTick, 1e-9) << "the mean of the four";
    EXPECT_NEAR(engineAt(wire, "3250:55:20").pulseMs, 140 * kTick, 1e-9) << "the centre of a cell";
    EXPECT_NEAR(engineAt(wire, "2750:45:20").pulseMs, 100 * kTick, 1e-9);
    EXPECT_NEAR(engineAt(wire, "2875:45:20").pulseMs, 101 * kTick, 1e-9) << "a quarter of the way along the row";
    EXPECT_NEAR(engineAt(wire, "2750:47.5:20").pulseMs, 105 * kTick, 1e-9) << "a quarter of the way along the column";
}

TEST(HardEngine, OneCellGivesTheFuelAsLongAsItDoesNotInterpolate) {
    for (const char* list : {"interpolate=0", "need=place"}) {
        Wire wire = withFourCells(list);
        EXPECT_NEAR(engineAt(wire, "3000:50:20").pulseMs, 140 * kTick, 1e-9) << list;
        EXPECT_NEAR(engineAt(wire, "2990:49:20").pulseMs, 100 * kTick, 1e-9) << list;
    }
}

TEST(HardEngine, InterpolatesNothingBeyondTheOuterCentres) {
    Wire wire("drive=3000:50:20,interpolate=1");
    wire.poll();
    setCell(wire, 0, 60);
    setCell(wire, 159, 200);
    EXPECT_NEAR(engineAt(wire, "700:2:20").pulseMs, 60 * kTick, 1e-9);
    EXPECT_NEAR(engineAt(wire, "10000:98:20").pulseMs, 200 * kTick, 1e-9);
    EXPECT_NEAR(engineAt(wire, "10000:120:20").pulseMs, 240 * kTick, 1e-9) << "longer with the pressure above the map";
    EXPECT_NEAR(wire.ecu.truth().lengthening, 1.2, 1e-9);
}

TEST(HardEngine, InterpolatesALargeMapToo) {
    Wire wire("type=14,drive=3250:105:20,interpolate=1");
    wire.poll();
    const MapCells& map = wire.ecu.workingMap(MapKind::Fuel);
    const double tick = 768.0 / 18432.0;
    EXPECT_NEAR(engineAt(wire, "3250:105:20").pulseMs, map[204] * tick, 1e-9);
    EXPECT_NEAR(engineAt(wire, "3250:110:20").pulseMs, (map[204] + map[224]) / 2.0 * tick, 1e-9);
}

TEST(HardEngine, TheMixtureIsThatOfTheExactPlace) {
    for (const char* list : {"interpolate=1", "need=place"}) {
        Wire wire(list);
        for (const auto& [rpm, load] : {std::pair{3010, 51.0}, {3490, 59.0}, {6200, 83.0}, {4000, 120.0}}) {
            const auto drive = std::to_string(rpm) + ":" + std::to_string(load) + ":20";
            const double pulse = engineAt(wire, drive).pulseMs;
            const double afr = 12.5 * neededPulse(rpm, load / 100.0) / pulse;
            EXPECT_NEAR(wire.ecu.engine().afr, afr, 0.01) << list << ' ' << drive;
            EXPECT_NEAR(wire.ecu.truth().mixture, afr, 1e-9) << list << ' ' << drive;
        }
    }
}

TEST(HardEngine, AsItComesTheMixtureIsTheSameAllOverACell) {
    Wire wire;
    engineAt(wire, "3010:51:20");
    const double mixture = wire.ecu.truth().mixture;
    engineAt(wire, "3490:59:20");
    EXPECT_EQ(wire.ecu.truth().mixture, mixture);
    EXPECT_NEAR(mixture, 12.5 * wire.ecu.trueFuelMap()[84] / wire.ecu.workingMap(MapKind::Fuel)[84], 1e-9);
}

TEST(HardEngine, TellsThePlaceAndTheFuelThatItNeeds) {
    Wire wire("interpolate=1");
    engineAt(wire, "3125:57.5:20");
    const EngineTruth& truth = wire.ecu.truth();
    EXPECT_NEAR(truth.column, 4.25, 1e-9);
    EXPECT_NEAR(truth.row, 5.75, 1e-9);
    EXPECT_NEAR(truth.needMs, neededPulse(3125, 0.575), 1e-9);
    EXPECT_NEAR(truth.neededMs, truth.needMs, 1e-9);
    EXPECT_NEAR(truth.neededFor(12.5), truth.needMs, 1e-9);
    EXPECT_NEAR(truth.neededFor(10.0), truth.needMs * 1.25, 1e-9);
    EXPECT_NEAR(truth.givenMs, wire.ecu.engine().pulseMs, 1e-9);
}

TEST(HardEngine, ACutShowsAsLeanAfterTheDelay) {
    Wire wire("drive=3000:30:20,lambdadelay=400:80,lambdalag=0");
    wire.poll();
    wire.pass(2.0);
    wire.poll();
    const double before = wire.ecu.engine().afr;
    EXPECT_LT(before, 15.0);
    EXPECT_EQ(wire.ecu.set("drive", "3000:30:0", wire.now), "");
    wire.now += 395'000;
    wire.ecu.receive('x', wire.now);
    EXPECT_EQ(wire.ecu.truth().mixture, 20.0);
    EXPECT_EQ(wire.ecu.truth().givenMs, 0.0);
    EXPECT_EQ(wire.ecu.engine().afr, before);
    wire.now += 15'000;
    wire.ecu.receive('x', wire.now);
    EXPECT_EQ(wire.ecu.engine().afr, 20.0);
    EXPECT_NEAR(wire.ecu.truth().delayMs, 400.0, 1e-6);
    EXPECT_NEAR(wire.ecu.transportMsAt(3000, 30), 400.0, 1e-6);
    EXPECT_NEAR(wire.ecu.transportMsAt(3000, 100), 80.0, 1e-6);
}

struct Spread {
    double mean;
    double deviation;
};

// Of lambda as the program reads it, over 2000 polls.
Spread spreadOf(Wire& wire) {
    double sum = 0.0;
    double squares = 0.0;
    constexpr int kPolls = 2000;
    for (int i = 0; i < kPolls; ++i) {
        const double lambda = wire.poll().at(7) / 25.6 + 10.0;
        sum += lambda;
        squares += lambda * lambda;
    }
    const double mean = sum / kPolls;
    return {mean, std::sqrt(std::max(squares / kPolls - mean * mean, 0.0))};
}

TEST(HardEngine, NoiseIsAShareOfTheReading) {
    for (const double percent : {1.0, 3.0}) {
        Wire wire("drive=3000:50:20,lambdanoise=" + std::to_string(percent));
        wire.pass(10.0);
        wire.poll();
        const auto [mean, deviation] = spreadOf(wire);
        EXPECT_NEAR(mean, wire.ecu.engine().afr, 0.05);
        EXPECT_NEAR(deviation / mean * 100.0, percent, 0.1 * percent);
    }
}

TEST(HardEngine, WithoutNoiseEachReadingIsTheSame) {
    Wire wire("drive=3000:50:20,lambdanoise=0");
    wire.poll();
    wire.pass(10.0);
    const auto lambda = wire.poll().at(7);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(wire.poll().at(7), lambda);
    }
}

TEST(HardEngine, SeedsGiveDifferentNoise) {
    std::set<Bytes> all;
    for (int seed = 1; seed <= 20; ++seed) {
        Wire wire("drive=3000:50:20,lambdanoise=1,seed=" + std::to_string(seed));
        wire.poll();
        wire.pass(10.0);
        Bytes readings;
        for (int i = 0; i < 50; ++i) {
            readings.push_back(wire.poll().at(7));
        }
        all.insert(readings);
    }
    EXPECT_EQ(all.size(), 20U);
}

TEST(HardEngine, AFaultOfTheSensorBeginsInTheMiddle) {
    Wire wire("drive=3000:50:20,lambdanoise=2");
    wire.poll();
    wire.pass(10.0);
    const auto reads = [&](const char* fault) {
        EXPECT_EQ(wire.ecu.set("lambdafault", fault, wire.now), "");
        std::set<int> bytes;
        for (int i = 0; i < 50; ++i) {
            bytes.insert(wire.poll().at(7));
        }
        return bytes;
    };
    EXPECT_THAT(reads("lean"), testing::ElementsAre(255));
    EXPECT_THAT(reads("rich"), testing::ElementsAre(0));
    EXPECT_THAT(reads("absent"), testing::AllOf(testing::Each(testing::Le(3)), testing::SizeIs(testing::Gt(1))));
    EXPECT_THAT(reads("none"), testing::Each(testing::AllOf(testing::Gt(20), testing::Lt(120))));
}

TEST(HardEngine, AStuckSensorReadsTheSameWhateverIsBurnt) {
    Wire wire("drive=3000:50:20,lambdanoise=2");
    wire.poll();
    wire.pass(10.0);
    wire.poll();
    const double before = wire.ecu.engine().afr;
    EXPECT_EQ(wire.ecu.set("lambdafault", "stuck", wire.now), "");
    EXPECT_EQ(wire.ecu.set("drive", "6000:80:60", wire.now), "");
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(wire.poll().at(7), std::lround((before - 10.0) * 25.6));
    }
    EXPECT_GT(std::abs(wire.ecu.truth().mixture - before), 0.3);
}

TEST(HardEngine, AFaultFromTheStartIsThereAtOnceAndAfterThePowerWasAway) {
    Wire wire("drive=3000:50:20,lambdafault=rich");
    wire.poll();
    EXPECT_EQ(wire.poll().at(7), 0);
    EXPECT_EQ(wire.ecu.set("power", "0", wire.now), "");
    EXPECT_EQ(wire.ecu.set("power", "1", wire.now), "");
    wire.arrives();
    EXPECT_EQ(wire.poll().at(7), 0);
}

// What is burnt after so many milliseconds.
double burntAfter(Wire& wire, Micros ms) {
    wire.now += ms * 1000;
    wire.ecu.receive('x', wire.now);
    return wire.ecu.truth().mixture;
}

// More fuel by a fifth, of which 30 % wet the walls: 70 % of the step at once, the rest with the film's 0.5 s.
TEST(HardEngine, WetWallsTakePartOfMoreFuel) {
    Wire wire("drive=3250:55:20,wetting=30");
    wire.poll();
    setCell(wire, 84, 100);
    wire.pass(10.0);
    wire.poll();
    const double before = wire.ecu.truth().mixture;
    EXPECT_NEAR(before, 12.5 * wire.ecu.trueFuelMap()[84] / 100, 0.001) << "nothing of it gets lost";
    setCell(wire, 84, 120);
    EXPECT_NEAR(burntAfter(wire, 5), before / (1.0 + 0.2 * 0.7), 0.02);
    EXPECT_NEAR(burntAfter(wire, 500), before / (1.0 + 0.2 * (0.7 + 0.3 * 0.632)), 0.01);
    EXPECT_NEAR(burntAfter(wire, 10'000), before / 1.2, 0.001);
}

TEST(HardEngine, TheFilmsTimeIsAsItWasChosen) {
    Wire wire("drive=3250:55:20,wetting=30,wettingtime=1");
    wire.poll();
    setCell(wire, 84, 100);
    wire.pass(20.0);
    wire.poll();
    const double before = wire.ecu.truth().mixture;
    setCell(wire, 84, 120);
    EXPECT_NEAR(burntAfter(wire, 1000), before / (1.0 + 0.2 * (0.7 + 0.3 * 0.632)), 0.01);
}

// The pump's lamp goes out 0.3 s after the throttle's last quick opening; the fuel fades with 0.8 s.
TEST(HardEngine, EnrichmentFadesLongAfterTheLampOfThePump) {
    Wire plain("drive=lap,seed=3");
    Wire rich("drive=lap,seed=3,enrichment=20");
    double most = 0.0;
    double least = 2.0;
    int faded = 0;
    bool lit = false;
    for (int step = 0; step < 60 * 200; ++step) {
        for (Wire* wire : {&plain, &rich}) {
            burntAfter(*wire, 5);
        }
        if (plain.ecu.engine().pulseMs <= 0.0) {
            lit = false;
            continue;
        }
        const double ratio = rich.ecu.engine().pulseMs / plain.ecu.engine().pulseMs;
        most = std::max(most, ratio);
        least = std::min(least, ratio);
        if (lit && !rich.ecu.engine().accelPump) {
            EXPECT_NEAR(ratio, 1.0 + 0.2 * std::exp(-0.3 / 0.8), 0.005);
            ++faded;
        }
        lit = rich.ecu.engine().accelPump;
    }
    EXPECT_NEAR(most, 1.2, 1e-9);
    EXPECT_NEAR(least, 1.0, 1e-3);
    EXPECT_GT(faded, 2);
}

TEST(HardEngine, WetWallsGoOnGivingFuelAfterACut) {
    Wire wire("drive=3250:35:20,wetting=50");
    wire.poll();
    wire.pass(10.0);
    wire.poll();
    const double before = wire.ecu.truth().givenMs;
    EXPECT_EQ(wire.ecu.set("drive", "3250:35:0", wire.now), "");
    burntAfter(wire, 5);
    EXPECT_TRUE(wire.ecu.engine().engineBrake);
    EXPECT_NEAR(wire.ecu.truth().givenMs, 0.5 * before, 0.02 * before);
    EXPECT_EQ(burntAfter(wire, 2000), 20.0);
    EXPECT_NEAR(wire.ecu.truth().givenMs, 0.5 * before * 0.018, 0.002 * before) << "four time constants later";
    EXPECT_EQ(wire.ecu.set("drive", "3250:35:20", wire.now), "");
    burntAfter(wire, 5);
    EXPECT_LT(wire.ecu.truth().givenMs, 0.55 * before) << "the walls are dry";
}

TEST(HardEngine, AColdStartIsColdAndLeanForLong) {
    Wire wire("drive=2050:45:20,coldstart=1");
    wire.poll();
    EXPECT_NEAR(wire.ecu.engine().waterC, -10.0, 1.0);
    EXPECT_EQ(wire.poll().at(3), 40) << "the air: -10, sent with 50 added";
    const double right = 12.5 * wire.ecu.trueFuelMap()[66] / wire.ecu.workingMap(MapKind::Fuel)[66];
    EXPECT_NEAR(wire.ecu.truth().mixture, right * 1.1, 0.01);
    EXPECT_NEAR(wire.ecu.truth().neededMs, wire.ecu.truth().needMs * 1.1, 0.01);
    wire.pass(595.0);
    wire.poll();
    EXPECT_GT(wire.ecu.engine().waterC, 45.0);
    EXPECT_LT(wire.ecu.engine().waterC, 60.0);
    EXPECT_TRUE(wire.ecu.engine().choke);
    wire.pass(595.0);
    wire.poll();
    EXPECT_GT(wire.ecu.engine().waterC, 65.0);
    EXPECT_NEAR(wire.ecu.truth().mixture, right, 0.001);
}

TEST(HardEngine, AColdStartMayBeAskedForWhileItRuns) {
    Wire wire("drive=idle");
    wire.poll();
    wire.pass(500.0);
    wire.poll();
    EXPECT_GT(wire.ecu.engine().waterC, 80.0);
    EXPECT_EQ(wire.ecu.set("coldstart", "1", wire.now), "");
    EXPECT_EQ(wire.ecu.engine().waterC, -10.0);
    wire.pass(100.0);
    wire.poll();
    const double water = wire.ecu.engine().waterC;
    EXPECT_EQ(wire.ecu.set("coldstart", "1", wire.now), "");
    EXPECT_NEAR(wire.ecu.engine().waterC, water, 0.5) << "it is not cooled twice";
    EXPECT_EQ(wire.ecu.set("coldstart", "0", wire.now), "");
    wire.pass(500.0);
    wire.poll();
    EXPECT_GT(wire.ecu.engine().waterC, 80.0);
}

TEST(HardEngine, TheThrottleSensorIsNoisy) {
    Wire wire("drive=3000:50:50,throttlenoise=2");
    wire.poll();
    double sum = 0.0;
    double squares = 0.0;
    constexpr int kPolls = 2000;
    for (int i = 0; i < kPolls; ++i) {
        const double off = wire.poll().at(6) - 125.0;
        sum += off;
        squares += off * off;
    }
    EXPECT_NEAR(sum / kPolls, 0.0, 0.5);
    EXPECT_NEAR(std::sqrt(squares / kPolls), 4.2, 0.4) << "2 % of 210 counts";
}

TEST(HardEngine, ANoisyThrottleSensorDoesNotMoveThePedal) {
    Wire noisy("drive=cruise,throttlenoise=1,need=place");
    Wire quiet("drive=cruise");
    for (int i = 0; i < 300; ++i) {
        noisy.poll();
        quiet.poll();
        ASSERT_EQ(noisy.ecu.engine().throttle, quiet.ecu.engine().throttle);
        ASSERT_EQ(noisy.ecu.engine().rpm, quiet.ecu.engine().rpm);
    }
}

TEST(HardEngine, SeedsGiveTheThrottleSensorAndItsChangeRepeats) {
    const auto readings = [](Wire& wire) {
        Bytes bytes;
        for (int i = 0; i < 50; ++i) {
            bytes.push_back(wire.poll().at(6));
        }
        return bytes;
    };
    Wire first("drive=3000:50:50,throttlenoise=2,seed=3");
    Wire second("drive=3000:50:50,throttlenoise=2,seed=4");
    const Bytes expected = readings(first);
    EXPECT_NE(readings(second), expected);
    Wire third("drive=3000:50:50,throttlenoise=2,seed=4");
    EXPECT_EQ(third.ecu.set("seed", "3", third.now), "");
    EXPECT_EQ(readings(third), expected);
}

// The stored map over the need, for each cell.
void expectErrors(const Wire& wire, double (*error)(std::size_t cell)) {
    const auto need = wire.ecu.trueFuelMap();
    for (std::size_t i = 0; i < 160; ++i) {
        ASSERT_NEAR(wire.ecu.workingMap(MapKind::Fuel).at(i), need.at(i) * (1.0 + error(i)), 0.5 + 1e-9) << i;
        ASSERT_EQ(wire.ecu.workingMap(MapKind::Fuel).at(i), wire.ecu.storedMap(MapKind::Fuel).at(i)) << i;
    }
}

double rich(std::size_t) {
    return 0.12;
}
double lean(std::size_t) {
    return -0.12;
}
double right(std::size_t) {
    return 0.0;
}
double checkered(std::size_t cell) {
    return (cell / 16 + cell % 16) % 2 == 0 ? 0.12 : -0.12;
}

TEST(HardEngine, TheStoredMapIsWrongByAPattern) {
    expectErrors(Wire("mapfault=rich"), rich);
    expectErrors(Wire("mapfault=lean"), lean);
    expectErrors(Wire("mapfault=none"), right);
    expectErrors(Wire("mapfault=checker"), checkered);
    const Wire usual;
    EXPECT_EQ(Wire("mapfault=smooth").ecu.workingMap(MapKind::Fuel), usual.ecu.workingMap(MapKind::Fuel));
}

TEST(HardEngine, AnotherPatternIsStoredWhileItRuns) {
    Wire wire("mapfault=rich");
    const Bytes before(wire.ecu.eeprom().begin(), wire.ecu.eeprom().begin() + 12);
    EXPECT_EQ(wire.ecu.set("mapfault", "checker", wire.now), "");
    expectErrors(wire, checkered);
    EXPECT_THAT(wire.ecu.eeprom().first(12), testing::ElementsAreArray(before)) << "nothing else";
    EXPECT_EQ(wire.ecu.set("mapfault", "wrong", wire.now),
              "mapfault takes smooth, rich, lean, checker or none, not \"wrong\"");
    expectErrors(wire, checkered);
}

TEST(HardEngine, AnEepromFileGoesBeforeThePattern) {
    EcuSettings settings = keys("mapfault=rich");
    settings.eeprom.assign(3001, 77);
    const VirtualEcu ecu(settings);
    EXPECT_EQ(ecu.workingMap(MapKind::Fuel)[84], 77);
}

}  // namespace
}  // namespace korvane::ecu::test
