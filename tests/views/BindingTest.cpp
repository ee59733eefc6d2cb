#include "views/FormBench.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;

struct BindingTest : testing::Test, FormBench {
    BindingTest() { show(); }
};

TEST_F(BindingTest, AWidgetBearsTheNameOfItsControl) {
    EXPECT_EQ(find<QLineEdit>("txtCell(17)").objectName(), "txtCell(17)");
    EXPECT_EQ(find<QPushButton>("btnPress").objectName(), "btnPress");
    EXPECT_EQ(view().objectName(), "frmTest");
}

TEST_F(BindingTest, CaptionsAreShownWithTheNextFrame) {
    form.lblFixed.Caption = "Öljy";
    form.lblLive.Caption = "14.7";
    EXPECT_EQ(find<Readout>("lblLive").text(), "");
    frame();
    EXPECT_EQ(find<QLabel>("lblFixed").text(), QStringLiteral("Öljy"));
    EXPECT_EQ(find<Readout>("lblLive").text(), "14.7");
}

TEST_F(BindingTest, APlainLabelShowsMarkupAsItStands) {
    form.lblFixed.Caption = "<b>1 & 2</b>";
    frame();
    EXPECT_EQ(find<QLabel>("lblFixed").textFormat(), Qt::PlainText);
}

TEST_F(BindingTest, AClickPressesTheButtonAndItsEffectIsSeenAtOnce) {
    form.btnPress.Click = [this] { form.btnPress.Caption = "Stop"; };
    click(find("btnPress"));
    EXPECT_EQ(find<QPushButton>("btnPress").text(), "Sto&p");
}

TEST_F(BindingTest, ReturnAndSpacePressTheButtonWithTheFocus) {
    int presses = 0;
    form.btnPress.Click = [&] { ++presses; };
    key(find("btnPress"), Qt::Key_Return);
    EXPECT_EQ(presses, 1);
    key(find("btnPress"), Qt::Key_Space, {}, " ");
    EXPECT_EQ(presses, 2);
}

TEST_F(BindingTest, AKeyThatAHandlerDropsDoesNotPressTheButton) {
    int presses = 0;
    form.btnPress.Click = [&] { ++presses; };
    form.btnPress.KeyPress = [](int& character) { character = 0; };
    key(find("btnPress"), Qt::Key_Space, {}, " ");
    key(find("btnPress"), Qt::Key_Return, {}, "\r");
    EXPECT_EQ(presses, 0);
}

TEST_F(BindingTest, AButtonThatTheProgramHasJustDisabledDoesNothing) {
    int presses = 0;
    form.btnPress.Click = [&] { ++presses; };
    form.btnPress.Enabled = false;
    find<QPushButton>("btnPress").click();
    EXPECT_EQ(presses, 0);
    frame();
    EXPECT_FALSE(find("btnPress").isEnabled());
}

TEST_F(BindingTest, MnemonicsAreMarkedInTheCaptionAndAmpersandsStay) {
    EXPECT_EQ(captionText("Kartat", 'k'), "&Kartat");
    EXPECT_EQ(captionText("Disconnect", 'c'), "Dis&connect");
    EXPECT_EQ(captionText("Save & go", 'g'), "Save && &go");
    EXPECT_EQ(captionText("Backup", 'x'), "Backup");
    EXPECT_EQ(captionText("Backup", 0), "Backup");
}

TEST_F(BindingTest, ACheckBoxGoesBothWays) {
    int clicks = 0;
    form.chkTick.Click = [&] { ++clicks; };
    auto& box = find<QCheckBox>("chkTick");
    key(box, Qt::Key_Space, {}, " ");
    EXPECT_EQ(form.chkTick.Value, 1);
    EXPECT_EQ(clicks, 1);
    form.chkTick.Value = 0;
    EXPECT_TRUE(box.isChecked());
    frame();
    EXPECT_FALSE(box.isChecked());
    EXPECT_EQ(clicks, 2);
}

