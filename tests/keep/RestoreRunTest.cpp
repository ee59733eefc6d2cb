#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "CellEcu.h"
#include "keep/restore/RestoreRun.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

constexpr auto kPoint = "2026-05-06_07_08_09_000_1.point";

Snapshot pointOf(const std::vector<std::pair<int, int>>& cells, int type = 11) {
    Snapshot point;
    point.time = {2026, 5, 6, 7, 8, 9};
    point.reason = "fuel map";
    point.ecu = {type, 3.386F, -1};
    for (const auto& [address, byte] : cells) {
        point.eeprom.at(static_cast<std::size_t>(address)) = {static_cast<std::uint8_t>(byte), link::Known::Told};
    }
    return point;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class RestoreRunTest : public testing::Test {
protected:
    struct Run : support::VirtualProgram {
        explicit Run(platform::LineDevice* device) : VirtualProgram(device) { join(); }

        // Connected, and the ECU has told its type.
        void join() {
            connect();
            pump.wait(1500);
        }
        [[nodiscard]] std::filesystem::path journal() const { return folder / "restore" / "restore-11-3386.journal"; }
        void writeJournal(const std::string& bytes) const {
            std::filesystem::create_directories(journal().parent_path());
            std::ofstream(journal(), std::ios::binary) << bytes;
        }

        RestoreRun& restore = program.restoreRun();
    };

    RestoreRunTest() {
        for (std::size_t i = 0; i < old_.size(); ++i) {
            ecu_.cells.at(600 + i) = old_[i];
            cells_.emplace_back(600 + static_cast<int>(i), new_[i]);
        }
    }
    [[nodiscard]] support::Bytes inEcu() const { return {ecu_.cells.begin() + 600, ecu_.cells.begin() + 604}; }

    const support::Bytes old_{10, 20, 30, 40};
    const support::Bytes new_{11, 22, 33, 44};
    std::vector<std::pair<int, int>> cells_;
    CellEcu ecu_;
};

TEST_F(RestoreRunTest, WritesTheCellsThatDifferAndNoOther) {
    Run run(&ecu_);
    ecu_.cells[601] = 22;
    ecu_.cells[700] = 70;
    run.receiveFrame('T', {70, 0xBC, 0x02});  // 700
    auto point = pointOf(cells_);
    point.eeprom[700] = {70, link::Known::Told};   // known to agree
    point.eeprom[16] = {99, link::Known::Told};    // fuel map
    point.eeprom[339] = {99, link::Known::Told};   // ignition map
    point.eeprom[495] = {99, link::Known::Told};   // PWM table
    point.eeprom[2999] = {99, link::Known::Told};  // no cells of the ECU
    point.eeprom[3000] = {99, link::Known::Told};

    EXPECT_TRUE(run.restore.restore(point, kPoint));
    EXPECT_THAT(ecu_.written(), ElementsAre(Pair(600, 11), Pair(602, 33), Pair(603, 44)));
    EXPECT_EQ(run.restore.Text.get(), "Restored: 3 settings read back, all agree.");
    EXPECT_EQ(run.restore.Offer.get(), "");
    EXPECT_FALSE(run.restore.Running);
    EXPECT_FALSE(std::filesystem::exists(run.journal()));
}

TEST_F(RestoreRunTest, GivesEachCell125MillisecondsAndKeepsTheLineToItself) {
    Run run(&ecu_);
    static_cast<void>(run.sent());
    EXPECT_TRUE(run.window.TimerRequestData.Enabled);
    bool polled = false;
    bool busy = true;
    ecu_.onWrite = [&] {
        polled = polled || run.window.TimerRequestData.Enabled;
        busy = busy && run.window.linkState.isBusy();
    };
    EXPECT_TRUE(run.restore.restore(pointOf(cells_), kPoint));
    ASSERT_EQ(ecu_.writes.size(), 4U);
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_GE(ecu_.writes[i].ms - ecu_.writes[i - 1].ms, 125);
    }
    EXPECT_FALSE(polled);
    EXPECT_TRUE(busy);
    EXPECT_TRUE(run.window.TimerRequestData.Enabled);
}

TEST_F(RestoreRunTest, AWordIsTwoCellsAndNothingIsWrittenInBetween) {
    ecu_.cells[2] = 0x10;
    ecu_.cells[3] = 0x20;
    Run run(&ecu_);
    EXPECT_TRUE(run.tables.EEParams[2].is16bit);
    EXPECT_TRUE(run.restore.restore(pointOf({{2, 0x11}}), kPoint));
    EXPECT_THAT(ecu_.written(), ElementsAre(Pair(2, 0x11)));
}

