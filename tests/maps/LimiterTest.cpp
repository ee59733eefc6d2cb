// The limiter's window: its whole read and send, and what replies do to it.
#include "BoxBench.h"
#include "core/tables/ModuleReg.h"
#include "maps/FrmMaps_ign_limiter.h"

namespace korvane::maps {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

// The window is open, and its first read is held back.
class LimiterTest : public BoxBench {
protected:
    LimiterTest() {
        windows_.curMapWindow = &window_;
        openPort();
        window_.show();
        window_.TimerinitialRead.Enabled = false;
    }

    FrmMaps_ign_limiter window_{machine_, context_};
    support::PropertyValues<std::string> captions_{window_, window_.Caption};
};

TEST_F(LimiterTest, ReadsWordAfterWordEvery150Ms) {
    window_.btnReadData.press();
    EXPECT_THAT(line_.sent(),
                ElementsAre("0 U 1900", "150 U 1960", "300 R 346", "450 R 971", "600 U 1904", "750 U 1906",
                            "900 U 1908", "1050 U 1910", "1200 U 1938", "1350 U 1944", "1500 U 1950", "1650 U 1956",
                            "1800 U 1912", "1950 U 1918", "2100 U 1924", "2250 U 1914", "2400 U 1920", "2550 U 1926",
                            "2700 U 1916", "2850 U 1922", "3000 U 1928"));
    EXPECT_EQ(now(), 3150);
}

TEST_F(LimiterTest, TheCaptionTellsHowFarTheReadIs) {
    window_.btnReadData.press();
    Lines expected;
    for (const char* percent : {"5",  "10", "12", "15", "20", "25", "30", "35", "36", "37", "38",
                                "39", "40", "45", "50", "55", "60", "65", "70", "80", "100"}) {
        expected.push_back(std::string("Receiving data from target device!:  Loading.. ") + percent + "%");
    }
    expected.emplace_back("Receiving data from target device!:  Received 100%");
    EXPECT_THAT(captions_.values, ElementsAreArray(expected));
}

TEST_F(LimiterTest, ASilentBoxIsNoSuccess) {
    window_.btnReadData.press();
    EXPECT_EQ(window_.Caption.get(), "Receiving data from target device!:  Received 100%");
    EXPECT_EQ(window_.answers.Text.get(), "Parameters: no answer");
    EXPECT_TRUE(window_.answers.Failed);
}

// 21 parameters; 346 and 971 come as bytes, which the window does not show.
TEST_F(LimiterTest, WordsAndBytesThatTheBoxAnswersAreCounted) {
    window_.btnReadData.press();
    deliverWord(1900, 180);
    deliverByte(346, 1);
    deliverByte(1960, 6);
    deliverWord(1902, 6);
    deliver('T', {1});
    EXPECT_EQ(window_.answers.Text.get(), "Parameters: 3 of 21 answered");
}

TEST_F(LimiterTest, WhatWasSentIsNotConfirmed) {
    window_.btnSendSettings.press();
    EXPECT_EQ(window_.Caption.get(), "Data sent and stored to device.");
    EXPECT_EQ(window_.answers.Text.get(), "Parameters: sent, the ECU does not confirm it");
    main_.MSComm1.setPortOpen(false);
    window_.btnSendSettings.press();
    EXPECT_EQ(window_.answers.Text.get(), "Parameters: the port is closed");
}

class Sending : public LimiterTest {
protected:
    Sending() {
        window_.txtSigPerRev.Text = "180";
        window_.txtCylCount.Text = "6";
        window_.Combosensortype.ListIndex = 1;
        window_.txtrpmlimitHIGH.Text = "7500";    // 29 * 256 + 76
        window_.txtrpmlimitHIGHpre.Text = "300";  // 256 + 44
        window_.txtrpmlimitLOW.Text = "4000";     // 15 * 256 + 160
        window_.txtrpmlimitLOWpre.Text = "200";
        deliverWord(1912, 250);
        deliverWord(1918, 100);
        deliverWord(1914, 0x0203);
        window_.ComboInputFuncLow(1).ListIndex = 1;
        window_.ComboInputFuncLow(2).ListIndex = 6;
        window_.comboInputFuncHi(2).ListIndex = 5;
        window_.txtInputFuncVal(0).Text = "500";  // 256 + 244
        window_.txtInputFuncVal(1).Text = "none";
        window_.txtInputFuncVal(2).Text = "7";
        for (int i = 0; i < 4; ++i) {
            window_.ComboInputFuncLow(3 + i).ListIndex = i;
        }
    }
};

// A word takes 50 ms between its bytes, and each step 150 ms. 250 ms behind the last one the box is told to restart.
TEST_F(Sending, GoesStepByStep) {
    window_.btnSendSettings.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 1900=180", "50 1901=0",       //
                                          "200 1960=6", "250 1961=0",      //
                                          "400 346=1",                     //
                                          "550 1908=76", "600 1909=29",    //
                                          "750 1910=44", "800 1911=1",     //
                                          "950 1904=160", "1000 1905=15",  //
                                          "1150 1906=200", "1200 1907=0",  //
                                          "1350 1912=250", "1400 1913=0",  //
                                          "1550 1914=3", "1550 1915=2",    //
                                          "1700 1916=244", "1750 1917=1",  //
                                          "1900 1918=100", "1950 1919=0",  //
                                          "2100 1920=1", "2100 1921=0",    //
                                          "2250 1922=0", "2300 1923=0",    //
                                          "2450 1924=0", "2500 1925=0",    //
                                          "2650 1926=6", "2650 1927=5",    //
                                          "2800 1928=7", "2850 1929=0",    //
                                          "3000 1938=0", "3150 1944=1", "3300 1950=2", "3450 1956=3", "3850 88",
                                          "3850 167"));  // 'X' and its complement
    EXPECT_EQ(now(), 3850);
}

