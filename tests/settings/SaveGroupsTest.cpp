#include "SaveBench.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class SaveGroupsTest : public SaveBench {
protected:
    using Texts = std::vector<std::pair<controls::TextBox&, const char*>>;

    static void fill(const Texts& texts) {
        for (const auto& [box, text] : texts) {
            box.Text = text;
        }
    }
};

TEST_F(SaveGroupsTest, IdleIgnition) {
    number(frmMisc_.txtIdleAdv, 10);
    EXPECT_THAT(save(frmMisc_.btnSaveIdleAdv),
                ElementsAre("0 392=10", "0 393=11", "50 394=12", "50 395=13", "100 396=14"));
    EXPECT_EQ(now(), 150);
}

TEST_F(SaveGroupsTest, IgnitionEdgeIsOneOrZero) {
    const auto edge = [&](const char* text) {
        frmMisc_.txtIgnEdge.Text = text;
        return save(frmMisc_.btnIgnEdge);
    };
    EXPECT_THAT(edge("1"), ElementsAre("0 346=1"));
    EXPECT_THAT(edge("5"), ElementsAre("0 346=0"));
    EXPECT_THAT(edge("1.5"), ElementsAre("0 346=0"));
    EXPECT_THAT(edge("1e9"), ElementsAre("0 346=0"));
    EXPECT_THAT(edge("one"), ElementsAre("0 346=0"));
}

TEST_F(SaveGroupsTest, ChargeTimeComesFromTheTag) {
    frmMisc_.txtchargetime.Tag = "125";
    frmMisc_.txtchargetime.Text = "9";
    EXPECT_THAT(save(frmMisc_.btnSaveChargeTime), ElementsAre("0 13=125"));
    EXPECT_EQ(now(), 0);
}

// 1500 is 0x05DC, 2000 is 0x07D0. The rows of both are marked as words: the low byte's write clears the high one, and
// blocks for 50 ms in between.
TEST_F(SaveGroupsTest, EngineBrake) {
    fill({{frmMisc_.txtMotorBrakeLow, "1500"}, {frmMisc_.txtMotorBrakeHigh, "2000"}});
    EXPECT_THAT(save(frmMisc_.btnSaveMotorbrake),
                ElementsAre("0 507=220", "50 508=0", "50 508=5", "100 509=208", "150 510=0", "150 510=7"));
    EXPECT_EQ(now(), 150);
    expectPollStopped(frmMisc_.btnSaveMotorbrake, 150 + 60);
}

TEST_F(SaveGroupsTest, NegativeWordGoesInTwosComplement) {
    fill({{frmMisc_.txtMotorBrakeLow, "-2"}, {frmMisc_.txtMotorBrakeHigh, "-32768"}});
    EXPECT_THAT(save(frmMisc_.btnSaveMotorbrake),
                ElementsAre("0 507=254", "50 508=0", "50 508=255", "100 509=0", "150 510=0", "150 510=128"));
}

TEST_F(SaveGroupsTest, InjectionModeIsOneTwoOrFour) {
    const auto mode = [&](const char* text) {
        frmMisc_.txtInjMode.Text = text;
        frmMisc_.txtInjMultiplier.Text = "3";
        return save(frmMisc_.btnInjMode);
    };
    EXPECT_THAT(mode("1"), ElementsAre("0 345=1", "0 1026=3"));
    EXPECT_THAT(mode("2"), ElementsAre("0 345=2", "0 1026=3"));
    EXPECT_THAT(mode("3"), ElementsAre("0 345=2", "0 1026=3"));
    EXPECT_THAT(mode("4"), ElementsAre("0 345=4", "0 1026=3"));
    EXPECT_THAT(mode("1e9"), ElementsAre("0 345=2", "0 1026=3"));
    EXPECT_THAT(mode(""), ElementsAre("0 345=2", "0 1026=3"));
}

TEST_F(SaveGroupsTest, InjectionAdvancePausesBehindEachPairButTheLast) {
    number(frmMisc_.txtInjAdv, 20);
    Lines expected;
    for (int pair = 0; pair < 8; ++pair) {
        for (int i = 2 * pair; i < 2 * pair + 2; ++i) {
            expected.push_back(std::to_string(50 * pair) + " " + std::to_string(558 + i) + "=" +
                               std::to_string(20 + i));
        }
    }
    EXPECT_THAT(save(frmMisc_.btnSaveInjAdv), ElementsAreArray(expected));
    EXPECT_EQ(now(), 350);
}

TEST_F(SaveGroupsTest, StartHelp) {
    frmMisc_.txtStart.Tag = "100";
    frmMisc_.txtStartHelpLen.Text = "5";
    frmMisc_.txtRyyppy.Tag = "50";
    frmMisc_.txtChokeEnd.Text = "60";
    EXPECT_THAT(save(frmMisc_.btnStartHelp), ElementsAre("0 11=100", "0 1027=5", "0 12=50", "0 367=60"));
    EXPECT_EQ(now(), 0);
}

