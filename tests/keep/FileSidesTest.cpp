#include <gmock/gmock.h>
#include <string>

#include "keep/compare/FileSides.h"
#include "platform/RuntimeError.h"
#include "support/TempFolder.h"

namespace korvane::keep {
namespace {

std::string cells(int count, int number) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += ' ' + std::to_string(number) + ' ';
    }
    return text + "\r\n";
}

const std::string kMaps = "Injection\r\n" + cells(160, 11) + "Ignition\r\n" + cells(160, 22);
const std::string kMisc = "Misc\r\n 1  2  3  4  5  6  7  8  9 \r\n";
const std::string kPwm = "PWM\r\n" + cells(160, 44);

std::string parameters(const std::string& rows) {
    std::string text = "PARAMS\r\n" + rows;
    for (int address = 700; address < 720; ++address) {
        text += std::to_string(address) + "#0##\r\n";
    }
    return text;
}

class FileSidesTest : public testing::Test {
protected:
    Side tune(const std::string& content) { return readTune(folder_.write("road.txt", content)); }
    std::string tuneFailure(const std::string& content) {
        return failureOf([&] { static_cast<void>(tune(content)); });
    }
    Side image(const std::string& content) {
        return readImage(folder_.write("cells.txt", content), core::parameterAddresses(11));
    }
    std::string imageFailure(const std::string& content) {
        return failureOf([&] { static_cast<void>(image(content)); });
    }

    template <class Read>
    static std::string failureOf(Read&& read) {
        try {
            read();
        } catch (const platform::RuntimeError& failure) {
            return failure.what();
        }
        return "none";
    }

    support::TempFolder folder_;
};

std::string lines(int count, const std::string& number) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += ' ' + number + " \r\n";
    }
    return text;
}