// What was never read before it is known by then: a restore point of this moment has it.
TEST_F(RestoreRunTest, IsAnnouncedBeforeItsFirstWriteAndKnowsWhatItWillOverwrite) {
    Run run(&ecu_);
    std::vector<std::string> told;
    run.program.eeprom().storing = [&](std::string_view what) {
        told.emplace_back(what);
        EXPECT_THAT(ecu_.writes, IsEmpty());
        for (std::size_t i = 0; i < old_.size(); ++i) {
            EXPECT_EQ(run.window.ecuEeprom.cells().at(600 + i), (link::EepromCell{old_[i], link::Known::Told}));
        }
    };
    EXPECT_TRUE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_THAT(told, ElementsAre("restore"));
    EXPECT_TRUE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_THAT(told, ElementsAre("restore")) << "with nothing to write nothing is announced";
}

TEST_F(RestoreRunTest, RefusesInASentence) {
    support::VirtualProgram program(&ecu_);
    auto& restore = program.program.restoreRun();
    EXPECT_FALSE(restore.restore(pointOf(cells_), kPoint));
    EXPECT_EQ(restore.Text.get(), "The port is closed.");
    program.connect();
    EXPECT_EQ(restore.refusal(pointOf(cells_)), "The ECU has not told its type yet.");
    program.pump.wait(1500);
    EXPECT_EQ(restore.refusal(pointOf(cells_)), "");
    EXPECT_EQ(restore.refusal(pointOf(cells_, 14)), "The restore point is of an ECU of type 14, this one has type 11.");
    EXPECT_FALSE(restore.restore(pointOf(cells_, 14), kPoint));
    EXPECT_THAT(ecu_.writes, IsEmpty());
    EXPECT_THAT(ecu_.reads, IsEmpty());
}

TEST_F(RestoreRunTest, OneRunsAtATime) {
    Run run(&ecu_);
    int inside = 0;
    run.at(1700, [&] {
        ASSERT_TRUE(run.restore.Running);
        ++inside;
        EXPECT_FALSE(run.restore.restore(pointOf({{700, 1}}), kPoint));
        EXPECT_EQ(run.restore.refusal(pointOf({})), "A restore is running.");
        EXPECT_FALSE(run.restore.goOn());
        run.restore.forget();
    });
    EXPECT_TRUE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(inEcu(), new_);
    EXPECT_EQ(ecu_.cells[700], 0);
}

TEST_F(RestoreRunTest, NothingIsWrittenToAnEcuThatDoesNotTellWhatItHas) {
    Run run(&ecu_);
    ecu_.mute = true;
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_EQ(run.restore.Text.get(), "Nothing was written: no answer.");
    EXPECT_THAT(ecu_.reads, ElementsAre(600, 600, 600));
    EXPECT_THAT(ecu_.writes, IsEmpty());
    EXPECT_EQ(run.restore.Offer.get(), "");
}

TEST_F(RestoreRunTest, NothingIsWrittenWithoutAJournal) {
    Run run(&ecu_);
    static_cast<void>(run.folder.write("restore", "a file where the folder should be"));
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_THAT(run.restore.Text.get(), StartsWith("Nothing was written: the journal can't be written: "));
    EXPECT_THAT(ecu_.writes, IsEmpty());
}

TEST_F(RestoreRunTest, NamesEachCellThatDoesNotAgree) {
    ecu_.deaf = {601, 603};
    Run run(&ecu_);
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_EQ(run.restore.Text.get(), "2 settings do not agree: address 601 is 20, not 22; address 603 is 40, not 44");
    EXPECT_NE(run.restore.Offer.get(), "");
    EXPECT_TRUE(run.restore.goBack());
    EXPECT_EQ(inEcu(), old_);
}

TEST_F(RestoreRunTest, AWriteThatHitAnotherCellIsFoundAndTakenBack) {
    for (const bool back : {false, true}) {
        std::copy(old_.begin(), old_.end(), ecu_.cells.begin() + 600);
        ecu_.cells[700] = 70;
        Run run(&ecu_);
        run.receiveFrame('T', {70, 0xBC, 0x02});  // 700
        ecu_.strayTo = 700;
        EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
        EXPECT_EQ(run.restore.Text.get(),
                  "2 settings do not agree: address 600 is 10, not 11; address 700 is 11, not 70");
        EXPECT_TRUE(back ? run.restore.goBack() : run.restore.goOn());
        EXPECT_EQ(inEcu(), back ? old_ : new_);
        EXPECT_EQ(ecu_.cells[700], 70);
    }
}

