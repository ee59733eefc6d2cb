#include <gmock/gmock.h>

#include "console/TestWindow.h"

namespace korvane::console {
namespace {

using testing::ElementsAre;

class ControlCommands : public testing::Test, public ConsoleOnTestWindow {
protected:
    std::vector<std::string>& log() { return window->log; }

    void noteKeys(controls::Control& control, const std::string& who) {
        control.KeyDown = [this, who](int code, int shift) { note(who + " down", code, shift); };
        control.KeyPress = [this, who](int& character) {
            log().push_back(who + " press " + std::to_string(character));
        };
        control.KeyUp = [this, who](int code, int shift) { note(who + " up", code, shift); };
    }
    void note(const std::string& what, int code, int shift) {
        log().push_back(what + " " + std::to_string(code) + " " + std::to_string(shift));
    }
};

TEST_F(ControlCommands, ClickPressesAButton) {
    int clicks = 0;
    window->btnGo.Click = [&] { ++clicks; };
    EXPECT_EQ(run("click frmTest.btnGo"), "ok");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok \"btnGo\"") << "a press takes the focus, as by a hand";
}

TEST_F(ControlCommands, ClickAnswersAfterTheWaitsOfItsHandler) {
    window->btnGo.Click = [&] {
        pump.wait(150);
        window->Caption = "done";
    };
    EXPECT_EQ(run("click frmTest.btnGo"), "ok");
    EXPECT_EQ(run("get frmTest.Caption"), "ok \"done\"");
    EXPECT_EQ(run("now"), "ok 150");
}

TEST_F(ControlCommands, ClickTogglesACheckBox) {
    for (const char* value : {"ok 1", "ok 0"}) {
        EXPECT_EQ(run("click frmTest.chkTrace"), "ok");
        EXPECT_EQ(run("get frmTest.chkTrace.Value"), value);
    }
}

TEST_F(ControlCommands, ClickReachesALabelThatHasAHandler) {
    int clicks = 0;
    window->lblHot.Click = [&] { ++clicks; };
    EXPECT_EQ(run("click frmTest.lblHot"), "ok");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(run("click frmTest.lblPlain"), "error frmTest.lblPlain is a label and can't be clicked");
    EXPECT_EQ(run("click frmTest.tmrTick"), "error frmTest.tmrTick is a timer and can't be clicked");
    EXPECT_EQ(run("click frmTest.cmbPort"),
              "error frmTest.cmbPort is a drop-down list and is not clicked but chosen from");
}

TEST_F(ControlCommands, ClickOnWhatAUserCannotReachIsAnError) {
    int clicks = 0;
    window->btnInner.Click = [&] { ++clicks; };
    window->btnInner.Enabled = false;
    EXPECT_EQ(run("click frmTest.btnInner"), "error frmTest.btnInner is disabled");
    window->btnInner.Enabled = true;
    window->fraInner.Enabled = false;
    EXPECT_EQ(run("click frmTest.btnInner"), "error frmTest.btnInner is disabled");
    window->fraInner.Enabled = true;
    window->fraInner.Left = -20000;
    EXPECT_EQ(run("click frmTest.btnInner"), "error frmTest.btnInner is out of sight");
    window->fraInner.Left = 0;
    window->Visible = false;
    EXPECT_EQ(run("click frmTest.btnInner"), "error frmTest.btnInner is out of sight");
    EXPECT_EQ(clicks, 0);
    window->Visible = true;
    EXPECT_EQ(run("click frmTest.btnInner"), "ok");
    EXPECT_EQ(clicks, 1);
}

TEST_F(ControlCommands, ControlsThatDoNotExistAreNamed) {
    EXPECT_EQ(run("click frmTest"), "error frmTest is no control");
    EXPECT_EQ(run("click frmTest.btnNone"), "error frmTest has no control btnNone");
    EXPECT_EQ(run("click frmTest.btnGo.Caption"), "error frmTest.btnGo.Caption is no control");
    EXPECT_EQ(run("click frmMaps.btnGo"), "error no open window is named frmMaps");
    EXPECT_EQ(run("close frmTest.btnGo"), "error frmTest.btnGo is no window");
}

TEST_F(ControlCommands, ChoosePicksARowAndTellsTheProgramOfANewOneOnly) {
    int clicks = 0;
    window->cmbPort.Click = [&] { ++clicks; };
    EXPECT_EQ(run("choose frmTest.cmbPort 2"), "ok");
    EXPECT_EQ(run("choose frmTest.cmbPort 2"), "ok");
    EXPECT_EQ(window->cmbPort.ListIndex.get(), 2);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ControlCommands, ChooseRefusesRowsThatDoNotExist) {
    EXPECT_EQ(run("choose frmTest.cmbPort 3"), "error frmTest.cmbPort has no row 3 (0 to 2)");
    EXPECT_EQ(run("choose frmTest.cmbPort -1"), "error -1 is no whole number from 0 to 1000000");
    EXPECT_EQ(run("choose frmTest.btnGo 1"), "error frmTest.btnGo is a button and offers nothing to choose");
    window->cmbPort.Clear();
    EXPECT_EQ(run("choose frmTest.cmbPort 0"), "error frmTest.cmbPort has no row 0 (there is none)");
    window->cmbPort.Enabled = false;
    EXPECT_EQ(run("choose frmTest.cmbPort 0"), "error frmTest.cmbPort is disabled");
}

TEST_F(ControlCommands, RowsAndColumnsOfAListCountFromOne) {
    EXPECT_EQ(run("choose frmTest.lvwTable 3"), "ok");
    EXPECT_EQ(window->lvwTable.chosen, 3);
    EXPECT_EQ(run("choose frmTest.lvwTable 0"), "error frmTest.lvwTable has no row 0 (1 to 3)");
    EXPECT_EQ(run("column frmTest.lvwTable 2"), "ok");
    EXPECT_EQ(window->lvwTable.clicked, 2);
    EXPECT_EQ(run("column frmTest.lvwTable 3"), "error frmTest.lvwTable has no column 3 (1 to 2)");
    EXPECT_EQ(run("column frmTest.cmbPort 1"), "error frmTest.cmbPort is a drop-down list and has no columns");
}

TEST_F(ControlCommands, TypeEmptiesTheBoxAndTypesKeyByKey) {
    window->txtName.Text = "old";
    noteKeys(window->txtName, "name");
    window->txtName.Change = [this] { log().push_back("change " + window->txtName.Text.get()); };
    EXPECT_EQ(run("type frmTest.txtName a+"), "ok");
    EXPECT_THAT(log(), ElementsAre("change ", "name down 65 0", "name press 97", "change a", "name up 65 0",
                                   "name down 187 0", "name press 43", "change a+", "name up 187 0"));
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok \"txtName\"");
}

