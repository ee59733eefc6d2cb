#include "SaveBench.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

using SaveTest = SaveBench;

TEST_F(SaveTest, BytesAreRoundedHalfToEven) {
    const auto saved = [&](const char* text) {
        frmMisc_.txtChokeEnd.Text = text;
        return save(frmMisc_.btnStartHelp).back();
    };
    EXPECT_EQ(saved("2.5"), "0 367=2");
    EXPECT_EQ(saved("3.5"), "0 367=4");
    EXPECT_EQ(saved("255.4"), "0 367=255");
    EXPECT_EQ(saved("-0.5"), "0 367=0");
}

TEST_F(SaveTest, WhatIsNoNumberCountsAsZero) {
    const auto saved = [&](const char* text) {
        frmMisc_.txtChokeEnd.Text = text;
        return save(frmMisc_.btnStartHelp).back();
    };
    for (const char* text : {"", "words", "-", ",5", ".", "e9"}) {
        EXPECT_EQ(saved(text), "0 367=0") << text;
    }
    EXPECT_EQ(saved("7,9"), "0 367=7");
    EXPECT_EQ(saved(" 12 rpm"), "0 367=12");
}

TEST_F(SaveTest, AByteThatDoesNotFitEndsTheSaveThere) {
    for (const char* text : {"256", "300", "-1", "1e9", "255.6", "1e400"}) {
        number(frmMisc_.txtBoostTav, 10);
        frmMisc_.txtBoostTav(3).Text = text;
        poll().Enabled = true;
        const auto start = static_cast<int>(now());
        EXPECT_THAT(save(frmMisc_.btnSaveBoost), ElementsAreArray(paced(3, 540, 10, 50, start))) << text;
        EXPECT_TRUE(poll().Enabled);
        const std::string message = onlyMessage();
        EXPECT_THAT(message, HasSubstr("2.5 RPM in \"Boost regulation\""));
        EXPECT_THAT(message, HasSubstr("from 0 to 255"));
    }
}

TEST_F(SaveTest, AWordThatDoesNotFitEndsTheSaveThere) {
    frmMisc_.txtMotorBrakeLow.Text = "1500";
    for (const char* text : {"32768", "70000", "-32769"}) {
        frmMisc_.txtMotorBrakeHigh.Text = text;
        poll().Enabled = true;
        EXPECT_EQ(save(frmMisc_.btnSaveMotorbrake).size(), 3U) << text;
        EXPECT_TRUE(poll().Enabled);
        EXPECT_THAT(onlyMessage(), HasSubstr("from -32768 to 32767"));
    }
}

TEST_F(SaveTest, TheColdLimitIsASignedWord) {
    frmMisc_.txtColdRPMlimit.Text = "32768";
    EXPECT_THAT(save(frmMisc_.btnSaveWarnings), ElementsAre("0 515=0"));
    EXPECT_THAT(onlyMessage(), HasSubstr("cold RPM limit, active while choke is ON in \"Warnings\""));
}

TEST_F(SaveTest, AVoltageWarningFitsUpToTwiceTheByte) {
    frmMisc_.txtVolt1Warning.Text = "511";  // 255.5 is rounded to 256
    EXPECT_EQ(save(frmMisc_.btnSaveWarnings).back(), "50 983=0");
    EXPECT_THAT(onlyMessage(), HasSubstr("from 0 to 510"));
}

TEST_F(SaveTest, AnAccelerationCellFitsUpTo255Counts) {
    frmMisc_.txtAccel(0).Text = "3.5417";
    frmMisc_.txtAccel(1).Text = "3.5556";
    poll().Enabled = true;
    EXPECT_THAT(save(frmMisc_.btnAccel), ElementsAre("0 350=255"));
    EXPECT_THAT(onlyMessage(), HasSubstr("from 0 to 3.5417 ms"));
    EXPECT_TRUE(poll().Enabled);
}

