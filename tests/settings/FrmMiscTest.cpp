#include "MiscBench.h"
#include "settings/MiscLayout.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FrmMiscTest : public MiscBench {
protected:
    std::vector<bool> shownPages() {
        std::vector<bool> shown;
        for (auto& page : frmMisc_.picOptions) {
            EXPECT_EQ(page.Top, 50);
            EXPECT_EQ(page.Left, page.Visible ? 50 : -20000);
            shown.push_back(page.Visible);
        }
        return shown;
    }
    void expectPage(int tab) {
        EXPECT_EQ(frmMisc_.tbsOptions.SelectedItem, tab);
        const auto shown = shownPages();
        for (int i = 0; i < 9; ++i) {
            EXPECT_EQ(shown.at(static_cast<std::size_t>(i)), i == tab - 1) << i;
        }
    }
};

TEST_F(FrmMiscTest, LoadSetsTheWindowUp) {
    openPort();
    main_.Left = 3000;
    main_.Top = 2000;
    EXPECT_EQ(frmMisc_.Caption.get(), "Misc");
    frmMisc_.load();
    EXPECT_EQ(frmMisc_.Width, 7800);
    EXPECT_EQ(frmMisc_.Height, 6800);
    EXPECT_GT(frmMisc_.Left, 3000);
    EXPECT_GT(frmMisc_.Top, 2000);
    expectPage(1);
    EXPECT_TRUE(frmMisc_.FrameMisc2.Visible);
    EXPECT_TRUE(frmMisc_.ListView1.Visible);
    EXPECT_THAT(sent(), ElementsAre("0 R 518"));
    EXPECT_EQ(frmMisc_.Combolaunchmode.ListIndex, 0);
    EXPECT_EQ(frmMisc_.ComboMapSensorType.ListIndex, 0);
    EXPECT_TRUE(frmMisc_.TimerInitialGetData.Enabled);
    EXPECT_FALSE(frmMisc_.Visible);
}

TEST_F(FrmMiscTest, ListsHaveTheirRows) {
    const auto rows = [](const controls::ComboBox& list) {
        Lines texts;
        for (int i = 0; i < list.ListCount(); ++i) {
            texts.push_back(list.List(i));
        }
        return texts;
    };
    frmMisc_.load();
    EXPECT_THAT(
        rows(frmMisc_.Combolaunchmode),
        ElementsAre("Launch -no delay", "Launch with delay (analog input)", "Launch with delay (fixed, stored)",
                    "Accel limit (time analog input)", "Accel limit (time fixed, stored)", "Accel limit (all time)"));
    EXPECT_THAT(rows(frmMisc_.ComboMapSensorType), ElementsAre("MPX4250", "Bosch 3bar, VW,audi", "Vacuum"));
    ASSERT_EQ(frmMisc_.Combo1.ListCount(), 31);
    EXPECT_EQ(frmMisc_.Combo1.List(30), tables_.liveValues[30].name);
    for (const auto* list : {&frmMisc_.Combolaunchmode, &frmMisc_.ComboMapSensorType, &frmMisc_.Combo1}) {
        EXPECT_EQ(list->ListIndex.get(), 0) << list->path();
    }
    EXPECT_EQ(frmMisc_.ListView1.Cell(1, 1), "MISC2_OFF");
    EXPECT_EQ(frmMisc_.ListView1.Cell(1, 2), "0001");
}

TEST_F(FrmMiscTest, AParameterOfTheListIsReadIntoItsBox) {
    showOnOpenPort();
    int row = 1;
    while (frmMisc_.ListView1.Cell(row, 1) != "INJ_OFF") {
        ++row;
    }
    frmMisc_.ListView1.clickRow(row);
    frmMisc_.Command2.press();
    EXPECT_THAT(sent(), ElementsAre("0 R 16"));
    byteReply(16, 99);
    EXPECT_EQ(frmMisc_.TextOs.Text.get(), "16");
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "99");
}