TEST_F(ControlCommands, TypeTakesTextsWithBlanksAndAnyLetters) {
    EXPECT_EQ(run("type frmTest.txtName \"\xC3\x84l\xC3\xA4 \\u20ac\""), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "\xC3\x84l\xC3\xA4 \xE2\x82\xAC");
    EXPECT_EQ(run("type frmTest.txtName \"\""), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "");
    EXPECT_EQ(run("type frmTest.txtName [1]"), "error [1] is no text");
}

TEST_F(ControlCommands, TypeLeavesALockedBoxAsItIs) {
    window->txtName.Text = "old";
    window->txtName.Locked = true;
    noteKeys(window->txtName, "name");
    EXPECT_EQ(run("type frmTest.txtName x"), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "old");
    EXPECT_THAT(log(), ElementsAre("name down 88 0", "name press 120", "name up 88 0"));
}

TEST_F(ControlCommands, AHandlerMayChangeOrDropAKey) {
    window->txtName.KeyPress = [](int& character) {
        character = character == ',' ? '.' : character == 'x' ? 0 : character;
    };
    EXPECT_EQ(run("type frmTest.txtName 1,x5"), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "1.5");
}

TEST_F(ControlCommands, TypeNeedsABoxInReach) {
    EXPECT_EQ(run("type frmTest.btnGo x"), "error frmTest.btnGo is a button and takes no text");
    window->txtName.Enabled = false;
    EXPECT_EQ(run("type frmTest.txtName x"), "error frmTest.txtName is disabled");
    EXPECT_EQ(window->txtName.Text.get(), "");
}

