// A tuner at the settings window with a real mouse and real keys.
#include <QProgressBar>

#include <algorithm>
#include <gmock/gmock.h>
#include <utility>

#include "app/SettingsStory.h"
#include "views/Events.h"

namespace korvane::app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// From a press of the button: 30 ms, the 600 ms in which the block is taken in, and 133 pauses behind 130 reads.
constexpr int kReadTakes = 30 + 600 + 133 * 150;
constexpr int kTransit = 10;  // of the block on the line, at most

// What the two windows look like at some moment.
struct Look {
    bool bar;
    int value;
    int paintings;
};

TEST_F(SettingsStory, AFullReadShowsItselfAndLeavesTheWindowsUsable) {
    connectAndOpen();
    auto& bar = find<QProgressBar>(misc_, "prgLoad");
    auto& mainBar = find<QProgressBar>(main_, "prgSettings");
    const views::PaintCounter status(find(misc_, "status"));
    const views::PaintCounter trend(find(main_, "picTrend"));
    std::vector<Look> looks;
    const auto look = [&] {
        EXPECT_EQ(mainBar.isVisible(), bar.isVisible());
        EXPECT_EQ(mainBar.value(), bar.value());
        looks.push_back({bar.isVisible(), bar.value(), status.count()});
    };
    in(1000, look);
    in(5000, look);
    in(6000, [&] {
        chooseTab(5);
        EXPECT_TRUE(find(misc_, "picOptions(4)").isVisible());
        EXPECT_FALSE(find(misc_, "picOptions(0)").isVisible());
        EXPECT_FALSE(find(misc_, "txtInjAdv(0)").isVisible());
        type("txtNTC1", "99");
        EXPECT_EQ(shown("txtNTC1"), "99");
    });
    in(6000 + 2 * kBeat, [&] {
        const QPoint middle = find(misc_, "txtNTC1").mapTo(views_.viewOf(misc_), QPoint(2, 2));
        EXPECT_EQ(views_.viewOf(misc_)->childAt(middle), &find(misc_, "txtNTC1"));
    });
    in(10000, look);
    in(15000, look);
    looks.push_back({bar.isVisible(), bar.value(), status.count()});
    main_.TimerRequestData.Enabled = false;
    host_.pump.wait(kBeat);  // the last answer of the fast poll has come
    const int began = now();
    const auto received = main_.bytesReceived;
    press("btnLoad");
    EXPECT_GE(now() - began, kReadTakes);
    EXPECT_LE(now() - began, kReadTakes + kTransit);
    const auto all = main_.bytesReceived - received;
    host_.pump.wait(2 * kBeat);
    looks.push_back({bar.isVisible(), bar.value(), status.count()});

    std::vector<bool> bars(looks.size());
    std::transform(looks.begin(), looks.end(), bars.begin(), [](const Look& each) { return each.bar; });
    EXPECT_THAT(bars, ElementsAre(false, true, true, true, true, false));
    for (std::size_t i = 2; i < 5; ++i) {
        EXPECT_GT(looks[i].value, looks[i - 1].value);
        EXPECT_GT(looks[i].paintings, looks[i - 1].paintings) << "the caption has changed";
    }
    EXPECT_EQ(bar.maximum(), 130);
    EXPECT_GT(trend.count(), 4) << "the main window paints too";
    // The block, 128 bytes and two words; and from the block on a poll each 500 ms: 39 live frames.
    EXPECT_EQ(all, 22 + 128 * 6 + 2 * 7 + 39 * 22);
    EXPECT_EQ(shown("txtNTC1"), "22") << "what was typed before its reply came is gone";
    EXPECT_EQ(misc_.Caption.get(), "Receiving data from target device!:  Received 100%");
    EXPECT_TRUE(polls());
    EXPECT_EQ(main_.TimerRequestData.Interval, 10);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(SettingsStory, ValuesOfEveryKindAreChangedSavedAndReadAgain) {
    connectAndOpen();
    const auto before = eeprom();

    chooseTab(1);
    type("txtIdleAdv(2)", "78");
    save("btnSaveIdleAdv");
    press("txtchargetime");
    key(Qt::Key_Plus);
    key(Qt::Key_Plus);
    EXPECT_EQ(shown("txtchargetime"), "3.54");
    save("btnSaveChargeTime");
    type("txtMotorBrakeLow", "1700");
    save("btnSaveMotorbrake");

    chooseTab(2);
    press("txtVolt(0)");
    key(Qt::Key_Left);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(shown("txtVolt(3)"), "0.2778");
    save("btnSaveVolt");
    press("txtAccel(0)");
    key(Qt::Key_Left);
    key(Qt::Key_Minus);
    EXPECT_EQ(shown("txtAccel(9)"), "0.0972");
    save("btnAccel");
    EXPECT_TRUE(polls());

    chooseTab(3);
    press("OptionPWM1(2)");
    save("btnPWMmode");
    type("txtIdleValveSetpoint", "1100");
    save("btnSaveIdleValve");

    chooseTab(4);
    press("optLambdaType(1)");
    save("btnSaveLambdaType");
    chooseTab(5);
    save("btn0thr");
    chooseTab(6);
    press("chkMisc2(3)");
    save("btnSaveMisc3");
    chooseTab(7);
    type("txtVolt1Warning", "15");
    type("txtColdRPMlimit", "4700");
    save("btnSaveWarnings");

    chooseTab(8);
    type("txtLaunchcontrol", "5000");
    press("txtALS_fuel");
    key(Qt::Key_Plus);
    find(misc_, "Combolaunchmode").setFocus();
    key(Qt::Key_Down);
    save("btnSaveALSsettings");

    const std::map<int, int> changed{
        {1, 0x14 + 8},                           // and antilag
        {13, 177},                               // charge time
        {359, 7},                                // 8 less a step
        {364, 20},                               // 18 and two steps
        {365, 41},                               // 20 to 230, at 10 %
        {394, 78},                               // idle ignition
        {399, 4 + 16},                           // shift light, boost valve
        {504, 1100 % 256},  {505, 1100 / 256},   // before: 900
        {507, 1700 % 256},  {508, 1700 / 256},   // before: 1500
        {511, 5000 % 256},  {512, 5000 / 256},   // before: 4500
        {518, 0},                                // narrow band
        {968, 4},                                // 20 %
        {971, 3},                                // one row further
        {984, 8},                                // 7.5, to the even number
        {1005, 4700 % 256}, {1006, 4700 / 256},  // before: 4500
    };
    EXPECT_EQ(changedSince(before), changed);

    for (auto* box :
         {&misc_.txtIdleAdv(2), &misc_.txtMotorBrakeLow, &misc_.txtIdleValveSetpoint, &misc_.txtLaunchcontrol}) {
        box->Text = "";
    }
    press("btnLoad");
    host_.pump.wait(2 * kBeat);
    const std::vector<std::pair<std::string, std::string>> boxes{
        {"txtIdleAdv(2)", "78"},   {"txtchargetime", "3.54"},   {"txtMotorBrakeLow", "1700"},
        {"txtVolt(3)", "0.2778"},  {"txtAccel(9)", "0.0972"},   {"txtIdleValveSetpoint", "1100"},
        {"txtVolt1Warning", "16"}, {"txtColdRPMlimit", "4700"}, {"txtLaunchcontrol", "5000"},
        {"txtALS_fuel", "20"}};
    for (const auto& [box, text] : boxes) {
        EXPECT_EQ(shown(box), text) << box;
    }
    EXPECT_TRUE(find<QAbstractButton>(misc_, "OptionPWM1(2)").isChecked());
    EXPECT_TRUE(find<QAbstractButton>(misc_, "optLambdaType(1)").isChecked());
    EXPECT_TRUE(find<QAbstractButton>(misc_, "chkMisc2(3)").isChecked());
    EXPECT_EQ(misc_.lblMINTHR.Caption.get(), "41");
    EXPECT_EQ(misc_.Combolaunchmode.ListIndex, 3);
    EXPECT_EQ(changedSince(before), changed) << "a read writes nothing";
    EXPECT_THAT(messages(), IsEmpty());
}

// The read goes on to its end as with a closed port; what it had not reached stays as it was.
TEST_F(SettingsStory, ThePortIsClosedInTheMiddleOfAFullRead) {
    connectAndOpen();
    for (auto* box : {&misc_.txtMotorBrakeLow, &misc_.txtAccelLimiterValue}) {
        box->Text = "mine";
    }
    in(8000, [&] {
        EXPECT_EQ(shown("txtMotorBrakeLow"), "1500");
        press(main_, "btnConnect");
        EXPECT_FALSE(main_.MSComm1.PortOpen());
    });
    double closedAt = 0;
    in(8100, [&] { closedAt = main_.bytesReceived; });
    const int began = now();
    press("btnLoad");
    EXPECT_GE(now() - began, kReadTakes);
    EXPECT_LE(now() - began, kReadTakes + kTransit);
    EXPECT_EQ(misc_.Caption.get(), "Receiving data from target device!:  Received 100%");
    EXPECT_EQ(shown("txtAccelLimiterValue"), "mine");
    EXPECT_EQ(main_.bytesReceived, closedAt);
    EXPECT_TRUE(polls());
    EXPECT_EQ(main_.TimerRequestData.Interval, 10);
    host_.pump.wait(2 * kBeat);
    EXPECT_FALSE(find(misc_, "prgLoad").isVisible());
    EXPECT_FALSE(find(main_, "prgSettings").isVisible());
    EXPECT_THAT(messages(), IsEmpty());

    press(main_, "btnConnect");
    host_.pump.wait(100);
    press("btnLoad");
    EXPECT_EQ(shown("txtAccelLimiterValue"), "50") << "the next connection reads all";
}

TEST_F(SettingsStory, ThePortIsClosedInTheMiddleOfABackup) {
    connectAndOpen();
    auto& bar = find<QProgressBar>(main_, "prgEeprom");
    in(30000, [&] {
        EXPECT_TRUE(bar.isVisible());
        press(main_, "btnConnect");
        EXPECT_FALSE(main_.MSComm1.PortOpen());
    });
    in(31000, [&] { EXPECT_FALSE(find(main_, "btnUploadEEPROM").isEnabled()) << "the pass goes on"; });
    const int began = now();
    press(main_, "btnBackup");
    EXPECT_EQ(now() - began, 100 + 1111 * 125 + 100);
    EXPECT_THAT(messages(), ElementsAre(" EEPROM read error. Save not possible "));
    EXPECT_EQ(imageName(), "");
    EXPECT_TRUE(polls()) << "a backup starts the poll whatever it found";
    host_.pump.wait(2 * kBeat);
    EXPECT_FALSE(bar.isVisible());
    for (const char* button : {"btnKartat", "btnAsetukset", "btnBackup", "btnUploadEEPROM"}) {
        EXPECT_TRUE(find(main_, button).isEnabled()) << button;
    }
    EXPECT_EQ(caption("btnBackup"), "BackUp EEPROM");
}

TEST_F(SettingsStory, AnImageIsTakenAndPutBackWhileTheWindowsStayUsable) {
    connectAndOpen();
    const auto backedUp = eeprom();
    auto& bar = find<QProgressBar>(main_, "prgEeprom");
    const views::PaintCounter barPaints(bar);
    std::vector<int> values;
    int painted = 0;
    in(20000, [&] {
        values.push_back(bar.value());
        painted = barPaints.count();
        chooseTab(9);
        EXPECT_TRUE(find(misc_, "picOptions(8)").isVisible());
        EXPECT_FALSE(find(main_, "btnAsetukset").isEnabled());
        EXPECT_FALSE(polls());
    });
    in(100000, [&] {
        values.push_back(bar.value());
        EXPECT_GT(barPaints.count(), painted);
    });
    press(main_, "btnBackup");
    // 14 and 72 tens of 1375 ms have passed behind the first pause.
    EXPECT_THAT(values, ElementsAre(14, 72));
    EXPECT_THAT(messages(), ElementsAre(HasSubstr(" EEPROM saved to file ")));
    ASSERT_NE(imageName(), "");
    EXPECT_TRUE(polls());

    type("TextOs", "700");
    type("TextArvo", "33");
    save("Command1");
    type("TextOs", "2");
    type("TextArvo", "6000");
    save("btnWriteEE16bit");
    EXPECT_EQ(changedSince(backedUp), (std::map<int, int>{{2, 6000 % 256}, {3, 6000 / 256}, {700, 33}}));

    host_.dialogs.answerFile(imageName());
    in(20000, [&] {
        EXPECT_TRUE(bar.isVisible());
        EXPECT_FALSE(polls());
        chooseTab(1);
        EXPECT_TRUE(find(misc_, "picOptions(0)").isVisible());
    });
    press(main_, "btnUploadEEPROM");
    EXPECT_THAT(changedSince(backedUp), IsEmpty());
    EXPECT_TRUE(polls());
    EXPECT_EQ(caption("btnUploadEEPROM"), "Upload EEPROM");
    EXPECT_THAT(messages(), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
