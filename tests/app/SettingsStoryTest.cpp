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

class FullReadStory : public SettingsStory {
protected:
    FullReadStory() { connectAndOpen(); }

    // By the button, and in the time that the plan takes.
    void readAll() {
        const int began = now();
        press("btnLoad");
        EXPECT_GE(now() - began, kReadTakes);
        EXPECT_LE(now() - began, kReadTakes + kTransit);
    }
    void expectReadEnded() {
        EXPECT_EQ(misc_.Caption.get(), "Receiving data from target device!:  Received 100%");
        EXPECT_TRUE(polls());
        EXPECT_EQ(main_.TimerRequestData.Interval, 10);
        EXPECT_THAT(messages(), IsEmpty());
    }
};

// What the two windows look like at some moments of a read.
class VisibleReadStory : public FullReadStory {
protected:
    struct Look {
        bool bar;
        int value;
        int paintings;
    };

    void look() {
        EXPECT_EQ(mainBar_.isVisible(), bar_.isVisible());
        EXPECT_EQ(mainBar_.value(), bar_.value());
        looks_.push_back({bar_.isVisible(), bar_.value(), status_.count()});
    }
    void typeOnAnotherPage() {
        chooseTab(5);
        EXPECT_TRUE(find(misc_, "picOptions(4)").isVisible());
        EXPECT_FALSE(find(misc_, "picOptions(0)").isVisible());
        EXPECT_FALSE(find(misc_, "txtInjAdv(0)").isVisible());
        type("txtNTC1", "99");
        EXPECT_EQ(shown("txtNTC1"), "99");
    }
    void expectInFront(const std::string& name) {
        const QPoint middle = find(misc_, name).mapTo(views_.viewOf(misc_), QPoint(2, 2));
        EXPECT_EQ(views_.viewOf(misc_)->childAt(middle), &find(misc_, name));
    }
    // Without the fast poll, whose last answer has come. What the read receives.
    double readWithoutPoll() {
        main_.TimerRequestData.Enabled = false;
        host_.pump.wait(kBeat);
        const auto before = main_.bytesReceived;
        readAll();
        return main_.bytesReceived - before;
    }
    // The first look is before the read, the last behind it.
    void expectProgress() const {
        std::vector<bool> bars(looks_.size());
        std::transform(looks_.begin(), looks_.end(), bars.begin(), [](const Look& each) { return each.bar; });
        EXPECT_THAT(bars, ElementsAre(false, true, true, true, true, false));
        for (std::size_t i = 2; i < 5; ++i) {
            EXPECT_GT(looks_.at(i).value, looks_.at(i - 1).value);
            EXPECT_GT(looks_.at(i).paintings, looks_.at(i - 1).paintings) << "the caption has changed";
        }
        EXPECT_EQ(bar_.maximum(), 130);
    }

    QProgressBar& bar_ = find<QProgressBar>(misc_, "prgLoad");
    QProgressBar& mainBar_ = find<QProgressBar>(main_, "prgSettings");
    views::PaintCounter status_{find(misc_, "status")};
    views::PaintCounter trend_{find(main_, "picTrend")};
    std::vector<Look> looks_;
};

TEST_F(VisibleReadStory, AFullReadShowsItselfAndLeavesTheWindowsUsable) {
    look();
    for (const int moment : {1000, 5000, 10000, 15000}) {
        in(moment, [this] { look(); });
    }
    in(6000, [this] { typeOnAnotherPage(); });
    in(6000 + 2 * kBeat, [this] { expectInFront("txtNTC1"); });
    const auto received = readWithoutPoll();
    host_.pump.wait(2 * kBeat);
    look();
    expectProgress();
    EXPECT_GT(trend_.count(), 4) << "the main window paints too";
    // The block, 128 bytes and two words; and from the block on a poll each 500 ms: 39 live frames.
    EXPECT_EQ(received, 22 + 128 * 6 + 2 * 7 + 39 * 22);
    EXPECT_EQ(shown("txtNTC1"), "22") << "what was typed before its reply came is gone";
    expectReadEnded();
}

// Values of every kind, page by page.
class ChangedValuesStory : public FullReadStory {
protected:
    void changeIgnition() {
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
    }
    void changeInjection() {
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
    }
    void changeOutputsAndSensors() {
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
    }
    void changeFlagsAndWarnings() {
        chooseTab(6);
        press("chkMisc2(3)");
        save("btnSaveMisc3");
        chooseTab(7);
        type("txtVolt1Warning", "15");
        type("txtColdRPMlimit", "4700");
        save("btnSaveWarnings");
    }
    void changeLaunch() {
        chooseTab(8);
        type("txtLaunchcontrol", "5000");
        press("txtALS_fuel");
        key(Qt::Key_Plus);
        find(misc_, "Combolaunchmode").setFocus();
        key(Qt::Key_Down);
        save("btnSaveALSsettings");
    }
    void readAgain() {
        for (auto* box :
             {&misc_.txtIdleAdv(2), &misc_.txtMotorBrakeLow, &misc_.txtIdleValveSetpoint, &misc_.txtLaunchcontrol}) {
            box->Text = "";
        }
        press("btnLoad");
        host_.pump.wait(2 * kBeat);
    }
    void expectNewValuesOnShow() {
        const std::vector<std::pair<std::string, std::string>> boxes{
            {"txtIdleAdv(2)", "78"},   {"txtchargetime", "3.54"},   {"txtMotorBrakeLow", "1700"},
            {"txtVolt(3)", "0.2778"},  {"txtAccel(9)", "0.0972"},   {"txtIdleValveSetpoint", "1100"},
            {"txtVolt1Warning", "16"}, {"txtColdRPMlimit", "4700"}, {"txtLaunchcontrol", "5000"},
            {"txtALS_fuel", "20"}};
        for (const auto& [box, text] : boxes) {
            EXPECT_EQ(shown(box), text) << box;
        }
        for (const char* button : {"OptionPWM1(2)", "optLambdaType(1)", "chkMisc2(3)"}) {
            EXPECT_TRUE(find<QAbstractButton>(misc_, button).isChecked()) << button;
        }
        EXPECT_EQ(misc_.lblMINTHR.Caption.get(), "41");
        EXPECT_EQ(misc_.Combolaunchmode.ListIndex, 3);
    }