TEST_F(BindingTest, ACheckBoxThatTheProgramSetsBackShowsSo) {
    form.chkTick.Click = [this] { form.chkTick.Value = 0; };
    auto& box = find<QCheckBox>("chkTick");
    box.click();
    EXPECT_EQ(form.chkTick.Value, 0);
    EXPECT_FALSE(box.isChecked());
}

TEST_F(BindingTest, ACheckBoxThatTheProgramHasJustDisabledStaysAsItIs) {
    form.chkTick.Enabled = false;
    auto& box = find<QCheckBox>("chkTick");
    box.click();
    EXPECT_EQ(form.chkTick.Value, 0);
    EXPECT_FALSE(box.isChecked());
}

TEST_F(BindingTest, ArrowKeysChooseARowOfTheList) {
    int clicks = 0;
    form.cboList.Click = [&] { ++clicks; };
    auto& list = find<DropDown>("cboList");
    EXPECT_EQ(list.currentIndex(), -1);
    key(list, Qt::Key_Down);
    key(list, Qt::Key_Down);
    EXPECT_EQ(form.cboList.ListIndex, 1);
    EXPECT_EQ(form.cboList.Text(), "two");
    EXPECT_EQ(clicks, 2);
}

TEST_F(BindingTest, TheListShowsRowsNotesAndChoiceOfTheProgram) {
    form.cboList.AddItem("four");
    form.cboList.setItemToolTip(3, "/dev/ttyUSB0");
    form.cboList.ListIndex = 3;
    frame();
    auto& list = find<DropDown>("cboList");
    ASSERT_EQ(list.count(), 4);
    EXPECT_EQ(list.itemText(3), "four");
    EXPECT_EQ(list.itemData(3, Qt::ToolTipRole).toString(), "/dev/ttyUSB0");
    EXPECT_EQ(list.currentIndex(), 3);
    EXPECT_EQ(list.toolTip(), "/dev/ttyUSB0");
    form.cboList.Enabled = false;
    frame();
    EXPECT_EQ(list.toolTip(), "/dev/ttyUSB0");
    form.cboList.Clear();
    form.cboList.AddItem("only");
    frame();
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(list.itemText(0), "only");
    EXPECT_EQ(list.currentIndex(), -1);
}

TEST_F(BindingTest, OpeningTheListTellsTheProgramEachTimeBeforeItIsSeen) {
    int times = 0;
    form.cboList.GotFocus = [&] { form.cboList.setItemToolTip(0, "seen " + std::to_string(++times)); };
    auto& list = find<DropDown>("cboList");
    list.showPopup();
    EXPECT_EQ(list.itemData(0, Qt::ToolTipRole).toString(), "seen 1");
    list.hidePopup();
    list.showPopup();
    EXPECT_EQ(times, 2);
    list.hidePopup();
}

TEST_F(BindingTest, TheWheelLeavesAListWithoutFocusAlone) {
    auto& list = find<DropDown>("cboList");
    find("btnPress").setFocus();
    send(list, QWheelEvent({5, 5}, list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                           false));
    EXPECT_EQ(form.cboList.ListIndex, -1);
}

TEST_F(BindingTest, TypedTextReachesTheControlKeyByKey) {
    std::vector<int> keys;
    std::vector<int> released;
    form.txtCell.KeyPress = [&](int& character) { keys.push_back(character); };
    form.txtCell.KeyUp = [&](int code, int) { released.push_back(code); };
    type(find("txtCell(17)"), "a1");
    EXPECT_EQ(form.txtCell.Text.get(), "a1");
    EXPECT_THAT(keys, ElementsAre('a', '1'));
    EXPECT_THAT(released, ElementsAre('A', '1'));
}

