// A backup of the EEPROM: what it asks for and when, what it saves, and how it ends when something goes wrong.
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "EepromImageBench.h"
#include "support/FileSizeLimit.h"

namespace korvane::live {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr const char* kReadError = " EEPROM read error. Save not possible ";
constexpr const char* kFileName = "EEPROM_12_02_19.txt";  // the run ends 139.075 s behind noon

class EepromBackup : public EepromImageBench {
protected:
    void backup() { main_.btnBackup.press(); }
    // Every address has an old reply of this time, and the ECU gives no new ones.
    void readAt(const char* time) {
        tables_.EETime.fill(time);
        ecu_.silent = true;
    }
    [[nodiscard]] std::string savedTo(const char* name) const {
        return " EEPROM saved to file \r\n" + (virtual_.folder / name).string();
    }
};

TEST_F(EepromBackup, AsksForElevenAddressesFromEachTenEvery125Ms) {
    backup();
    EXPECT_EQ(now(), 100 + 1111 * 125 + 100);
    const auto frames = sent();
    ASSERT_EQ(frames.size(), 1111U);
    for (int i = 0; i <= 100; ++i) {
        for (int j = 0; j <= 10; ++j) {
            const int k = i * 11 + j;
            EXPECT_EQ(frames[static_cast<std::size_t>(k)], (Sent{100 + k * 125, 'R', i * 10 + j, -1}));
        }
    }
    EXPECT_EQ(frames[10], (Sent{1350, 'R', 10, -1}));
    EXPECT_EQ(frames[11], (Sent{1475, 'R', 10, -1}));
    EXPECT_EQ(frames[1110], (Sent{138850, 'R', 1010, -1}));
}

TEST_F(EepromBackup, SavesAllRowsOfTheImage) {
    std::string expected;
    for (int address = 0; address <= 3000; ++address) {
        const int value = address <= 1010 ? address * 7 % 256 : address == 2000 ? 77 : address == 3000 ? 30 : 0;
        if (address <= 1010) {
            ecu_.memory.at(static_cast<std::size_t>(address)) = static_cast<std::uint8_t>(value);
        }
        expected += " " + std::to_string(value) + " \r\n";
    }
    ecu_.memory[2000] = 1;  // not read
    tables_.EEImage[2000] = 77;
    tables_.EEImage[3000] = 30;
    backup();
    EXPECT_EQ(virtual_.folder.read(kFileName), expected);
    EXPECT_THAT(messages(), ElementsAre(savedTo(kFileName)));
    EXPECT_THAT(virtual_.folder.names(), ElementsAre(kFileName));
}

TEST_F(EepromBackup, ShowsHowFarItIs) {
    EXPECT_EQ(captions(main_.btnBackup, [this] { backup(); }), percents("BackUp EEPROM"));
    EXPECT_EQ(main_.btnUploadEEPROM.Caption, "Upload EEPROM");
}

TEST_F(EepromBackup, TheBarGoesAlong) {
    EXPECT_FALSE(main_.prgEeprom.Visible);
    at(100 + 11 * 125 - 1, [this] { EXPECT_EQ(main_.prgEeprom.Value.get(), 0); });
    at(100 + 11 * 125 + 1, [this] {
        EXPECT_EQ(main_.prgEeprom.Value.get(), 1);
        EXPECT_EQ(main_.prgEeprom.Max.get(), 101);
    });
    backup();
    EXPECT_EQ(main_.prgEeprom.Value.get(), 101);
    EXPECT_FALSE(main_.prgEeprom.Visible);
}

TEST_F(EepromBackup, ButtonsAndPollStandStillFromTheClickToTheEnd) {
    for (const int moment : {0, 50, 70000, 139074}) {
        at(moment, [this] {
            expectButtons(false);
            EXPECT_FALSE(polls());
        });
    }
    backup();
    expectButtons(true);
    EXPECT_TRUE(polls());
}

TEST_F(EepromBackup, ButtonsAreReleasedBeforeTheBoxShows) {
    struct LookingDialogs : platform::QueuedDialogs {
        void show(const platform::MessageBox& box) override {
            enabled.push_back(button->Enabled);
            QueuedDialogs::show(box);
        }
        controls::CommandButton* button = nullptr;
        std::vector<bool> enabled;
    };
    LookingDialogs dialogs;
    platform::Machine machine = virtual_.with(pump_, line_, dialogs);
    FrmSarn2 window(machine);
    window.load();
    dialogs.button = &window.btnKartat;
    const EepromImage image(window, tables_, eeprom_);
    window.btnBackup.press();
    EXPECT_THAT(dialogs.enabled, ElementsAre(true));
}

TEST_F(EepromBackup, OnAClosedPortRunsItsTimeAndFails) {
    main_.btnConnect.press();
    backup();
    EXPECT_EQ(now(), 139075);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre(kReadError));
    EXPECT_THAT(virtual_.folder.names(), IsEmpty());
    expectButtons(true);
    EXPECT_TRUE(polls());
    EXPECT_EQ(main_.btnBackup.Caption, "BackUp EEPROM");
}

