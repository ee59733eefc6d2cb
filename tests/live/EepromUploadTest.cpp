// An upload of an EEPROM image: what it sends and when, and how it ends for every kind of file.
#include "EepromImageBench.h"

namespace korvane::live {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class EepromUpload : public EepromImageBench {
protected:
    void upload(const std::string& content) {
        virtual_.dialogs.answerFile(virtual_.folder.write("image.txt", content).string());
        main_.btnUploadEEPROM.press();
    }
    static int valueOf(int address) { return address * 5 % 251 + 3; }
    static std::string image(int count) {
        std::string content;
        for (int address = 0; address < count; ++address) {
            content += " " + std::to_string(valueOf(address)) + " \r\n";
        }
        return content;
    }
    static std::string failureAt(int line) {
        return "Line " + std::to_string(line) +
               " of the EEPROM file is not a number from 0 to 255.\r\nThe upload ended there. The lines before it have "
               "been sent.";
    }
    // Rows with the mark of a word among the addresses of an upload.
    static bool isWord(int address) { return std::set{2, 4, 6, 504, 507, 509, 511, 1000, 1005}.contains(address); }
    void expectAsBefore() {
        expectButtons(true);
        EXPECT_TRUE(polls());
        EXPECT_EQ(main_.btnUploadEEPROM.Caption, "Upload EEPROM");
    }
};

TEST_F(EepromUpload, WritesElevenAddressesFromEachTen) {
    upload(image(1011));
    std::vector<Sent> expected;
    int ms = 0;
    for (int i = 0; i <= 100; ++i) {
        for (int j = 0; j <= 10; ++j) {
            const int address = i * 10 + j;
            expected.push_back({ms, 'W', address, valueOf(address)});
            if (isWord(address)) {
                ms += 50;
                expected.push_back({ms, 'W', address + 1, 0});
            }
            ms += 125;
        }
    }
    EXPECT_EQ(ms, 1111 * 125 + 10 * 50);
    EXPECT_EQ(now(), ms);
    EXPECT_EQ(sent(), expected);
    EXPECT_THAT(messages(), IsEmpty());
    expectAsBefore();
}

TEST_F(EepromUpload, StartsAtOnceAndWritesAWordRowAsAWord) {
    upload(image(1011));
    const auto frames = sent();
    EXPECT_EQ(frames[0], (Sent{0, 'W', 0, 3}));
    EXPECT_EQ(frames[1], (Sent{125, 'W', 1, 8}));
    EXPECT_EQ(frames[2], (Sent{250, 'W', 2, 13}));
    EXPECT_EQ(frames[3], (Sent{300, 'W', 3, 0}));
    EXPECT_EQ(frames[4], (Sent{425, 'W', 3, 18}));
}

TEST_F(EepromUpload, LeavesTheFileInTheEcu) {
    upload(image(1011));
    for (int address = 0; address <= 1010; ++address) {
        EXPECT_EQ(ecu_.memory.at(static_cast<std::size_t>(address)), valueOf(address)) << address;
    }
    EXPECT_EQ(ecu_.memory[1011], 0);
}

TEST_F(EepromUpload, TakesTheWholeOfABackup) {
    upload(image(3001));
    EXPECT_EQ(sent().size(), 1121U);
    EXPECT_THAT(messages(), IsEmpty());
    expectAsBefore();
}

TEST_F(EepromUpload, ShowsHowFarItIs) {
    EXPECT_EQ(captions(main_.btnUploadEEPROM, [this] { upload(image(1011)); }), percents("Upload EEPROM"));
    EXPECT_EQ(main_.btnBackup.Caption, "Backup EEPROM");
}

TEST_F(EepromUpload, ButtonsAndPollStandStillFromTheFileToTheEnd) {
    for (const int moment : {0, 70000, 139374}) {
        at(moment, [this] {
            expectButtons(false);
            EXPECT_FALSE(polls());
        });
    }
    upload(image(1011));
    expectAsBefore();
}

TEST_F(EepromUpload, APollThatStoodStillStaysSo) {
    main_.TimerRequestData.Enabled = false;
    upload(image(1011));
    EXPECT_FALSE(polls());
    upload("x");
    EXPECT_FALSE(polls());
}

TEST_F(EepromUpload, AsksForTheFile) {
    main_.btnUploadEEPROM.press();
    const auto dialogs = virtual_.dialogs.takeFileDialogs();
    ASSERT_EQ(dialogs.size(), 1U);
    EXPECT_EQ(dialogs[0].kind, platform::FileDialog::Kind::Open);
    EXPECT_EQ(dialogs[0].title, "Open EEPROM file");
    EXPECT_EQ(dialogs[0].filter, "All Files (*.txt)|*.txt");
    EXPECT_EQ(now(), 0);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(messages(), IsEmpty());
    expectAsBefore();
}

TEST_F(EepromUpload, AShortFileIsWrittenAsFarAsItGoes) {
    upload(image(500));
    const auto frames = sent();
    EXPECT_EQ(frames.back(), (Sent{548 * 125 + 3 * 50, 'W', 499, valueOf(499)}));
    EXPECT_EQ(frames.size(), 549U + 3U);
    EXPECT_THAT(messages(), ElementsAre(failureAt(501)));
    expectAsBefore();
}

TEST_F(EepromUpload, AFileOfOneLineLessEndsAtTheLastByte) {
    upload(image(1010));
    EXPECT_EQ(sent().back().address, 1009);
    EXPECT_THAT(messages(), ElementsAre(failureAt(1011)));
    expectAsBefore();
}

TEST_F(EepromUpload, ALineThatIsNoByteEndsIt) {
    for (const char* line : {"256", "300", "70000", "-1", "abc", "12 13", "1.5", "12,5", "", " ", "0x10", "1e2",
                             "99999999999999999999", "7;", "+5", "\xE4"}) {
        ecu_.arrivals.clear();
        upload(" 1 \r\n 2 \r\n 3 \r\n" + std::string(line) + "\r\n 5 \r\n");
        const auto frames = sent();
        EXPECT_EQ(frames.size(), 4U) << line;  // address 2 is a word
        EXPECT_EQ(frames.back().data, 0) << line;
        EXPECT_THAT(messages(), ElementsAre(failureAt(4))) << line;
        expectAsBefore();
    }
}

TEST_F(EepromUpload, BlanksAndZerosAroundANumberDoNotMatter) {
    upload("7\n\t8 \n0255\n  0\nend");
    EXPECT_EQ(ecu_.memory[0], 7);
    EXPECT_EQ(ecu_.memory[1], 8);
    EXPECT_EQ(ecu_.memory[2], 255);
    EXPECT_THAT(messages(), ElementsAre(failureAt(5)));
}

TEST_F(EepromUpload, WhatIsNoImageEndsAtItsFirstLine) {
    std::string binary;
    for (int i = 0; i < 100000; ++i) {
        binary += static_cast<char>(i * 37 % 256);
    }
    for (const auto& content : {std::string(), std::string(100000, '\0'), std::string(100000, '9'), binary}) {
        upload(content);
        EXPECT_THAT(messages(), ElementsAre(failureAt(1)));
        expectAsBefore();
    }
    EXPECT_EQ(now(), 0);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(EepromUpload, AFileThatCanNotBeReadIsTold) {
    for (const auto& path : {virtual_.folder / "missing.txt", virtual_.folder.path()}) {
        virtual_.dialogs.answerFile(path.string());
        main_.btnUploadEEPROM.press();
        EXPECT_THAT(messages(), ElementsAre("The EEPROM file can't be read:\r\n" + path.string()));
        expectAsBefore();
    }
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(EepromUpload, OnAClosedPortRunsItsTimeInSilence) {
    main_.btnConnect.press();
    upload(image(1011));
    EXPECT_EQ(now(), 1111 * 125);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(messages(), IsEmpty());
    expectButtons(true);
    EXPECT_FALSE(polls());
}

TEST_F(EepromUpload, OnAClosedPortABadLineIsToldWithoutSayingThatLinesWereSent) {
    main_.btnConnect.press();
    upload("1\n2\nx\n");
    const auto told = messages();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0], HasSubstr("Line 3 "));
    EXPECT_THAT(told[0], HasSubstr("The port is closed."));
    EXPECT_THAT(told[0], Not(HasSubstr("sent")));
}

TEST_F(EepromUpload, APulledCableLetsItRunOut) {
    at(50000, [this] { line_.pullOut(); });
    upload(image(1011));
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("The device is gone")));
    expectAsBefore();
}

