// The window in the program: how it opens and goes, and the times that it takes of the virtual engine.
#include <gmock/gmock.h>

#include "core/Numbers.h"
#include "ecu/VirtualEcu.h"
#include "performance/FrmPowerCalc.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::performance {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr double kStart = 2500;
constexpr double kStop = 6500;
constexpr double kTick = 0.050;  // s
constexpr double kDriven = 100;  // s, some three rounds of pulls

FrmPowerCalc* openWindow(const support::VirtualMachine& machine) {
    for (auto* const window : machine.windows.loaded()) {
        if (auto* const found = dynamic_cast<FrmPowerCalc*>(window)) {
            return found;
        }
    }
    return nullptr;
}

ecu::EcuSettings pulling(const std::string& seed) {
    ecu::EcuSettings settings;
    EXPECT_EQ(ecu::parseKeyList(settings, "drive=pull,seed=" + seed), "");
    return settings;
}

// How long the engine takes from one speed to the other, each time: the engine alone, without program, line and
// firmware, in its own steps and with the whole turns that a live frame has.
std::vector<double> pullsOfTheEngine(const ecu::EcuSettings& settings) {
    const auto calibration = ecu::calibrationOf(ecu::FirmwareMemory(ecu::firmwareType(settings.type), {}));
    ecu::EngineModel engine(settings.seed);
    engine.drive(settings.drive);
    std::vector<double> pulls;
    bool armed = true;
    std::optional<int> begun;
    for (int step = 0; step < static_cast<int>(kDriven / ecu::EngineModel::kStep); ++step) {
        engine.step(calibration);
        const double rpm = std::round(engine.state().rpm);
        if (armed && rpm >= kStart) {
            begun = step;
            armed = false;
        } else if (begun && rpm >= kStop) {
            pulls.push_back((step - *begun) * ecu::EngineModel::kStep);
            begun.reset();
        } else if (!begun && rpm <= kStart) {
            armed = true;
        }
    }
    return pulls;
}

std::vector<double> timesIn(const controls::ListBox& list) {
    std::vector<double> times;
    for (int row = 0; row < list.ListCount(); ++row) {
        const std::string& text = list.List(row);
        if (const auto at = text.find("Time: "); at != std::string::npos) {
            times.push_back(core::val(text.substr(at + 6)));
        }
    }
    return times;
}

TEST(EnginePull, IsTimedWithinOneTickOfTheEnginesOwnTime) {
    for (const char* seed : {"1", "2", "7", "99"}) {
        const auto settings = pulling(seed);
        support::EcuDevice device(settings);
        support::VirtualProgram program(&device);
        program.connect();
        program.window.btnTuningHelp.press();
        auto* const window = openWindow(program);
        ASSERT_NE(window, nullptr);
        window->txtUsedGear.Text = "3";
        program.pump.wait(static_cast<int>(kDriven * 1000));
        const auto timed = timesIn(window->List1);
        const auto own = pullsOfTheEngine(settings);
        ASSERT_GE(own.size(), 2U) << seed;
        ASSERT_EQ(timed.size(), own.size()) << seed;
        for (std::size_t i = 0; i < own.size(); ++i) {
            EXPECT_NEAR(timed[i], own[i], kTick) << "seed " << seed << ", pull " << i;
        }
    }
}

TEST(TuningHelper, IsOneWindowHoweverOftenItsButtonIsPressed) {
    support::VirtualProgram program;
    EXPECT_EQ(openWindow(program), nullptr);
    program.window.btnTuningHelp.press();
    auto* const first = openWindow(program);
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->Visible);
    const auto loaded = program.windows.loaded().size();
    program.window.btnTuningHelp.press();
    EXPECT_THAT(program.windows.loaded(), SizeIs(loaded));
    EXPECT_EQ(openWindow(program), first);
}

TEST(TuningHelper, StartsAnewWithEachOpening) {
    support::VirtualProgram program;
    program.window.btnTuningHelp.press();
    openWindow(program)->txtPera.Text = "4.1";
    EXPECT_TRUE(openWindow(program)->unload());
    EXPECT_EQ(openWindow(program), nullptr);
    program.pump.wait(1000);
    program.window.btnTuningHelp.press();
    EXPECT_EQ(openWindow(program)->txtPera.Text.get(), "3.4");
}

TEST(TuningHelper, ReadsTheEnginesSpeedFromTheMainWindow) {
    support::VirtualProgram program;
    program.window.btnTuningHelp.press();
    openWindow(program)->txtUsedGear.Text = "2";
    program.window.lblValue(0).Caption = "6500";
    program.pump.wait(50);
    EXPECT_EQ(openWindow(program)->txtSpeed.Text.get(), "91.2");
}

TEST(TuningHelper, GoesWithTheMainWindow) {
    support::VirtualProgram program;
    program.window.btnTuningHelp.press();
    EXPECT_TRUE(program.window.unload());
    EXPECT_EQ(openWindow(program), nullptr);
    EXPECT_THAT(program.log.lines, IsEmpty());
}

}  // namespace
}  // namespace korvane::performance
