#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "core/history/MapHistory.h"
#include "platform/RuntimeError.h"
#include "support/ErrorOf.h"
#include "support/MachineBench.h"

namespace korvane::core {
namespace {

using Kind = Cause::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kFuel = EditedMap::Fuel;

class MapHistoryTest : public support::MachineBench {
protected:
    // What a tuner's + on a cell does.
    void press(std::size_t cell, int by = 1) {
        const auto kind = by > 0 ? Kind::KeyUp : Kind::KeyDown;
        const MapHistory::Change change(&history_, Cause::cells(kind, kFuel, cell, cell));
        tables_.FuelMapOut.at(cell) = static_cast<std::uint8_t>(tables_.FuelMapOut.at(cell) + by);
    }
    void raiseBlock(std::size_t first, std::size_t last) {
        const MapHistory::Change change(&history_, Cause::cells(Kind::BlockUp, kFuel, first, last));
        for (auto cell = first; cell <= last; ++cell) {
            ++tables_.FuelMapOut.at(cell);
        }
    }
    void read(EditedMap map, std::size_t first, std::size_t count, std::uint8_t byte) {
        const MapHistory::Change change(&history_, Cause::read(map, first, count));
        auto& image = workingMap(tables_, map);
        std::fill_n(image.begin() + static_cast<std::ptrdiff_t>(first), count, byte);
    }
    void readFuel(std::uint8_t byte) { read(kFuel, 0, 160, byte); }
    void pass(int milliseconds) { virtual_.pump.wait(milliseconds); }
    // Far enough from what was done before that nothing is counted with it.
    void rest() { pass(10'000); }
    [[nodiscard]] std::vector<std::string> words() const {
        std::vector<std::string> all;
        for (std::size_t number = 1; number <= history_.count(); ++number) {
            all.push_back(history_.step(number).words());
        }
        return all;
    }
    [[nodiscard]] int fuel(std::size_t cell) const { return tables_.FuelMapOut.at(cell); }

    MapImages tables_;
    MapHistory history_{tables_, virtual_.pump};
};

TEST_F(MapHistoryTest, UndoBringsTheByteBackAndRedoBringsItAgain) {
    readFuel(90);
    press(17);
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(fuel(17), 90);
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(MapHistoryTest, AStepIsNamedByMapCellAndCounts) {
    readFuel(90);
    press(17, 3);
    EXPECT_THAT(words(), ElementsAre("Fuel: cell 18 from 90 to 93"));
}

TEST_F(MapHistoryTest, EqualBlockCommandsWithinThreeSecondsAreOneStep) {
    readFuel(90);
    raiseBlock(16, 33);
    pass(3000);
    raiseBlock(16, 33);
    pass(3000);
    raiseBlock(16, 33);
    EXPECT_THAT(words(), ElementsAre("Fuel: block 17 to 34 up by 3"));
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(fuel(16), 90);
    EXPECT_EQ(fuel(33), 90);
}

TEST_F(MapHistoryTest, AfterThreeSecondsAnEqualCommandIsAStepOfItsOwn) {
    readFuel(90);
    raiseBlock(16, 33);
    pass(3001);
    raiseBlock(16, 33);
    EXPECT_THAT(words(), ElementsAre("Fuel: block 17 to 34 up by 1", "Fuel: block 17 to 34 up by 1"));
}

TEST_F(MapHistoryTest, AnotherBlockAnotherCellAndTheOtherDirectionAreStepsOfTheirOwn) {
    readFuel(90);
    raiseBlock(16, 33);
    raiseBlock(16, 32);
    press(5);
    press(6);
    press(6, -1);
    EXPECT_EQ(history_.count(), 5U);
}

TEST_F(MapHistoryTest, EachKeyOnACellIsAStep) {
    readFuel(90);
    press(17);
    press(17);
    EXPECT_THAT(words(), ElementsAre("Fuel: cell 18 from 90 to 91", "Fuel: cell 18 from 91 to 92"));
}

TEST_F(MapHistoryTest, ACommandBehindAnUndoIsNotCountedWithTheStepBefore) {
    readFuel(90);
    raiseBlock(17, 33);
    press(50);
    static_cast<void>(history_.goTo(1));
    raiseBlock(17, 33);
    EXPECT_THAT(words(), ElementsAre("Fuel: block 18 to 34 up by 1", "Fuel: block 18 to 34 up by 1"));
}

TEST_F(MapHistoryTest, ACommandBehindARedoIsNotCountedWithTheStepBefore) {
    readFuel(90);
    raiseBlock(17, 33);
    static_cast<void>(history_.goTo(0));
    static_cast<void>(history_.goTo(1));
    raiseBlock(17, 33);
    EXPECT_THAT(words(), ElementsAre("Fuel: block 18 to 34 up by 1", "Fuel: block 18 to 34 up by 1"));
}

TEST_F(MapHistoryTest, ANewChangeDropsWhatWasUndone) {
    readFuel(90);
    press(1);
    press(2);
    press(3);
    static_cast<void>(history_.goTo(1));
    press(9);
    EXPECT_EQ(history_.count(), 2U);
    EXPECT_EQ(history_.place(), 2U);
    EXPECT_EQ(support::errorOf([&] { static_cast<void>(history_.goTo(3)); }), platform::kErrorSubscript);
}

TEST_F(MapHistoryTest, WhatNobodyNotedIsAStepAtTheNextNote) {
    readFuel(90);
    tables_.FuelMapOut[3] = 7;
    press(17);
    EXPECT_THAT(words(), ElementsAre("Fuel: changed by a script, 1 cell", "Fuel: cell 18 from 90 to 91"));
}

TEST_F(MapHistoryTest, WhatNobodyNotedIsAStepAtTheNextUndo) {
    readFuel(90);
    press(17);
    tables_.FuelMapOut[3] = 7;
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(history_.count(), 2U);
    EXPECT_EQ(fuel(3), 90);
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(MapHistoryTest, TheFirstReadOfAMapIsNoStep) {
    readFuel(90);
    read(EditedMap::Ignition, 0, 160, 30);
    EXPECT_EQ(history_.count(), 0U);
}

TEST_F(MapHistoryTest, AReadThatReplacesEditsIsAStep) {
    readFuel(90);
    press(17);
    press(18);
    rest();
    readFuel(90);
    EXPECT_EQ(history_.step(3).words(), "Fuel: read from the ECU, 2 cells");
    static_cast<void>(history_.goTo(2));
    EXPECT_EQ(fuel(17), 91);
    EXPECT_EQ(fuel(18), 91);
}

TEST_F(MapHistoryTest, AReadThatChangesNothingIsNoStep) {
    readFuel(90);
    readFuel(90);
    EXPECT_EQ(history_.count(), 0U);
}

TEST_F(MapHistoryTest, AZeroThatWasReadIsFilledLikeAnyOtherByte) {
    readFuel(0);
    rest();
    readFuel(4);
    EXPECT_EQ(history_.count(), 1U);
}

// The cell that the tuner has made is brought back; no other one becomes 0.
TEST_F(MapHistoryTest, TheFirstReadOverAnEditKeepsTheEditOnly) {
    press(17);
    rest();
    readFuel(90);
    EXPECT_EQ(history_.count(), 2U);
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(fuel(17), 1);
    EXPECT_EQ(fuel(18), 90);
}

TEST_F(MapHistoryTest, HalvesAndCellsOfOneReadAreOneStepForEachMap) {
    read(kFuel, 0, 320, 90);
    read(EditedMap::Ignition, 0, 320, 30);
    read(EditedMap::Pwm, 0, 160, 10);
    rest();
    read(kFuel, 0, 160, 91);
    pass(200);
    read(EditedMap::Ignition, 0, 160, 31);
    pass(200);
    read(kFuel, 160, 160, 92);
    for (std::size_t cell = 64; cell < 160; ++cell) {
        pass(10);
        read(EditedMap::Pwm, cell, 1, 11);
    }
    read(EditedMap::Ignition, 160, 160, 32);
    EXPECT_THAT(words(), ElementsAre("Fuel: read from the ECU, 320 cells", "Ignition: read from the ECU, 320 cells",
                                     "PWM: read from the ECU, 96 cells"));
}

TEST_F(MapHistoryTest, AnotherReadTwoSecondsLaterIsAStepOfItsOwn) {
    readFuel(90);
    rest();
    readFuel(91);
    pass(2001);
    readFuel(92);
    EXPECT_EQ(history_.count(), 2U);
}

TEST_F(MapHistoryTest, AFileIsOneStepForAllMaps) {
    readFuel(90);
    read(EditedMap::Ignition, 0, 160, 30);
    read(EditedMap::Pwm, 0, 160, 10);
    {
        const MapHistory::Change change(&history_, Cause::file(true));
        tables_.FuelMapOut.fill(100);
        tables_.IgnMapOut.fill(40);
        tables_.PwmMapOut[70] = 1;
    }
    // Only the first 160 cells had been filled before.
    EXPECT_THAT(words(), ElementsAre("Fuel, ignition, PWM: file loaded, 321 cells"));
}

TEST_F(MapHistoryTest, TheFirstFileIsNoStep) {
    {
        const MapHistory::Change change(&history_, Cause::file(false));
        tables_.FuelMapOut.fill(100);
    }
    EXPECT_EQ(history_.count(), 0U);
    readFuel(99);
    EXPECT_EQ(history_.count(), 1U);
}

TEST_F(MapHistoryTest, TheAgentsRunIsOneStepAsLongAsNothingComesBetween) {
    const auto correct = [&](std::size_t cell) {
        const MapHistory::Change change(&history_, {Kind::Agent});
        ++tables_.FuelMapOut.at(cell);
    };
    readFuel(90);
    history_.agentBegins();
    correct(5);
    rest();
    correct(6);
    correct(5);
    press(1);
    correct(7);
    history_.agentBegins();
    correct(7);
    EXPECT_THAT(words(), ElementsAre("Fuel: agent, 2 cells", "Fuel: cell 2 from 90 to 91", "Fuel: agent, 1 cell",
                                     "Fuel: agent, 1 cell"));
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(fuel(5), 90);
}

TEST_F(MapHistoryTest, AnAgentThatTookAllBackHasLeftNoStep) {
    readFuel(90);
    for (const int by : {1, -1}) {
        const MapHistory::Change change(&history_, {Kind::Agent});
        tables_.FuelMapOut[5] = static_cast<std::uint8_t>(tables_.FuelMapOut[5] + by);
    }
    EXPECT_EQ(history_.count(), 0U);
    EXPECT_EQ(history_.place(), 0U);
}

TEST_F(MapHistoryTest, AWalkNamesTheCellsThatHadReachedTheEngine) {
    readFuel(90);
    press(17);
    history_.reachedEngine({kFuel, 17});
    press(18);
    EXPECT_THAT(history_.goTo(0), ElementsAre(CellPlace{kFuel, 17}));
    EXPECT_THAT(history_.goTo(1), ElementsAre(CellPlace{kFuel, 17}));
    EXPECT_THAT(history_.goTo(2), IsEmpty());
}

TEST_F(MapHistoryTest, AStepKnowsTheTimeOfDay) {
    readFuel(90);
    pass(61'000);
    press(17);
    const auto time = history_.step(1).time;
    EXPECT_EQ(platform::secondsOf(time), platform::secondsOf(virtual_.pump.wallTime()));
}

TEST_F(MapHistoryTest, StepsCountFromOne) {
    EXPECT_EQ(support::errorOf([&] { static_cast<void>(history_.step(0)); }), platform::kErrorSubscript);
    EXPECT_EQ(support::errorOf([&] { static_cast<void>(history_.step(1)); }), platform::kErrorSubscript);
}

TEST_F(MapHistoryTest, TenThousandStepsOfAllCellsAreKeptAndTheOldestAreDroppedBeyond) {
    history_.noted(Cause::file(true));
    constexpr std::size_t kSteps = 12'000;
    for (std::size_t i = 0; i < kSteps; ++i) {
        const auto byte = static_cast<std::uint8_t>(1 + i % 200);
        tables_.FuelMapOut.fill(byte);
        tables_.IgnMapOut.fill(byte);
        tables_.PwmMapOut.fill(byte);
        history_.noted({Kind::Restore});
    }
    EXPECT_GE(history_.count(), 10'000U);
    EXPECT_LT(history_.count(), kSteps);
    EXPECT_EQ(history_.count() + history_.dropped(), kSteps);
    EXPECT_EQ(history_.place(), history_.count());
    const auto oldest = history_.dropped();
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(fuel(319), static_cast<int>(1 + (oldest - 1) % 200));
}

// Any sequence of changes and walks, against a plain list of whole copies.
class Copies {
public:
    explicit Copies(MapImages& tables) : tables_(tables) { all_.push_back(tables); }

    void note() {
        if (differs()) {
            all_.resize(place_ + 1);
            all_.push_back(tables_);
            ++place_;
        }
    }
    void goTo(std::size_t place) { place_ = place; }
    [[nodiscard]] bool differs() const {
        for (const auto map : kWorkingMaps) {
            if (all_[place_].*map != tables_.*map) {
                return true;
            }
        }
        return false;
    }
    [[nodiscard]] std::size_t count() const { return all_.size() - 1; }
    [[nodiscard]] std::size_t place() const { return place_; }

private:
    MapImages& tables_;
    std::vector<MapImages> all_;
    std::size_t place_ = 0;
};

TEST_F(MapHistoryTest, AnySequenceGivesWhatAListOfCopiesGives) {
    std::mt19937 random(13);
    const auto pick = [&](std::size_t below) { return static_cast<std::size_t>(random() % below); };
    history_.noted(Cause::file(true));
    Copies copies(tables_);
    for (int turn = 0; turn < 5000; ++turn) {
        rest();
        if (pick(3) == 0) {
            const auto place = pick(copies.count() + 1);
            static_cast<void>(history_.goTo(place));
            copies.goTo(place);
        } else {
            for (auto cells = pick(pick(10) == 0 ? 300 : 3); cells > 0; --cells) {
                workingMap(tables_, static_cast<EditedMap>(pick(3))).at(pick(kMapSize)) =
                    static_cast<std::uint8_t>(random());
            }
            history_.agentBegins();  // else a run would be one step
            history_.noted({static_cast<Kind>(pick(15))});
            copies.note();
        }
        ASSERT_FALSE(copies.differs()) << "turn " << turn;
        ASSERT_EQ(history_.count(), copies.count()) << "turn " << turn;
        ASSERT_EQ(history_.place(), copies.place()) << "turn " << turn;
    }
}

TEST(MapStepTest, WordsOfEachCause) {
    const auto words = [](const Cause& cause, std::uint16_t times = 1) {
        MapStep step;
        step.cause = cause;
        step.times = times;
        step.cells.emplace_back(CellPlace{EditedMap::Ignition, 17}, 90, 93);
        step.cells.emplace_back(CellPlace{EditedMap::Pwm, 319}, 1, 2);
        return step.words();
    };
    const auto block = [&](Kind kind, std::uint16_t times = 1) {
        return words(Cause::cells(kind, EditedMap::Ignition, 16, 33), times);
    };
    EXPECT_EQ(words({Kind::KeyDown}), "Ignition, PWM: cell 18 from 90 to 93");
    EXPECT_EQ(block(Kind::BlockDown, 4), "Ignition, PWM: block 17 to 34 down by 4");
    EXPECT_EQ(block(Kind::BlockLevel), "Ignition, PWM: block 17 to 34 levelled");
    EXPECT_EQ(block(Kind::BlockFill), "Ignition, PWM: block 17 to 34 filled with 93");
    EXPECT_EQ(block(Kind::RevertBlock), "Ignition, PWM: block 17 to 34 reverted");
    EXPECT_EQ(words({Kind::RevertCell}), "Ignition, PWM: cell 18 reverted from 90 to 93");
    EXPECT_EQ(words({Kind::Scaling}), "Ignition, PWM: injectors rescaled, 2 cells");
    EXPECT_EQ(words({Kind::Restore}), "Ignition, PWM: restored from a restore point, 2 cells");
    EXPECT_EQ(words({Kind::Copy}), "Ignition, PWM: copied from a comparison, 2 cells");
}

}  // namespace
}  // namespace korvane::core