TEST_F(FrmMiscTest, FramesHaveTheirTexts) {
    const auto& w = frmMisc_;
    EXPECT_EQ(w.FrameIdleAdv.Caption.get(), "Idle Ignition");
    EXPECT_EQ(w.FrameIgnEdge.Caption.get(), "Ignition sensor type");
    EXPECT_EQ(w.FrameChargeTime.Caption.get(), "Ignition Charge time");
    EXPECT_EQ(w.FrameInjMode.Caption.get(), "Injection mode");
    EXPECT_EQ(w.FrameInj8ms.Caption.get(), "Current Inj max time");
    EXPECT_EQ(w.FrameInjAdv.Caption.get(), "Injection advance");
    EXPECT_EQ(w.FrameStartHelp.Caption.get(), "Start help");
    EXPECT_EQ(w.FrameVolt.Caption.get(), "Voltage correction factor   ms/V");
    EXPECT_EQ(w.FrameAccel.Caption.get(), "Acceleration pump");
    EXPECT_EQ(w.FramePWM1.Caption.get(), "PWM1");
    EXPECT_EQ(w.FramePWM2.Caption.get(), "PWM2");
    EXPECT_EQ(w.FrameIdleValve.Caption.get(), "Idle valve control (PWM)");
    EXPECT_EQ(w.FrameBoost.Caption.get(), "Boost regulation");
    EXPECT_EQ(w.FrameLambda.Caption.get(), "Lambda correction");
    EXPECT_EQ(w.FrameIdlemap.Caption.get(), "Idle Fuel correction");
    EXPECT_EQ(w.FrameMapSensor.Caption.get(), "Map sensor type");
    EXPECT_EQ(w.FrameNTC.Caption.get(), "Temperature sensor calibration");
    EXPECT_EQ(w.FrameLoadCalc.Caption.get(), "Load calculation");
    EXPECT_EQ(w.FrameWarnings.Caption.get(), "Warnings");
    EXPECT_EQ(w.FrameLaunch.Caption.get(), "Launch / Antilag settings");
    EXPECT_EQ(w.FrameParams.Caption.get(), "Params");
    EXPECT_EQ(w.Frame13.Caption.get(), "Inj offset type");
    EXPECT_EQ(w.FrameMisc2.Caption.get(), "Älä käytä!");
}

TEST_F(FrmMiscTest, FeaturesEnableTheirBoxes) {
    const auto enabled = [&](int features) {
        live::FrmSarn2 owner(machine_);
        core::EepromAccess eeprom(owner.MSComm1, virtual_.pump, tables_);
        tables_.Features = features;
        FrmMisc window(machine_, tables_, owner, eeprom);
        window.load();
        std::string text;
        for (auto* row : {&window.txtAccel, &window.txtVolt, &window.txtLambdaTav, &window.txtLambdaVaik}) {
            for (auto& box : *row) {
                EXPECT_EQ(box.Enabled.get(), (*row)(0).Enabled.get());
            }
            text += (*row)(0).Enabled ? '1' : '0';
        }
        return text;
    };
    EXPECT_EQ(enabled(-1), "1111");
    EXPECT_EQ(enabled(0), "0000");
    EXPECT_EQ(enabled(1 << 4), "1000");
    EXPECT_EQ(enabled(1 << 8), "0100");
    EXPECT_EQ(enabled(1 << 9), "0011");
}

TEST_F(FrmMiscTest, InjectionOffsetTypeFollowsThePreference) {
    tables_.InjOff_type = 0;
    frmMisc_.load();
    EXPECT_FALSE(frmMisc_.opt_injofftype(0).Value);
    EXPECT_TRUE(frmMisc_.opt_injofftype(1).Value);
    tables_.InjOff_type = 5;
    FrmMisc other(machine_, tables_, main_, eeprom_);
    other.load();
    EXPECT_TRUE(other.opt_injofftype(0).Value);
    EXPECT_FALSE(other.opt_injofftype(1).Value);
}

TEST_F(FrmMiscTest, TabsShowTheirPages) {
    show();
    const std::vector<std::string> captions{"Ignition", "Injection", "PWM, Boost, idle", "Lambda",  "Misc",
                                            "Misc2",    "Warnings",  "Launch/ALS",       "Settings"};
    EXPECT_EQ(frmMisc_.tbsOptions.tabCount(), 9);
    for (int tab = 9; tab >= 1; --tab) {
        EXPECT_EQ(frmMisc_.tbsOptions.tabCaption(tab), captions.at(static_cast<std::size_t>(tab) - 1));
        frmMisc_.tbsOptions.choose(tab);
        expectPage(tab);
    }
}

TEST_F(FrmMiscTest, ControlTabGoesRoundTheTabs) {
    show();
    for (int tab = 2; tab <= 9; ++tab) {
        frmMisc_.btnLoad.keyDown(9, 2);
        expectPage(tab);
    }
    frmMisc_.btnLoad.keyDown(9, 2);
    expectPage(1);
    frmMisc_.btnLoad.keyDown(9, 0);
    frmMisc_.btnLoad.keyDown(9, 3);
    frmMisc_.btnLoad.keyDown(16, 2);
    expectPage(1);
}