// The cell was not told before: the look-up of the restore has asked for it, since the point knows it.
TEST_F(RestoreRunTest, AWriteThatHitACellOfThePointThatAgreedIsFoundAndTakenBack) {
    for (const bool back : {false, true}) {
        std::copy(old_.begin(), old_.end(), ecu_.cells.begin() + 600);
        ecu_.cells[700] = 70;
        Run run(&ecu_);
        auto point = pointOf(cells_);
        point.eeprom[700] = {70, link::Known::Told};
        ecu_.strayTo = 700;
        EXPECT_FALSE(run.restore.restore(point, kPoint));
        EXPECT_EQ(run.restore.Text.get(),
                  "2 settings do not agree: address 600 is 10, not 11; address 700 is 11, not 70");
        EXPECT_TRUE(back ? run.restore.goBack() : run.restore.goOn());
        EXPECT_EQ(inEcu(), back ? old_ : new_);
        EXPECT_EQ(ecu_.cells[700], 70);
    }
}

// The write was the last thing that the restore did: the next one looks for it, in this connection or in another one,
// where nothing but the point tells what was there.
TEST_F(RestoreRunTest, AStrayWriteBeforeAnInterruptionIsFoundByTheNextRun) {
    for (const bool again : {false, true}) {
        std::copy(old_.begin(), old_.end(), ecu_.cells.begin() + 600);
        ecu_.cells[700] = 70;
        ecu_.writes.clear();
        Run run(&ecu_);
        auto point = pointOf(cells_);
        point.eeprom[700] = {70, link::Known::Told};
        const auto name = PointStore(run.folder / "restore").add(point).name;
        ecu_.onWrite = [&] { ecu_.mute = true; };
        ecu_.strayTo = 700;
        EXPECT_FALSE(run.restore.restore(point, name));
        EXPECT_THAT(run.restore.Text.get(), StartsWith("Stopped: no answer."));
        ecu_.onWrite = nullptr;
        ecu_.mute = false;
        if (again) {
            run.program.disconnect();
            run.join();
        }
        EXPECT_FALSE(run.restore.goOn());
        EXPECT_EQ(run.restore.Text.get(), "1 setting does not agree: address 700 is 11, not 70");
        EXPECT_TRUE(run.restore.goOn());
        EXPECT_EQ(inEcu(), new_);
        EXPECT_EQ(ecu_.cells[700], 70);
    }
}

// The engine runs on a misc block that is not stored: the cell is written though it has the byte, and does not show
// where the write went.
TEST_F(RestoreRunTest, AWriteThatDoesNotShowIsLookedForElsewhere) {
    Run run(&ecu_);
    const int first = run.tables.addresses.RPM_LIMIT_LOW_OFF;
    ecu_.cells.at(static_cast<std::size_t>(first)) = 5;
    ecu_.cells[700] = 70;
    run.receiveFrame('T', {70, 0xBC, 0x02});  // 700
    run.receiveFrame('m', {6, 0, 0, 0, 0, 0, 0, 0, 0});
    ecu_.strayTo = 700;
    EXPECT_FALSE(run.restore.restore(pointOf({{first, 5}}), kPoint));
    EXPECT_EQ(run.restore.Text.get(), "1 setting does not agree: address 700 is 5, not 70");
}

TEST_F(RestoreRunTest, AnEcuThatFallsSilentStopsItAtThatCell) {
    Run run(&ecu_);
    ecu_.onWrite = [&] { ecu_.mute = ecu_.writes.size() == 2; };
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_EQ(run.restore.Text.get(), "Stopped: no answer. 1 of 4 settings written.");
    EXPECT_EQ(ecu_.writes.size(), 2U);
}

TEST_F(RestoreRunTest, ACellThatHasANameIsCalledByIt) {
    ecu_.deaf = {1};
    Run run(&ecu_);
    EXPECT_FALSE(run.restore.restore(pointOf({{1, 9}}), kPoint));
    EXPECT_EQ(run.restore.Text.get(), "1 setting does not agree: MISC2_OFF (1) is 0, not 9");
}

TEST_F(RestoreRunTest, AnAnswerThatDiffersIsAskedForAgain) {
    Run run(&ecu_);
    ecu_.onWrite = [&] { ecu_.flips = ecu_.writes.size() == 4 ? 1 : 0; };
    EXPECT_TRUE(run.restore.restore(pointOf(cells_), kPoint));
}

// What interrupts a restore when a cell has been written, and what the program says then.
struct Interruption {
    const char* name;
    const char* words;
    void (*act)(CellEcu&, support::VirtualProgram&);
};