TEST_F(Sending, TheCaptionStandsBehindEachStep) {
    window_.btnSendSettings.press();
    Lines expected;
    for (const char* percent : {"5", "10", "15", "20", "25", "30", "35", "40", "45", "50", "55", "60", "65", "70", "75",
                                "76", "77", "78", "79"}) {
        expected.push_back(std::string("Sending data to device: Sending.. ") + percent + "%");
    }
    expected.emplace_back("Data sent and stored to device.");
    EXPECT_THAT(captions_.values, ElementsAreArray(expected));
}

TEST_F(Sending, ThePercentageComesWhenThePauseIsOver) {
    std::string inside = "never looked";
    virtual_.at(199, [&] { inside = window_.Caption; });
    std::string behind;
    virtual_.at(201, [&] { behind = window_.Caption; });
    window_.btnSendSettings.press();
    EXPECT_EQ(inside, "Korvane Tuner, Ignition limiter");
    EXPECT_EQ(behind, "Sending data to device: Sending.. 5%");
}

TEST_F(Sending, AClosedPortWalksAllSteps) {
    main_.MSComm1.setPortOpen(false);
    window_.btnSendSettings.press();
    EXPECT_THAT(line_.sent(), IsEmpty());
    EXPECT_EQ(now(), 20 * 150 + 250);
    EXPECT_EQ(window_.Caption.get(), "Data sent and stored to device.");
}

TEST_F(Sending, AFreshWindowWalksAllStepsToo) {
    window_.unload();
    main_.MSComm1.setPortOpen(false);
    FrmMaps_ign_limiter fresh(machine_, context_);
    fresh.show();
    fresh.btnSendSettings.press();
    EXPECT_EQ(fresh.Caption.get(), "Data sent and stored to device.");
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
}

// What does not fit is told, nothing of it goes out, and the box is not restarted.
TEST_F(Sending, EndsAtANumberThatDoesNotFit) {
    window_.txtCylCount.Text = "70000";
    window_.btnSendSettings.press();
    pump_.wait(1000);
    EXPECT_THAT(line_.sent(), AllOf(Contains("0 1900=180"), Contains("50 1901=0"), Not(Contains(EndsWith(" 88"))),
                                    Not(Contains(HasSubstr("1960=")))));
    EXPECT_EQ(window_.Caption.get(), "Sending data to device: Sending.. 5%");
    EXPECT_THAT(dialogs_.takeMessages(), SizeIs(1));
}

