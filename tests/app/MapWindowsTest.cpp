// Which map window opens, how many of each there are, and which of them the rest of the program knows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "maps/FrmInjScale.h"
#include "maps/MapForm.h"
#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr controls::Color kBlue = 0xFF0000;

class MapWindowsTest : public testing::Test, public support::VirtualProgram {
protected:
    // The open map windows, the newest last.
    [[nodiscard]] std::vector<maps::MapForm*> open() const {
        std::vector<maps::MapForm*> forms;
        for (auto* each : windows.loaded()) {
            if (auto* const form = dynamic_cast<maps::MapForm*>(each)) {
                forms.push_back(form);
            }
        }
        return forms;
    }
    [[nodiscard]] std::vector<std::string_view> names() const {
        std::vector<std::string_view> names;
        for (const auto* each : open()) {
            names.push_back(each->name());
        }
        return names;
    }
    // The window that a press of btnKartat has opened for a firmware type.
    maps::MapForm& openFor(int swType) {
        tables.SWType = swType;
        window.btnKartat.press();
        return *open().back();
    }
    maps::MapForm& openLarge() {
        window.Command1.press();
        return *open().back();
    }
    [[nodiscard]] const link::MapWindow* known() { return program.windows().curMapWindow; }

    // Injectors twice as large: each count becomes half. `opener` is the window whose button is pressed.
    void rescale(maps::MapForm& opener) {
        opener.btnInjScale.press();
        for (auto* each : windows.loaded()) {
            if (auto* const scale = dynamic_cast<maps::FrmInjScale*>(each)) {
                scale->txtInjectorOld.Text = "500";
                scale->txtInjectorNew.Text = "1000";
                scale->btnInjectorChange.press();
            }
        }
    }
    void halveFuel(maps::MapForm& opener) {
        tables.FuelMapIn.fill(100);
        tables.FuelMapOut.fill(100);
        rescale(opener);
        EXPECT_EQ(tables.FuelMapOut[17], 50);
    }
};

TEST_F(MapWindowsTest, FourteenFifteenAnd213HaveLargeMaps) {
    for (const int swType : {14, 15, 213}) {
        auto& opened = openFor(swType);
        EXPECT_EQ(opened.name(), "frmMaps_Large") << swType;
        EXPECT_TRUE(opened.Visible);
        static_cast<void>(opened.unload());
    }
    for (const int swType : {0, 11, 13, 16, 212, 214}) {
        auto& opened = openFor(swType);
        EXPECT_EQ(opened.name(), "frmMaps") << swType;
        static_cast<void>(opened.unload());
    }
}

TEST_F(MapWindowsTest, LargeMapsCanBeOpenedForAnyType) {
    tables.SWType = 11;
    openLarge();
    EXPECT_THAT(names(), ElementsAre("frmMaps_Large"));
}

TEST_F(MapWindowsTest, EachPressMakesAnotherLargeWindow) {
    auto& first = openFor(14);
    auto& second = openFor(14);
    EXPECT_NE(&first, &second);
    EXPECT_THAT(names(), ElementsAre("frmMaps_Large", "frmMaps_Large"));
    EXPECT_EQ(known(), &second);
}

TEST_F(MapWindowsTest, FrmMapsIsOneAtATime) {
    auto& first = openFor(11);
    first.chkTrace.press();
    auto& second = openFor(11);
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(second.chkTrace.Value.get(), 1);
    EXPECT_THAT(names(), ElementsAre("frmMaps"));
}

TEST_F(MapWindowsTest, AWindowThatWasClosedComesBackAsDesigned) {
    auto& first = openFor(11);
    first.chkTrace.press();
    EXPECT_TRUE(first.unload());
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(openFor(11).chkTrace.Value.get(), 0);
}

TEST_F(MapWindowsTest, TheNewestIsTheOneThatIsKnown) {
    EXPECT_EQ(known(), nullptr);
    auto& ordinary = openFor(11);
    EXPECT_EQ(known(), &ordinary);
    auto& large = openLarge();
    EXPECT_EQ(known(), &large);
    openFor(11);
    EXPECT_EQ(known(), &ordinary) << "opened again, also if it was there";
    program.analyser().Setpoint(13.0F, 17);
    EXPECT_EQ(ordinary.analys(17).ToolTipText.get(), "13");
    EXPECT_EQ(large.analys(17).ToolTipText.get(), "12.5");
}

TEST_F(MapWindowsTest, TheOlderOfTwoMayGoUnnoticed) {
    auto& first = openFor(14);
    auto& second = openFor(14);
    second.chkInjAnal.press();
    second.chkUseTuningAgent.press();
    EXPECT_TRUE(first.unload());
    EXPECT_EQ(known(), &second);
    EXPECT_TRUE(program.analyser().AgentEnable());
    program.analyser().Setpoint(13.0F, 17);
    EXPECT_EQ(second.analys(17).ToolTipText.get(), "13");
}

TEST_F(MapWindowsTest, WhenTheKnownOneGoesNoneIsAndTheAgentStops) {
    openFor(14);
    auto& second = openFor(14);
    second.chkInjAnal.press();
    second.chkUseTuningAgent.press();
    EXPECT_TRUE(second.unload());
    EXPECT_EQ(known(), nullptr);
    EXPECT_FALSE(program.analyser().AgentEnable());
    EXPECT_THAT(names(), ElementsAre("frmMaps_Large"));
    receiveFrame('f', support::Bytes(160, 50));
    pump.wait(1000);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(MapWindowsTest, InjectorsAreRescaledOnFrmMapsAlsoBelowAnotherWindow) {
    auto& ordinary = openFor(11);
    auto& large = openLarge();
    halveFuel(large);
    EXPECT_EQ(ordinary.fuel(17).ForeColor.get(), kBlue);
    EXPECT_NE(large.fuel(17).ForeColor.get(), kBlue);
}

TEST_F(MapWindowsTest, WithoutFrmMapsNoWindowShowsTheRescaledMap) {
    auto& large = openLarge();
    halveFuel(large);
    EXPECT_NE(large.fuel(17).ForeColor.get(), kBlue);
    EXPECT_THAT(names(), ElementsAre("frmMaps_Large"));
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(MapWindowsTest, AllOfThemGoWithTheMainWindow) {
    openFor(11);
    openFor(14);
    openFor(14);
    EXPECT_TRUE(window.unload());
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(known(), nullptr);
}

}  // namespace
}  // namespace korvane::app