TEST_F(BindingTest, AHandlerDropsOrChangesAKey) {
    form.txtCell.KeyPress = [](int& character) {
        character = character == 'x' ? 0 : character == ',' ? '.' : character;
    };
    type(find("txtCell(17)"), "1x,5");
    EXPECT_EQ(form.txtCell.Text.get(), "1.5");
    EXPECT_EQ(find<QLineEdit>("txtCell(17)").text(), "1.5");
}

TEST_F(BindingTest, BackspaceIsACharacterThatAHandlerCanDrop) {
    form.txtCell.Text = "12";
    frame();
    auto& box = find<QLineEdit>("txtCell(17)");
    box.setCursorPosition(2);
    key(box, Qt::Key_Backspace, {}, "\b");
    EXPECT_EQ(form.txtCell.Text.get(), "1");
    form.txtCell.KeyPress = [](int& character) { character = character == 8 ? 0 : character; };
    key(box, Qt::Key_Backspace, {}, "\b");
    EXPECT_EQ(form.txtCell.Text.get(), "1");
}

TEST_F(BindingTest, ALockedBoxTakesKeysButNoText) {
    std::vector<int> codes;
    form.txtCell.KeyDown = [&](int code, int) { codes.push_back(code); };
    form.txtCell.Text = "7";
    form.txtCell.Locked = true;
    frame();
    auto& box = find("txtCell(17)");
    key(box, Qt::Key_Plus, Qt::ShiftModifier, "+");
    EXPECT_EQ(form.txtCell.Text.get(), "7");
    EXPECT_THAT(codes, ElementsAre(187));
}

TEST_F(BindingTest, TextThatAHandlerPutsInPlaceOfTheTypedOneIsSeenAtOnce) {
    form.txtCell.Change = [this] {
        if (form.txtCell.Text.get() == "12") {
            form.txtCell.Text = "99";
        }
    };
    type(find("txtCell(17)"), "12");
    EXPECT_EQ(find<QLineEdit>("txtCell(17)").text(), "99");
    type(find("txtCell(17)"), "3");
    EXPECT_EQ(form.txtCell.Text.get(), "993");
}

TEST_F(BindingTest, ComposedCharactersPassTheSameFilter) {
    form.txtCell.KeyPress = [](int& character) { character = character == 0xE4 ? 0 : character; };
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("öä"));
    QApplication::sendEvent(&find("txtCell(17)"), &composed);
    EXPECT_EQ(form.txtCell.Text.get(), "ö");
}

TEST_F(BindingTest, PropertiesThatAllControlsHaveAreShown) {
    form.btnPress.ToolTipText = "Starts";
    form.txtCell.Visible = false;
    form.chkTick.Enabled = false;
    frame();
    EXPECT_EQ(find("btnPress").toolTip(), "Starts");
    EXPECT_TRUE(find("txtCell(17)").isHidden());
    EXPECT_FALSE(find("chkTick").isEnabled());
}

TEST_F(BindingTest, AButtonWithoutCaptionIsKnownByItsToolTip) {
    form.btnPress.ToolTipText = "Big readout";
    form.btnPress.Caption = "x";
    form.btnPress.Caption = "";
    frame();
    EXPECT_EQ(find("btnPress").accessibleName(), "Big readout");
}

TEST_F(BindingTest, FixedColoursAreTheirOwnAndSystemColoursThePalettes) {
    form.txtCell.ForeColor = controls::kBlue;
    form.txtCell.BackColor = 0x00A0FF;
    frame();
    auto& box = find("txtCell(17)");
    EXPECT_EQ(box.palette().color(QPalette::Text), QColor(0, 0, 255));
    EXPECT_EQ(box.palette().color(QPalette::Base), QColor(255, 160, 0));
    form.txtCell.ForeColor = controls::kWindowText;
    form.txtCell.BackColor = controls::kButtonFace;
    frame();
    EXPECT_EQ(box.palette().color(QPalette::Text), view().palette().color(QPalette::Text));
    EXPECT_EQ(box.palette().color(QPalette::Base), QPalette().color(QPalette::Window));
}

