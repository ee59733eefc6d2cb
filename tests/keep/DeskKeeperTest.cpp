#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <set>

#include "keep/desk/DeskKeeper.h"
#include "maps/MapForm.h"
#include "program/Program.h"
#include "support/FileSizeLimit.h"
#include "support/ProcessorTime.h"
#include "support/VirtualMachine.h"

namespace korvane::keep {
namespace {

namespace fs = std::filesystem;
using core::Cause;
using core::EditedMap;
using support::Bytes;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kDelay = 5000;  // ms

// Files that are held by somebody.
class Holds {
public:
    [[nodiscard]] platform::FileHold function() {
        return [this](const fs::path& file) -> std::shared_ptr<const void> {
            if (!held_.insert(file).second) {
                return nullptr;
            }
            std::ofstream(file).flush();
            return {this, [this, file](const void*) { held_.erase(file); }};
        };
    }

private:
    std::set<fs::path> held_;
};

// One run of the program in a folder.
struct OneRun {
    OneRun(const fs::path& folder, const platform::FileHold& hold, const platform::DiskFlush& toDisk = {})
        : machine(parts.machine) {
        machine.folder = folder;
        machine.hold = hold;
        machine.toDisk = toDisk;
        program = std::make_unique<program::Program>(machine);
        program->connection().loadSettings = nullptr;
        program->start();
    }

    void edit(std::size_t cell, std::uint8_t byte) {
        const core::MapHistory::Change step(&program->history(),
                                            Cause::cells(Cause::Kind::KeyUp, EditedMap::Fuel, cell, cell));
        program->tables().FuelMapOut.at(cell) = byte;
    }
    void wait(int milliseconds) { parts.pump.wait(milliseconds); }
    void receiveFrame(std::uint8_t command, const Bytes& payload) {
        parts.line.inject(support::frame(command, payload));
        parts.pump.pump();
    }
    void connectAndRead() {
        program->frmSarn2().btnConnect.press();
        receiveFrame('y', {0x34, 0x12, 0x0D, 0x3A, 11});
        receiveFrame('f', Bytes(160, 50));
        receiveFrame('a', Bytes(160, 60));
    }
    [[nodiscard]] link::KeepNotice& notice() const { return program->frmSarn2().keepNotice; }
    [[nodiscard]] std::vector<std::string> reasons() const {
        std::vector<std::string> reasons;
        program->keeper().refresh();
        for (const auto& point : program->keeper().points()) {
            reasons.push_back(point.reason);
        }
        return reasons;
    }
    [[nodiscard]] Snapshot point(std::size_t row) const {
        program->keeper().refresh();
        return *program->keeper().load(program->keeper().points().at(row).name).content;
    }

    support::VirtualMachine parts;
    platform::Machine machine;
    std::unique_ptr<program::Program> program;
};

class DeskKeeperTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<OneRun> start() {
        return std::make_unique<OneRun>(folder_.path(), holds_.function());
    }
    // Names in the folder of the points that end so.
    [[nodiscard]] std::vector<std::string> files(std::string_view ending) const {
        std::vector<std::string> names;
        std::error_code error;
        for (fs::recursive_directory_iterator file(folder_ / "restore", error), end; !error && file != end;
             file.increment(error)) {
            if (auto name = file->path().filename().string(); name.ends_with(ending)) {
                names.push_back(std::move(name));
            }
        }
        return names;
    }
    [[nodiscard]] Snapshot onDisk() const {
        return *decodePoint(folder_.read("restore/desk/" + files(".desk").at(0))).content;
    }
    Holds holds_;
    support::TempFolder folder_;
};

TEST_F(DeskKeeperTest, WritesTheDeskAFewSecondsBehindAnEditWithoutAConnection) {
    const auto run = start();
    run->wait(60'000);
    run->edit(3, 99);
    run->wait(kDelay - 1);
    EXPECT_FALSE(folder_.has("restore"));
    run->wait(1);
    ASSERT_THAT(files(".desk"), SizeIs(1));
    EXPECT_EQ(onDisk().fuel.edited[3], 99);
    EXPECT_EQ(onDisk().reason, "desk");
    EXPECT_THAT(files(".point"), IsEmpty());
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, WritesNothingWithoutAnEdit) {
    const auto run = start();
    run->connectAndRead();
    run->wait(60'000);
    EXPECT_FALSE(folder_.has("restore"));
}

// They are no part of the map.
TEST_F(DeskKeeperTest, CellsBehindTheLastOneOfASmallMapAreNotKeptIfNobodyEditsThem) {
    const auto run = start();
    run->connectAndRead();
    for (const auto byte : {std::uint8_t{40}, std::uint8_t{50}}) {
        const core::MapHistory::Change step(&run->program->history(), Cause::file(true));
        std::fill(run->program->tables().FuelMapOut.begin() + 160, run->program->tables().FuelMapOut.end(), byte);
    }
    run->edit(159, 51);
    run->edit(159, 50);
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), IsEmpty());
    run->program->tables().SWType = 14;
    run->edit(3, 98);
    run->edit(3, 50);
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), SizeIs(1));
}

