// A tuner without a mouse: from the start of the program to its end, on the real windows, with real keys, a real
// pseudo-terminal and the virtual ECU in a process of its own.
#include <QApplication>
#include <QTest>

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "app/Process.h"
#include "app/Program.h"
#include "platform/MSComm.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "platform/virtual/QueuedDialogs.h"
#include "qt/Until.h"
#include "support/TempFolder.h"
#include "views/ViewHost.h"

namespace korvane::app {
namespace {

using platform::until;
using testing::EndsWith;
using testing::HasSubstr;

class KeyboardStory : public testing::Test {
protected:
    KeyboardStory()
        : ecu_("korvane-ecu", {"--pty", port(), "--with-parent"}),
          line_(pump_, platform::PortMap(pump_, {{2, port()}}, [] { return std::vector<platform::FoundPort>(); })),
          machine_{pump_, line_, dialogs_, preferences_, log_, windows_, folder_.path(), '.', {}},
          program_(machine_),
          views_(windows_) {
        views::addViews(views_);
        program_.start();
        auto* const view = views_.viewOf(window_);
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view));
        EXPECT_TRUE(until(pump_, [this] { return std::filesystem::exists(port()); }));
    }

    [[nodiscard]] std::string port() const { return (folder_.path() / "ecu").string(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        auto* const focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : static_cast<QWidget*>(views_.viewOf(window_)), key, modifiers);
    }

    // Tab until the control of this name has the focus.
    void tabTo(const std::string& name) {
        for (int i = 0; i < 60; ++i) {
            if (window_.activeControl() != nullptr && window_.activeControl()->path() == name) {
                return;
            }
            press(Qt::Key_Tab);
        }
        FAIL() << name << " can't be reached by Tab";
    }

    support::TempFolder folder_;
    platform::QtPump pump_;
    BackgroundProgram ecu_;
    platform::QtSerialLine line_;
    platform::QueuedDialogs dialogs_;
    platform::MemoryPreferences preferences_;
    platform::MemoryLog log_;
    platform::WindowList windows_;
    platform::Machine machine_;
    Program program_;
    live::FrmSarn2& window_ = program_.frmSarn2();
    views::ViewHost views_;
};

TEST_F(KeyboardStory, FromTheStartToTheEnd) {
    tabTo("ComboPort");
    press(Qt::Key_Down);
    EXPECT_EQ(window_.ComboPort.Text(), "COM2");
    tabTo("ComboBaud");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(window_.ComboBaud.Text(), "115200");
    tabTo("btnConnect");
    press(Qt::Key_Space);
    ASSERT_TRUE(window_.isConnected);
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Disconnect");
    EXPECT_EQ(window_.MSComm1.lineBaud(), 115200);

    EXPECT_TRUE(until(pump_, [this] { return window_.lblValue(0).Caption.get() != "0"; })) << "no live values";
    EXPECT_TRUE(until(pump_, [this] { return program_.tables().SWType == 11; })) << "no identity";
    EXPECT_THAT(window_.Caption.get(), EndsWith("Korvane3 full engine control"));

    press(Qt::Key_Tab, Qt::ShiftModifier);
    tabTo("ComboRefresh");
    press(Qt::Key_Down);
    EXPECT_EQ(window_.TimerRequestData.Interval, 25);
    const auto received = window_.bytesReceived;
    EXPECT_TRUE(until(pump_, [&] { return window_.bytesReceived > received + 100; })) << "the poll stopped";

    tabTo("Command2");
    press(Qt::Key_Space);
    EXPECT_TRUE(until(pump_, [this] { return window_.Caption.get().find("Device started") != std::string::npos; }))
        << window_.Caption.get();

    tabTo("btnConnect");
    press(Qt::Key_Space);
    EXPECT_FALSE(window_.MSComm1.PortOpen());
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Connect");

    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(until(pump_, [this] { return program_.ended(); }));
    EXPECT_EQ(preferences_.read("Software\\KorvaneTuner\\Settings", "Port"), "1");
    EXPECT_EQ(preferences_.read("Software\\KorvaneTuner\\Settings", "Speed"), "5");
    EXPECT_EQ(preferences_.read("Software\\KorvaneTuner\\Settings", "Refresh"), "1");
}

TEST_F(KeyboardStory, APulledCableIsToldOnceAndConnectingWorksAgain) {
    tabTo("ComboPort");
    press(Qt::Key_Down);
    tabTo("btnConnect");
    press(Qt::Key_Space);
    ASSERT_TRUE(until(pump_, [this] { return window_.bytesReceived > 0; }));
    static_cast<void>(dialogs_.takeMessages());
    ecu_.end();
    ASSERT_TRUE(until(pump_, [this] { return !window_.isConnected; }));
    pump_.wait(50);
    const auto messages = dialogs_.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_THAT(messages[0].text, HasSubstr("  Error "));
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Connect");

    // Nothing is there now, and the reason is told; once it is back, the port opens.
    press(Qt::Key_Space);
    EXPECT_FALSE(window_.isConnected);
    EXPECT_EQ(dialogs_.takeMessages().size(), 1U);
    const BackgroundProgram back("korvane-ecu", {"--pty", port(), "--with-parent"});
    ASSERT_TRUE(until(pump_, [this] { return std::filesystem::exists(port()); }));
    press(Qt::Key_Space);
    EXPECT_TRUE(window_.isConnected);
}

}  // namespace
}  // namespace korvane::app