TEST_F(FrmMiscTest, CloseBoxHidesIt) {
    show();
    EXPECT_TRUE(frmMisc_.Visible);
    EXPECT_FALSE(frmMisc_.unload());
    EXPECT_FALSE(frmMisc_.Visible);
    EXPECT_TRUE(frmMisc_.isLoaded());
    byteReply(345, 4);
    EXPECT_EQ(frmMisc_.txtInjMode.Text.get(), "4");
    frmMisc_.show();
    EXPECT_TRUE(frmMisc_.Visible);
    EXPECT_FALSE(frmMisc_.TimerInitialGetData.Enabled);  // not loaded a second time
}

TEST_F(FrmMiscTest, GoesWithTheProgram) {
    show();
    frmMisc_.leave();
    EXPECT_FALSE(frmMisc_.isLoaded());
    EXPECT_FALSE(frmMisc_.Visible);
}

TEST_F(FrmMiscTest, TimeOutTimerCountsFromTheLoad) {
    virtual_.pump.wait(3000);
    EXPECT_EQ(frmMisc_.TimeOutCount, 0);
    show();
    virtual_.pump.wait(3000);
    EXPECT_EQ(frmMisc_.TimeOutCount, 3);
    frmMisc_.TimeOutCount = 32767;
    virtual_.pump.wait(2000);
    EXPECT_EQ(frmMisc_.TimeOutCount, 32767);
    EXPECT_THAT(virtual_.log.lines, IsEmpty());
}

// ( is 40, its complement 215; ) is 41, its complement 214.
TEST_F(FrmMiscTest, ThrottleButtonsSendTheirLetterAndItsComplement) {
    showOnOpenPort();
    frmMisc_.btn0thr.press();
    EXPECT_THAT(sent(), ElementsAre("0 40", "0 215"));
    frmMisc_.btn100thr.press();
    EXPECT_THAT(sent(), ElementsAre("0 41", "0 214"));
    EXPECT_EQ(frmMisc_.lblMINTHR.Caption.get(), "");
    EXPECT_EQ(frmMisc_.btn0thr.ToolTipText.get(), "Nosta kaasu kokonaan pois ja paina tätä nappia.");
    EXPECT_EQ(frmMisc_.btn100thr.ToolTipText.get(), "Paina kaasu pohjaan ja paina tätä nappia.");
}

TEST_F(FrmMiscTest, ThrottleButtonsOnAClosedPortFailAsThePortDoes) {
    show();
    for (auto* button : {&frmMisc_.btn0thr, &frmMisc_.btn100thr}) {
        button->press();
        const auto messages = virtual_.dialogs.takeMessages();
        ASSERT_THAT(messages, SizeIs(1));
        EXPECT_EQ(messages[0].text, "Operation valid only when the port is open");
    }
}

TEST_F(FrmMiscTest, LaunchHelpHasSixLines) {
    show();
    frmMisc_.btnLaunchHelp.press();
    const auto messages = virtual_.dialogs.takeMessages();
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].text,
              "Launch: Enabloi Launch kartta sivulta, aseta Lauch rpm limit. Launch voidaan laittaa kytkeytymään pois "
              "viiveen kanssa (MODE fixed ja launch stop delay)\r\n"
              "Launch kytkeytyy päälle maadoittamalla IN1 nasta\r\n"
              "ALS: aseta ensin Launch käyttöön kuten edellä. Tämän lisäksi enabloi Antilag Misc2 välilehdeltä. "
              "Asettele sytytyksen ja bensan rikastukset kohdilleen.\r\n"
              "Launch + ALS kytkeytyvät nyt IN1 liittimestä.\r\n"
              "IN2 liittimestä kytkeytyy Flat Shift toimito päälle, tämäkin voidaan asetella viiveelliseksi\r\n"
              "ALS ollessa aktiivinen Idle ohjaus avaa tyhjäkäyntiventtiilin täysin auki (jos PWM1 ohjaa Idle "
              "venttiiliä)");
}