TEST_F(DeskKeeperTest, EditsBehindTheLastCellOfASmallMapOutlastACrash) {
    auto run = start();
    run->connectAndRead();
    run->edit(160, 99);
    run->wait(kDelay);
    ASSERT_THAT(files(".desk"), SizeIs(1));
    EXPECT_EQ(onDisk().fuel.edited[160], 99);
    run.reset();  // killed
    const auto next = start();
    EXPECT_EQ(next->point(0).fuel.edited[160], 99);
}

// It is in its file.
TEST_F(DeskKeeperTest, ATuneThatWasLoadedAndNotEditedIsNotKept) {
    const auto run = start();
    {
        const core::MapHistory::Change step(&run->program->history(), Cause::file(true));
        run->program->tables().FuelMapOut.fill(50);
    }
    run->wait(kDelay);
    run->program->quit();
    EXPECT_FALSE(folder_.has("restore"));
    const auto next = start();
    {
        const core::MapHistory::Change step(&next->program->history(), Cause::file(true));
        next->program->tables().FuelMapOut.fill(50);
    }
    next->edit(3, 51);
    next->program->quit();
    EXPECT_EQ(next->point(0).fuel.edited[2], 50);
}

TEST_F(DeskKeeperTest, FollowsFurtherEditsAndWritesNothingBetweenThem) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    const auto file = folder_ / "restore" / "desk" / files(".desk").at(0);
    const auto old = fs::last_write_time(file) - std::chrono::hours(1);
    fs::last_write_time(file, old);
    run->wait(10 * kDelay);
    EXPECT_EQ(fs::last_write_time(file), old);
    run->edit(4, 98);
    run->wait(kDelay);
    EXPECT_EQ(onDisk().fuel.edited[4], 98);
    EXPECT_THAT(files(".desk"), SizeIs(1));
}

TEST_F(DeskKeeperTest, AWindowThatClosesDoesNotWait) {
    const auto run = start();
    run->program->mapWindows().open();
    run->wait(1000);
    auto& form = *run->parts.windows.loaded().back();
    run->edit(3, 99);
    static_cast<void>(form.unload());
    EXPECT_THAT(files(".desk"), SizeIs(1));
}

TEST_F(DeskKeeperTest, AProperEndMakesAPointAndRemovesTheFile) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    run->program->quit();
    EXPECT_THAT(files(".desk"), IsEmpty());
    EXPECT_THAT(files(".lock"), IsEmpty());
    EXPECT_THAT(run->reasons(), ElementsAre("end of the program"));
    EXPECT_EQ(run->point(0).fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, AnEndAtOnceKeepsTheEditToo) {
    const auto run = start();
    run->edit(3, 99);
    run->program->quit();
    EXPECT_THAT(run->reasons(), ElementsAre("end of the program"));
    EXPECT_EQ(run->point(0).fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, TheEndMakesNoSecondPointOfTheSameDesk) {
    const auto run = start();
    run->edit(3, 99);
    EXPECT_EQ(run->program->keeper().addByHand(""), "");
    run->program->quit();
    EXPECT_THAT(run->reasons(), ElementsAre("by hand"));
    const auto next = start();
    next->edit(3, 99);
    next->program->quit();
    EXPECT_THAT(next->reasons(), ElementsAre("by hand"));
    EXPECT_THAT(files(".desk"), IsEmpty());
}

TEST_F(DeskKeeperTest, APointThatIsRestoredOverTheEditsLeavesThemInAPoint) {
    const auto run = start();
    run->edit(3, 99);
    run->program->mapWindows().open();
    run->wait(1000);
    static_cast<void>(run->program->restorePoints().context().toDesk(run->program->keeper().now(), {}));
    EXPECT_THAT(run->reasons(), ElementsAre("before: maps restored"));
    EXPECT_EQ(run->point(0).fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, WhatTheEcuHasStoredIsNotKeptHere) {
    const auto run = start();
    run->connectAndRead();
    run->edit(3, 99);
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), SizeIs(1));
    EXPECT_EQ(onDisk().fuel.working[3], 50);
    run->edit(3, 50);
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), IsEmpty());
}

