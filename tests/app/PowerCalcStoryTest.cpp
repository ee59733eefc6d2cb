// A tuner at the tuning helper: with real widgets and the clock of the wall, and as a script in virtual time.
#include <QLineEdit>
#include <QPushButton>

#include <gmock/gmock.h>

#include "app/RealWindows.h"
#include "app/ScriptBench.h"
#include "performance/FrmPowerCalc.h"
#include "views/widgets/TextList.h"

namespace korvane::app {
namespace {

using platform::until;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

class PowerCalcStory : public RealWindows {
protected:
    void open() {
        QTest::mouseClick(views_.viewOf(window_)->findChild<QPushButton*>("btnTuningHelp"), Qt::LeftButton);
        for (auto* const loaded : windows_.loaded()) {
            if (auto* const found = dynamic_cast<performance::FrmPowerCalc*>(loaded)) {
                power_ = found;
            }
        }
        ASSERT_NE(power_, nullptr);
        view_ = views_.viewOf(*power_);
        view_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view_));
    }
    // Selects what stands in a box and types over it.
    void type(const char* box, const char* text) {
        auto* const edit = view_->findChild<QLineEdit*>(box);
        ASSERT_NE(edit, nullptr) << box;
        QTest::mouseClick(edit, Qt::LeftButton);
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, text);
    }
    void press(const char* name) {
        auto* const button = view_->findChild<QPushButton*>(name);
        ASSERT_NE(button, nullptr) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    [[nodiscard]] int lines() const { return power_->List1.ListCount(); }

    performance::FrmPowerCalc* power_ = nullptr;
    views::WindowView* view_ = nullptr;
};

// The engine idles; a timer that starts below idle and stops when its end is set below it too.
TEST_F(PowerCalcStory, APullIsTimedLoggedAndItsCarIsSaved) {
    program_.connectTo(2);
    window_.ComboRefresh.choose(0);
    open();
    type("txtStartRPM", "30000");
    type("txtUsedGear", "2");
    press("Command1");
    ASSERT_TRUE(until(pump_, [this] { return !power_->txtSpeed.Text.get().empty() && power_->txtSpeed.Text != "0"; }));
    EXPECT_EQ(lines(), 0);
    type("txtStartRPM", "10");
    ASSERT_TRUE(until(pump_, [this] { return power_->lbltimer.Caption != "0 ms"; }));
    EXPECT_EQ(lines(), 1);
    EXPECT_EQ(power_->imgLed.Shown.get(), controls::Picture::Green);

    dialogs_.answerFile((folder_.path() / "mine.par").string());
    press("Command2");
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / "mine.par"));
    type("txtStopRPM", "20");
    ASSERT_TRUE(until(pump_, [this] { return lines() == 3; }));
    const auto* const list = view_->findChild<views::TextList*>("List1");
    ASSERT_TRUE(until(pump_, [list] { return list->rowCount() == 3; }));
    EXPECT_THAT(list->text(2).toStdString(), MatchesRegex("Speed: .* Time: [0-9.]+ s"));
    EXPECT_THAT(folder_.read("mine.par.txt"), HasSubstr("    " + list->text(2).toStdString() + "\r\n"));

    view_->close();
    open();
    EXPECT_EQ(power_->txtUsedGear.Text.get(), "2") << "the saved car comes back";
    EXPECT_EQ(power_->txtStartRPM.Text.get(), "10");
}

class PowerCalcScript : public ScriptBench {
protected:
    [[nodiscard]] std::vector<std::string> run(const std::string& script, const std::string& ecu = "drive=pull") const {
        return goodRepliesTo(script, ecu);
    }
};