class InterruptedTest : public RestoreRunTest, public testing::WithParamInterface<Interruption> {
protected:
    // Interrupts the restore behind the write of the `last`-th cell.
    void interrupt(Run& run, std::size_t last) {
        ecu_.onWrite = [this, &run, last] {
            if (ecu_.writes.size() == last) {
                GetParam().act(ecu_, run);
            }
        };
        EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
        EXPECT_THAT(run.restore.Text.get(), StartsWith("Stopped: " + std::string(GetParam().words)));
        ecu_.onWrite = nullptr;
        ecu_.mute = false;
        support::Bytes expected = old_;
        std::copy_n(new_.begin(), last, expected.begin());
        EXPECT_EQ(inEcu(), expected);
        if (!run.window.MSComm1.PortOpen()) {
            EXPECT_EQ(run.restore.Offer.get(), "");
            run.join();
        }
        EXPECT_THAT(run.restore.Offer.get(),
                    StartsWith("A restore of the point of 2026-05-06 07:08:09 (fuel map) was not completed: "));
    }
};

TEST_P(InterruptedTest, GoesOnToTheNewValues) {
    for (std::size_t last = 1; last <= old_.size(); ++last) {
        ecu_ = CellEcu();
        std::copy(old_.begin(), old_.end(), ecu_.cells.begin() + 600);
        Run run(&ecu_);
        interrupt(run, last);
        ecu_.writes.clear();
        EXPECT_TRUE(run.restore.goOn());
        EXPECT_EQ(inEcu(), new_);
        EXPECT_EQ(ecu_.writes.size(), old_.size() - last);
        EXPECT_EQ(run.restore.Offer.get(), "");
        EXPECT_FALSE(std::filesystem::exists(run.journal()));
    }
}

