#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "core/history/MapHistory.h"
#include "platform/RuntimeError.h"
#include "support/ErrorOf.h"
#include "support/MachineBench.h"
#include "support/PropertyWatch.h"

namespace korvane::core {
namespace {

using Kind = Cause::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kFuel = EditedMap::Fuel;

// Counts how often the windows are told to draw a map anew.
class MapsObserver : public controls::Observer {
public:
    explicit MapsObserver(MapHistory& history) : history_(history) { history_.addObserver(*this); }
    MapsObserver(const MapsObserver&) = delete;
    MapsObserver& operator=(const MapsObserver&) = delete;
    ~MapsObserver() override { history_.removeObserver(*this); }
    void propertyChanged(controls::Object&, const void* property) override {
        told += property == history_.mapsProperty() ? 1 : 0;
    }

    int told = 0;

private:
    MapHistory& history_;
};

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
    EXPECT_THAT(words(), ElementsAre("Fuel: block 18 to 34 up by 1", "Fuel: cell 51 from 90 to 91",
                                     "Fuel: undone: 1 step", "Fuel: block 18 to 34 up by 1"));
}

TEST_F(MapHistoryTest, ACommandBehindARedoIsNotCountedWithTheStepBefore) {
    readFuel(90);
    raiseBlock(17, 33);
    static_cast<void>(history_.goTo(0));
    static_cast<void>(history_.goTo(1));
    raiseBlock(17, 33);
    EXPECT_THAT(words(), ElementsAre("Fuel: block 18 to 34 up by 1", "Fuel: block 18 to 34 up by 1"));
}

TEST_F(MapHistoryTest, ANewChangeKeepsWhatWasUndoneAndTheUndoIsAStep) {
    readFuel(90);
    press(1);
    press(2);
    press(3);
    static_cast<void>(history_.goTo(1));
    press(9);
    EXPECT_THAT(words(),
                ElementsAre("Fuel: cell 2 from 90 to 91", "Fuel: cell 3 from 90 to 91", "Fuel: cell 4 from 90 to 91",
                            "Fuel: undone: 2 steps", "Fuel: cell 10 from 90 to 91"));
    EXPECT_EQ(history_.place(), 5U);
}

TEST_F(MapHistoryTest, UndoWalksBackThroughAnUndoToWhatWasUndone) {
    readFuel(90);
    press(1);
    press(2);
    press(2);
    static_cast<void>(history_.goTo(0));
    press(9);
    static_cast<void>(history_.goTo(4));
    EXPECT_EQ(fuel(9), 90);
    EXPECT_EQ(fuel(2), 90);
    static_cast<void>(history_.goTo(3));
    EXPECT_EQ(fuel(1), 91);
    EXPECT_EQ(fuel(2), 92);
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(fuel(1), 90);
    EXPECT_EQ(fuel(2), 90);
    static_cast<void>(history_.goTo(5));
    EXPECT_EQ(fuel(1), 90);
    EXPECT_EQ(fuel(2), 90);
    EXPECT_EQ(fuel(9), 91);
}

TEST_F(MapHistoryTest, OneUndoneStepIsCalledOne) {
    readFuel(90);
    press(1);
    static_cast<void>(history_.goTo(0));
    press(9);
    EXPECT_EQ(history_.step(2).words(), "Fuel: undone: 1 step");
}

TEST_F(MapHistoryTest, AnUndoIsItselfUndoneWithWhatCameBehindIt) {
    readFuel(90);
    press(1);
    static_cast<void>(history_.goTo(0));
    press(9);
    static_cast<void>(history_.goTo(1));
    press(5);
    EXPECT_EQ(history_.step(4).words(), "Fuel: undone: 2 steps");
    EXPECT_EQ(fuel(1), 91);
    EXPECT_EQ(fuel(9), 90);
    static_cast<void>(history_.goTo(3));
    EXPECT_EQ(fuel(1), 90);
    EXPECT_EQ(fuel(9), 91);
}

TEST_F(MapHistoryTest, UndoneStepsThatComeToNothingNeedNoUndoing) {
    readFuel(90);
    press(1);
    press(1, -1);
    static_cast<void>(history_.goTo(0));
    press(9);
    EXPECT_THAT(words(),
                ElementsAre("Fuel: cell 2 from 90 to 91", "Fuel: cell 2 from 91 to 90", "Fuel: cell 10 from 90 to 91"));
    EXPECT_EQ(history_.place(), 3U);
}

TEST_F(MapHistoryTest, ThatAnUndoBecameAStepChangesNothingInTheMaps) {
    readFuel(90);
    press(1);
    press(2);
    static_cast<void>(history_.goTo(1));
    const auto before = tables_.FuelMapOut;
    press(9);
    auto after = tables_.FuelMapOut;
    --after[9];
    EXPECT_EQ(before, after);
}

TEST_F(MapHistoryTest, TheStepOfAnUndoHasTheTimeOfTheUndo) {
    readFuel(90);
    press(1);
    rest();
    static_cast<void>(history_.goTo(0));
    const auto undone = virtual_.pump.wallTime();
    rest();
    press(9);
    EXPECT_EQ(history_.step(2).time, undone);
    EXPECT_NE(history_.step(3).time, undone);
}

TEST_F(MapHistoryTest, ACommandIsNotCountedWithTheUndoBeforeIt) {
    readFuel(90);
    press(1);
    static_cast<void>(history_.goTo(0));
    raiseBlock(17, 33);
    raiseBlock(17, 33);
    EXPECT_THAT(words(),
                ElementsAre("Fuel: cell 2 from 90 to 91", "Fuel: undone: 1 step", "Fuel: block 18 to 34 up by 2"));
}

TEST_F(MapHistoryTest, TheCellsOfAnUndoHadReachedTheEngineIfAnyOfItsStepsDid) {
    readFuel(90);
    press(17);
    press(17);
    history_.reachedEngine({kFuel, 17});
    press(18);
    static_cast<void>(history_.goTo(0));
    press(5);
    EXPECT_THAT(history_.goTo(4), IsEmpty());
    EXPECT_THAT(history_.goTo(3), ElementsAre(CellPlace{kFuel, 17}));
    EXPECT_THAT(history_.goTo(4), ElementsAre(CellPlace{kFuel, 17}));
}

// The box may have been unticked at one of the walks: the engine gets what the map has.
TEST_F(MapHistoryTest, AnUndoThatChangedNoByteIsAStepIfTheEngineMayHaveAnother) {
    readFuel(90);
    press(17);
    history_.reachedEngine({kFuel, 17});
    press(17, -1);
    static_cast<void>(history_.goTo(0));
    press(5);
    EXPECT_EQ(history_.count(), 4U);
    static_cast<void>(history_.goTo(3));
    EXPECT_THAT(history_.goTo(2), ElementsAre(CellPlace{kFuel, 17}));
}

TEST_F(MapHistoryTest, WhatNobodyNotedKeepsTheUndoneStepsToo) {
    readFuel(90);
    press(17);
    static_cast<void>(history_.goTo(0));
    tables_.FuelMapOut[3] = 7;
    static_cast<void>(history_.goTo(1));
    EXPECT_THAT(words(), ElementsAre("Fuel: cell 18 from 90 to 91", "Fuel: undone: 1 step",
                                     "Fuel: changed by a script, 1 cell"));
    EXPECT_EQ(fuel(17), 91);
    EXPECT_EQ(fuel(3), 90);
}

TEST_F(MapHistoryTest, AFirstReadLeavesUndoneStepsToBeDoneAgain) {
    readFuel(90);
    press(17);
    static_cast<void>(history_.goTo(0));
    read(EditedMap::Ignition, 0, 160, 30);
    EXPECT_EQ(history_.place(), 0U);
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(fuel(17), 91);
    EXPECT_EQ(tables_.IgnMapOut[0], 30);
}

TEST_F(MapHistoryTest, APlaceThatItDoesNotHaveIsAnError) {
    readFuel(90);
    press(1);
    EXPECT_EQ(support::errorOf([&] { static_cast<void>(history_.goTo(2)); }), platform::kErrorSubscript);
    EXPECT_EQ(history_.place(), 1U);
}

TEST_F(MapHistoryTest, KnowsTheMapsAtEachPlaceWithoutAWalk) {
    press(3);
    press(3);
    press(7, -1);
    const auto byteAt = [this](std::size_t place, std::size_t cell) { return history_.mapsAt(place)[0][cell]; };
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(byteAt(0, 3), 0);
    EXPECT_EQ(byteAt(1, 3), 1);
    EXPECT_EQ(byteAt(2, 3), 2);
    EXPECT_EQ(byteAt(2, 7), 0);
    EXPECT_EQ(byteAt(3, 7), 255);
    EXPECT_EQ(tables_.FuelMapOut[3], 1);
    EXPECT_EQ(history_.place(), 1U);
    EXPECT_THROW(static_cast<void>(history_.mapsAt(4)), platform::RuntimeError);
}

TEST_F(MapHistoryTest, EqualCommandsDownAreOneStepToo) {
    readFuel(90);
    for (int i = 0; i < 2; ++i) {
        const MapHistory::Change change(&history_, Cause::cells(Kind::BlockDown, kFuel, 0, 1));
        --tables_.FuelMapOut[0];
        --tables_.FuelMapOut[1];
    }
    EXPECT_THAT(words(), ElementsAre("Fuel: block 1 to 2 down by 2"));
}

// Sent by a wait, in which other steps came.
TEST_F(MapHistoryTest, TheByteThatReachedTheEngineIsThatOfTheNewestStepOfItsCell) {
    readFuel(90);
    press(17);
    press(17);
    for (std::size_t cell = 100; cell < 115; ++cell) {
        press(cell);
    }
    history_.reachedEngine({kFuel, 17});
    EXPECT_THAT(history_.goTo(2), IsEmpty());
    EXPECT_THAT(history_.goTo(1), ElementsAre(CellPlace{kFuel, 17}));
    EXPECT_THAT(history_.goTo(0), IsEmpty());
}

TEST_F(MapHistoryTest, TheByteOfAStepThatIsUndoneDoesNotReachTheEngine) {
    readFuel(90);
    press(17);
    press(17);
    static_cast<void>(history_.goTo(1));
    history_.reachedEngine({kFuel, 17});
    EXPECT_THAT(history_.goTo(2), IsEmpty());
    static_cast<void>(history_.goTo(1));
    EXPECT_THAT(history_.goTo(0), ElementsAre(CellPlace{kFuel, 17}));
}

TEST_F(MapHistoryTest, AWalkNamesACellIfAnyOfItsStepsHadReachedTheEngine) {
    readFuel(90);
    press(17);
    history_.reachedEngine({kFuel, 17});
    press(17);
    EXPECT_THAT(history_.goTo(0), ElementsAre(CellPlace{kFuel, 17}));
    EXPECT_THAT(history_.goTo(2), ElementsAre(CellPlace{kFuel, 17}));
}

TEST_F(MapHistoryTest, ObserversAreToldOfEachStepAndOfEachWalk) {
    readFuel(90);
    int told = 0;
    const support::PropertyWatch watch(history_, &history_, [&] { ++told; });
    press(17);
    EXPECT_EQ(told, 1);
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(told, 2);
    history_.look();
    EXPECT_EQ(told, 2);
}

TEST_F(MapHistoryTest, ObserversAreToldOfTheMapsThatAWalkHasChanged) {
    readFuel(90);
    read(EditedMap::Pwm, 0, 160, 10);
    press(17);
    tables_.PwmMapOut[70] = 11;
    history_.look();
    std::string told;
    const support::PropertyWatch watch(history_, history_.mapsProperty(), [&] {
        told += history_.isNew(kFuel) ? "fuel " : "";
        told += history_.isNew(EditedMap::Ignition) ? "ignition " : "";
        told += history_.isNew(EditedMap::Pwm) ? "PWM " : "";
    });
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(told, "PWM ");
    static_cast<void>(history_.goTo(0));
    EXPECT_EQ(told, "PWM fuel ");
    EXPECT_FALSE(history_.isNew(kFuel));
    static_cast<void>(history_.goTo(2));
    EXPECT_EQ(told, "PWM fuel fuel PWM ");
}

TEST_F(MapHistoryTest, AMapIsNewUntilTheOuterWalkIsThrough) {
    readFuel(90);
    read(EditedMap::Pwm, 0, 160, 10);
    press(17);
    tables_.PwmMapOut[70] = 11;
    history_.look();
    int told = 0;
    const support::PropertyWatch first(history_, history_.mapsProperty(), [&] {
        if (++told == 1) {
            static_cast<void>(history_.goTo(0));
            EXPECT_TRUE(history_.isNew(EditedMap::Pwm)) << "the windows behind this one draw it yet";
        } else {
            EXPECT_TRUE(history_.isNew(EditedMap::Pwm));
            EXPECT_TRUE(history_.isNew(kFuel));
        }
    });
    static_cast<void>(history_.goTo(1));
    EXPECT_EQ(told, 2);
    EXPECT_FALSE(history_.isNew(kFuel));
    EXPECT_FALSE(history_.isNew(EditedMap::Pwm));
}

TEST_F(MapHistoryTest, OfAChangeThatNobodyShowsTheWindowsAreTold) {
    const auto isTold = [&](Kind kind) {
        bool told = false;
        const support::PropertyWatch watch(history_, history_.mapsProperty(), [&] { told = history_.isNew(kFuel); });
        ++tables_.FuelMapOut[3];
        history_.noted({kind});
        return told;
    };
    for (const auto kind : {Kind::RevertCell, Kind::RevertBlock, Kind::Restore, Kind::Copy}) {
        EXPECT_TRUE(isTold(kind));
    }
    for (const auto kind : {Kind::Script, Kind::KeyUp, Kind::BlockUp, Kind::Scaling, Kind::File, Kind::Agent}) {
        EXPECT_FALSE(isTold(kind));
    }
}

TEST_F(MapHistoryTest, IsHeldAsLongAsAnyHoldExists) {
    EXPECT_FALSE(history_.isHeld());
    {
        const MapHistory::Hold one(&history_);
        { const MapHistory::Hold other(&history_); }
        EXPECT_TRUE(history_.isHeld());
    }
    EXPECT_FALSE(history_.isHeld());
    const MapHistory::Hold nobody(nullptr);
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
// Also its zeros, where nothing was read before.
TEST_F(MapHistoryTest, AReadThatReplacesAMapThatWasBroughtBackIsAStepOfAllItsCells) {
    for (const auto& cause : {Cause{.kind = Kind::Restore}, Cause::cells(Kind::Copy, kFuel, 0, 159)}) {
        MapImages tables;
        MapHistory history(tables, virtual_.pump);
        {
            const MapHistory::Change change(&history, cause);
            tables.FuelMapOut[1] = 30;
        }
        {
            const MapHistory::Change change(&history, Cause::read(kFuel, 0, 160));
            tables.FuelMapOut.fill(90);
        }
        ASSERT_EQ(history.count(), 2U);
        static_cast<void>(history.goTo(1));
        EXPECT_EQ(tables.FuelMapOut[0], 0);
        EXPECT_EQ(tables.FuelMapOut[1], 30);
        EXPECT_EQ(tables.FuelMapOut[159], 0);
    }
}

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

TEST_F(MapHistoryTest, AReadBehindAKeyIsAStepOfItsOwn) {
    readFuel(90);
    rest();
    readFuel(91);
    press(17);
    readFuel(93);
    EXPECT_THAT(words(), ElementsAre("Fuel: read from the ECU, 160 cells", "Fuel: cell 18 from 91 to 92",
                                     "Fuel: read from the ECU, 160 cells"));
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

TEST_F(MapHistoryTest, TheSteadyAgentsRunIsOneStepTheWindowsShowAndItIsNotTheOthers) {
    const auto step = [this](Kind kind) {
        const MapHistory::Change change(&history_, {kind});
        ++tables_.FuelMapOut.at(7);
    };
    step(Kind::Agent);
    MapsObserver observer(history_);
    step(Kind::Steady);
    step(Kind::Steady);
    EXPECT_EQ(history_.count(), 2U);
    EXPECT_EQ(history_.step(2).words(), "Fuel: steady agent, 1 cell");
    EXPECT_EQ(observer.told, 2);
    history_.agentBegins();
    step(Kind::Steady);
    EXPECT_EQ(history_.count(), 3U);
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

// Any sequence of changes and walks, against a plain list of whole copies. Nothing of it is ever dropped: an undo is
// behind what it has undone.
class Copies {
public:
    explicit Copies(MapImages& tables) : tables_(tables) { all_.push_back(tables); }

    void note() {
        if (!differs()) {
            return;
        }
        if (!same(all_[place_], all_.back())) {
            all_.push_back(all_[place_]);
        }
        all_.push_back(tables_);
        place_ = count();
    }
    void goTo(std::size_t place) { place_ = place; }
    [[nodiscard]] bool differs() const { return !same(all_[place_], tables_); }
    [[nodiscard]] std::size_t count() const { return all_.size() - 1; }
    [[nodiscard]] std::size_t place() const { return place_; }

private:
    static bool same(const MapImages& one, const MapImages& other) {
        return std::all_of(kWorkingMaps.begin(), kWorkingMaps.end(),
                           [&](const auto map) { return one.*map == other.*map; });
    }

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
    EXPECT_EQ(block(Kind::BlockLevel), "Ignition, PWM: block 17 to 34 levelled");
    EXPECT_EQ(block(Kind::BlockFill), "Ignition, PWM: block 17 to 34 filled with 93");
    EXPECT_EQ(block(Kind::RevertBlock), "Ignition, PWM: block 17 to 34 reverted");
    EXPECT_EQ(words({Kind::RevertCell}), "Ignition, PWM: cell 18 reverted from 90 to 93");
    EXPECT_EQ(words({Kind::Scaling}), "Ignition, PWM: injectors rescaled, 2 cells");
    EXPECT_EQ(words({Kind::Restore}), "Ignition, PWM: restored from a restore point, 2 cells");
    EXPECT_EQ(words({Kind::Copy}), "Ignition, PWM: copied from a comparison, 2 cells");
}

TEST(MapStepTest, WithoutCellsThereAreNoWords) {
    EXPECT_EQ(MapStep().words(), "");
}

TEST(MapStepTest, OneCellIsCalledOne) {
    MapStep step;
    step.cause.kind = Kind::Copy;
    step.cells.emplace_back(CellPlace{kFuel, 16}, 90, 86);
    EXPECT_EQ(step.words(), "Fuel: copied from a comparison, 1 cell");
}

// A count in each cell of the block for each press, but for cells at the end of their range.
TEST(MapStepTest, WordsOfABlockThatWentUpOrDown) {
    MapStep step;
    step.cause = Cause::cells(Kind::BlockDown, EditedMap::Ignition, 16, 17);
    step.times = 4;
    step.cells.emplace_back(CellPlace{EditedMap::Ignition, 16}, 90, 86);
    EXPECT_EQ(step.words(), "Ignition: block 17 to 18 down by at most 4");
    step.cells.emplace_back(CellPlace{EditedMap::Ignition, 17}, 3, 0);
    EXPECT_EQ(step.words(), "Ignition: block 17 to 18 down by at most 4");
    step.cells.back().before = 4;
    EXPECT_EQ(step.words(), "Ignition: block 17 to 18 down by 4");
    step.cause.kind = Kind::BlockUp;
    for (auto& cell : step.cells) {
        std::swap(cell.before, cell.after);
    }
    EXPECT_EQ(step.words(), "Ignition: block 17 to 18 up by 4");
}

}  // namespace
}  // namespace korvane::core