TEST_F(PowerCalcScript, APullOfTheVirtualEngineIsTimedAndKept) {
    const auto car = (folder_.path() / "car.par").string();
    const auto replies =
        run("click frmSarn2.btnConnect\n"
            "wait 23000\n"  // the read of the settings
            "messages\n"
            "click frmSarn2.btnTuningHelp\n"
            "controls frmPowerCalc\n"  // 4
            "get frmPowerCalc.imgLed.Picture\n"
            "get frmPowerCalc.txtVaihde(2).Text\n"
            "type frmPowerCalc.txtUsedGear 3\n"  // 7
            "file " +
            car +
            "\n"
            "click frmPowerCalc.Command2\n"
            "dialogs\n"  // 10
            "wait 60000\n"
            "get frmPowerCalc.List1.ListCount\n"  // 12
            "get frmPowerCalc.List1.List(0)\n"
            "get frmPowerCalc.List1.List(1)\n"
            "get frmPowerCalc.List1.List(2)\n"
            "choose frmPowerCalc.List1 2\n"
            "get frmPowerCalc.List1.ListIndex\n"  // 17
            "click frmPowerCalc.Command1\n"
            "get frmPowerCalc.List1.ListCount\n"
            "type frmPowerCalc.txtUsedGear 6\n"
            "wait 100\n"
            "get frmPowerCalc.List1.List(0)\n"  // 22
            "close frmPowerCalc\n"
            "click frmSarn2.btnTuningHelp\n"
            "get frmPowerCalc.txtUsedGear.Text\n"  // 25
            "get frmPowerCalc.Timer2.Enabled\n");
    ASSERT_EQ(replies.size(), 27U);
    EXPECT_EQ(
        replies[4],
        R"json(ok ["txtCarName","txtPera","txtVaihde(0..4)","txtUsedGear","txtPaino","txtrengas","txtStartRPM",)json"
        R"json("txtStopRPM","txtSpeed","lbltimer","imgLed","List1","Command1","Command2","Command3","Timer1",)json"
        R"json("Timer2"])json");
    EXPECT_EQ(replies[5], R"(ok "grey")");
    EXPECT_EQ(replies[6], R"(ok "1.542")");
    EXPECT_EQ(replies[10], R"(ok [{"kind":"save","title":"Save Car Settings","filter":"All Files (*.par)|*.par"}])");
    EXPECT_GE(std::stoi(replies[12].substr(3)), 3);
    EXPECT_THAT(replies[13], StartsWith(R"(ok "Timer Started: )"));
    EXPECT_THAT(replies[14], StartsWith(R"(ok "Stopped: )"));
    EXPECT_THAT(replies[15], StartsWith(R"(ok "Speed: )"));
    EXPECT_EQ(replies[17], "ok 2");
    EXPECT_EQ(replies[19], "ok 0");
    EXPECT_EQ(replies[22], R"(ok "timer 9")");
    EXPECT_EQ(replies[25], R"(ok "3")");
    EXPECT_EQ(replies[26], "ok false");
    const auto summary = replies[15].substr(4, replies[15].size() - 5);
    EXPECT_THAT(folder_.read("car.par.txt"), HasSubstr("    " + summary + "\r\n"));
    const auto preferences = folder_.read("preferences.ini");
    EXPECT_THAT(preferences, StartsWith("[Software\\KorvaneTuner\\Settings]\n"));
    EXPECT_THAT(preferences, HasSubstr("\nCarFile=" + car + "\n"));
}

TEST_F(PowerCalcScript, RubbishInTheBoxesEndsNothing) {
    const auto replies =
        run("click frmSarn2.btnTuningHelp\n"
            "set frmSarn2.lblValue(0).Caption \"1.#INF\"\n"
            "type frmPowerCalc.txtUsedGear 1\n"
            "type frmPowerCalc.txtPera words\n"
            "wait 50\n"
            "get frmPowerCalc.List1.ListCount\n"  // 5
            "set frmPowerCalc.txtPera.Text \"1e-308\"\n"
            "set frmPowerCalc.txtrengas.Text \"1e308\"\n"
            "set frmPowerCalc.txtStartRPM.Text \"-1e308\"\n"
            "wait 1000\n"
            "file " +
                folder_.path().string() +
                "\n"
                "click frmPowerCalc.Command3\n"
                "file " +
                folder_.path().string() +
                "\n"
                "click frmPowerCalc.Command2\n"
                "messages\n"  // 14
                "get frmPowerCalc.Visible\n",
            "drive=off");
    ASSERT_EQ(replies.size(), 16U);
    EXPECT_THAT(replies[14], HasSubstr("The car file can't be read"));
    EXPECT_THAT(replies[14], HasSubstr("Error tablesave: "));
    EXPECT_EQ(replies[15], "ok true");
}

}  // namespace
}  // namespace korvane::app