TEST_F(ControlCommands, KeyGivesTheFocusAndGoesDownPressUp) {
    noteKeys(window->txtCell(1), "cell");
    window->txtCell(1).GotFocus = [this] { log().push_back("focus"); };
    EXPECT_EQ(run("key frmTest.txtCell(1) 187"), "ok");
    EXPECT_EQ(run("key frmTest.txtCell(1) 38 2"), "ok");
    EXPECT_THAT(log(), ElementsAre("focus", "cell down 187 0", "cell press 43", "cell up 187 0", "cell down 38 2",
                                   "cell up 38 2"));
    EXPECT_EQ(window->txtCell(1).Text.get(), "+");
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok \"txtCell(1)\"");
}

TEST_F(ControlCommands, TheReleaseGoesToTheControlThatHasTheFocusByThen) {
    noteKeys(window->txtCell(0), "from");
    noteKeys(window->txtCell(1), "to");
    window->txtCell(0).KeyDown = [this](int, int) { window->setFocus(&window->txtCell(1)); };
    EXPECT_EQ(run("key frmTest.txtCell(0) 39"), "ok");
    EXPECT_THAT(log(), ElementsAre("to up 39 0"));
}

TEST_F(ControlCommands, KeysMakeCharactersAsOnAKeyboard) {
    EXPECT_EQ(run("key frmTest.txtName 65"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 65 1"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 76 2"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 76 4"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 16"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 9"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 55"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 189"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 190"), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "aA7-.");
    EXPECT_EQ(run("key frmTest.txtName 8"), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "aA7-");
}

TEST_F(ControlCommands, BackspaceTakesAWholeCharacter) {
    window->txtName.Text = "a\xC3\xA4";
    EXPECT_EQ(run("key frmTest.txtName 8"), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "a");
    EXPECT_EQ(run("key frmTest.txtName 8"), "ok");
    EXPECT_EQ(run("key frmTest.txtName 8"), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "");
}

TEST_F(ControlCommands, KeyRefusesWhatIsNoKeyOrCannotHaveTheFocus) {
    EXPECT_EQ(run("key frmTest.txtName 0"), "error 0 is no whole number from 1 to 255");
    EXPECT_EQ(run("key frmTest.txtName 65 8"), "error 8 is no whole number from 0 to 7");
    EXPECT_EQ(run("key frmTest.lblPlain 65"), "error frmTest.lblPlain is a label and can't have the focus");
    window->txtName.Visible = false;
    EXPECT_EQ(run("key frmTest.txtName 65"), "error frmTest.txtName is out of sight");
    EXPECT_EQ(window->activeControl(), nullptr);
}

TEST_F(ControlCommands, KeyupIsTheReleaseAlone) {
    noteKeys(window->txtName, "name");
    EXPECT_EQ(run("keyup frmTest.txtName 16 1"), "ok");
    EXPECT_THAT(log(), ElementsAre("name up 16 1"));
}

TEST_F(ControlCommands, MouseGivesTheFocusAndReleasesInTheMiddle) {
    window->txtName.Width = 300;
    window->txtName.Height = 101;
    window->txtName.GotFocus = [this] { log().push_back("focus"); };
    window->txtName.MouseUp = [this](int button, int shift, double x, double y) {
        log().push_back(std::to_string(button) + " " + std::to_string(shift) + " " + std::to_string(x) + " " +
                        std::to_string(y));
    };
    EXPECT_EQ(run("mouse frmTest.txtName 1"), "ok");
    EXPECT_THAT(log(), ElementsAre("focus", "1 1 150.000000 50.500000"));
}

TEST_F(ControlCommands, MouseClicksWhatCanBeClicked) {
    window->btnGo.Click = [this] { log().push_back("click"); };
    window->btnGo.MouseUp = [this](int, int, double, double) { log().push_back("up"); };
    EXPECT_EQ(run("mouse frmTest.btnGo"), "ok");
    EXPECT_THAT(log(), ElementsAre("up", "click"));
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok \"btnGo\"");
    EXPECT_EQ(run("mouse frmTest.lblPlain"), "ok");
    window->btnGo.Enabled = false;
    EXPECT_EQ(run("mouse frmTest.btnGo"), "error frmTest.btnGo is disabled");
}