TEST_F(EepromBackup, OneMissingReplyUpTo1000FailsIt) {
    for (const int address : {0, 507, 1000}) {
        tables_.EETime.fill("");
        ecu_.deaf = {address};
        backup();
        EXPECT_THAT(messages(), ElementsAre(kReadError)) << address;
        expectButtons(true);
        EXPECT_TRUE(polls());
    }
    EXPECT_THAT(virtual_.folder.names(), IsEmpty());
}

TEST_F(EepromBackup, AddressesBehind1000AreNotChecked) {
    for (int address = 1001; address <= 1010; ++address) {
        ecu_.deaf.insert(address);
    }
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo(kFileName)));
}

TEST_F(EepromBackup, RepliesOfTheLast240SecondsCount) {
    readAt("11:58:19");
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo(kFileName)));
}

TEST_F(EepromBackup, ReplyOlderThan240SecondsFailsIt) {
    readAt("11:58:19");
    tables_.EETime[333] = "11:58:18";
    backup();
    EXPECT_THAT(messages(), ElementsAre(kReadError));
}

TEST_F(EepromBackup, ASilentEcuIsSeenInTheNextRunAtTheLatest) {
    backup();
    EXPECT_EQ(messages().size(), 1U);
    ecu_.silent = true;
    backup();
    EXPECT_THAT(messages(), ElementsAre(kReadError));
}

// Those of the last run are not yet 240 s old for these addresses.
TEST_F(EepromBackup, BytesThatWereNotAnsweredNowAreTold) {
    backup();
    EXPECT_EQ(main_.keepNotice.words(), "");
    ecu_.deaf = {500, 1000, 1001};
    backup();
    EXPECT_EQ(main_.keepNotice.words(),
              "EEPROM backup: 2 of 1001 addresses were not answered now. "
              "The file has what was read earlier.");
}

TEST_F(EepromBackup, OldBytesAreToldUntilTheNextBackup) {
    main_.keepNotice.tell(link::ImageRun::Upload, "of an upload");
    backup();
    ecu_.deaf = {500};
    backup();
    EXPECT_THAT(main_.keepNotice.words(), HasSubstr("1 of 1001 addresses were not answered now"));
    ecu_.deaf = {};
    backup();
    EXPECT_EQ(main_.keepNotice.words(), "of an upload");
}

TEST_F(EepromBackup, RunsOverMidnight) {
    main_.TimerRequestData.Enabled = false;
    virtual_.pump.wait((11 * 3600 + 59 * 60) * 1000);  // 23:59:00
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo("EEPROM_00_01_19.txt")));
}

