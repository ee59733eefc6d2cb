// The drives: whether the engine behaves like an engine.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

// Looks at the engine every 20 ms for so many seconds.
template <typename Look>
void watch(Wire& wire, double seconds, Look look) {
    for (int i = 0; i < static_cast<int>(seconds * 50); ++i) {
        wire.ecu.receive('x', wire.now);
        look(wire.ecu.engine());
        wire.arrives(20'000);
    }
}

TEST(Engine, IsCrankedAndThenIdles) {
    Wire wire("drive=idle");
    bool cranked = false;
    watch(wire, 2.5, [&](const EngineState& engine) {
        cranked = cranked || (engine.rpm > 150 && engine.rpm < 400 && engine.volts < 11.5);
    });
    EXPECT_TRUE(cranked);
    watch(wire, 60, [&](const EngineState& engine) {
        ASSERT_GT(engine.rpm, 800);
        ASSERT_LT(engine.rpm, 1000);
        ASSERT_TRUE(engine.idling);
        ASSERT_NEAR(engine.volts, 13.9, 0.2);
    });
}

TEST(Engine, IdleSpeedFollowsItsSetting) {
    Wire wire("drive=idle");
    wire.poll();
    wire.send({'W', 0xF8, 0x01, 0xDC, 0xDC, 0xA8, 'W', 0xF9, 0x01, 0x05, 0x05, 0xA8});  // 1500
    wire.pass(5);
    wire.poll();
    EXPECT_NEAR(wire.ecu.engine().rpm, 1540, 60);
}

TEST(Engine, WarmsUp) {
    Wire wire("drive=idle");
    double water = 0;
    watch(wire, 300, [&](const EngineState& engine) {
        ASSERT_GE(engine.waterC, water);
        water = engine.waterC;
    });
    EXPECT_GT(water, 80);
    EXPECT_LT(water, 95);
    EXPECT_GT(wire.ecu.engine().oilC, 60);
    EXPECT_FALSE(wire.ecu.engine().choke);
}

TEST(Engine, ALapVisitsTheMap) {
    Wire wire;
    std::set<int> cells;
    std::set<int> rows;
    double fastest = 0;
    double boost = 0;
    int idle = 0;
    int cut = 0;
    int limited = 0;
    watch(wire, 170, [&](const EngineState& engine) {
        cells.insert(engine.cell);
        rows.insert(engine.cell / 16);
        fastest = std::max(fastest, engine.rpm);
        boost = std::max(boost, engine.manifoldBar);
        idle += engine.idling ? 1 : 0;
        cut += engine.engineBrake ? 1 : 0;
        limited += engine.limiter ? 1 : 0;
    });
    EXPECT_GE(cells.size(), 75U);
    EXPECT_THAT(rows, testing::IsSupersetOf({2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_GT(fastest, 6900);
    EXPECT_LT(fastest, 7400);
    EXPECT_GT(boost, 1.25);
    EXPECT_LT(boost, 1.5);
    EXPECT_GT(idle, 100);
    EXPECT_GT(cut, 200);
    EXPECT_GT(limited, 0);
}

TEST(Engine, LapsDiffer) {
    Wire wire;
    wire.poll();
    std::vector<int> first;
    std::vector<int> second;
    watch(wire, 150, [&](const EngineState& engine) { first.push_back(static_cast<int>(engine.rpm)); });
    watch(wire, 150, [&](const EngineState& engine) { second.push_back(static_cast<int>(engine.rpm)); });
    EXPECT_NE(first, second);
}

TEST(Engine, OverrunCutsTheFuel) {
    Wire wire;
    int overrun = 0;
    double closedFor = 0;
    watch(wire, 170, [&](const EngineState& engine) {
        closedFor = engine.throttle < 0.01 && engine.rpm > 1900 ? closedFor + 0.02 : 0;
        if (closedFor > 0.6) {
            ++overrun;
            ASSERT_TRUE(engine.engineBrake);
            ASSERT_EQ(engine.duty, 0);
            ASSERT_GT(engine.afr, 18);
        }
    });
    EXPECT_GT(overrun, 100);
}

TEST(Engine, TheEngineBrakeIsASetting) {
    Wire wire;
    wire.poll();
    wire.send({'M', 0x20, 0x1C, 0x90, 0x1A, 0x3F, 0x09, 0, 128, 6, 0xB2});
    watch(wire, 120, [&](const EngineState& engine) { ASSERT_FALSE(engine.engineBrake); });
}

TEST(Engine, StaysBelowTheLimit) {
    Wire wire("drive=pull");
    wire.poll();
    wire.send({'W', 2, 0, 0xA0, 0xA0, 0xA8, 'W', 3, 0, 0x0F, 0x0F, 0xA8});  // 4000
    bool limited = false;
    watch(wire, 60, [&](const EngineState& engine) {
        ASSERT_LT(engine.rpm, 4200);
        limited = limited || engine.limiter;
    });
    EXPECT_TRUE(limited);
}

TEST(Engine, BoostFollowsItsSetpoints) {
    Wire wire("drive=pull");
    wire.poll();
    for (int cell = 540; cell < 556; ++cell) {
        wire.send({'W', static_cast<std::uint8_t>(cell % 256), 2, 100, 100, 0xA8});
    }
    wire.pass(3);
    watch(wire, 60, [&](const EngineState& engine) { ASSERT_LT(engine.manifoldBar, 1.02); });
}

TEST(Engine, StallsWithoutInjection) {
    Wire wire("drive=idle");
    wire.poll();
    wire.pass(5);
    wire.send({'M', 0x20, 0x1C, 0x90, 0x1A, 0x37, 0x0D, 0, 128, 6, 0xB2});
    wire.pass(3);
    wire.poll();
    EXPECT_LT(wire.ecu.engine().rpm, 50);
    EXPECT_GT(wire.ecu.engine().afr, 19.9);
}

TEST(Engine, LoadMayComeFromTheThrottle) {
    Wire wire("drive=cruise");
    wire.poll();
    wire.send({'W', 0xF2, 0x01, 1, 1, 0xA8});  // LOAD_MODE
    wire.pass(5);
    watch(wire, 30, [&](const EngineState& engine) {
        ASSERT_NEAR(engine.loadPercent, engine.throttle * 100.0, 0.5);
        ASSERT_EQ(engine.cell / 16, static_cast<int>(engine.loadPercent / 10.0));
    });
}

TEST(Engine, CruiseStaysInTheMiddleOfTheMap) {
    Wire wire("drive=cruise");
    wire.poll();
    wire.pass(15);
    watch(wire, 30, [&](const EngineState& engine) {
        ASSERT_GT(engine.rpm, 1900);
        ASSERT_LT(engine.rpm, 3600);
        ASSERT_FALSE(engine.engineBrake);
    });
}

TEST(Engine, ADriveChangesWithoutAStart) {
    Wire wire("drive=cruise");
    wire.poll();
    wire.pass(20);
    EXPECT_EQ(wire.ecu.set("drive", "lap", wire.now), "");
    watch(wire, 30, [&](const EngineState& engine) { ASSERT_GT(engine.rpm, 700); });
    EXPECT_EQ(wire.ecu.set("drive", "off", wire.now), "");
    wire.pass(5);
    wire.poll();
    EXPECT_EQ(wire.ecu.engine().rpm, 0);
    EXPECT_EQ(wire.ecu.set("drive", "idle", wire.now), "");
    wire.pass(5);
    wire.poll();
    EXPECT_GT(wire.ecu.engine().rpm, 800);
}

TEST(Engine, TheStoredMapIsOffByUpToAnEighthBothWays) {
    for (const char* type : {"type=11", "type=14"}) {
        const Wire wire(type);
        const auto need = wire.ecu.trueFuelMap();
        const MapCells& given = wire.ecu.workingMap(MapKind::Fuel);
        double richest = 0;
        double leanest = 0;
        const std::size_t columns = std::string_view(type) == "type=14" ? 20 : 16;
        for (std::size_t i = 3 * columns; i < 10 * columns; ++i) {
            const double error = given.at(i) / need.at(i) - 1.0;
            richest = std::max(richest, error);
            leanest = std::min(leanest, error);
        }
        EXPECT_GT(richest, 0.08) << type;
        EXPECT_LT(richest, 0.14) << type;
        EXPECT_LT(leanest, -0.08) << type;
        EXPECT_GT(leanest, -0.14) << type;
    }
}

TEST(Engine, TheNeedRisesWithLoadAndHardlyFallsWithSpeed) {
    const Wire wire;
    const auto need = wire.ecu.trueFuelMap();
    for (std::size_t i = 0; i < 160; ++i) {
        EXPECT_GT(need.at(i), 0);
        if (i >= 16) {
            EXPECT_GT(need.at(i), need.at(i - 16) + 5);
        }
        if (i % 16 != 0) {
            EXPECT_GT(need.at(i), need.at(i - 1) - 3);
        }
    }
}

TEST(Engine, TheMixtureIsRightWhereTheMapIsRight) {
    Wire wire;
    const auto need = wire.ecu.trueFuelMap();
    for (std::uint8_t i = 0; i < 160; ++i) {
        const auto count = static_cast<std::uint8_t>(need.at(i) + 0.5);
        wire.send({'g', i, i, count, count, 0x98});
    }
    double closedFor = 0;
    watch(wire, 170, [&](const EngineState& engine) {
        closedFor = engine.throttle < 0.02 || engine.runningSeconds < 3 || engine.accelPump ? 0.5 : closedFor - 0.02;
        if (closedFor < 0) {
            ASSERT_NEAR(engine.afr, 12.5, 0.25);
        }
    });
}

}  // namespace
}  // namespace korvane::ecu::test