TEST_F(SaveGroupsTest, VoltageCorrectionPausesBetweenItsCells) {
    for (int i = 0; i < 4; ++i) {
        frmMisc_.txtVolt(i).Tag = std::to_string(30 + i);
    }
    EXPECT_THAT(save(frmMisc_.btnSaveVolt), ElementsAreArray(paced(4, 361, 30, 50)));
    EXPECT_EQ(now(), 150);
}

// 0.5 ms are 36 counts, 1 ms 72, 1.3889 ms 100.
TEST_F(SaveGroupsTest, AccelerationPumpTurnsMillisecondsIntoCounts) {
    for (auto& box : frmMisc_.txtAccel) {
        box.Text = "0.5";
    }
    frmMisc_.txtAccel(1).Text = "1";
    frmMisc_.txtAccel(9).Text = "1.3889";
    frmMisc_.txtAccelDelay.Text = "12";
    EXPECT_THAT(save(frmMisc_.btnAccel),
                ElementsAre("0 350=36", "50 351=72", "100 352=36", "150 353=36", "200 354=36", "250 355=36",
                            "300 356=36", "350 357=36", "400 358=36", "450 359=100", "500 14=12"));
    EXPECT_EQ(now(), 500);
    expectPollStopped(frmMisc_.btnAccel, 600);
}

TEST_F(SaveGroupsTest, FlagsAreOneByte) {
    for (const int bit : {0, 2, 7}) {
        frmMisc_.chkMisc2(bit).Value = 1;
    }
    EXPECT_THAT(save(frmMisc_.btnSaveMisc3), ElementsAre("0 1=133"));
    frmMisc_.chkMisc2(0).Value = 0;
    EXPECT_THAT(save(frmMisc_.btnSaveMisc3), ElementsAre("0 1=132"));
}

// 900 is 0x0384.
TEST_F(SaveGroupsTest, IdleValve) {
    fill({{frmMisc_.txtIdleValveMax, "80"}, {frmMisc_.txtIdleValveMin, "20"}, {frmMisc_.txtIdleValveSetpoint, "900"}});
    EXPECT_THAT(save(frmMisc_.btnSaveIdleValve),
                ElementsAre("0 503=80", "50 502=20", "100 504=132", "150 505=0", "150 505=3"));
    EXPECT_EQ(now(), 150);
}

TEST_F(SaveGroupsTest, PwmModeHasOneBitOfEachSide) {
    frmMisc_.OptionPWM1(2).press();
    EXPECT_THAT(save(frmMisc_.btnPWMmode), ElementsAre("0 399=4"));
    frmMisc_.OptionPWM2(0).press();
    EXPECT_THAT(save(frmMisc_.btnPWMmode), ElementsAre("0 399=20"));
    frmMisc_.OptionPWM1(3).press();
    frmMisc_.OptionPWM2(3).press();
    EXPECT_THAT(save(frmMisc_.btnPWMmode), ElementsAre("0 399=136"));
}

TEST_F(SaveGroupsTest, Boost) {
    number(frmMisc_.txtBoostTav, 200);
    EXPECT_THAT(save(frmMisc_.btnSaveBoost), ElementsAreArray(paced(16, 540, 200, 50)));
    EXPECT_EQ(now(), 800);
    expectPollStopped(frmMisc_.btnSaveBoost, 1000);
}

TEST_F(SaveGroupsTest, LambdaType) {
    EXPECT_THAT(save(frmMisc_.btnSaveLambdaType), ElementsAre("0 518=0"));
    frmMisc_.optLambdaType(0).press();
    EXPECT_THAT(save(frmMisc_.btnSaveLambdaType), ElementsAre("0 518=1"));
    frmMisc_.optLambdaType(1).press();
    EXPECT_THAT(save(frmMisc_.btnSaveLambdaType), ElementsAre("0 518=0"));
}

TEST_F(SaveGroupsTest, LambdaCorrection) {
    number(frmMisc_.txtLambdaTav, 140);
    number(frmMisc_.txtLambdaVaik, 20);
    Lines expected = paced(10, 370, 140, 50);
    for (const auto& line : paced(10, 380, 20, 50, 500)) {
        expected.push_back(line);
    }
    EXPECT_THAT(save(frmMisc_.btnSaveLambda), ElementsAreArray(expected));
    EXPECT_EQ(now(), 1000);
    expectPollStopped(frmMisc_.btnSaveLambda, 1900);
}

