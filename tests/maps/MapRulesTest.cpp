// Where two of the map window's rules meet: one background for three marks, the followed focus and a block, features
// and the first reads, a file's offset and its fuel map.
#include <string>
#include <vector>

#include "EditingBench.h"
#include "TransferBench.h"
#include "maps/MapForm.h"
#include "support/PropertyWatch.h"

namespace korvane::maps {
namespace {

using controls::kGreen;
using controls::kRed;
using controls::kWhite;
using controls::kYellow;
using testing::Each;
using testing::ElementsAre;

class MapRules : public MapsBench {
protected:
    MapRules() { tables_.Features = -1; }

    FrmMaps& open() {
        window_.show();
        return window_;
    }
    void runsIn(int place) {
        tables_.MapPlace = static_cast<std::int16_t>(place);
        window_.updateMapPlace();
    }
    void clickFuel(int cell, int shift) {
        window_.setFocus(&window_.fuel(cell));
        window_.fuel(cell).mouseUp(1, shift, 0.0, 0.0);
    }
    // Green from the first cell on; the last one, where the focus is, is yellow.
    void selectFuel(int first, int last) {
        clickFuel(first, kShift);
        clickFuel(last, kShift);
    }
    // With the keys; the focus ends on the last cell.
    void selectIgnition(int first, int last) {
        window_.setFocus(&window_.ign(first));
        window_.ign(first).keyDown(controls::kKeyShift, kShift);
        for (int cell = first; cell < last; ++cell) {
            window_.ign(cell).keyDown(controls::kKeyRight, kShift);
        }
    }
    [[nodiscard]] controls::Color fuelBack(int cell) { return window_.fuel(cell).BackColor; }

    FrmMaps window_{machine_.machine, context_};
};

TEST_F(MapRules, TheRunningCellIsRedOverASelectionsGreen) {
    open();
    selectFuel(17, 20);
    ASSERT_EQ(fuelBack(18), kGreen);
    runsIn(18);
    EXPECT_EQ(fuelBack(17), kGreen);
    EXPECT_EQ(fuelBack(18), kRed);
    EXPECT_EQ(fuelBack(19), kGreen);
    runsIn(19);
    EXPECT_EQ(fuelBack(18), kWhite) << "the green does not come back";
    EXPECT_EQ(fuelBack(19), kRed);
    EXPECT_EQ(window_.fuel.SelFirst, 18);
    EXPECT_EQ(window_.fuel.SelLast, 21) << "the block stands whatever its colour";
}

TEST_F(MapRules, ASelectionIsGreenOverTheRunningCellsRed) {
    open();
    runsIn(18);
    selectFuel(17, 20);
    EXPECT_EQ(fuelBack(18), kGreen);
    runsIn(18);
    EXPECT_EQ(fuelBack(18), kRed);
}

TEST_F(MapRules, TheFocusIsYellowOverRedAndRedComesBackWithTheNextPacket) {
    open();
    runsIn(20);
    window_.setFocus(&window_.ign(20));
    EXPECT_EQ(window_.ign(20).BackColor.get(), kYellow);
    EXPECT_EQ(fuelBack(20), kRed) << "the focus is in the other grid";
    runsIn(20);
    EXPECT_EQ(window_.ign(20).BackColor.get(), kRed);
    window_.setFocus(&window_.btnHelp);
    EXPECT_EQ(window_.ign(20).BackColor.get(), kWhite);
}

TEST_F(MapRules, TheFollowedCellTurnsYellowAndThenRed) {
    open().chkFocusOnFuel.press();
    runsIn(20);
    ASSERT_EQ(fuelBack(20), kRed);
    machine_.pump.wait(333);
    EXPECT_EQ(fuelBack(20), kYellow);
    runsIn(20);
    EXPECT_EQ(fuelBack(20), kRed);
}

TEST_F(MapRules, FollowingTheEngineOnTheIgnitionGridEndsABlockThere) {
    open();
    selectIgnition(20, 22);
    ASSERT_EQ(window_.ign.SelFirst, 21);
    ASSERT_EQ(window_.ign.SelLast, 23);
    ASSERT_EQ(window_.ign(21).BackColor.get(), kGreen);
    tables_.IgnMapOut.fill(100);
    tables_.MapPlace = 50;
    window_.chkFocusOnIGN.press();
    machine_.pump.wait(333);
    EXPECT_EQ(window_.activeControl(), &window_.ign(50));
    EXPECT_EQ(window_.ign.SelFirst, 0);
    EXPECT_EQ(window_.ign.SelLast, 0);
    for (const int cell : {20, 21, 22}) {
        EXPECT_EQ(window_.ign(cell).BackColor.get(), kWhite) << cell;
    }
    window_.ign(50).keyDown(controls::kKeyPlus, kNoShift);
    EXPECT_EQ(tables_.IgnMapOut[50], 101);
    EXPECT_EQ(tables_.IgnMapOut[20], 100);
    EXPECT_EQ(tables_.IgnMapOut[21], 100);
}

// Without a feature the buttons are disabled; what their presses ask is asked all the same.
TEST_F(MapRules, TheFirstReadsAskAlsoForWhatTheEcuDoesNotOffer) {
    tables_.Features = 0;
    openPort();
    open();
    ASSERT_FALSE(window_.btnReadFuel.Enabled || window_.btnReadIgn.Enabled);
    machine_.pump.wait(1000);
    EXPECT_THAT(sent(), ElementsAre('m', 'f', 'a', 'p', 0, 0x8F));
}

double halfMillisecond(core::SharedTables&) {
    return 0.5;
}

class TuneFileOffset : public TransferBench {
protected:
    TuneFileOffset() : TransferBench(kOrdinaryMaps, Halves::One, &halfMillisecond) { window_.txtMisc(2).Text = "1"; }

    // Ten counts in each fuel cell and an injection offset of nine.
    void load() {
        const std::string content = "Injection\r\n" + numbers(160, "10") + "Ignition\r\n" + numbers(160, "20") +
                                    "Misc\r\n" + " 52  33  40  35  0  0  9  128  5 \r\n" + "PWM\r\n" +
                                    numbers(160, "30") + "PARAMS\r\n";
        machine_.dialogs.answerFile(machine_.folder.write("tune.txt", content).string());
        window_.btnLoad.press();
        EXPECT_TRUE(machine_.dialogs.takeMessages().empty());
    }
    static std::string numbers(int count, const std::string& number) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += ' ' + number + (i % 16 == 15 ? " \r\n" : " ");
        }
        return text;
    }
};

// (10 + 9) * 0.5; with the box as it was it would have been (10 + 1) * 0.5 first.
TEST_F(TuneFileOffset, IsInTheFuelCellsFromTheStartAsCounts) {
    tables_.InjOff_type = 1;
    const support::PropertyValues shown(window_.fuel(17), window_.fuel(17).Text);
    load();
    EXPECT_EQ(window_.txtMisc(2).Text.get(), "9");
    EXPECT_THAT(shown.values, ElementsAre("9.5"));
}

// 10 * 0.5 + 9 * 0.25.
TEST_F(TuneFileOffset, IsInTheFuelCellsFromTheStartAsTime) {
    tables_.InjOff_type = 0;
    tables_.TickF = 0.25;
    const support::PropertyValues shown(window_.fuel(17), window_.fuel(17).Text);
    load();
    EXPECT_THAT(shown.values, ElementsAre("7.25"));
}

}  // namespace
}  // namespace korvane::maps