TEST_F(BindingTest, AFrameHidesAndDisablesWhatStandsInIt) {
    form.fraGroup.Enabled = false;
    frame();
    EXPECT_FALSE(find("btnInside").isEnabled());
    form.fraGroup.Left = -5000;
    frame();
    EXPECT_FALSE(find("btnInside").isVisible());
    form.fraGroup.Left = 0;
    frame();
    EXPECT_TRUE(find("btnInside").isVisible());
}

TEST_F(BindingTest, AFrameShowsItsCaption) {
    form.fraGroup.Caption = "R & D";
    frame();
    EXPECT_EQ(find<QGroupBox>("fraGroup").title(), "R && D");
}

TEST_F(BindingTest, OptionsExcludeEachOtherAsTheProgramSays) {
    std::vector<int> clicks;
    for (int i = 0; i < 2; ++i) {
        form.optChoice(i).Click = [&clicks, i] { clicks.push_back(i); };
    }
    auto& first = find<QRadioButton>("optChoice(0)");
    auto& second = find<QRadioButton>("optChoice(1)");
    first.click();
    EXPECT_TRUE(form.optChoice(0).Value);
    second.click();
    EXPECT_FALSE(form.optChoice(0).Value);
    EXPECT_FALSE(first.isChecked());
    EXPECT_TRUE(second.isChecked());
    EXPECT_THAT(clicks, ElementsAre(0, 1));
    form.optChoice(1).Value = false;
    frame();
    EXPECT_FALSE(first.isChecked());
    EXPECT_FALSE(second.isChecked());
}

TEST_F(BindingTest, PressingTheChosenOptionLeavesItChosen) {
    auto& option = find<QRadioButton>("optChoice(0)");
    option.click();
    option.click();
    EXPECT_TRUE(form.optChoice(0).Value);
    EXPECT_TRUE(option.isChecked());
}

TEST_F(BindingTest, AnOptionThatTheProgramHasJustDisabledStaysAsItIs) {
    form.optChoice(0).Enabled = false;
    auto& option = find<QRadioButton>("optChoice(0)");
    option.click();
    EXPECT_FALSE(form.optChoice(0).Value);
    EXPECT_FALSE(option.isChecked());
}

TEST_F(BindingTest, ATabIsChosenByKeysAndByTheProgram) {
    int clicks = 0;
    form.tabPages.SelectedItem = 1;
    form.tabPages.Click = [&] { ++clicks; };
    frame();
    auto& tabs = find<QTabBar>("tabPages");
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.tabText(1), "Ignition");
    key(tabs, Qt::Key_Right);
    EXPECT_EQ(form.tabPages.SelectedItem, 2);
    EXPECT_EQ(clicks, 1);
    form.tabPages.SelectedItem = 1;
    frame();
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_EQ(clicks, 2);
}

TEST_F(BindingTest, ATabThatTheProgramSetsBackIsShownSo) {
    form.tabPages.SelectedItem = 1;
    form.tabPages.Click = [this] { form.tabPages.SelectedItem = 1; };
    frame();
    auto& tabs = find<QTabBar>("tabPages");
    tabs.setCurrentIndex(1);
    EXPECT_EQ(form.tabPages.SelectedItem, 1);
    EXPECT_EQ(tabs.currentIndex(), 0);
}

TEST_F(BindingTest, AContainerGoesOutOfSightWithItsControl) {
    EXPECT_TRUE(find("picPage").isVisible());
    form.picPage.Left = -20000;
    frame();
    EXPECT_FALSE(find("picPage").isVisible());
}