TEST_F(FrmMiscTest, EveryControlHasAPlaceOfItsOwn) {
    using controls::Control;
    const auto& controls = frmMisc_.controls();
    const auto isTimer = [](const Control* control) { return control->kind() == "timer"; };
    const auto right = [](const Control* control) { return control->Left + control->Width; };
    const auto bottom = [](const Control* control) { return control->Top + control->Height; };
    for (const Control* control : controls) {
        if (isTimer(control) || control->kind() == "picture box") {
            continue;
        }
        const auto* const container = control->container();
        EXPECT_GT(control->Width, 0) << control->path();
        EXPECT_GT(control->Height, 0) << control->path();
        EXPECT_LE(right(control), container != nullptr ? container->Width.get() : kMiscWidth) << control->path();
        EXPECT_LE(bottom(control), container != nullptr ? container->Height.get() : kMiscHeight) << control->path();
        for (const Control* other : controls) {
            if (other != control && !isTimer(other) && other->kind() != "picture box" &&
                other->container() == container) {
                EXPECT_TRUE(right(control) <= other->Left || right(other) <= control->Left ||
                            bottom(control) <= other->Top || bottom(other) <= control->Top)
                    << control->path() << " and " << other->path();
            }
        }
    }
}

TEST_F(FrmMiscTest, EveryControlButTheFootStandsOnAPage) {
    for (const controls::Control* control : frmMisc_.controls()) {
        const auto* outermost = control;
        while (outermost->container() != nullptr) {
            outermost = outermost->container();
        }
        const std::string name(outermost->name());
        EXPECT_TRUE(name == "picOptions" || name == "tbsOptions" || name == "btnLoad" || name == "btnReadFromFile" ||
                    name == "prgLoad" || outermost->kind() == "timer")
            << control->path();
    }
}

TEST_F(FrmMiscTest, LongestInjectionIsShownOnly) {
    show();
    Lines captions;
    for (auto& option : frmMisc_.optInj8ms) {
        EXPECT_FALSE(option.usable());
        captions.push_back(option.Caption);
    }
    EXPECT_THAT(captions, ElementsAre("3.5ms", "7ms", "10.5ms", "14ms"));
}

TEST_F(FrmMiscTest, FlagsHaveTheirCaptionsAndToolTips) {
    Lines captions;
    Lines toolTips;
    for (auto& box : frmMisc_.chkMisc2) {
        captions.push_back(box.Caption);
        toolTips.push_back(box.ToolTipText);
    }
    EXPECT_THAT(captions, ElementsAre("RpmLimit cuts IGN not FUEL", "Multispark", "Use Idle Map", "Antilag",
                                      "Intake Air Temp Correction", "Intake Air Temp Correction 50%",
                                      "Idle Lambda correction ", "---"));
    EXPECT_THAT(toolTips,
                ElementsAre("", "", "", "sytys myöhästetty", "Teoreettisesti laskettu", "IAT correction /2", "", ""));
}

TEST_F(FrmMiscTest, OptionsHaveTheirCaptionsAndToolTips) {
    const auto captions = [](auto& options) {
        Lines texts;
        for (auto& option : options) {
            texts.push_back(option.Caption);
        }
        return texts;
    };
    auto& w = frmMisc_;
    EXPECT_THAT(captions(w.OptionPWM1), ElementsAre("Idle valve", "extra INJECTION", "Shift Light", "not used"));
    EXPECT_THAT(captions(w.OptionPWM2), ElementsAre("Boost valve", "extra INJECTION", "VTC (rpm,map)", "not used"));
    EXPECT_EQ(w.OptionPWM2(2).ToolTipText.get(), "Valve Timing Control");
    EXPECT_THAT(captions(w.optLambdaType), ElementsAre("WideBand (0-5v)", "NarrowBand (0-1v)"));
    EXPECT_THAT(captions(w.optLoadMode), ElementsAre("MAP", "Throttle"));
    EXPECT_THAT(captions(w.opt_injofftype), ElementsAre("Inj offset", "Inj opening offset"));
}

TEST_F(FrmMiscTest, ButtonsHaveTheirCaptions) {
    auto& w = frmMisc_;
    EXPECT_EQ(w.btnLoad.Caption.get(), "Hae arvot");
    EXPECT_EQ(w.btnReadFromFile.Caption.get(), "load from FILE");
    EXPECT_EQ(w.btn0thr.Caption.get(), "Save 0% Throttle");
    EXPECT_EQ(w.btn100thr.Caption.get(), "Save full Throttle");
    EXPECT_EQ(w.btnLaunchHelp.Caption.get(), "Help");
    EXPECT_EQ(w.Command1.Caption.get(), "EE Write");
    EXPECT_EQ(w.Command2.Caption.get(), "EE Read");
    EXPECT_EQ(w.btnEEread16bit.Caption.get(), "EE Read 16bit");
    EXPECT_EQ(w.btnWriteEE16bit.Caption.get(), "EE Write 16bit");
    EXPECT_EQ(w.btnSaveParam.Caption.get(), "Save Param");
    EXPECT_EQ(w.Command3.Caption.get(), "Save program settings");
}

