// A tuner without a mouse: from the start of the program to its end, on the real windows, with real keys, a real
// pseudo-terminal and the virtual ECU in a process of its own.
#include <gmock/gmock.h>

#include "app/RealWindows.h"

namespace korvane::app {
namespace {

using platform::until;
using testing::EndsWith;
using testing::HasSubstr;

class KeyboardStory : public RealWindows {};

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

    // The device is missing, and the message says so; once it is back, the port opens.
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