TEST_F(BindingTest, AProgressBarIsSeenOnlyWhileSomethingGoesOn) {
    auto& bar = find<QProgressBar>("prgDone");
    EXPECT_FALSE(bar.isVisible());
    form.prgDone.start(160);
    form.prgDone.Value = 40;
    frame();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.maximum(), 160);
    EXPECT_EQ(bar.value(), 40);
    form.prgDone.stop();
    frame();
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(BindingTest, FontsOfTheProgramAreInProportionToTheTextsAround) {
    const int usual = QFontInfo(view().font()).pixelSize();
    form.btnPress.FontSize = 16;
    form.btnPress.FontBold = true;
    frame();
    EXPECT_EQ(QFontInfo(find("btnPress").font()).pixelSize(), 2 * usual);
    EXPECT_TRUE(find("btnPress").font().bold());
    form.btnPress.FontSize = 8;
    form.btnPress.FontBold = false;
    frame();
    EXPECT_EQ(QFontInfo(find("btnPress").font()).pixelSize(), usual);
    EXPECT_FALSE(find("btnPress").font().bold());
}

TEST_F(BindingTest, ALampShowsItsPicture) {
    form.imgLamp.Shown = controls::Picture::Green;
    frame();
    auto& lamp = find<Lamp>("imgLamp");
    const QColor middle = lamp.grab().toImage().pixelColor(lamp.rect().center());
    EXPECT_GT(middle.green(), middle.red() + 80);
    form.imgLamp.Shown = controls::Picture::Grey;
    frame();
    const QColor off = lamp.grab().toImage().pixelColor(lamp.rect().center());
    EXPECT_LT(std::abs(off.green() - off.red()), 20);
}

TEST_F(BindingTest, ALabelNamesTheWidgetBesideIt) {
    form.lblLive.Caption = "Choke";
    frame();
    EXPECT_EQ(find("imgLamp").accessibleName(), "Choke");
}

TEST_F(BindingTest, FocusGoesFromTheUserToTheProgram) {
    std::vector<std::string> heard;
    form.txtCell.GotFocus = [&] { heard.emplace_back("got"); };
    form.txtCell.LostFocus = [&] { heard.emplace_back("lost"); };
    find("txtCell(17)").setFocus();
    EXPECT_EQ(form.activeControl(), &form.txtCell);
    find("btnPress").setFocus();
    EXPECT_EQ(form.activeControl(), &form.btnPress);
    EXPECT_THAT(heard, ElementsAre("got", "lost"));
}

TEST_F(BindingTest, FocusGoesFromTheProgramToTheScreen) {
    form.setFocus(&form.txtCell);
    EXPECT_EQ(view().focusWidget(), &find("txtCell(17)"));
    form.setFocus(nullptr);
    EXPECT_EQ(view().focusWidget(), nullptr);
}

TEST_F(BindingTest, AHandlerMovesTheFocusOn) {
    form.txtCell.GotFocus = [this] { form.setFocus(&form.chkTick); };
    find("txtCell(17)").setFocus();
    EXPECT_EQ(form.activeControl(), &form.chkTick);
    EXPECT_EQ(view().focusWidget(), &find("chkTick"));
}

TEST_F(BindingTest, AMouseButtonIsToldInTwips) {
    std::vector<double> heard;
    form.txtCell.MouseUp = [&](int button, int shift, double x, double y) {
        heard = {static_cast<double>(button), static_cast<double>(shift), x, y};
    };
    click(find("txtCell(17)"), {10, 4}, Qt::ShiftModifier);
    EXPECT_THAT(heard, ElementsAre(1, 1, 150, 60));
}

TEST_F(BindingTest, ALabelWithAHandlerCanBeClicked) {
    int clicks = 0;
    click(find("lblLive"));
    form.lblLive.Click = [&] { ++clicks; };
    click(find("lblLive"));
    EXPECT_EQ(clicks, 1);
}

TEST_F(BindingTest, TheWindowHearsAKeyOfTheFocusedControlOnce) {
    find("chkTick").setFocus();
    key(find("chkTick"), Qt::Key_F5);
    EXPECT_THAT(form.formKeys, ElementsAre(116));
}

}  // namespace
}  // namespace korvane::views