TEST_F(EepromBackup, AClockThatIsSetMeanwhileDoesNotMatter) {
    struct Jump {
        int moment;
        int seconds;
        const char* name;
    };
    for (const Jump& jump : {Jump{50, 3600, "EEPROM_13_02_19.txt"}, Jump{70000, 3600, "EEPROM_13_02_19.txt"},
                             Jump{139070, 3600, "EEPROM_13_02_19.txt"}, Jump{70000, -3600, "EEPROM_11_02_19.txt"},
                             Jump{139070, -3600, "EEPROM_11_02_19.txt"}, Jump{139070, 300, "EEPROM_12_07_19.txt"}}) {
        tables_.EETime.fill("");
        const auto start = now();
        at(static_cast<int>(start) + jump.moment, [&] { virtual_.pump.shiftWallTime(jump.seconds); });
        backup();
        EXPECT_EQ(now(), start + 139075);
        EXPECT_THAT(messages(), ElementsAre(savedTo(jump.name)));
        virtual_.pump.wait(1000 - 75);
        virtual_.pump.shiftWallTime(-jump.seconds - 140);
    }
}

// The clock was almost a second on when it showed the time that the run begins with.
TEST_F(EepromBackup, AReplyInTheLastSecondBeforeTheClockIsSetCounts) {
    virtual_.pump.wait(930);
    at(930 + 139070, [this] { virtual_.pump.shiftWallTime(3600); });
    at(930 + 139071, [this] { tables_.EETime[7] = "12:02:20"; });
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo("EEPROM_13_02_20.txt")));
}

TEST_F(EepromBackup, AClockThatIsSetHidesNoMissingReply) {
    ecu_.deaf = {507};
    at(70000, [this] { virtual_.pump.shiftWallTime(-3600); });
    backup();
    EXPECT_THAT(messages(), ElementsAre(kReadError));
}

TEST_F(EepromBackup, AClockThatIsSetBackDoesNotMakeOldBytesNew) {
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo("EEPROM_12_02_19.txt")));
    virtual_.pump.wait(3'600'000 - 139'075);
    ecu_.silent = true;
    at(static_cast<int>(now()) + 70'000, [this] { virtual_.pump.shiftWallTime(-3600); });
    backup();
    EXPECT_THAT(messages(), ElementsAre(kReadError));
}

TEST_F(EepromBackup, AClockThatIsSetAndSetBackDoesNotMatter) {
    at(40'000, [this] { virtual_.pump.shiftWallTime(3600); });
    at(90'000, [this] { virtual_.pump.shiftWallTime(-3600); });
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo("EEPROM_12_02_19.txt")));
}

class EepromBackupOfThatName : public EepromBackup {
protected:
    EepromBackupOfThatName() {
        setenv("TZ", "XYZ-10", 1);  // 10 hours ahead
        tzset();
    }
    ~EepromBackupOfThatName() override {
        unsetenv("TZ");
        tzset();
    }

    // Written on the 3rd at 15:00 of the clock that the files' times count from.
    void writeOld(const char* content) {
        const auto file = virtual_.folder.write(kFileName, content);
        const platform::WallTime written{2026, 1, 3, 15, 0, 0};
        const auto moment = std::chrono::sys_seconds(std::chrono::seconds(platform::secondsOf(written)));
        std::filesystem::last_write_time(file, std::chrono::file_clock::from_sys(moment));
    }
};

TEST_F(EepromBackupOfThatName, AnOlderOneGetsItsLocalDate) {
    writeOld("old");
    backup();
    EXPECT_THAT(messages(), ElementsAre(savedTo(kFileName)));
    EXPECT_THAT(virtual_.folder.names(), UnorderedElementsAre(kFileName, "EEPROM_2026-01-04_12_02_19.txt"));
    EXPECT_EQ(virtual_.folder.read("EEPROM_2026-01-04_12_02_19.txt"), "old");
    EXPECT_THAT(virtual_.folder.read(kFileName), HasSubstr(" 0 \r\n"));
}

TEST_F(EepromBackupOfThatName, ANumberFollowsWhereTheDateIsTaken) {
    writeOld("old");
    virtual_.folder.write("EEPROM_2026-01-04_12_02_19.txt", "older");
    std::filesystem::create_symlink("nothing", virtual_.folder / "EEPROM_2026-01-04_12_02_19_2.txt");
    backup();
    EXPECT_EQ(virtual_.folder.read("EEPROM_2026-01-04_12_02_19.txt"), "older");
    EXPECT_EQ(virtual_.folder.read("EEPROM_2026-01-04_12_02_19_3.txt"), "old");
    EXPECT_EQ(virtual_.folder.names().size(), 4U);
}

TEST_F(EepromBackupOfThatName, ALinkToABackupIsMovedAndTheBackupStays) {
    virtual_.folder.write("mine", "old");
    std::filesystem::create_symlink("mine", virtual_.folder / kFileName);
    backup();
    EXPECT_EQ(virtual_.folder.read("mine"), "old");
    EXPECT_EQ(virtual_.folder.names().size(), 3U);
}

TEST_F(EepromBackupOfThatName, WhatCanNotBeMovedStaysAndTheMessageSaysWhy) {
    std::filesystem::create_directory(virtual_.folder / kFileName);
    backup();
    EXPECT_THAT(messages(), ElementsAre("Error tablesave: Path/File access error"));
    EXPECT_THAT(virtual_.folder.names(), ElementsAre(kFileName));
    expectButtons(true);
}

TEST_F(EepromBackup, APulledCableEndsInAReadError) {
    at(50000, [this] { line_.pullOut(); });
    backup();
    EXPECT_EQ(now(), 139075);
    EXPECT_EQ(sent().size(), 400U);  // the first at 100 ms, 399 more up to 49975
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("The device is gone"), kReadError));
    EXPECT_THAT(virtual_.folder.names(), IsEmpty());
    expectButtons(true);
}