TEST_P(InterruptedTest, GoesBackToTheOldValues) {
    for (std::size_t last = 1; last <= old_.size(); ++last) {
        ecu_ = CellEcu();
        std::copy(old_.begin(), old_.end(), ecu_.cells.begin() + 600);
        Run run(&ecu_);
        interrupt(run, last);
        ecu_.writes.clear();
        EXPECT_TRUE(run.restore.goBack());
        EXPECT_EQ(inEcu(), old_);
        EXPECT_EQ(ecu_.writes.size(), last);
        EXPECT_EQ(run.restore.Offer.get(), "");
        EXPECT_FALSE(std::filesystem::exists(run.journal()));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, InterruptedTest,
    testing::Values(Interruption{"Port", "the port is closed",
                                 [](CellEcu&, support::VirtualProgram& run) {
                                     run.at(static_cast<int>(run.pump.milliseconds()) + 10,
                                            [&run] { run.program.disconnect(); });
                                 }},
                    Interruption{"Restart", "the ECU restarted",
                                 [](CellEcu& ecu, support::VirtualProgram&) { ecu.send(170, {0}); }},
                    Interruption{"Stop", "on request",
                                 [](CellEcu&, support::VirtualProgram& run) { run.program.restoreRun().stop(); }}),
    [](const auto& each) { return std::string(each.param.name); });

// The journal as it stands at each write is all that a program finds that is started after the other one was killed.
TEST_F(RestoreRunTest, AKillAtAnyCellLeavesTheWayToEither) {
    struct Moment {
        support::Bytes cells;
        std::string journal;
    };
    std::vector<Moment> moments;
    {
        Run run(&ecu_);
        ecu_.onWrite = [&] { moments.push_back({inEcu(), contentOf(run.journal())}); };
        EXPECT_TRUE(run.restore.restore(pointOf(cells_), kPoint));
        ecu_.onWrite = nullptr;
    }
    ASSERT_EQ(moments.size(), 4U);
    for (const auto& [cells, journal] : moments) {
        for (const bool back : {false, true}) {
            std::copy(cells.begin(), cells.end(), ecu_.cells.begin() + 600);
            support::VirtualProgram started(&ecu_);
            std::filesystem::create_directories(started.folder / "restore");
            std::ofstream(started.folder / "restore" / "restore-11-3386.journal") << journal;
            started.connect();
            started.pump.wait(1500);
            auto& restore = started.program.restoreRun();
            ASSERT_TRUE(restore.interrupted());
            EXPECT_EQ(restore.interrupted()->pointName, kPoint);
            EXPECT_TRUE(back ? restore.goBack() : restore.goOn());
            EXPECT_EQ(inEcu(), back ? old_ : new_);
        }
    }
}

TEST_F(RestoreRunTest, AWayBackThatIsInterruptedGoesOnBackOrForth) {
    for (const bool forth : {false, true}) {
        std::copy(old_.begin(), old_.end(), ecu_.cells.begin() + 600);
        ecu_.writes.clear();
        Run run(&ecu_);
        ecu_.onWrite = [&] {
            if (ecu_.writes.size() == 3 || ecu_.writes.size() == 4) {
                run.restore.stop();
            }
        };
        EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
        EXPECT_FALSE(run.restore.goBack());
        ecu_.onWrite = nullptr;
        EXPECT_THAT(run.restore.Offer.get(), StartsWith("Going back from the point of 2026-05-06 07:08:09 (fuel map)"));
        EXPECT_TRUE(forth ? run.restore.goBack() : run.restore.goOn());
        EXPECT_EQ(inEcu(), forth ? new_ : old_);
    }
}

TEST_F(RestoreRunTest, SaysWithWhichCellsItStopped) {
    Run run(&ecu_);
    ecu_.onWrite = [&] {
        if (ecu_.writes.size() == 3) {
            run.restore.stop();
        }
    };
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_EQ(run.restore.Text.get(), "Stopped: on request. 2 of 4 settings written.");
    EXPECT_EQ(run.restore.Offer.get(),
              "A restore of the point of 2026-05-06 07:08:09 (fuel map) was not completed: 2 of 4 settings written.");
    EXPECT_EQ(run.restore.Done.get(), 2);
    EXPECT_EQ(run.restore.Total.get(), 4);
}

TEST_F(RestoreRunTest, AJournalOfAnotherKindOfEcuIsNotOffered) {
    Run run(&ecu_);
    ecu_.onWrite = [&] { run.restore.stop(); };
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    run.program.disconnect();
    ecu_.type = 12;
    run.join();
    EXPECT_EQ(run.restore.Offer.get(), "");
    EXPECT_FALSE(run.restore.goOn());
    run.program.disconnect();
    ecu_.type = 11;
    run.join();
    EXPECT_NE(run.restore.Offer.get(), "");
}

TEST_F(RestoreRunTest, ADamagedJournalIsToldAndWritesNothing) {
    std::string journal;
    {
        Run run(&ecu_);
        ecu_.onWrite = [&] { run.restore.stop(); };
        EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
        journal = contentOf(run.journal());
    }
    ecu_.onWrite = nullptr;
    ecu_.writes.clear();
    Run run(&ecu_);
    for (std::size_t at = 0; at < journal.size(); ++at) {
        for (const bool cut : {true, false}) {
            std::string damaged = cut ? journal.substr(0, at) : journal;
            if (!cut) {
                damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
            }
            run.writeJournal(damaged);
            run.receiveFrame('y', {0xFF, 0xFF, 0x0D, 0x3A, 11});
            EXPECT_THAT(run.restore.Offer.get(), HasSubstr("its journal can't be used: it is damaged"));
            EXPECT_FALSE(run.restore.interrupted());
            EXPECT_FALSE(run.restore.goOn());
            EXPECT_FALSE(run.restore.goBack());
        }
    }
    EXPECT_THAT(ecu_.writes, IsEmpty());
    run.restore.forget();
    EXPECT_EQ(run.restore.Offer.get(), "");
    EXPECT_FALSE(std::filesystem::exists(run.journal()));
}

TEST_F(RestoreRunTest, TheMainWindowsEndIsTheEndOfARestore) {
    Run run(&ecu_);
    run.at(1800, [&] { run.program.quit(); });
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_TRUE(run.program.ended());
    EXPECT_LT(ecu_.writes.size(), 4U);
}

// A restore of cells 600 to 603 that was stopped behind the second one.
class LeftoverTest : public RestoreRunTest {
protected:
    void stopBehindTwo(Run& run) {
        stopBehind(run, 2);
        EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
        ecu_.onWrite = nullptr;
        ecu_.writes.clear();
        ASSERT_EQ(inEcu(), (support::Bytes{11, 22, 30, 40}));
        ASSERT_NE(run.restore.Offer.get(), "");
    }
    void stopBehind(Run& run, std::size_t writes) {
        ecu_.onWrite = [this, &run, writes] {
            if (ecu_.writes.size() == writes) {
                run.restore.stop();
            }
        };
    }
    void joinAgain(Run& run) {
        run.program.disconnect();
        run.join();
    }
    void has(const support::Bytes& bytes) { std::copy(bytes.begin(), bytes.end(), ecu_.cells.begin() + 600); }
    void tell(Run& run, int address, int byte) {
        run.receiveFrame('T', {static_cast<std::uint8_t>(byte), static_cast<std::uint8_t>(address % 256),
                               static_cast<std::uint8_t>(address / 256)});
    }
    static bool press(Run& run, bool back) { return back ? run.restore.goBack() : run.restore.goOn(); }
};

TEST_F(LeftoverTest, CellsOfAnotherEcuAreNamedAndOnlyASecondPressWritesOverThem) {
    for (const bool back : {false, true}) {
        has(old_);
        ecu_.writes.clear();
        Run run(&ecu_);
        stopBehindTwo(run);
        joinAgain(run);
        const support::Bytes others{11, 77, 30, 88};
        has(others);
        EXPECT_FALSE(press(run, back));
        EXPECT_EQ(
            run.restore.Text.get(),
            "Nothing was written. 2 settings are neither as before the restore that was not completed nor as its "
            "point has them: address 601 is 77, not 20 or 22; address 603 is 88, not 40 or 44. This may be another "
            "ECU of this kind, or somebody has changed them. Pressed again, \"Go on\" and \"Go back\" write over "
            "them.");
        EXPECT_THAT(ecu_.writes, IsEmpty());
        EXPECT_EQ(inEcu(), others);
        EXPECT_TRUE(run.restore.overwritesNext());
        EXPECT_NE(run.restore.Offer.get(), "") << "the way of the first ECU stays";
        EXPECT_TRUE(press(run, back));
        EXPECT_EQ(inEcu(), back ? old_ : new_);
        EXPECT_FALSE(run.restore.overwritesNext());
        auto& keeper = run.program.keeper();
        keeper.refresh();
        EXPECT_EQ(keeper.load(keeper.points().at(0).name).content->eeprom[601].byte, 77) << "a point has what it was";
    }
}

TEST_F(LeftoverTest, ASecondPressWritesOverNothingThatWasNotNamed) {
    Run run(&ecu_);
    stopBehindTwo(run);
    joinAgain(run);
    ecu_.cells[601] = 77;
    EXPECT_FALSE(run.restore.goOn());
    ecu_.cells[602] = 78;
    EXPECT_FALSE(run.restore.goOn());
    EXPECT_THAT(run.restore.Text.get(), HasSubstr("address 601 is 77, not 20 or 22; address 602 is 78, not 30 or 33"));
    EXPECT_THAT(ecu_.writes, IsEmpty());
}

TEST_F(LeftoverTest, APressInAnotherConnectionIsTheFirstOne) {
    Run run(&ecu_);
    stopBehindTwo(run);
    joinAgain(run);
    ecu_.cells[601] = 77;
    EXPECT_FALSE(run.restore.goOn());
    joinAgain(run);
    EXPECT_FALSE(run.restore.overwritesNext());
    EXPECT_FALSE(run.restore.goOn());
    EXPECT_THAT(ecu_.writes, IsEmpty());
}

TEST_F(LeftoverTest, ManyStrangeCellsAreCounted) {
    Run run(&ecu_);
    std::vector<std::pair<int, int>> cells;
    for (int address = 600; address < 620; ++address) {
        cells.emplace_back(address, 200);
    }
    stopBehind(run, 2);
    EXPECT_FALSE(run.restore.restore(pointOf(cells), kPoint));
    joinAgain(run);
    std::fill_n(ecu_.cells.begin() + 600, 20, std::uint8_t{99});
    EXPECT_FALSE(run.restore.goOn());
    EXPECT_THAT(run.restore.Text.get(), HasSubstr("; address 611 is 99, not 0 or 200; and 8 more. "));
}

// What its own write has left is known in the same connection; in the next one it could be anybody's.
TEST_F(LeftoverTest, ACellWhoseWriteWasCutIsWrittenAtOnce) {
    for (const bool again : {false, true}) {
        has(old_);
        ecu_.writes.clear();
        Run run(&ecu_);
        ecu_.onWrite = [&] {
            if (ecu_.writes.size() == 3) {
                ecu_.cells[602] = 0xEE;
                ecu_.send(170, {0});
            }
        };
        EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
        ecu_.onWrite = nullptr;
        if (again) {
            joinAgain(run);
        }
        EXPECT_EQ(run.restore.goBack(), !again);
        EXPECT_EQ(ecu_.cells[602], again ? 0xEE : 30);
    }
}

TEST_F(LeftoverTest, ANewRestoreTakesOverWhatIsLeft) {
    for (const bool back : {false, true}) {
        has(old_);
        ecu_.cells[604] = 50;
        ecu_.writes.clear();
        Run run(&ecu_);
        stopBehindTwo(run);
        stopBehind(run, 1);
        EXPECT_FALSE(run.restore.restore(pointOf({{600, 111}, {602, 133}, {604, 155}}), "b.point"));
        ecu_.onWrite = nullptr;
        EXPECT_EQ(run.restore.interrupted()->pointName, "b.point");
        EXPECT_TRUE(press(run, back));
        // The new point does not know 601 and 603: on the way on they stay.
        EXPECT_EQ(inEcu(), back ? old_ : (support::Bytes{111, 22, 133, 40}));
        EXPECT_EQ(ecu_.cells[604], back ? 50 : 155);
        EXPECT_EQ(run.restore.Offer.get(), "");
    }
}

TEST_F(LeftoverTest, WhatAnotherEcuHasLeftIsNotMixedWithANewRestore) {
    Run run(&ecu_);
    stopBehindTwo(run);
    joinAgain(run);
    const auto journal = contentOf(run.journal());
    ecu_.cells[601] = 77;
    for (int press = 0; press < 2; ++press) {
        EXPECT_FALSE(run.restore.restore(pointOf({{600, 111}}), "b.point"));
        EXPECT_THAT(run.restore.Text.get(), HasSubstr("address 601 is 77, not 20 or 22"));
        EXPECT_THAT(run.restore.Text.get(), HasSubstr(" \"Leave it so\" ends it first."));
        EXPECT_FALSE(run.restore.overwritesNext());
    }
    EXPECT_THAT(ecu_.writes, IsEmpty());
    EXPECT_EQ(contentOf(run.journal()), journal);
    run.restore.forget();
    EXPECT_TRUE(run.restore.restore(pointOf({{600, 111}}), "b.point"));
}

TEST_F(LeftoverTest, ADamagedJournalIsNotReplaced) {
    Run run(&ecu_);
    run.writeJournal("x");
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_THAT(run.restore.Text.get(), HasSubstr("it is damaged"));
    EXPECT_THAT(run.restore.Text.get(), HasSubstr("\"Leave it so\" ends it first."));
    EXPECT_EQ(contentOf(run.journal()), "x");
    EXPECT_THAT(ecu_.reads, IsEmpty());
}

TEST_F(LeftoverTest, AnEcuWithOtherFeaturesIsAnotherOne) {
    Run run(&ecu_);
    stopBehindTwo(run);
    ecu_.features = 1234;
    joinAgain(run);
    EXPECT_EQ(run.restore.Offer.get(), "");
    has(old_);
    stopBehind(run, 1);
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    EXPECT_TRUE(std::filesystem::exists(run.folder / "restore" / "restore-11-3386-1234.journal"));
    EXPECT_TRUE(std::filesystem::exists(run.journal()));
    ecu_.onWrite = nullptr;
    EXPECT_TRUE(run.restore.goBack());
    ecu_.features = 0xFFFF;
    joinAgain(run);
    EXPECT_THAT(run.restore.Offer.get(), HasSubstr("1 of 4 settings written"));
}

TEST_F(LeftoverTest, TheOfferEndsWhenTheEcuIsAtOneSide) {
    for (const bool back : {false, true}) {
        has(old_);
        ecu_.writes.clear();
        Run run(&ecu_);
        stopBehindTwo(run);
        joinAgain(run);
        const auto& bytes = back ? old_ : new_;
        for (int i = 0; i < 3; ++i) {
            tell(run, 600 + i, bytes[static_cast<std::size_t>(i)]);
        }
        EXPECT_NE(run.restore.Offer.get(), "") << "one cell is not known yet";
        tell(run, 603, back ? 44 : 40);
        EXPECT_NE(run.restore.Offer.get(), "") << "one cell is on the other side";
        tell(run, 603, bytes[3]);
        EXPECT_EQ(run.restore.Offer.get(), "");
        EXPECT_FALSE(std::filesystem::exists(run.journal()));
        EXPECT_EQ(run.restore.Text.get(), std::string("The restore that was not completed has ended: the ECU has all "
                                                      "its settings as ") +
                                              (back ? "before it." : "the point has them."));
    }
}

// It has the same type and version, and all cells on one side: nobody can know it for the one that was left.
TEST_F(LeftoverTest, AnEqualSecondEcuEndsNoOffer) {
    for (const bool back : {false, true}) {
        has(old_);
        ecu_.writes.clear();
        Run run(&ecu_);
        stopBehindTwo(run);
        const auto offer = run.restore.Offer.get();
        joinAgain(run);
        const auto& bytes = back ? old_ : new_;
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(run.restore.Offer.get(), offer);
            tell(run, 600 + i, bytes[static_cast<std::size_t>(i)]);
        }
        EXPECT_EQ(run.restore.Offer.get(), offer + " The ECU on the line has all of them as " +
                                               (back ? "before it" : "the point has them") +
                                               ": it may be another one of this kind.");
        EXPECT_EQ(run.window.keepNotice.Offer.get(), run.restore.Offer.get());
        EXPECT_TRUE(std::filesystem::exists(run.journal()));
        joinAgain(run);
        has(new_);
        EXPECT_TRUE(run.restore.goOn()) << "who says so ends it";
        EXPECT_FALSE(std::filesystem::exists(run.journal()));
    }
}