TEST_F(ControlCommands, FocusMovesToAControlOrToNone) {
    window->btnGo.LostFocus = [this] { log().push_back("lost"); };
    EXPECT_EQ(run("focus frmTest.btnGo"), "ok");
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok \"btnGo\"");
    EXPECT_EQ(run("focus frmTest"), "ok");
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok null");
    EXPECT_THAT(log(), ElementsAre("lost"));
    EXPECT_EQ(run("focus frmTest.lblPlain"), "error frmTest.lblPlain is a label and can't have the focus");
    window->txtName.Enabled = false;
    EXPECT_EQ(run("focus frmTest.txtName"), "error frmTest.txtName is disabled");
}

TEST_F(ControlCommands, CloseIsTheCloseBox) {
    window->staysOpen = true;
    EXPECT_EQ(run("close frmTest"), "ok");
    EXPECT_TRUE(window->isLoaded());
    window->staysOpen = false;
    EXPECT_EQ(run("close frmTest"), "ok");
    EXPECT_FALSE(window->isLoaded());
    EXPECT_EQ(run("close frmTest"), "error no open window is named frmTest");
}

TEST_F(ControlCommands, ResizeIsADrag) {
    EXPECT_EQ(run("resize frmTest 9000 6000"), "ok");
    EXPECT_THAT(log(), ElementsAre("resize 9000 6000"));
    EXPECT_EQ(run("resize frmTest 9000 0"), "error 0 is no whole number from 1 to 120000");
    EXPECT_EQ(window->Height.get(), 6000);
}

TEST_F(ControlCommands, WindowsOfOneNameAreNumberedInTheOrderOfOpening) {
    TestWindow first(tapped, "frmBigText");
    auto second = std::make_unique<TestWindow>(tapped, "frmBigText");
    first.load();
    second->show();
    second->Caption = "second";
    EXPECT_EQ(run("windows"),
              "ok [{\"name\":\"frmTest\",\"caption\":\"\",\"visible\":true},"
              "{\"name\":\"frmBigText\",\"caption\":\"\",\"visible\":false},"
              "{\"name\":\"frmBigText#2\",\"caption\":\"second\",\"visible\":true}]");
    EXPECT_EQ(run("get frmBigText#2.Caption"), "ok \"second\"");
    EXPECT_EQ(run("get frmBigText#1.Caption"), "ok \"\"");
    EXPECT_EQ(run("get frmBigText#3.Caption"), "error no open window is named frmBigText#3");
    EXPECT_EQ(run("click frmBigText#2.lblPlain"), "error frmBigText#2.lblPlain is a label and can't be clicked");
    EXPECT_EQ(run("close frmBigText"), "ok");
    EXPECT_EQ(run("get frmBigText.Caption"), "ok \"second\"");
}

TEST_F(ControlCommands, ControlsNamesArraysOnceWithTheirRange) {
    EXPECT_EQ(run("controls frmTest"),
              "ok [\"btnGo\",\"chkTrace\",\"lblPlain\",\"lblHot\",\"cmbPort\",\"txtCell(0..3)\",\"txtName\","
              "\"fraInner\",\"btnInner\",\"imgLamp\",\"picPlot\",\"lvwTable\",\"tmrTick\",\"MSComm1\"]");
}

TEST_F(ControlCommands, AHandlerThatFailsEndsAtItsDoor) {
    window->btnGo.Click = [] { throw std::runtime_error("broken"); };
    EXPECT_EQ(run("click frmTest.btnGo"), "ok");
    EXPECT_THAT(VirtualMachine::log.lines, ElementsAre("frmTest.btnGo: broken"));
}

TEST_F(ControlCommands, AControlThatGoesAwayMidwayGetsNoMoreKeys) {
    auto extra = std::make_unique<controls::TextBox>(*window, "txtExtra");
    extra->KeyUp = [&](int, int) { extra.reset(); };
    EXPECT_EQ(run("type frmTest.txtExtra abc"), "ok");
    EXPECT_EQ(extra, nullptr);
    auto another = std::make_unique<controls::TextBox>(*window, "txtExtra");
    another->KeyDown = [&](int, int) { another.reset(); };
    EXPECT_EQ(run("key frmTest.txtExtra 65"), "ok");
    EXPECT_EQ(run("get frmTest.txtExtra.Text"), "error frmTest has no property or control txtExtra");
}

}  // namespace
}  // namespace korvane::console
