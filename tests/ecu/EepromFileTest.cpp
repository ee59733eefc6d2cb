#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

#include "Wire.h"
#include "ecu/memory/EepromFile.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class EepromFile : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path file(const std::string& text) const { return folder_.write("cells.txt", text); }
    std::string error(const std::string& text) {
        cells_ = {9};
        return readEepromFile(file(text), cells_);
    }

    support::TempFolder folder_;
    std::vector<std::uint8_t> cells_;
};

TEST_F(EepromFile, IsOneNumberALine) {
    EXPECT_EQ(error("0\n255\n17\n"), "");
    EXPECT_THAT(cells_, ElementsAre(0, 255, 17));
}

TEST_F(EepromFile, BlanksAroundANumberAndEmptyLinesAtTheEndDoNotMatter) {
    EXPECT_EQ(error(" 1 \r\n\t2\n3\n\n \n"), "");
    EXPECT_THAT(cells_, ElementsAre(1, 2, 3));
}

TEST_F(EepromFile, ADamagedFileIsNamedWithItsLineAndChangesNothing) {
    EXPECT_THAT(error("1\n256\n"), HasSubstr("line 2"));
    EXPECT_THAT(error("1\nabc\n"), HasSubstr("line 2"));
    EXPECT_THAT(error("1\n\n3\n"), HasSubstr("line 3"));
    EXPECT_THAT(error("1.5\n"), HasSubstr("line 1"));
    EXPECT_THAT(error("-1\n"), HasSubstr("line 1"));
    EXPECT_THAT(error(""), HasSubstr("holds no numbers"));
    EXPECT_THAT(error(std::string("\0\xFF\x80", 3)), HasSubstr("line 1"));
    EXPECT_THAT(cells_, ElementsAre(9));
}

TEST_F(EepromFile, MayHoldAllCellsAndNotOneMore) {
    std::string all;
    for (int i = 0; i < 3001; ++i) {
        all += "7\n";
    }
    EXPECT_EQ(error(all), "");
    EXPECT_EQ(cells_.size(), 3001U);
    EXPECT_THAT(error(all + "7\n"), HasSubstr("line 3002"));
}

TEST_F(EepromFile, AHugeFileIsNotRead) {
    EXPECT_THAT(error(std::string(2'000'000, '1')), HasSubstr("too long"));
}

TEST_F(EepromFile, AHugeFileWithNothingInItIsNotRead) {
    const auto path = file("");
    std::filesystem::resize_file(path, std::uintmax_t{2} << 30U);
    EXPECT_THAT(readEepromFile(path, cells_), HasSubstr("too long"));
}

TEST_F(EepromFile, AFileThatHidesItsLengthIsReadNoFurther) {
    const std::filesystem::path endless = "/proc/kallsyms";  // some megabytes
    std::error_code none;
    if (std::filesystem::file_size(endless, none) != 0 || none) {
        GTEST_SKIP() << "the system has no such file";
    }
    EXPECT_THAT(readEepromFile(endless, cells_), HasSubstr("too long"));
}

TEST_F(EepromFile, OnlyARegularFileIsOpened) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0666), 0);
    for (const auto& path : {folder_.path(), folder_ / "pipe", std::filesystem::path("/dev/zero")}) {
        EXPECT_THAT(readEepromFile(path, cells_), HasSubstr("can't be read: it is no regular file")) << path;
    }
}

TEST_F(EepromFile, AMissingFileIsAnError) {
    EXPECT_THAT(readEepromFile(folder_ / "none", cells_), HasSubstr("can't be read: No such file"));
}

TEST_F(EepromFile, IsWrittenAsItIsRead) {
    const std::vector<std::uint8_t> cells = {3, 0, 255};
    EXPECT_EQ(writeEepromFile(folder_ / "out.txt", cells), "");
    EXPECT_EQ(folder_.read("out.txt"), "3\n0\n255\n");
    EXPECT_THAT(folder_.names(), ElementsAre("out.txt"));
}

TEST_F(EepromFile, AWriteThatFailsSaysSo) {
    EXPECT_THAT(writeEepromFile(folder_ / "no/out.txt", cells_), HasSubstr("can't be saved"));
    EXPECT_THAT(writeEepromFile(folder_.path(), cells_), HasSubstr("can't be saved"));
}

TEST_F(EepromFile, FillsTheEcuAtTheStart) {
    const test::Wire wire("eeprom=" + file("1\n2\n3\n4\n").string());
    EXPECT_THAT(wire.ecu.eeprom().first(4), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(wire.ecu.eeprom().size(), 3001U);
    EXPECT_EQ(wire.ecu.eeprom()[345], 2) << "the cells behind keep their factory contents";
}

TEST_F(EepromFile, CannotBeGivenWhileTheEcuRuns) {
    test::Wire wire;
    EXPECT_THAT(wire.ecu.set("eeprom", file("1\n").string(), 0), HasSubstr("at the start"));
}

TEST_F(EepromFile, IsSavedAtTheEnd) {
    const auto path = folder_ / "saved.txt";
    test::Wire wire("save=" + path.string());
    wire.send({'W', 0xB8, 0x0B, 77, 77, 0xA8});  // cell 3000
    EXPECT_EQ(wire.ecu.finish(), "");
    EXPECT_EQ(readEepromFile(path, cells_), "");
    ASSERT_EQ(cells_.size(), 3001U);
    EXPECT_EQ(cells_[3000], 77);
}

TEST_F(EepromFile, IsSavedAtOnceWhenAskedFor) {
    const auto path = folder_ / "now.txt";
    test::Wire wire;
    EXPECT_EQ(wire.ecu.set("save", path.string(), 0), "");
    EXPECT_EQ(readEepromFile(path, cells_), "");
    EXPECT_EQ(cells_.size(), 3001U);
    EXPECT_NE(wire.ecu.set("save", (folder_ / "no/x").string(), 0), "");
    EXPECT_EQ(wire.ecu.finish(), "") << "without the key at the start nothing is saved at the end";
}

}  // namespace
}  // namespace korvane::ecu