TEST_F(SaveGroupsTest, IdleFuelCorrection) {
    number(frmMisc_.txtInjIdleMap, 60);
    EXPECT_THAT(save(frmMisc_.btnSaveIdlemap), ElementsAreArray(paced(16, 950, 60, 100)));
    EXPECT_EQ(now(), 1600);
}

TEST_F(SaveGroupsTest, TemperatureSensors) {
    fill({{frmMisc_.txtNTC1, "22"},
          {frmMisc_.txtNTC2, "23"},
          {frmMisc_.txtNTC3, "24"},
          {frmMisc_.txtNTC4, "25"},
          {frmMisc_.txtNTCMultiplier, "10"}});
    EXPECT_THAT(save(frmMisc_.btnSaveNTCCal),
                ElementsAre("0 516=22", "0 517=23", "100 969=24", "100 970=25", "100 979=10"));
    EXPECT_EQ(now(), 100);
}

TEST_F(SaveGroupsTest, LoadCalculation) {
    fill({{frmMisc_.txtLoadOffset, "5"}, {frmMisc_.txtLoadGain, "10"}});
    frmMisc_.optLoadMode(0).press();
    EXPECT_THAT(save(frmMisc_.btnLoadCalc), ElementsAre("0 497=5", "200 496=10", "400 498=0"));
    EXPECT_EQ(now(), 400);
    frmMisc_.optLoadMode(1).press();
    EXPECT_THAT(save(frmMisc_.btnLoadCalc).back(), "800 498=1");
    frmMisc_.optLoadMode(1).Value = false;
    EXPECT_THAT(save(frmMisc_.btnLoadCalc).back(), "1200 498=1") << "with neither chosen";
}

// 4500 is 0x1194; its row is a word, written in one call with 50 ms in between.
TEST_F(SaveGroupsTest, Warnings) {
    auto& w = frmMisc_;
    fill({{w.txtBoostIgnCut, "240"},
          {w.txtColdRPMlimit, "4500"},
          {w.txtWaterWarning, "105"},
          {w.txtOilWarning, "130"},
          {w.txtAirWarning, "60"},
          {w.txtTemp4Warning, "70"},
          {w.txtVolt1Warning, "15"},
          {w.txtVolt2Warning, "13"},
          {w.txtVolt3Warning, "510"},
          {w.txtVolt4Warning, "0"}});
    EXPECT_THAT(save(w.btnSaveWarnings),
                ElementsAre("0 515=240", "0 1005=148", "50 1006=17", "50 980=105", "50 982=130", "50 981=60",
                            "50 983=70", "50 984=8", "50 985=6", "50 986=255", "50 987=0"));
    EXPECT_EQ(now(), 50);
}

// 5000 is 0x1388.
TEST_F(SaveGroupsTest, LaunchAndAntilag) {
    auto& w = frmMisc_;
    w.txtLaunchcontrol.Text = "5000";
    w.Combolaunchmode.choose(4);
    fill({{w.txtAccelLimiterValue, "7"}, {w.txtAccelLimiterMode, "1"}});
    w.txtALS_fuel.Tag = "3";
    w.txtALS_ign_retard.Tag = "4";
    fill({{w.txtlaunchdelay, "8"}, {w.txtflatshiftstartdelay, "9"}, {w.txtflatshiftstopdelay, "10"}});
    EXPECT_THAT(save(w.btnSaveALSsettings),
                ElementsAre("0 511=136", "50 512=0", "50 512=19", "50 971=4", "50 974=7", "50 973=1", "100 968=3",
                            "100 967=4", "150 972=8", "150 977=9", "150 978=10"));
    EXPECT_EQ(now(), 150);
}

TEST_F(SaveGroupsTest, LaunchLimitOfType30IsTwoSingleBytes) {
    core::InitParams(tables_, 30);
    frmMisc_.txtLaunchcontrol.Text = "5000";
    const Lines lines = save(frmMisc_.btnSaveALSsettings);
    EXPECT_EQ(lines.at(0), "0 500=136");
    EXPECT_EQ(lines.at(1), "0 501=19");
    EXPECT_EQ(lines.at(2), "0 971=0");
}

TEST_F(SaveGroupsTest, ShortOnesLeaveThePollAlone) {
    auto& w = frmMisc_;
    for (auto* button :
         {&w.btnSaveIdleAdv, &w.btnIgnEdge, &w.btnSaveChargeTime, &w.btnInjMode, &w.btnSaveInjAdv, &w.btnStartHelp,
          &w.btnSaveVolt, &w.btnSaveMisc3, &w.btnSaveIdleValve, &w.btnPWMmode, &w.btnSaveLambdaType, &w.btnSaveIdlemap,
          &w.btnSaveNTCCal, &w.btnLoadCalc, &w.btnSaveWarnings, &w.btnSaveALSsettings}) {
        expectPollLeft(*button);
    }
}

}  // namespace
}  // namespace korvane::settings
