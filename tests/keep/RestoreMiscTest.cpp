// A restore of settings: the misc block behind it, and its journal on the disk.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <memory>

#include "CellEcu.h"
#include "keep/desk/DeskFile.h"
#include "keep/restore/RestoreRun.h"
#include "maps/MapForm.h"
#include "support/EcuDevice.h"
#include "support/FileSizeLimit.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

Snapshot pointOf(const std::vector<std::pair<int, int>>& cells, int type) {
    Snapshot point;
    point.time = {2026, 5, 6, 7, 8, 9};
    point.ecu = {type, 3.386F, -1};
    for (const auto& [address, byte] : cells) {
        point.eeprom.at(static_cast<std::size_t>(address)) = {static_cast<std::uint8_t>(byte), link::Known::Told};
    }
    return point;
}

// The limit is the word in cells 2 and 3: 0x1388 is 5000.
TEST(RestoreMiscTest, TheBoxesOfTheMapWindowHaveTheRestoredBlock) {
    support::EcuDevice device;
    support::VirtualProgram program(&device);
    program.connect();
    program.pump.wait(1500);
    program.program.mapWindows().open();
    auto& form = dynamic_cast<maps::FrmMaps&>(*program.windows.loaded().back());
    program.pump.wait(10000);
    ASSERT_NE(form.txtMisc(0).Text.get(), "5000");
    auto& run = program.program.restoreRun();
    EXPECT_TRUE(run.restore(pointOf({{2, 0x88}, {3, 0x13}}, program.tables.SWType), "1.point"));
    EXPECT_EQ(form.txtMisc(0).Text.get(), "5000");
    EXPECT_EQ(program.tables.MiscBlock[1] + 256 * program.tables.MiscBlock[2], 5000);
    form.btnSaveMisc.press();
    program.pump.wait(3000);
    EXPECT_EQ(device.eeprom()[2] + 256 * device.eeprom()[3], 5000);
}

// Notes all bytes that the program sends.
class AskedEcu : public CellEcu {
public:
    void receive(std::uint8_t byte, platform::Micros at) override {
        asked.push_back(byte);
        CellEcu::receive(byte, at);
    }
    support::Bytes asked;
};

TEST(RestoreMiscTest, ARestoreOfOtherSettingsAsksForNoBlock) {
    AskedEcu ecu;
    support::VirtualProgram program(&ecu);
    program.connect();
    program.pump.wait(1500);
    ecu.asked.clear();
    EXPECT_TRUE(program.program.restoreRun().restore(pointOf({{600, 7}}, 11), "1.point"));
    EXPECT_THAT(ecu.asked, testing::Not(testing::Contains('m')));
    EXPECT_TRUE(program.program.restoreRun().restore(pointOf({{10, 7}}, 11), "1.point"));
    EXPECT_EQ(std::count(ecu.asked.begin(), ecu.asked.end(), 'm'), 1);
}