TEST_F(SaveTest, ATagThatDoesNotFitEndsTheSaveToo) {
    frmMisc_.UpdateReadEE(300, 13, false);
    EXPECT_THAT(save(frmMisc_.btnSaveChargeTime), IsEmpty());
    EXPECT_THAT(onlyMessage(), HasSubstr("Latausaika 13.5 Voltilla in \"Ignition Charge time\""));
}

TEST_F(SaveTest, AListWithNoRowEndsTheSaveToo) {
    frmMisc_.Combolaunchmode.ListIndex = -1;
    EXPECT_EQ(save(frmMisc_.btnSaveALSsettings).size(), 3U);
    EXPECT_THAT(onlyMessage(), HasSubstr("Mode in \"Launch / Antilag settings\""));
}

TEST_F(SaveTest, EachCellIsTakenWhenItsTurnComes) {
    number(frmMisc_.txtBoostTav, 10);
    at(75, [&] {
        frmMisc_.txtBoostTav(1).Text = "99";
        frmMisc_.txtBoostTav(2).Text = "98";
    });
    const Lines lines = save(frmMisc_.btnSaveBoost);
    EXPECT_EQ(lines.at(1), "50 541=11");
    EXPECT_EQ(lines.at(2), "100 542=98");
}

TEST_F(SaveTest, ASecondSaveRunsInsideTheFirst) {
    number(frmMisc_.txtBoostTav, 10);
    number(frmMisc_.txtInjIdleMap, 60);
    at(60, [&] { frmMisc_.btnSaveIdlemap.press(); });
    const Lines lines = save(frmMisc_.btnSaveBoost);
    EXPECT_EQ(lines.size(), 32U);
    EXPECT_EQ(lines.at(1), "50 541=11");
    EXPECT_EQ(lines.at(2), "60 950=60");
    EXPECT_EQ(lines.at(17), "1560 965=75");
    EXPECT_EQ(lines.at(18), "1660 542=12");
    EXPECT_EQ(now(), 1660 + 14 * 50);
}

TEST_F(SaveTest, TheSameSaveRunsInsideItself) {
    number(frmMisc_.txtBoostTav, 10);
    at(60, [&] { frmMisc_.btnSaveBoost.press(); });
    EXPECT_EQ(save(frmMisc_.btnSaveBoost).size(), 32U);
    EXPECT_TRUE(poll().Enabled);
}

TEST_F(SaveTest, GoesOnInSilenceWhenTheCableIsPulledOut) {
    number(frmMisc_.txtBoostTav, 10);
    poll().Enabled = true;
    at(175, [&] { line_.pullOut(); });
    EXPECT_THAT(save(frmMisc_.btnSaveBoost), ElementsAreArray(paced(4, 540, 10, 50)));
    EXPECT_EQ(now(), 800);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_THAT(virtual_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(SaveTest, OnAClosedPortEverythingRunsAndNothingIsSent) {
    main_.MSComm1.setPortOpen(false);
    number(frmMisc_.txtBoostTav, 10);
    EXPECT_THAT(save(frmMisc_.btnSaveBoost), IsEmpty());
    EXPECT_EQ(now(), 800);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_THAT(virtual_.dialogs.takeMessages(), IsEmpty());
    frmMisc_.txtBoostTav(0).Text = "300";
    EXPECT_THAT(save(frmMisc_.btnSaveBoost), IsEmpty());
    EXPECT_THAT(onlyMessage(), HasSubstr("1.0 RPM"));
}

TEST_F(SaveTest, NeverReadsBack) {
    auto& w = frmMisc_;
    for (auto* control : w.controls()) {
        auto* const button = dynamic_cast<controls::CommandButton*>(control);
        if (button == nullptr || button->Caption.get() != "Save") {
            continue;
        }
        const auto lines = save(*button);
        EXPECT_FALSE(lines.empty()) << button->name();
        EXPECT_THAT(lines, testing::Each(HasSubstr("="))) << button->name();
    }
}

}  // namespace
}  // namespace korvane::settings