// The three words before it take 50 ms more each: the 400th write is due at 399 * 125 + 150 = 50025 ms, and eleven from
// each ten make it address 363. The last one up to 60010 ms is the 479th, address 435.
TEST_F(EepromUpload, NamesTheAddressesThatAPulledCableHasLeftOut) {
    at(50010, [this] { line_.pullOut(); });
    upload(image(1011));
    EXPECT_EQ(main_.keepNotice.Text.get(),
              "EEPROM upload: the port was closed at addresses 363 to 1010. They were not sent.");
}

TEST_F(EepromUpload, NamesTheAddressesOfAGapInTheMiddle) {
    at(50010, [this] { main_.MSComm1.setPortOpen(false); });
    at(60010, [this] { main_.MSComm1.setPortOpen(true); });
    upload(image(1011));
    EXPECT_EQ(main_.keepNotice.Text.get(),
              "EEPROM upload: the port was closed at addresses 363 to 435. They were not sent.");
}

TEST_F(EepromUpload, WhatWasNotSentIsToldUntilTheNextUpload) {
    at(50010, [this] { main_.MSComm1.setPortOpen(false); });
    upload(image(1011));
    main_.keepNotice.say({}, {});  // as at each connect
    EXPECT_THAT(main_.keepNotice.words(), HasSubstr("EEPROM upload: the port was closed"));
    main_.MSComm1.setPortOpen(true);
    at(static_cast<int>(now()) + 1000, [this] { EXPECT_EQ(main_.keepNotice.words(), ""); });
    upload(image(1011));
    EXPECT_EQ(main_.keepNotice.words(), "");
}

TEST_F(EepromUpload, AWholeUploadIsNotSpokenOf) {
    upload(image(1011));
    EXPECT_EQ(main_.keepNotice.Text.get(), "");
}

TEST_F(EepromUpload, ACableThatGoesInTheMiddleOfAFrameIsNoOtherThing) {
    line_.bytesToLive = 6 * 7 + 3;
    upload(image(1011));
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("The device is gone")));
    EXPECT_THAT(virtual_.log.lines, IsEmpty());
    expectAsBefore();
}

TEST_F(EepromUpload, AWindowThatGoesTakesItAlong) {
    at(70000, [this] { EXPECT_TRUE(main_.unload()); });
    upload(image(1011));
    EXPECT_LE(now(), 70125);
    EXPECT_THAT(messages(), IsEmpty());
    expectButtons(true);
}

}  // namespace
}  // namespace korvane::live