    // Address and byte.
    const std::map<int, int> changed_{
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
};

TEST_F(ChangedValuesStory, ValuesOfEveryKindAreChangedSavedAndReadAgain) {
    const auto before = eeprom();
    changeIgnition();
    changeInjection();
    changeOutputsAndSensors();
    changeFlagsAndWarnings();
    changeLaunch();
    EXPECT_EQ(changedSince(before), changed_);
    readAgain();
    expectNewValuesOnShow();
    EXPECT_EQ(changedSince(before), changed_) << "a read writes nothing";
    EXPECT_THAT(messages(), IsEmpty());
}

// The read goes on to its end as with a closed port; what it had not reached stays as it was.
TEST_F(FullReadStory, ThePortIsClosedInTheMiddle) {
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
    readAll();
    expectReadEnded();
    EXPECT_EQ(shown("txtAccelLimiterValue"), "mine");
    EXPECT_EQ(main_.bytesReceived, closedAt);
    host_.pump.wait(2 * kBeat);
    EXPECT_FALSE(find(misc_, "prgLoad").isVisible());
    EXPECT_FALSE(find(main_, "prgSettings").isVisible());
}

TEST_F(FullReadStory, TheConnectionAfterOneThatWasClosedInTheMiddleReadsAll) {
    misc_.txtAccelLimiterValue.Text = "mine";
    in(8000, [&] { press(main_, "btnConnect"); });
    press("btnLoad");
    EXPECT_EQ(shown("txtAccelLimiterValue"), "mine");
    press(main_, "btnConnect");
    host_.pump.wait(100);
    press("btnLoad");
    EXPECT_EQ(shown("txtAccelLimiterValue"), "50");
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

class ImageStory : public SettingsStory {
protected:
    ImageStory() { connectAndOpen(); }

    void lookAtAnotherPage() {
        values_.push_back(bar_.value());
        painted_ = paints_.count();
        chooseTab(9);
        EXPECT_TRUE(find(misc_, "picOptions(8)").isVisible());
        EXPECT_FALSE(find(main_, "btnAsetukset").isEnabled());
        EXPECT_FALSE(polls());
    }
    void lookAtTheBar() {
        values_.push_back(bar_.value());
        EXPECT_GT(paints_.count(), painted_);
    }
    void backUp() {
        in(20000, [this] { lookAtAnotherPage(); });
        in(100000, [this] { lookAtTheBar(); });
        press(main_, "btnBackup");
        // 14 and 72 tens of 1375 ms have passed behind the first pause.
        EXPECT_THAT(values_, ElementsAre(14, 72));
        EXPECT_THAT(messages(), ElementsAre(HasSubstr(" EEPROM saved to file ")));
        EXPECT_NE(imageName(), "");
        EXPECT_TRUE(polls());
    }
    void writeAByteAndAWord() {
        type("TextOs", "700");
        type("TextArvo", "33");
        save("Command1");
        type("TextOs", "2");
        type("TextArvo", "6000");
        save("btnWriteEE16bit");
    }
    void putBack() {
        host_.dialogs.answerFile(imageName());
        in(20000, [this] {
            EXPECT_TRUE(bar_.isVisible());
            EXPECT_FALSE(polls());
            chooseTab(1);
            EXPECT_TRUE(find(misc_, "picOptions(0)").isVisible());
        });
        press(main_, "btnUploadEEPROM");
        EXPECT_TRUE(polls());
        EXPECT_EQ(caption("btnUploadEEPROM"), "Upload EEPROM");
        EXPECT_THAT(messages(), IsEmpty());
    }

    QProgressBar& bar_ = find<QProgressBar>(main_, "prgEeprom");
    views::PaintCounter paints_{bar_};
    int painted_ = 0;
    std::vector<int> values_;
};

TEST_F(ImageStory, AnImageIsTakenAndPutBackWhileTheWindowsStayUsable) {
    const auto backedUp = eeprom();
    backUp();
    writeAByteAndAWord();
    EXPECT_EQ(changedSince(backedUp), (std::map<int, int>{{2, 6000 % 256}, {3, 6000 / 256}, {700, 33}}));
    putBack();
    EXPECT_THAT(changedSince(backedUp), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