TEST_F(EepromBackup, ACableThatGoesInTheMiddleOfAFrameIsNoOtherThing) {
    line_.bytesToLive = 4 * 7 + 2;
    backup();
    EXPECT_EQ(now(), 139075);
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("The device is gone"), kReadError));
    EXPECT_THAT(virtual_.log.lines, IsEmpty());
    expectButtons(true);
    EXPECT_EQ(main_.btnBackup.Caption, "BackUp EEPROM");
}

TEST_F(EepromBackup, AWindowThatGoesTakesItAlong) {
    for (const int moment : {50, 70000, 139000}) {
        const auto start = now();
        at(static_cast<int>(start) + moment, [this] { EXPECT_TRUE(main_.unload()); });
        backup();
        EXPECT_LE(now(), start + moment + 125);
        EXPECT_THAT(messages(), IsEmpty()) << moment;
        expectButtons(true);
        main_.load();
        main_.Visible = true;
    }
    EXPECT_THAT(virtual_.folder.names(), IsEmpty());
}

TEST_F(EepromBackup, AFolderThatIsNotThereIsToldAndNothingElse) {
    machine_.folder /= "gone";
    backup();
    EXPECT_THAT(messages(), ElementsAre("Error tablesave: Path not found"));
    expectButtons(true);
    EXPECT_TRUE(polls());
}

TEST_F(EepromBackup, AFullDiskIsToldAndNothingElse) {
    const support::FileSizeLimit limit(1000);
    backup();
    EXPECT_THAT(messages(), ElementsAre("Error tablesave: Disk full"));
    expectButtons(true);
}

TEST(SecondsSince, CountsToTheNextTimeOfThatText) {
    const platform::WallTime noon{2026, 1, 5, 12, 0, 0};
    EXPECT_EQ(secondsSince("12:00:00", noon), 0);
    EXPECT_EQ(secondsSince("11:58:59", noon), 61);
    EXPECT_EQ(secondsSince("00:00:00", noon), 43200);
    EXPECT_EQ(secondsSince("12:00:01", noon), 86399);
    EXPECT_EQ(secondsSince("23:59:58", {2026, 1, 6, 0, 0, 3}), 5);
}

TEST(SecondsSince, KnowsNoOtherText) {
    const platform::WallTime noon{2026, 1, 5, 12, 0, 0};
    for (const char* text : {"", "12:00", "12-00-00", "24:00:00", "11:60:00", "11:00:60", "aa:00:00", "-1:00:00",
                             "11:00:00 ", " 1:00:00"}) {
        EXPECT_EQ(secondsSince(text, noon), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace korvane::live