TEST(RestoreMiscTest, WhileItRunsItsJournalStays) {
    CellEcu ecu;
    support::VirtualProgram program(&ecu);
    program.connect();
    program.pump.wait(1500);
    auto& run = program.program.restoreRun();
    const auto file = program.folder / "restore" / "restore-11-3386.journal";
    int there = 0;
    ecu.onWrite = [&] {
        run.forget();
        there += fs::exists(file) ? 1 : 0;
    };
    EXPECT_TRUE(run.restore(pointOf({{600, 7}, {601, 8}}, 11), "1.point"));
    EXPECT_EQ(there, 2);
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A program on a machine that has a disk to wait for.
struct Flushing {
    explicit Flushing(platform::LineDevice* device = nullptr) : parts(device), machine(parts.machine) {
        machine.toDisk = [this](const fs::path& place) {
            flushed.push_back(fs::is_directory(place) ? std::string() : contentOf(place));
            return failure;
        };
        program = std::make_unique<program::Program>(machine);
        program->connection().loadSettings = nullptr;
        program->start();
    }
    [[nodiscard]] int flushedWith(std::string_view beginning) const {
        return static_cast<int>(std::count_if(flushed.begin(), flushed.end(),
                                              [&](const auto& bytes) { return bytes.starts_with(beginning); }));
    }

    support::VirtualMachine parts;
    platform::Machine machine;
    std::vector<std::string> flushed;  // what files had
    std::error_code failure;           // of the next ones
    std::unique_ptr<program::Program> program;
};

constexpr auto kJournal = "Korvane restore journal ";
constexpr auto kPointMark = "KVPOINT";

TEST(FlushTest, APointOfTheProgramWaitsForTheDisk) {
    Flushing run;
    EXPECT_EQ(run.program->keeper().addByHand(""), "");
    EXPECT_EQ(run.flushedWith(kPointMark), 1);
}

TEST(FlushTest, AJournalOfTheProgramWaitsForTheDiskBeforeTheFirstWrite) {
    CellEcu ecu;
    Flushing run(&ecu);
    run.program->frmSarn2().btnConnect.press();
    run.parts.pump.wait(1500);
    int before = 0;
    ecu.onWrite = [&] { before = before == 0 ? run.flushedWith(kJournal) : before; };
    EXPECT_TRUE(run.program->restoreRun().restore(pointOf({{600, 7}}, 11), "1.point"));
    EXPECT_EQ(before, 1);
}

// Its program may have been killed before the disk had its last state.
TEST(FlushTest, AJournalThatIsTakenOverWaitsForTheDiskToo) {
    CellEcu ecu;
    Flushing run(&ecu);
    RestoreJournal left;
    left.ecu = {11, 3386};
    left.pointName = "1.point";
    left.pointTime = {2026, 5, 6, 7, 8, 9};
    left.pointReason = "maps read";
    left.written = 1;
    left.cells = {{600, 0, 7}, {601, 0, 8}};
    ecu.cells[600] = 7;
    ASSERT_EQ(JournalFile(run.parts.folder / "restore").save(left), "");
    run.program->frmSarn2().btnConnect.press();
    run.parts.pump.wait(1500);
    int before = 0;
    ecu.onWrite = [&] { before = run.flushedWith(kJournal); };
    EXPECT_TRUE(run.program->restoreRun().goOn());
    EXPECT_EQ(before, 1);
    EXPECT_THAT(ecu.writes, SizeIs(1));
}

TEST(FlushTest, AJournalOfStraysWaitsForTheDiskAndItsFailureCounts) {
    CellEcu ecu;
    Flushing run(&ecu);
    run.program->frmSarn2().btnConnect.press();
    run.parts.pump.wait(1500);
    run.parts.line.inject(support::frame('T', {0, 0xBC, 0x02}));  // 700
    run.parts.pump.pump();
    int journals = 0;
    ecu.onWrite = [&] {
        if (ecu.writes.size() == 1) {
            ecu.strayTo = 700;
        }
        journals = run.flushedWith(kJournal);
        run.failure = std::make_error_code(std::errc::io_error);
    };
    EXPECT_FALSE(run.program->restoreRun().restore(pointOf({{600, 7}, {601, 8}}, 11), "1.point"));
    EXPECT_EQ(run.flushedWith(kJournal), journals + 1);
    EXPECT_THAT(run.program->restoreRun().Text.get(), testing::HasSubstr("the journal can't be written"));
}

TEST(FlushTest, ADeskThatCantBecomeAPointStays) {
    const support::TempFolder folder;
    PointStore store(folder / "restore");
    Snapshot desk;
    desk.fuel.edited[3] = 99;
    {
        DeskFile killed(store, {}, {});
        ASSERT_EQ(killed.write(desk), "");
    }
    const auto desks = [&] {
        std::vector<std::string> names;
        for (const auto& file : fs::directory_iterator(folder / "restore" / "desk")) {
            if (file.path().extension() == ".desk") {
                names.push_back(file.path().filename().string());
            }
        }
        return names;
    };
    ASSERT_THAT(desks(), SizeIs(1));
    {
        const support::FileSizeLimit full(16);
        const auto left = DeskFile(store, {}, {}).takeLeft();
        EXPECT_THAT(left.points, IsEmpty());
        EXPECT_NE(left.failure, "");
    }
    EXPECT_THAT(desks(), SizeIs(1));
    EXPECT_THAT(DeskFile(store, {}, {}).takeLeft().points, SizeIs(1));
    EXPECT_THAT(desks(), IsEmpty());
}

}  // namespace
}  // namespace korvane::keep
