// From frames to lines in a file.
#include <cstdlib>
#include <gmock/gmock.h>

#include "controls/Color.h"
#include "logs/LogBench.h"
#include "logs/LogWriter.h"
#include "support/ErrorOf.h"
#include "support/FileSizeLimit.h"
#include "support/VirtualProgram.h"

namespace korvane::logs {
namespace {

using support::errorOf;
using testing::ElementsAre;
using testing::IsEmpty;

// The clock begins at 12:00:00 on 5 January 2026.
class Writer : public testing::Test, protected support::VirtualProgram {
protected:
    void startLog(const char* name) {
        window.txtDatalogFile.Text = std::string(name);
        window.chkDatalog.press();
    }
    void rows(int count) {
        for (int i = 0; i < count; ++i) {
            writer().writeLiveRow();
        }
    }
    [[nodiscard]] LogWriter& writer() { return program.logWriter(); }
    [[nodiscard]] std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (const auto& message : dialogs.takeMessages()) {
            EXPECT_EQ(message.title, "");
            EXPECT_EQ(message.icon, platform::MessageIcon::None);
            found.push_back(message.text);
        }
        return found;
    }
    [[nodiscard]] std::string cell(int column, int row) const { return std::string(tables.logData.cell(column, row)); }
};

TEST_F(Writer, TickingAnEmptyNameFillsInDateAndTime) {
    window.chkDatalog.press();
    EXPECT_EQ(window.txtDatalogFile.Text.get(), "DATA_260105_1200");
    EXPECT_TRUE(window.txtDatalogFile.Locked);
    EXPECT_EQ(window.txtDatalogFile.BackColor.get(), controls::kButtonFace);
    window.chkDatalog.press();
    EXPECT_FALSE(window.txtDatalogFile.Locked);
    EXPECT_EQ(window.txtDatalogFile.BackColor.get(), controls::kWindowBackground);
    pump.wait(60'000);
    window.chkDatalog.press();
    EXPECT_EQ(window.txtDatalogFile.Text.get(), "DATA_260105_1200");
}

TEST_F(Writer, TickingKeepsANameThatIsThere) {
    startLog("mine");
    EXPECT_EQ(window.txtDatalogFile.Text.get(), "mine");
    EXPECT_FALSE(folder.has("mine.txt"));
}

TEST_F(Writer, AFrameIsARowOnlyWhileTheBoxIsTicked) {
    connect();
    receiveFrame('R', support::Bytes(19));
    EXPECT_EQ(tables.logDataCount, 0);
    startLog("drive");
    receiveFrame('R', support::Bytes(19));
    EXPECT_EQ(tables.logDataCount, 1);
}

TEST_F(Writer, OneHundredRowsMakeNoFileAndOneMoreMakes101Lines) {
    startLog("drive");
    rows(100);
    EXPECT_EQ(tables.logDataCount, 100);
    EXPECT_FALSE(folder.has("drive.txt"));
    rows(1);
    EXPECT_EQ(tables.logDataCount, 0);
    EXPECT_EQ(folder.read("drive.txt").size(), 101U * 272U);
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(Writer, ALineIsTimeAnd24ChannelsAndTwentyNuls) {
    for (std::size_t i = 0; i < 24; ++i) {
        tables.liveValues[i].value = static_cast<double>(i) + 0.5;
    }
    startLog("drive");
    rows(101);
    std::string expected = "12:00:00  ";
    for (int i = 0; i < 24; ++i) {
        std::string cell = std::to_string(i) + ".5";
        cell.resize(10, ' ');
        expected += cell;
    }
    expected += std::string(20, '\0') + "\r\n";
    EXPECT_EQ(folder.read("drive.txt").substr(0, 272), expected);
    EXPECT_EQ(folder.read("drive.txt").substr(100 * 272), expected);
}

TEST_F(Writer, ALongNumberIsCutAndRunsIntoTheNextCell) {
    tables.liveValues[1].value = 12.3456789012;
    startLog("drive");
    rows(101);
    EXPECT_EQ(folder.read("drive.txt").substr(20, 12), "12.34567890 ");
}

TEST_F(Writer, AnExistingFileIsAppendedTo) {
    folder.write("drive.txt", "before\r\n");
    startLog("drive");
    rows(202);
    const std::string text = folder.read("drive.txt");
    EXPECT_EQ(text.size(), 8U + 202U * 272U);
    EXPECT_TRUE(text.starts_with("before\r\n12:00:00"));
}

TEST_F(Writer, RowsThatWaitGoToTheFileThatIsNamedThen) {
    startLog("first");
    rows(60);
    window.chkDatalog.press();
    EXPECT_EQ(tables.logDataCount, 60);
    startLog("second");
    rows(41);
    EXPECT_FALSE(folder.has("first.txt"));
    EXPECT_EQ(folder.read("second.txt").size(), 101U * 272U);
}

TEST_F(Writer, NothingIsWrittenAtTheEndOfTheProgram) {
    startLog("drive");
    rows(100);
    program.quit();
    EXPECT_FALSE(folder.has("drive.txt"));
}

TEST_F(Writer, NumbersHaveTheRegionalSeparator) {
    machine.decimal = ',';
    tables.liveValues[4].value = 1.02;
    tables.liveValues[6].value = 1e-20;
    startLog("drive");
    rows(1);
    EXPECT_EQ(cell(5, 0), "1,02      ");
    EXPECT_EQ(cell(7, 0), "1E-20     ");
}

constexpr std::array<std::string_view, 4> kSixToNine{"10.1", "11", "0", "0"};
const DebugCaptions kDebug{"500", "60", "21845", "43690", "1", "2", kSixToNine, {"25", "14.4"}};

TEST_F(Writer, ADebugRowHasTheWordsOfItsWindow) {
    tables.IdlePidWord = -7;
    tables.BoostPidWord = 100000;
    tables.AccelWord = 9;
    writer().writeDebugRow(kDebug);
    std::vector<std::string> cells;
    for (int column = 0; column < 16; ++column) {
        cells.push_back(cell(column, 0).substr(0, cell(column, 0).find(' ')));
    }
    EXPECT_THAT(cells, ElementsAre("12:00:00", "500", "60", "21845", "43690", "1", "2", "10.1", "11", "0", "0", "-7",
                                   "100000", "9", "25", "14.4"));
    EXPECT_EQ(cell(16, 0), std::string(10, '\0'));
    EXPECT_EQ(tables.logDataCount, 1);
}

TEST_F(Writer, ADebugRowKeepsTheLastColumnsOfAnOlderRow) {
    startLog("drive");
    tables.liveValues[15].value = 77;
    rows(101);
    writer().writeDebugRow(kDebug);
    EXPECT_EQ(cell(1, 0), "500       ");
    EXPECT_EQ(cell(16, 0), "77        ");
    EXPECT_EQ(cell(24, 0), cell(24, 1));
}

TEST_F(Writer, TheHundredAndFirstDebugRowSavesAsWell) {
    startLog("drive");
    rows(100);
    writer().writeDebugRow(kDebug);
    EXPECT_EQ(folder.read("drive.txt").size(), 101U * 272U);
}

TEST_F(Writer, ABatchThatCantBeOpenedIsToldOnceAndGone) {
    startLog("gone/drive");
    rows(100);
    EXPECT_THAT(texts(), IsEmpty());
    rows(1);
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Path not found76"));
    EXPECT_EQ(tables.logDataCount, 0);
    EXPECT_EQ(window.chkDatalog.Value.get(), 1);
    rows(101);
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Path not found76"));
    std::filesystem::create_directory(folder / "gone");
    rows(101);
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_EQ(folder.read("gone/drive.txt").size(), 101U * 272U);
}

TEST_F(Writer, ANameWithASlashInFrontStaysInTheFolder) {
    startLog("/drive");
    rows(101);
    EXPECT_EQ(folder.read("drive.txt").size(), 101U * 272U);
}

TEST_F(Writer, ANameOfThreeHundredCharactersAndOneWithANulFail) {
    startLog(std::string(300, 'a').c_str());
    rows(101);
    window.txtDatalogFile.Text = std::string("a\0b", 3);
    rows(101);
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Path/File access error75",
                                     "Error saveLogData: Path/File access error75"));
    EXPECT_FALSE(folder.has("a"));
}

TEST_F(Writer, AFolderOfThatNameFails) {
    std::filesystem::create_directory(folder / "drive.txt");
    startLog("drive");
    rows(101);
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Path/File access error75"));
}

TEST_F(Writer, ADeviceThatTakesNothingFails) {
    std::filesystem::create_symlink("/dev/full", folder / "drive.txt");
    startLog("drive");
    rows(101);
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Disk full61"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "drive.txt"));
}

TEST_F(Writer, ADiskThatFillsUpLeavesNothingOfTheBatch) {
    startLog("drive");
    rows(101);
    const std::string before = folder.read("drive.txt");
    {
        const support::FileSizeLimit limit(before.size() + 10'000);
        rows(101);
    }
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Disk full61"));
    EXPECT_EQ(folder.read("drive.txt"), before);
    rows(101);
    EXPECT_EQ(folder.read("drive.txt").size(), 2 * before.size());
}

TEST_F(Writer, AFullDiskLeavesNoNewFile) {
    startLog("drive");
    {
        const support::FileSizeLimit limit(10'000);
        rows(101);
    }
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Disk full61"));
    EXPECT_FALSE(folder.has("drive.txt"));
}

// Scripts can set it to anything.
TEST_F(Writer, ACountOutsideTheBufferFailsAsABatchOfThatSize) {
    startLog("drive");
    tables.logDataCount = 200;
    rows(1);
    EXPECT_THAT(texts(), ElementsAre("Error saveLogData: Subscript out of range9"));
    EXPECT_EQ(tables.logDataCount, 0);
    EXPECT_FALSE(folder.has("drive.txt"));
    tables.logDataCount = -2;
    rows(1);
    EXPECT_EQ(tables.logDataCount, -1);
    EXPECT_EQ(errorOf([&] { writer().writeDebugRow(kDebug); }), 9);
    EXPECT_EQ(tables.logDataCount, -1);
}

TEST_F(Writer, CountsFollowTheRowsToTheFileThatIsNamed) {
    const LogCounts& counts = window.logCounts;
    EXPECT_EQ(counts.path.get(), "");
    startLog("drive");
    EXPECT_EQ(counts.path.get(), (folder / "drive.txt").string());
    rows(140);
    EXPECT_EQ(counts.onDisk.get(), 101);
    EXPECT_EQ(counts.waiting.get(), 39);
    window.txtDatalogFile.Text = std::string("other");
    EXPECT_EQ(counts.onDisk.get(), 0);
    window.txtDatalogFile.Text = std::string("drive");
    EXPECT_EQ(counts.onDisk.get(), 101);
    window.txtDatalogFile.Text = std::string("gone/drive");
    rows(62);
    EXPECT_EQ(counts.onDisk.get(), 0);
    EXPECT_EQ(counts.waiting.get(), 0);
}

class BothSeparators : public Writer, public testing::WithParamInterface<char> {};

TEST_P(BothSeparators, WhatIsWrittenIsReadBack) {
    machine.decimal = GetParam();
    startLog("drive");
    for (int row = 0; row < 101; ++row) {
        for (std::size_t i = 0; i < 23; ++i) {
            tables.liveValues[i].value = row * 0.25 - static_cast<double>(i) * 1.5;
        }
        rows(1);
    }
    clsTXTdata reader(tables, GetParam());
    reader.LoadFromFile(folder / "drive.txt");
    ASSERT_EQ(reader.ItemCount(), 101);
    for (int row = 0; row < 100; ++row) {
        static_cast<void>(reader.getNextSimDataPacket());
        for (std::size_t i = 0; i < 23; ++i) {
            EXPECT_DOUBLE_EQ(tables.liveValues[i].value, row * 0.25 - static_cast<double>(i) * 1.5);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Point, BothSeparators, testing::Values('.', ','),
                         [](const auto& test) { return test.param == '.' ? "Point" : "Comma"; });

}  // namespace
}  // namespace korvane::logs