TEST_F(Sending, AWordAsItWasReadIsSentAsItWasRead) {
    deliverWord(1960, 40000);  // 156 * 256 + 64
    EXPECT_EQ(window_.txtCylCount.Text.get(), "40000");
    window_.btnSendSettings.press();
    EXPECT_THAT(line_.sent(), AllOf(Contains("200 1960=64"), Contains("250 1961=156")));
}

TEST_F(Sending, GoesOnWhenTheWindowIsClosed) {
    virtual_.at(1000, [this] { EXPECT_TRUE(window_.unload()); });
    window_.btnSendSettings.press();
    EXPECT_THAT(line_.sent(), AllOf(Contains("3450 1956=3"), Contains("3850 88")));
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(Sending, ThePollRestsUntilTheBoxIsToldToRestart) {
    poll().Enabled = true;
    for (const int ms : {1, 3700, 3849}) {
        virtual_.at(ms, [this] { EXPECT_FALSE(poll().Enabled); });
    }
    window_.btnSendSettings.press();
    EXPECT_TRUE(poll().Enabled);
}

TEST_F(Sending, TheStartOfTheBoxIsToldByTheMainWindow) {
    window_.btnSendSettings.press();
    deliver(170, {});
    EXPECT_THAT(main_.Caption.get(), StartsWith("Korvane Tuner v1.3 by Dulmer,   Device started "));
}

TEST_F(LimiterTest, ThePollRestsDuringTheRead) {
    poll().Enabled = true;
    virtual_.at(3149, [this] { EXPECT_FALSE(poll().Enabled); });
    window_.btnReadData.press();
    EXPECT_TRUE(poll().Enabled);
}

TEST_F(LimiterTest, TheFirstReadBegins100MsBehindTheLoad) {
    FrmMaps_ign_limiter fresh(machine_, context_);
    fresh.show();
    pump_.wait(99);
    EXPECT_THAT(line_.sent(), IsEmpty());
    pump_.wait(4000);
    const auto sent = line_.sent();
    EXPECT_THAT(sent, Contains("100 U 1900"));
    EXPECT_THAT(sent, Contains("3100 U 1928"));
    EXPECT_FALSE(fresh.TimerinitialRead.Enabled);
    EXPECT_EQ(fresh.Caption.get(), "Receiving data from target device!:  Received 100%");
}

TEST_F(LimiterTest, AReadWithoutAnAnswerLeavesTheTextsAndTellsItsEnd) {
    window_.txtSigPerRev.Text = "old";
    main_.MSComm1.setPortOpen(false);
    window_.btnReadData.press();
    EXPECT_EQ(window_.txtSigPerRev.Text.get(), "old");
    EXPECT_EQ(window_.Caption.get(), "Receiving data from target device!:  Received 100%");
    EXPECT_EQ(now(), 3150);
}

TEST_F(LimiterTest, EachWordGoesToItsControl) {
    struct Row {
        int address;
        const controls::TextBox& box;
    };
    int value = 300;
    for (const Row& row :
         {Row{1900, window_.txtSigPerRev}, Row{1960, window_.txtCylCount}, Row{1904, window_.txtrpmlimitLOW},
          Row{1906, window_.txtrpmlimitLOWpre}, Row{1908, window_.txtrpmlimitHIGH},
          Row{1910, window_.txtrpmlimitHIGHpre}, Row{1916, window_.txtInputFuncVal(0)},
          Row{1922, window_.txtInputFuncVal(1)}, Row{1928, window_.txtInputFuncVal(2)}}) {
        deliverWord(row.address, ++value);
        EXPECT_EQ(row.box.Text.get(), std::to_string(value)) << row.address;
    }
    for (int input = 0; input < 3; ++input) {
        deliverWord(1912 + 6 * input, 50 + 50 * input);
        EXPECT_EQ(window_.txtInputvolt(input).Text.get(), std::to_string(1 + input));
    }
}

// 0x0203: row 3 of the low list, row 2 of the high one.
TEST_F(LimiterTest, AFunctionWordChoosesARowOfBothLists) {
    for (int input = 0; input < 3; ++input) {
        deliverWord(1914 + 6 * input, 0x0203);
        EXPECT_EQ(window_.ComboInputFuncLow(input).Text(), "Disable 50& CYL");
        EXPECT_EQ(window_.comboInputFuncHi(input).Text(), "Disable 33% CYL");
    }
}

TEST_F(LimiterTest, TheFunctionOfALimitIsTheLowByteOfItsWord) {
    for (int limit = 0; limit < 4; ++limit) {
        deliverWord(1938 + 6 * limit, 0x0900 + limit + 1);
        EXPECT_EQ(window_.ComboInputFuncLow(3 + limit).ListIndex.get(), limit + 1);
    }
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(LimiterTest, AFunctionThatNoListHasChangesNothing) {
    window_.ComboInputFuncLow(0).ListIndex = 2;
    deliverWord(1914, 0x0007);
    EXPECT_EQ(window_.ComboInputFuncLow(0).ListIndex.get(), 2);
    EXPECT_THAT(log_.lines, SizeIs(1)) << "as a failure of the frame";
}

// Byte replies fill the shared tables and never this window, whose rows for them would be ready.
TEST_F(LimiterTest, BytesAreKeptButNotShown) {
    for (const int address : {346, 971, 972, 973, 974, 511, 512}) {
        deliverByte(address, 1);
        EXPECT_EQ(tables_.EEImage.at(static_cast<std::size_t>(address)), 1) << address;
    }
    for (const auto* list : {&window_.Combosensortype, &window_.Combolaunchmode, &window_.ComboAccellimiter}) {
        EXPECT_EQ(list->ListIndex.get(), 0);
    }
    for (const auto* box : {&window_.txtLaunchControlLimit, &window_.txtLaunchFixedDelay, &window_.txtMaxAccel}) {
        EXPECT_EQ(box->Text.get(), "");
    }
}

TEST_F(LimiterTest, TheRowsForBytesStandReady) {
    window_.UpdateReadEE(1, 346, false);
    EXPECT_EQ(window_.Combosensortype.Text(), "Rising edge, Hamlin");
    window_.UpdateReadEE(4, 971, false);
    EXPECT_EQ(window_.Combolaunchmode.Text(), "Accel limit (time fixed, stored)");
    window_.UpdateReadEE(30, 972, false);
    EXPECT_EQ(window_.txtLaunchFixedDelay.Text.get(), "30");
    window_.UpdateReadEE(5, 973, false);
    EXPECT_EQ(window_.ComboAccellimiter.Text(), "waste spark all");
    window_.UpdateReadEE(99, 974, false);
    EXPECT_EQ(window_.txtMaxAccel.Text.get(), "99");
    window_.UpdateReadEE(0x13, 512, false);
    window_.UpdateReadEE(0x88, 511, false);
    EXPECT_EQ(window_.txtLaunchControlLimit.Text.get(), "5000");
}

TEST_F(LimiterTest, TheLaunchLimitIsTheWordInTheImage) {
    deliverByte(512, 0x13);
    deliverWord(511, 0x1388);
    EXPECT_EQ(window_.txtLaunchControlLimit.Text.get(), "5000");
    deliverByte(511, 0x89);
    deliverWord(512, 0x0013);
    EXPECT_EQ(window_.txtLaunchControlLimit.Text.get(), "5001") << "at either address";
}

// Int(raw / 255 * 5 * 100) / 100 of channels 16 to 18, three times a second: 77 gives 1.5098, which is cut.
TEST_F(LimiterTest, TheInputsShowTheirVoltages) {
    tables_.liveValues.at(16).raw = 255;
    tables_.liveValues.at(17).raw = 77;
    tables_.liveValues.at(18).raw = 0;
    pump_.wait(332);
    EXPECT_EQ(window_.lblInput1.Caption.get(), "");
    pump_.wait(2);
    EXPECT_EQ(window_.lblInput1.Caption.get(), "5");
    EXPECT_EQ(window_.lblInput2.Caption.get(), "1.5");
    EXPECT_EQ(window_.lblInput3.Caption.get(), "0");
}

TEST_F(LimiterTest, FramesBearTheirTitles) {
    Lines titles;
    for (const auto* frame : {&window_.FrameRpmSensor, &window_.FrameRpmLimit, &window_.FrameInput(0),
                              &window_.FrameInput(1), &window_.FrameInput(2), &window_.launchControl.frame}) {
        titles.push_back(frame->Caption);
    }
    EXPECT_THAT(titles, ElementsAre("RPM sensor settings", "RPM limit settings", "INPUT 1, voltage limit",
                                    "INPUT 2, voltage limit", "INPUT 3, voltage limit", "Launch control"));
}

TEST_F(LimiterTest, ListsHaveTheirRows) {
    expectRows(window_);
    EXPECT_THAT(rowsOf(window_.ComboInputCompare(2)), ElementsAre(">", "<", "!?!"));
    for (const auto* list : {&window_.ComboInputFuncLow(6), &window_.comboInputFuncHi(2)}) {
        EXPECT_THAT(rowsOf(*list), ElementsAre("Do nothing", "Disable 1 CYL", "Disable 33% CYL", "Disable 50& CYL",
                                               "RPM-limit cut 50%", "RPM-limit cut 100%", "Unknown"));
    }
}

TEST_F(LimiterTest, FramesHaveTheirCaptions) {
    EXPECT_EQ(window_.FrameRpmSensor.Caption.get(), "RPM sensor settings");
    EXPECT_EQ(window_.FrameRpmLimit.Caption.get(), "RPM limit settings");
    EXPECT_EQ(window_.FrameInput(0).Caption.get(), "INPUT 1, voltage limit");
    EXPECT_EQ(window_.FrameInput(1).Caption.get(), "INPUT 2, voltage limit");
    EXPECT_EQ(window_.FrameInput(2).Caption.get(), "INPUT 3, voltage limit");
    EXPECT_EQ(window_.launchControl.frame.Caption.get(), "Launch control");
}

TEST_F(LimiterTest, AComparisonIsThereAgainInTheNextWindow) {
    window_.ComboInputCompare(1).choose(2);
    FrmMaps_ign_limiter next(machine_, context_);
    EXPECT_EQ(next.ComboInputCompare(0).ListIndex.get(), 0);
    EXPECT_EQ(next.ComboInputCompare(1).Text(), "!?!");
    preferences_.write(core::kSettingsKey, "InputCompare2", "3");
    EXPECT_EQ(FrmMaps_ign_limiter(machine_, context_).ComboInputCompare(1).ListIndex.get(), 0);
}

TEST_F(LimiterTest, TheMiscBlockIsOnlyTold) {
    poll().Enabled = false;
    deliver('m', support::Bytes(9, 1));
    EXPECT_THAT(captions_.values, ElementsAre("Getting data from ECU!", "Misc datan haku onnistui"));
    EXPECT_EQ(now(), 100);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.TimeOutTimer.Enabled);
}

TEST_F(LimiterTest, SecondsAreCounted) {
    pump_.wait(3500);
    EXPECT_EQ(window_.timeOutCounter, 3);
    EXPECT_EQ(window_.TimeOutTimer.Interval.get(), 1000);
    window_.timeOutCounter = 32767;
    pump_.wait(2000);
    EXPECT_EQ(window_.timeOutCounter, 32767);
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(LimiterTest, HasNoMapsAndNoNamesOfGrids) {
    EXPECT_THAT(namesOf(window_),
                UnorderedElementsAre(
                    "txtLaunchControlLimit", "Combolaunchmode", "txtLaunchFixedDelay", "ComboAccellimiter",
                    "txtMaxAccel", "Combosensortype", "btnReadData", "btnSendSettings", "btnHelp", "FrameRpmSensor",
                    "txtSigPerRev", "txtCylCount", "FrameRpmLimit", "txtrpmlimitLOW", "txtrpmlimitLOWpre",
                    "txtrpmlimitHIGH", "txtrpmlimitHIGHpre", "FrameInput", "ComboInputCompare", "txtInputvolt",
                    "ComboInputFuncLow", "comboInputFuncHi", "txtInputFuncVal", "lblInput1", "lblInput2", "lblInput3",
                    "TimerinitialRead", "Timer1", "TimeOutTimer", "FrameLaunch", "btnReadLaunch", "btnSaveLaunch"));
    for (const char reply : {'a', 'f'}) {
        deliver(static_cast<std::uint8_t>(reply), support::Bytes(160, 7));
    }
    EXPECT_EQ(tables_.IgnMapIn.at(159), 7);
    EXPECT_THAT(log_.lines, SizeIs(2)) << "as without a window";
}

TEST_F(LimiterTest, ItsUnloadClearsTheFlagOfTheIgnitionWindow) {
    tables_.ignWindowOpen = true;
    bool told = false;
    window_.Unloaded = [&] { told = true; };
    EXPECT_TRUE(window_.unload());
    EXPECT_FALSE(tables_.ignWindowOpen);
    EXPECT_TRUE(told);
}

TEST_F(LimiterTest, MayBeClosedWhileItReads) {
    virtual_.at(400, [this] { EXPECT_TRUE(window_.unload()); });
    window_.btnReadData.press();
    EXPECT_THAT(line_.sent(), SizeIs(3));
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(LimiterTest, HelpIsThatOfTheMapWindows) {
    window_.btnHelp.press();
    const auto messages = dialogs_.takeMessages();
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages.front().title, "Ohje ");
}

TEST_F(LimiterTest, VoltsShowAndStepTheirCountUpTo250) {
    auto& box = window_.txtInputvolt(0);
    deliverWord(1912, 249);
    EXPECT_EQ(box.Text.get(), "4.98");
    for (const char* shown : {"5", "5"}) {
        box.keyDown(controls::kKeyPlus, 0);
        EXPECT_EQ(box.Text.get(), shown);
    }
    EXPECT_EQ(box.ToolTipText.get(), "250");
    box.keyDown(controls::kKeyMinus, 0);
    EXPECT_EQ(box.Text.get(), "4.98");
    box.keyDown(controls::kKeyUp, 0);  // a box for itself: arrows step nothing
    EXPECT_EQ(box.ToolTipText.get(), "249");
}

TEST_F(LimiterTest, VoltsStepDownToZero) {
    auto& box = window_.txtInputvolt(2);
    deliverWord(1924, 1);
    EXPECT_EQ(box.Text.get(), "0.02");
    for (int i = 0; i < 2; ++i) {
        box.keyDown(controls::kKeyMinus, 0);
        EXPECT_EQ(box.Text.get(), "0");
        EXPECT_EQ(box.ToolTipText.get(), "0");
    }
}

TEST_F(LimiterTest, TheLaunchPaneIsReadByteByByte) {
    window_.launchControl.btnRead.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 R 511", "150 R 512", "300 R 971", "450 R 972", "600 R 973", "750 R 974"));
    EXPECT_THAT(captions_.values, IsEmpty());
}

// The low byte's parameter has the mark of a word: its write clears the high byte, 50 ms later.
TEST_F(LimiterTest, TheLaunchPaneIsSavedWithPausesOf50Ms) {
    window_.txtLaunchControlLimit.Text = "5000";
    window_.Combolaunchmode.ListIndex = 5;
    window_.txtLaunchFixedDelay.Text = "12";
    window_.ComboAccellimiter.ListIndex = 2;
    window_.txtMaxAccel.Text = "99";
    window_.launchControl.btnSave.press();
    EXPECT_THAT(line_.sent(), ElementsAre("0 511=136", "50 512=0", "50 512=19", "100 971=5", "150 972=12", "200 973=2",
                                          "250 974=99"));
    EXPECT_EQ(now(), 300);
}

TEST_F(LimiterTest, TheLaunchPaneIsTooShortToTouchThePoll) {
    window_.launchControl.btnRead.press();
    window_.launchControl.btnSave.press();
    EXPECT_FALSE(poll().Enabled) << "as it was";
}

TEST_F(LimiterTest, ALaunchLimitAbove16BitsIsToldAndNothingIsSaved) {
    window_.txtLaunchControlLimit.Text = "32768";
    window_.launchControl.btnSave.press();
    EXPECT_THAT(line_.sent(), IsEmpty());
    EXPECT_THAT(dialogs_.takeMessages(), SizeIs(1));
}

}  // namespace
}  // namespace korvane::maps