TEST_F(LeftoverTest, TheEcuOfTheSameConnectionIsTheOneThatWasLeft) {
    Run run(&ecu_);
    stopBehind(run, 4);
    EXPECT_FALSE(run.restore.restore(pointOf(cells_), kPoint));
    ASSERT_NE(run.restore.Offer.get(), "");
    ASSERT_EQ(inEcu(), new_);
    for (int i = 0; i < 4; ++i) {
        tell(run, 600 + i, new_[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(run.restore.Offer.get(), "");
}

// What was sent is not what the ECU has told.
TEST_F(LeftoverTest, WhatWasSentEndsNoOffer) {
    Run run(&ecu_);
    stopBehindTwo(run);
    joinAgain(run);
    for (int i = 0; i < 4; ++i) {
        run.window.ecuEeprom.sent(600 + i, new_[static_cast<std::size_t>(i)]);
    }
    EXPECT_NE(run.restore.Offer.get(), "");
}

TEST_F(LeftoverTest, TheMainWindowSaysItAtTheNextConnect) {
    Run run(&ecu_);
    auto& notice = run.window.keepNotice;
    EXPECT_EQ(notice.words(), "");
    stopBehindTwo(run);
    const std::string offer =
        "A restore of the point of 2026-05-06 07:08:09 (fuel map) was not completed: 1 of 4 settings written.";
    EXPECT_EQ(notice.Offer.get(), offer);
    run.program.disconnect();
    EXPECT_EQ(notice.Offer.get(), "");
    run.join();
    EXPECT_EQ(notice.Offer.get(), offer);
    EXPECT_EQ(notice.OfferPoint.get(), kPoint);
    notice.say("The ECU differs", "a.point");
    EXPECT_EQ(notice.words(), offer + "\nThe ECU differs");
    EXPECT_TRUE(run.restore.goBack());
    EXPECT_EQ(notice.words(), "The ECU differs");
}

// The block is not acknowledged: what the ECU has is asked for before anybody says that nothing is to be done.
TEST_F(LeftoverTest, AMiscBlockThatWasSentIsNotTakenForWhatTheEcuHas) {
    Run run(&ecu_);
    const int first = run.tables.addresses.RPM_LIMIT_LOW_OFF;
    ecu_.cells.at(static_cast<std::size_t>(first)) = 5;
    tell(run, first, 5);
    run.program.mapWindows().open();
    auto* const form = run.windows.loaded().back();
    for (auto* control : form->controls()) {
        if (control->name() == "btnSaveMisc") {
            control->press();
        }
    }
    run.pump.wait(3000);
    ASSERT_EQ(run.window.ecuEeprom.cells().at(static_cast<std::size_t>(first)).known, link::Known::Sent);
    ecu_.reads.clear();
    const int sent = run.window.ecuEeprom.cells().at(static_cast<std::size_t>(first)).byte;
    EXPECT_TRUE(run.restore.restore(pointOf({{first, sent}}), kPoint));
    EXPECT_THAT(ecu_.reads, testing::Contains(first));
    EXPECT_EQ(ecu_.cells.at(static_cast<std::size_t>(first)), sent);
}

// With the virtual ECU, which has its own idea of all commands.
TEST(RestoreOnTheVirtualEcu, TheSettingsOfAPointAreThoseOfTheEcuAfterwards) {
    support::EcuDevice device;
    support::VirtualProgram program(&device);
    program.connect();
    program.pump.wait(1500);
    const auto cell = [&](std::size_t address) { return int{device.eeprom()[address]}; };
    const std::vector<std::pair<int, int>> cells{{1, cell(1) ^ 1}, {2, cell(2) ^ 3}, {3, cell(3) ^ 1}, {540, 77}};
    EXPECT_TRUE(program.program.restoreRun().restore(pointOf(cells, program.tables.SWType), kPoint));
    for (const auto& [address, byte] : cells) {
        EXPECT_EQ(cell(static_cast<std::size_t>(address)), byte);
    }
}

}  // namespace
}  // namespace korvane::keep