TEST_F(FileSidesTest, ATuneHasItsMapsTheMiscBlockAndTheParametersByAddress) {
    const Side side = tune(kMaps + kMisc + kPwm + parameters("1#0#5#MISC2_OFF\r\n365#0##MINTHR_OFF\r\n2999#0#3#\r\n"));
    EXPECT_EQ(side.name, "tune road.txt");
    EXPECT_EQ(side.maps[0].bytes[159], 11);
    EXPECT_EQ(side.maps[0].bytes[160], std::nullopt);
    EXPECT_EQ(side.maps[0].size, 160);
    EXPECT_EQ(side.maps[1].bytes[0], 22);
    EXPECT_EQ(side.maps[2].bytes[0], 44);
    EXPECT_EQ(side.misc, (MiscBytes{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(side.eeprom[1], 5);
    EXPECT_EQ(side.eeprom[365], std::nullopt);
    EXPECT_EQ(side.eeprom[2999], std::nullopt);
}

// 7500 = 29 * 256 + 76. The byte of the next row is that of an older read.
TEST_F(FileSidesTest, AWordOfATuneFillsTwoCells) {
    const Side side =
        tune(kMaps + kMisc + kPwm + parameters("2#0#7500#\r\n3#0#99#\r\n4#0#200#\r\n5#0#3#\r\n6#0#20#\r\n"));
    EXPECT_EQ(side.eeprom[2], 76);
    EXPECT_EQ(side.eeprom[3], 29);
    EXPECT_EQ(side.eeprom[4], 200);
    EXPECT_EQ(side.eeprom[5], 3);
    EXPECT_EQ(side.eeprom[6], 20);
    EXPECT_EQ(side.eeprom[7], std::nullopt);
}

TEST_F(FileSidesTest, WhatIsNoByteOrWordOfTheEepromIsLeftOut) {
    const Side side = tune(kMaps + kMisc + kPwm + parameters("2#0#70000#\r\n3#0#-1#\r\n-7#0#1#\r\n9000#0#1#\r\n"));
    EXPECT_EQ(side.eeprom[2], std::nullopt);
    EXPECT_EQ(side.eeprom[3], std::nullopt);
}

TEST_F(FileSidesTest, ATuneSaysItselfHowLargeEachMapIs) {
    const Side side = tune("Injection_320\r\n" + cells(320, 7) + "Ignition\r\n" + cells(160, 8) + kMisc + kPwm);
    EXPECT_EQ(side.maps[0].size, 320);
    EXPECT_EQ(side.maps[0].bytes[319], 7);
    EXPECT_EQ(side.maps[1].size, 160);
    EXPECT_EQ(side.maps[2].size, 320);
    EXPECT_EQ(side.maps[2].bytes[159], 44);
    EXPECT_EQ(side.maps[2].bytes[160], std::nullopt);
}

TEST_F(FileSidesTest, AnOldTuneHasNoPwmMapAndNoSettings) {
    const Side side = tune(kMaps + kMisc);
    EXPECT_EQ(side.maps[0].bytes[0], 11);
    EXPECT_EQ(side.maps[2].bytes[0], std::nullopt);
    EXPECT_EQ(side.note, "An old tune file: no PWM map and no settings.");
}

TEST_F(FileSidesTest, ATuneWhoseParametersCanNotBeReadHasNoSettings) {
    for (const auto& end : {std::string(), parameters("1#0#5#\r\n7\r\n")}) {
        const Side side = tune(kMaps + kMisc + kPwm + end);
        EXPECT_EQ(side.maps[2].bytes[0], 44);
        EXPECT_EQ(side.eeprom[1], std::nullopt);
        EXPECT_EQ(side.note, "The parameters of this file can't be read: it has no settings.");
    }
}

TEST_F(FileSidesTest, WhatIsNoWholeTuneIsRefusedInWords) {
    EXPECT_EQ(tuneFailure(""), "road.txt: no tune file (Empty file).");
    EXPECT_EQ(tuneFailure("notes"), "road.txt: no tune file (Not valid settings file).");
    EXPECT_EQ(tuneFailure("Injection\r\n" + cells(160, 11)), "road.txt: a damaged tune file (status 3).");
    EXPECT_EQ(tuneFailure(kMaps + kMisc + "PWM\r\n" + cells(9, 1)), "road.txt: a damaged tune file (status 14).");
    EXPECT_THAT(failureOf([&] { static_cast<void>(readTune(folder_ / "missing.txt")); }),
                testing::StartsWith("missing.txt: the file can't be read ("));
}

// Fuel is at 16 to 175, ignition at 180 to 339, PWM from its cell 64 on at 400.
TEST_F(FileSidesTest, AnImageHasTheCellsAndTheMapsInTheirPlaces) {
    std::string content = lines(16, "1") + lines(160, "2") + lines(4, "3") + lines(160, "4") + lines(60, "5");
    content += lines(96, "6") + lines(1011 - 496, "7");
    const Side side = image(content);
    EXPECT_EQ(side.name, "image cells.txt");
    EXPECT_EQ(side.eeprom[0], 1);
    EXPECT_EQ(side.eeprom[1010], 7);
    EXPECT_EQ(side.eeprom[1011], std::nullopt);
    EXPECT_EQ(side.maps[0].bytes[0], 2);
    EXPECT_EQ(side.maps[0].bytes[159], 2);
    EXPECT_EQ(side.maps[0].bytes[160], std::nullopt);
    EXPECT_EQ(side.maps[1].bytes[0], 4);
    EXPECT_EQ(side.maps[2].bytes[63], std::nullopt);
    EXPECT_EQ(side.maps[2].bytes[64], 6);
    EXPECT_EQ(side.maps[2].bytes[159], 6);
    EXPECT_EQ(side.maps[0].size, 0);
}

TEST_F(FileSidesTest, BehindWhatABackupReadsAZeroStandsForWhatIsNotKnown) {
    const Side side = image(lines(1011, "0") + lines(1, "0") + lines(1, "9") + lines(1988, "0"));
    EXPECT_EQ(side.eeprom[1010], 0);
    EXPECT_EQ(side.eeprom[1011], std::nullopt);
    EXPECT_EQ(side.eeprom[1012], 9);
}

TEST_F(FileSidesTest, WhatIsNoImageIsRefusedInWords) {
    EXPECT_EQ(imageFailure(lines(1010, "1")),
              "cells.txt: no EEPROM image: it ends at line 1010, and an image has 1011 lines at least.");
    EXPECT_EQ(imageFailure(lines(3002, "1")), "cells.txt: no EEPROM image: it has more than 3001 lines.");
    EXPECT_EQ(imageFailure(lines(500, "1") + "256\r\n" + lines(600, "1")),
              "cells.txt: no EEPROM image: line 501 is not a number from 0 to 255.");
    EXPECT_THAT(failureOf([&] { static_cast<void>(readImage(folder_ / "missing.txt", core::parameterAddresses(11))); }),
                testing::StartsWith("missing.txt: the file can't be read ("));
}

}  // namespace
}  // namespace korvane::keep
