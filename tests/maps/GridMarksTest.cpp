#include "EditingBench.h"
#include "link/Frames.h"
#include "maps/grid/GridLook.h"
#include "maps/grid/HeatLevels.h"
#include "maps/grid/Selection.h"
#include "support/PropertyWatch.h"

namespace korvane::maps {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using Range = std::optional<CellRange>;

TEST_F(GridEditingTest, TheRangeOfABlockIsAllThatItsCommandsActOn) {
    selectBlock(window_.fuel, 18, 52);
    EXPECT_EQ(blockRange(window_.fuel), (Range{{18, 52}}));
    key(window_.fuel, 18, kKeyPlus);
    std::vector<int> changed;
    for (int cell = 0; cell < 160; ++cell) {
        if (core::checked(tables_.FuelMapOut, cell) != 0) {
            changed.push_back(cell);
        }
    }
    EXPECT_EQ(changed.size(), 35U);
    EXPECT_EQ(changed.front(), 18);
    EXPECT_EQ(changed.back(), 52);
}

TEST_F(GridEditingTest, ABlockKeepsItsRangeWhenTheEngineWhitensItsCells) {
    selectBlock(window_.ign, 3, 6);
    window_.ign(4).BackColor = kWhite;
    EXPECT_EQ(blockRange(window_.ign), (Range{{3, 6}}));
}

TEST_F(GridEditingTest, AColourWithoutASelectionHasNoRange) {
    window_.ign(4).BackColor = controls::kGreen;
    EXPECT_EQ(blockRange(window_.ign), std::nullopt);
    key(window_.ign, 3, kKeyShift, kShift);
    EXPECT_EQ(blockRange(window_.ign), std::nullopt);
}

TEST_F(GridEditingTest, EndsOnWhichNoCommandActsHaveNoRange) {
    selectBlock(window_.ign, 6, 3);
    EXPECT_EQ(blockRange(window_.ign), std::nullopt);
    selectBlock(window_.ign, 6, 160);
    EXPECT_EQ(blockRange(window_.ign), std::nullopt);
}

TEST_F(GridEditingTest, ViewsHearOfASelectionThatEndsThoughNoColourChanges) {
    selectBlock(window_.ign, 3, 6);
    int heard = 0;
    const support::PropertyWatch watch(window_.ign, &window_.ign.SelFirst, [&] { ++heard; });
    window_.ign(3).keyDown(66, 0);
    EXPECT_EQ(blockRange(window_.ign), std::nullopt);
    EXPECT_EQ(heard, 1);
}

class EngineRingTest : public GridEditingTest {
protected:
    EngineRingTest() {
        openPort();
        main_.TimerRequestData.Interval = 200;
        main_.TimerRequestData.Enabled = true;
    }
    void live(std::int16_t cell) {
        main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now());
        tables_.MapPlace = cell;
        window_.updateMapPlace();
    }
};

TEST_F(EngineRingTest, StandsInEachGridOfTheWindow) {
    live(40);
    for (auto* grid : {&window_.fuel, &window_.ign, &window_.pwm, &window_.analys}) {
        EXPECT_EQ(grid->EngineCell.get(), 40);
    }
    live(41);
    EXPECT_EQ(window_.fuel.EngineCell.get(), 41);
}

TEST_F(EngineRingTest, GoesWhenNoFramesCome) {
    live(40);
    machine_.pump.wait(900);
    EXPECT_EQ(window_.fuel.EngineCell.get(), 40);
    machine_.pump.wait(600);
    EXPECT_EQ(window_.fuel.EngineCell.get(), std::nullopt);
}

TEST_F(EngineRingTest, GoesWithThePort) {
    live(40);
    main_.MSComm1.setPortOpen(false);
    machine_.pump.wait(400);
    EXPECT_EQ(window_.fuel.EngineCell.get(), std::nullopt);
}

// A message box may hold the window's ticks for as long as it is open.
TEST_F(EngineRingTest, GoesWithThePortAtOnce) {
    live(40);
    main_.MSComm1.setPortOpen(false);
    EXPECT_EQ(window_.fuel.EngineCell.get(), std::nullopt);
}

TEST_F(GridEditingTest, ScriptsReachTheLookAndTheStatusOfAWindow) {
    const auto* const tint = window_.findProperty("HeatTint");
    ASSERT_NE(tint, nullptr);
    tint->set(window_, true);
    EXPECT_TRUE(window_.look.HeatTint);
    EXPECT_THROW(tint->set(window_, std::string("yes")), platform::RuntimeError);
    window_.look.AlignNumbers = true;
    EXPECT_EQ(window_.findProperty("AlignNumbers")->get(window_), controls::Value(true));
    key(window_.ign, 3, kKeyPlus);
    EXPECT_EQ(window_.findProperty("UnsentStatus")->get(window_), controls::Value(std::string("Not sent: 1 ignition")));
    EXPECT_EQ(window_.findProperty("UnsentStatus")->set, nullptr);
}

TEST(HeatLevels, RiseEvenlyFromTheLowestToTheHighest) {
    std::vector<double> numbers;
    for (int i = 0; i <= 32; ++i) {
        numbers.push_back(100 + i * 10);
    }
    const auto levels = heatLevels(numbers);
    for (std::size_t i = 0; i < 32; ++i) {
        EXPECT_EQ(levels[i], static_cast<int>(i));
    }
    EXPECT_EQ(levels[32], 31);
}

TEST(HeatLevels, AreAllTheLowestInAnEvenMap) {
    EXPECT_THAT(heatLevels(std::vector<double>{7, 7, 7}), Each(0));
    EXPECT_THAT(heatLevels({}), IsEmpty());
}

TEST(GridLook, IsOffUntilItIsChosenAndRemembered) {
    support::VirtualMachine machine;
    {
        GridLook look(machine.preferences);
        EXPECT_FALSE(look.HeatTint);
        EXPECT_FALSE(look.AlignNumbers);
        look.HeatTint = true;
    }
    GridLook again(machine.preferences);
    EXPECT_TRUE(again.HeatTint);
    EXPECT_FALSE(again.AlignNumbers);
    again.HeatTint = false;
    again.AlignNumbers = true;
    const GridLook third(machine.preferences);
    EXPECT_FALSE(third.HeatTint);
    EXPECT_TRUE(third.AlignNumbers);
}

}  // namespace
}  // namespace korvane::maps