// A "Realtime change" is gone with the power of the ECU.
TEST_F(DeskKeeperTest, WhatTheEngineRunsOnUnstoredIsKept) {
    const auto run = start();
    run->connectAndRead();
    run->edit(3, 99);
    run->program->frmSarn2().ecuMaps.fuel.changed(3, 99);
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), SizeIs(1));
}

TEST_F(DeskKeeperTest, APointOfTheDeskTakesThePlaceOfTheFileWhileItIsThere) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    EXPECT_EQ(run->program->keeper().addByHand(""), "");
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), IsEmpty());
    fs::remove(folder_ / "restore" / files(".point").at(0));
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), SizeIs(1));
}

TEST_F(DeskKeeperTest, AFileThatSomebodyRemovedIsWrittenAgain) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    fs::remove(folder_ / "restore" / "desk" / files(".desk").at(0));
    run->wait(kDelay);
    EXPECT_THAT(files(".desk"), SizeIs(1));
}

TEST_F(DeskKeeperTest, TheNextRunMakesAPointOfWhatAKilledOneLeftAndSaysSo) {
    auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    run.reset();  // killed
    ASSERT_THAT(files(".desk"), SizeIs(1));
    const auto time = onDisk().time;
    const auto next = start();
    EXPECT_THAT(next->reasons(), ElementsAre("unfinished: the program ended without closing"));
    EXPECT_EQ(next->point(0).fuel.edited[3], 99);
    EXPECT_EQ(next->point(0).time, time);
    EXPECT_THAT(files(".desk"), IsEmpty());
    EXPECT_THAT(files(".lock"), IsEmpty());
    EXPECT_EQ(next->notice().words(),
              "The program ended without closing. The maps of its desk are restore point 2026-01-05 12:00:05.");
    EXPECT_EQ(next->program->tables().FuelMapOut[3], 0) << "nothing is moved by itself";
    EXPECT_THAT(next->parts.recorder.arrivals, IsEmpty());
}

TEST_F(DeskKeeperTest, TheNoticeOpensThePointAndIsDoneThen) {
    auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    run.reset();  // killed
    const auto next = start();
    next->connectAndRead();
    EXPECT_THAT(next->notice().words(), HasSubstr("ended without closing")) << "a connect does not take it away";
    next->notice().showUnfinished();
    EXPECT_EQ(next->parts.windows.loaded().back()->name(), "frmRestore");
    EXPECT_EQ(next->notice().words(), "");
}

