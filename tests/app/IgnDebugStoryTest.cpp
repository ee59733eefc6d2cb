// A tuner at the ignition debug window: with real widgets and the clock of the wall, and as a script in virtual time.
#include <QLineEdit>
#include <QPushButton>

#include <gmock/gmock.h>

#include "app/RealWindows.h"
#include "app/ScriptBench.h"
#include "live/FrmIGNDebug.h"
#include "views/widgets/values/Readout.h"

namespace korvane::app {
namespace {

using platform::until;
using testing::HasSubstr;
using testing::StartsWith;

class IgnDebugStory : public RealWindows {
protected:
    void open() {
        QTest::mouseClick(views_.viewOf(window_)->findChild<QPushButton*>("Command5"), Qt::LeftButton);
        debug_ = dynamic_cast<live::FrmIGNDebug*>(windows_.loaded().back());
        ASSERT_NE(debug_, nullptr);
        view_ = views_.viewOf(*debug_);
        view_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view_));
    }
    [[nodiscard]] QString shown(const char* label) const { return view_->findChild<views::Readout*>(label)->text(); }

    live::FrmIGNDebug* debug_ = nullptr;
    views::WindowView* view_ = nullptr;
};

TEST_F(IgnDebugStory, ThePollByKeyboardAndBackToLiveData) {
    program_.connectTo(2);
    ASSERT_TRUE(until(pump_, [this] { return window_.lblValue(0).Caption != "0"; }));
    open();
    QTest::keyClick(view_, Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(until(pump_, [this] { return shown("lblIgnDeb") == "21845" || shown("lblIgnDeb") == "43690"; }));
    EXPECT_FALSE(window_.TimerRequestData.Enabled);
    EXPECT_EQ(shown("lblIgnErr"), "0");
    QTest::keyClick(view_, Qt::Key_T, Qt::AltModifier);
    ASSERT_TRUE(until(pump_, [this] { return window_.TimerRequestData.Enabled.get(); }));
    EXPECT_FALSE(debug_->TimerIGN.Enabled);
    auto* const count = view_->findChild<QLineEdit*>("txtSparks");
    QTest::mouseClick(count, Qt::LeftButton);
    QTest::keyClick(count, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(count, "3");
    EXPECT_EQ(debug_->txtSparks.Text.get(), "3");
    const auto received = window_.bytesReceived;
    QTest::keyClick(view_, Qt::Key_C, Qt::AltModifier);
    ASSERT_TRUE(until(pump_, [&] { return window_.bytesReceived > received; })) << "live data come";
    EXPECT_THAT(log_.lines, testing::IsEmpty());
    QTest::keyClick(view_, Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(until(pump_, [this] { return debug_->TimerIGN.Enabled.get(); }));
    view_->close();
    EXPECT_EQ(program_.windows().frmIGNDebug, nullptr);
    EXPECT_FALSE(window_.TimerRequestData.Enabled) << "closing it while it polls leaves the live poll off";
    QTest::mouseClick(views_.viewOf(window_)->findChild<QPushButton*>("btnConnect"), Qt::LeftButton);
    QTest::mouseClick(views_.viewOf(window_)->findChild<QPushButton*>("btnConnect"), Qt::LeftButton);
    EXPECT_TRUE(window_.TimerRequestData.Enabled);
}

class IgnDebugScript : public ScriptBench {
protected:
    [[nodiscard]] std::vector<std::string> run(const std::string& script, const std::string& ecu) const {
        return goodRepliesTo(script, ecu);
    }
};

TEST_F(IgnDebugScript, WordsErrorsLogAndSparksOfTheVirtualEcu) {
    const auto replies =
        run("choose frmSarn2.ComboRefresh 0\n"
            "click frmSarn2.btnConnect\n"
            "wait 23000\n"  // the read of the settings
            "click frmSarn2.Command5\n"
            "controls frmIGNDebug\n"  // 4
            "type frmSarn2.txtDatalogFile sparks\n"
            "click frmIGNDebug.Command1\n"
            "wait 200\n"
            "get frmSarn2.TimerRequestData.Enabled\n"  // 8
            "get frmIGNDebug.lblRPMticks.Caption\n"
            "get frmIGNDebug.lblIgnErr.Caption\n"  // 10
            "ecu ignfault 1\n"
            "click frmSarn2.chkDatalog\n"
            "wait 1100\n"
            "click frmIGNDebug.Command2\n"
            "get frmIGNDebug.lblSparkErr.Caption\n"  // 15
            "set frmIGNDebug.txtSparks.Text \"7\"\n"
            "click frmIGNDebug.btnCleanSparkPlugs\n"
            "wait 100\n"
            "ecu\n"  // 19
            "messages\n",
            "drive=3000:50:20");
    ASSERT_EQ(replies.size(), 21U);
    EXPECT_EQ(replies[4],
              R"json(ok ["lblIgnDeb","lblSparkDeb","lblRPMticks","lblEnnakkoTicks","lblIgnErr","lblSparkErr",)json"
              R"json("Command1","Command2","FrameSparks","txtSparks","btnCleanSparkPlugs","TimerIGN"])json");
    EXPECT_EQ(replies[8], "ok false");
    EXPECT_EQ(replies[9], R"(ok "720")");
    EXPECT_EQ(replies[10], R"(ok "0")");
    EXPECT_NEAR(std::stoi(replies[15].substr(4)), 110, 2);
    EXPECT_EQ(replies[19], R"(ok {"sparks":700})");
    const auto log = folder_.read("sparks.txt");
    ASSERT_EQ(log.size(), 101U * 272U);
    EXPECT_THAT(log.substr(10, 10), StartsWith("720 "));
    EXPECT_EQ(log.substr(272 * 100 + 50, 10), "101       ") << "errors up to the last row";
}

TEST_F(IgnDebugScript, ItsPollOnAClosedPortEndsNothing) {
    const auto replies =
        run("click frmSarn2.Command5\n"
            "click frmIGNDebug.Command1\n"
            "click frmIGNDebug.btnCleanSparkPlugs\n"
            "set frmIGNDebug.txtSparks.Text \"1e308\"\n"
            "click frmIGNDebug.btnCleanSparkPlugs\n"
            "wait 1000\n"
            "get frmIGNDebug.TimerIGN.Enabled\n"
            "messages\n"
            "close frmIGNDebug\n"
            "windows\n"
            "ecu\n",
            "type=30");
    ASSERT_EQ(replies.size(), 11U);
    EXPECT_EQ(replies[6], "ok true");
    EXPECT_THAT(replies[9], testing::Not(HasSubstr("frmIGNDebug")));
    EXPECT_EQ(replies[10], R"(ok {"sparks":0})");
}

}  // namespace
}  // namespace korvane::app