class SettingsFileLoad : public FrmMiscTest {
protected:
    // Maps of zeros, nine values of the misc block, and `params`.
    std::string file(const std::string& params) {
        std::string zeros;
        for (int i = 0; i < 160; ++i) {
            zeros += " 0 ";
        }
        return virtual_.folder
            .write("tune.txt", "Injection\r\n" + zeros + "\r\nIgnition\r\n" + zeros +
                                   "\r\nMisc\r\n 1  2  3  4  5  6  7  8  9 \r\nPWM\r\n" + zeros + "\r\nPARAMS\r\n" +
                                   params)
            .string();
    }
    std::vector<platform::MessageBox> load(const std::string& path) {
        virtual_.dialogs.answerFile(path);
        frmMisc_.btnReadFromFile.press();
        return virtual_.dialogs.takeMessages();
    }

    const std::string params_ =
        "1#0#5#MISC2_OFF\r\n11#0#200#START_HELP_OFF\r\n350#0#36#ACCEL_OFF\r\n399#0#20#PWM_MODE\r\n"
        "540#0#99#BOOSTPID_SETPOINT\r\n541#0##\r\n971#0#2#LAUNCH_MODE_OFF\r\n984#0#8#VOLT1_WARNING_OFF\r\n"
        "1005#0#4500#RPMLIMIT_COLD_LOW_OFF\r\n1234#0#77#\r\n";
};

TEST_F(SettingsFileLoad, ShowsTheParametersAndSendsNothing) {
    showOnOpenPort();
    frmMisc_.txtBoostTav(1).Text = "before";
    const std::string path = file(params_);
    EXPECT_THAT(load(path), IsEmpty());
    EXPECT_EQ(tables_.LoadFileName, path);
    EXPECT_EQ(frmMisc_.chkMisc2(2).Value, 1);
    EXPECT_EQ(frmMisc_.txtStart.Text.get(), "2.7778");
    EXPECT_EQ(frmMisc_.txtAccel(0).Text.get(), "0.5");
    EXPECT_TRUE(frmMisc_.OptionPWM1(2).Value);
    EXPECT_EQ(frmMisc_.txtBoostTav(0).Text.get(), "99");
    EXPECT_EQ(frmMisc_.txtBoostTav(1).Text.get(), "before");
    EXPECT_EQ(frmMisc_.Combolaunchmode.ListIndex, 2);
    EXPECT_EQ(frmMisc_.txtVolt1Warning.Text.get(), "16");
    EXPECT_EQ(frmMisc_.txtColdRPMlimit.Text.get(), "4500");
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "77");
    EXPECT_EQ(tables_.EEImage[540], 99);
    EXPECT_EQ(tables_.EEImage[1005], 0);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(SettingsFileLoad, AsksForAFileByItsDialog) {
    show();
    frmMisc_.btnReadFromFile.press();
    const auto dialogs = virtual_.dialogs.takeFileDialogs();
    ASSERT_THAT(dialogs, SizeIs(1));
    EXPECT_EQ(dialogs[0].kind, platform::FileDialog::Kind::Open);
    EXPECT_EQ(dialogs[0].title, "Open Settings file");
    EXPECT_EQ(dialogs[0].filter, "All Files (*.txt)|*.txt");
    EXPECT_EQ(tables_.LoadFileName, "");
    EXPECT_THAT(virtual_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(SettingsFileLoad, TellsTheStatusOfABadFile) {
    show();
    const auto messages = load(virtual_.folder.write("empty.txt", "").string());
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].text, "Error loading data:\r\nEmpty file");
}

TEST_F(SettingsFileLoad, TellsThatAFileCannotBeOpened) {
    show();
    const auto messages = load((virtual_.folder / "missing.txt").string());
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_THAT(messages[0].text, testing::StartsWith("Error loadfile: "));
}

TEST_F(SettingsFileLoad, StopsAtAParameterThatNoFieldCanTake) {
    show();
    const auto messages = load(file("540#0#99#\r\n971#0#9#LAUNCH_MODE_OFF\r\n541#0#98#\r\n"));
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].text, " Error while reading parameter data");
    EXPECT_EQ(frmMisc_.txtBoostTav(0).Text.get(), "99");
    EXPECT_EQ(frmMisc_.txtBoostTav(1).Text.get(), "");
}

}  // namespace
}  // namespace korvane::settings