TEST_F(DeskKeeperTest, AProgramThatRunsKeepsItsFile) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    const auto other = start();
    EXPECT_THAT(other->reasons(), IsEmpty());
    EXPECT_EQ(other->notice().words(), "");
    other->edit(5, 77);
    other->wait(kDelay);
    EXPECT_THAT(files(".desk"), SizeIs(2));
    other->program->quit();
    EXPECT_THAT(files(".desk"), SizeIs(1));
    EXPECT_EQ(onDisk().fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, TellsOfSeveralThatWereKilledByTheNewest) {
    auto first = start();
    auto second = start();
    first->edit(3, 99);
    second->wait(20'000);
    second->edit(4, 98);
    first->wait(kDelay);
    second->wait(kDelay);
    first.reset();   // killed
    second.reset();  // killed
    const auto next = start();
    EXPECT_THAT(next->reasons(), SizeIs(2));
    EXPECT_THAT(next->notice().words(), EndsWith("restore point 2026-01-05 12:00:25, and 1 more."));
    EXPECT_EQ(next->program->keeper().load(next->notice().UnfinishedPoint.get()).content->fuel.edited[4], 98);
}

TEST_F(DeskKeeperTest, TellsOfAllRunsThatWereKilledOneBehindTheOther) {
    auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    run.reset();  // killed
    run = start();
    run->wait(60'000);
    run->edit(4, 98);
    run->wait(kDelay);
    run.reset();  // killed
    run = start();
    EXPECT_THAT(run->notice().words(), EndsWith("restore point 2026-01-05 12:01:05, and 1 more."));
    run.reset();  // killed
    run = start();
    EXPECT_THAT(run->notice().words(), EndsWith("restore point 2026-01-05 12:01:05, and 1 more."));
    run->notice().showUnfinished();
    run.reset();  // killed
    run = start();
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, AProperEndTellsNoMoreOfAKilledRun) {
    auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    run.reset();  // killed
    run = start();
    EXPECT_NE(run->notice().words(), "");
    run->program->quit();
    run = start();
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, WhatCantBeReadIsListedWithItsDamage) {
    auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    run.reset();  // killed
    const auto name = files(".desk").at(0);
    auto bytes = folder_.read("restore/desk/" + name);
    bytes[100] = static_cast<char>(bytes[100] ^ 1);
    folder_.write("restore/desk/" + name, bytes);
    const auto next = start();
    next->program->keeper().refresh();
    ASSERT_THAT(next->program->keeper().points(), SizeIs(1));
    EXPECT_EQ(next->program->keeper().points()[0].damage, "damaged");
    EXPECT_EQ(next->notice().words(), "The program ended without closing. What it has left of its desk can't be read.");
    EXPECT_THAT(files(".desk"), IsEmpty());
    EXPECT_EQ(folder_.read("restore/" + files(".point").at(0)), bytes);
}

TEST_F(DeskKeeperTest, OpensNothingButItsOwnRegularFiles) {
    fs::create_directories(folder_ / "restore" / "desk" / "0123456789ab.desk");
    folder_.write("restore/desk/other.desk", "x");
    fs::create_symlink(folder_ / "restore" / "desk" / "other.desk", folder_ / "restore" / "desk" / "0123456789ac.desk");
    const auto run = start();
    EXPECT_THAT(run->reasons(), IsEmpty());
    EXPECT_THAT(files(".desk"), SizeIs(3));
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, AFullDiskIsToldAsLongAsItIsAndTriedAgain) {
    const auto run = start();
    run->edit(3, 99);
    {
        const support::FileSizeLimit full(1000);
        run->wait(kDelay);
        EXPECT_THAT(run->notice().words(), HasSubstr("The file of the desk can't be written: "));
        run->edit(3, 98);
        run->program->frmSarn2().btnConnect.press();
        run->notice().close();
        run->wait(4 * kDelay);
        EXPECT_THAT(run->notice().words(), HasSubstr("The file of the desk can't be written: "));
        EXPECT_THAT(files(".desk"), IsEmpty());
    }
    run->wait(kDelay);
    EXPECT_EQ(onDisk().fuel.edited[3], 98);
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, AFullDiskIsToldNoLongerWhenNothingHasToBeKept) {
    const auto run = start();
    run->connectAndRead();
    run->edit(3, 99);
    const support::FileSizeLimit full(1000);
    run->wait(kDelay);
    EXPECT_THAT(run->notice().words(), HasSubstr("The file of the desk can't be written: "));
    run->edit(3, 50);
    run->wait(kDelay);
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, WhatWasUndoneAndLeftIsInAPoint) {
    const auto run = start();
    run->edit(3, 99);
    run->edit(4, 98);
    static_cast<void>(run->program->history().goTo(1));
    static_cast<void>(run->program->history().goTo(0));
    run->wait(kDelay);
    EXPECT_THAT(run->reasons(), ElementsAre("before: undo"));
    EXPECT_EQ(run->point(0).fuel.edited[3], 99);
    EXPECT_EQ(run->point(0).fuel.edited[4], 98);
    run->wait(4 * kDelay);
    run->program->quit();
    EXPECT_THAT(run->reasons(), ElementsAre("before: undo"));
}

TEST_F(DeskKeeperTest, AnEndAtOnceKeepsWhatWasUndone) {
    const auto run = start();
    run->edit(3, 99);
    static_cast<void>(run->program->history().goTo(0));
    run->program->quit();
    EXPECT_THAT(run->reasons(), ElementsAre("before: undo"));
    EXPECT_EQ(run->point(0).fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, AChangeBehindAnUndoLeavesBothInPoints) {
    const auto run = start();
    run->edit(3, 99);
    static_cast<void>(run->program->history().goTo(0));
    run->edit(4, 98);
    static_cast<void>(run->program->history().goTo(0));
    run->wait(kDelay);
    EXPECT_THAT(run->reasons(), ElementsAre("before: undo", "before: undo"));
    EXPECT_EQ(run->point(1).fuel.edited[3], 99);
    EXPECT_EQ(run->point(0).fuel.edited[3], 0);
    EXPECT_EQ(run->point(0).fuel.edited[4], 98);
}

TEST_F(DeskKeeperTest, WhatIsDoneAgainNeedsNoPoint) {
    const auto run = start();
    run->edit(3, 99);
    static_cast<void>(run->program->history().goTo(0));
    static_cast<void>(run->program->history().goTo(1));
    run->wait(kDelay);
    EXPECT_THAT(files(".point"), IsEmpty());
    EXPECT_EQ(onDisk().fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, AnUndoOfWhatTheEcuHasStoredMakesNoPoint) {
    const auto run = start();
    run->connectAndRead();
    run->edit(3, 99);
    run->edit(3, 50);
    static_cast<void>(run->program->history().goTo(run->program->history().count() - 1));
    run->wait(kDelay);
    EXPECT_EQ(onDisk().fuel.edited[3], 99);
    EXPECT_THAT(files(".point"), IsEmpty());
}

TEST_F(DeskKeeperTest, WhatWasRevertedIsInAPoint) {
    const auto run = start();
    run->edit(3, 99);
    {
        const core::MapHistory::Change revert(&run->program->history(),
                                              Cause::cells(Cause::Kind::RevertCell, EditedMap::Fuel, 3, 3));
        run->program->tables().FuelMapOut.at(3) = 0;
    }
    run->wait(kDelay);
    EXPECT_THAT(run->reasons(), ElementsAre("before: revert"));
    EXPECT_EQ(run->point(0).fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, UndoneWorkThatFindsTheDiskFullIsTriedAgain) {
    const auto run = start();
    run->edit(3, 99);
    static_cast<void>(run->program->history().goTo(0));
    {
        const support::FileSizeLimit full(1000);
        run->wait(2 * kDelay);
        EXPECT_THAT(run->notice().words(), HasSubstr("(before: undo)"));
        EXPECT_THAT(files(".point"), IsEmpty());
    }
    run->wait(kDelay);
    EXPECT_THAT(run->reasons(), ElementsAre("before: undo"));
    EXPECT_EQ(run->notice().words(), "");
}

TEST_F(DeskKeeperTest, AFullDiskLeavesTheLastFileAndAnEndWithoutAPointLeavesItToo) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    const support::FileSizeLimit full(1000);
    run->edit(3, 98);
    run->wait(kDelay);
    run->program->quit();
    EXPECT_TRUE(run->program->ended());
    EXPECT_EQ(onDisk().fuel.edited[3], 99);
}

TEST_F(DeskKeeperTest, AFolderThatCantBeMadeStopsNothing) {
    folder_.write("restore", "a file");
    const auto run = start();
    run->edit(3, 99);
    run->wait(kDelay);
    EXPECT_THAT(run->notice().words(), HasSubstr("The folder of the desk can't be made"));
    run->program->quit();
    EXPECT_TRUE(run->program->ended());
}

// The name of the file is in the folder from the first write on.
TEST_F(DeskKeeperTest, WaitsForTheDiskOfTheFileEachTimeAndOfTheFolderOnce) {
    std::map<bool, int> flushed;  // by whether it is the folder
    OneRun run(folder_.path(), holds_.function(), [&](const fs::path& place) {
        ++flushed[fs::is_directory(place)];
        return std::error_code();
    });
    for (std::uint8_t byte = 1; byte <= 3; ++byte) {
        run.edit(3, byte);
        run.wait(kDelay);
    }
    EXPECT_EQ(flushed[false], 3);
    EXPECT_EQ(flushed[true], 1);
}

// It is written between two events of the windows.
TEST_F(DeskKeeperTest, AWriteTakesLessThanFiveMilliseconds) {
    const auto run = start();
    std::uint8_t byte = 0;
    EXPECT_LT(support::bestSeconds(10,
                                   [&] {
                                       run->edit(3, ++byte);
                                       run->wait(kDelay);
                                   }),
              support::allowed(0.005));
}

TEST_F(DeskKeeperTest, SendsNothing) {
    const auto run = start();
    run->edit(3, 99);
    run->wait(2 * kDelay);
    run->program->quit();
    EXPECT_THAT(run->parts.recorder.arrivals, IsEmpty());
}

}  // namespace
}  // namespace korvane::keep
