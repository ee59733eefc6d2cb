#include <gmock/gmock.h>

#include "link/W32Comms.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using platform::RuntimeError;
using support::Bytes;
using support::VirtualMachine;
using support::VirtualProgram;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// A port with the failure that a test asks for.
class StubbornLine : public platform::SerialLine {
public:
    void open(int port, int baud, platform::LineListener&) override {
        opened.push_back(port);
        if (openError != 0) {
            throw RuntimeError(openError, openText);
        }
        baud_ = silentAboutRate ? 0 : baud;
    }
    void close() override { ++closings; }
    [[nodiscard]] std::string deviceOf(int) override { return {}; }
    void write(std::span<const std::uint8_t> bytes) override {
        written.insert(written.end(), bytes.begin(), bytes.end());
    }
    [[nodiscard]] std::size_t pendingOutput() override { return 0; }
    [[nodiscard]] int baud() const override { return baud_; }
    [[nodiscard]] bool setBaud(int baud) override {
        forced.push_back(baud);
        baud_ = fallsSilentWhenForced ? 0 : baud_;
        return !refusesRate;
    }

    int openError = 0;
    std::string openText;
    bool silentAboutRate = false;
    bool refusesRate = false;
    bool fallsSilentWhenForced = false;
    std::vector<int> opened;
    std::vector<int> forced;
    int closings = 0;
    Bytes written;

private:
    int baud_ = 0;
};

class StubbornPortTest : public testing::Test {
protected:
    StubbornPortTest() {
        program_.start();
        static_cast<void>(machine_.dialogs.takeMessages());
    }
    [[nodiscard]] std::string onlyMessage() {
        const auto messages = machine_.dialogs.takeMessages();
        EXPECT_EQ(messages.size(), 1U);
        return messages.empty() ? std::string() : messages[0].text;
    }

    StubbornLine line_;
    VirtualMachine machine_;
    platform::Machine own_{machine_.pump,          line_,        machine_.dialogs,
                           machine_.preferences,   machine_.log, machine_.windows,
                           machine_.folder.path(), '.',          {}};
    program::Program program_{own_};
    live::FrmSarn2& window_ = program_.frmSarn2();
};

TEST_F(StubbornPortTest, APortThatCantBeOpenedIsToldWithNumberAndDescription) {
    for (const auto& [number, text] : {std::pair(8002, "Invalid port number"), std::pair(8005, "Port already open"),
                                       std::pair(8012, "The device is not open")}) {
        line_.openError = number;
        line_.openText = text;
        window_.btnConnect.press();
        EXPECT_THAT(onlyMessage(), AllOf(HasSubstr("  Error "), HasSubstr(std::to_string(number)), HasSubstr(text)));
    }
}

TEST_F(StubbornPortTest, AFailedOpeningChangesNeitherCaptionNorTimers) {
    line_.openError = 8002;
    window_.btnConnect.press();
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Connect");
    EXPECT_FALSE(window_.isConnected);
    EXPECT_FALSE(window_.MSComm1.PortOpen());
    EXPECT_FALSE(window_.TimerRequestData.Enabled);
    EXPECT_FALSE(window_.TimerGetSettings.Enabled);
    EXPECT_EQ(window_.MSComm1.OutBufferSize.get(), 16) << "what was done until then stays";
    EXPECT_THAT(line_.forced, IsEmpty());
}

TEST_F(StubbornPortTest, TheNextTryConnects) {
    line_.openError = 8002;
    window_.btnConnect.press();
    line_.openError = 0;
    window_.ComboPort.choose(6);
    window_.btnConnect.press();
    EXPECT_TRUE(window_.isConnected);
    EXPECT_THAT(line_.opened, ElementsAre(1, 7));
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Disconnect");
}

TEST_F(StubbornPortTest, ARateThatIsRefusedIsToldAndThePortStaysOpen) {
    line_.refusesRate = true;
    window_.ComboBaud.choose(6);
    window_.btnConnect.press();
    EXPECT_THAT(onlyMessage(), AllOf(HasSubstr("  Error "), HasSubstr("8015"),
                                     HasSubstr("Could not set port to specified baud rate")));
    EXPECT_THAT(line_.forced, ElementsAre(230400));
    EXPECT_TRUE(window_.MSComm1.PortOpen());
    EXPECT_TRUE(window_.isConnected);
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Disconnect");
    EXPECT_TRUE(window_.TimerRequestData.Enabled);
    EXPECT_TRUE(window_.TimerGetSettings.Enabled);
}

// The settings window is loaded after the rate is set, and also by the press that closes the port.
TEST_F(StubbornPortTest, SettingsAreNotLoadedBeforeTheRateIsSet) {
    line_.refusesRate = true;
    window_.ComboBaud.choose(6);
    window_.btnConnect.press();
    EXPECT_TRUE(window_.isConnected);
    EXPECT_FALSE(program_.frmMisc().isLoaded());
    window_.btnConnect.press();
    EXPECT_FALSE(window_.isConnected);
    EXPECT_TRUE(program_.frmMisc().isLoaded());
}

TEST_F(StubbornPortTest, ARateThatCantBeReadIsToldAndNotForced) {
    line_.silentAboutRate = true;
    window_.ComboBaud.choose(4);
    window_.btnConnect.press();
    EXPECT_THAT(onlyMessage(), AllOf(HasSubstr("8021"), HasSubstr("Could not read current state of the port")));
    EXPECT_THAT(line_.forced, IsEmpty());
}

// The rate is read also where nothing has to be forced.
TEST_F(StubbornPortTest, ARateThatCantBeReadIsToldForSlowSpeedsToo) {
    line_.silentAboutRate = true;
    window_.ComboBaud.choose(0);
    window_.btnConnect.press();
    EXPECT_THAT(onlyMessage(), HasSubstr("8021"));
    EXPECT_TRUE(window_.MSComm1.PortOpen());
    EXPECT_THAT(line_.forced, IsEmpty());
}

TEST_F(StubbornPortTest, TheRateIsReadAgainAfterItWasForced) {
    line_.fallsSilentWhenForced = true;
    window_.ComboBaud.choose(6);
    window_.btnConnect.press();
    EXPECT_THAT(onlyMessage(), HasSubstr("8021"));
    EXPECT_THAT(line_.forced, ElementsAre(230400));
    EXPECT_TRUE(window_.MSComm1.PortOpen());
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Disconnect");
}

TEST_F(StubbornPortTest, TheStateLineWithoutARateHurtsNobody) {
    line_.silentAboutRate = true;
    window_.btnConnect.press();
    machine_.pump.wait(3000);
    EXPECT_TRUE(window_.isLoaded());
    EXPECT_EQ(window_.lblState.Caption.get(), "Not connected");
}

TEST_F(StubbornPortTest, RateRoutinesNeedAnOpenPort) {
    std::string text;
    const auto numberOf = [&](auto call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            text = error.what();
            EXPECT_EQ(error.source(), "MSComm1");
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { static_cast<void>(GetPortBaud(window_.MSComm1)); }), 8018);
    EXPECT_EQ(text, "Operation valid only when the port is open");
    EXPECT_EQ(numberOf([&] { SetCustomBaud(window_.MSComm1, 57600); }), 8018);
    window_.btnConnect.press();
    EXPECT_EQ(GetPortBaud(window_.MSComm1), 57600);
    line_.refusesRate = true;
    EXPECT_EQ(numberOf([&] { SetCustomBaud(window_.MSComm1, 1); }), 8015);
}

class LostLineTest : public testing::Test {
protected:
    LostLineTest() {
        program_.connect();
        program_.pump.wait(500);
        program_.line.pullOut();
    }
    VirtualProgram program_;
    live::FrmSarn2& window_ = program_.window;
};

TEST_F(LostLineTest, IsToldOnce) {
    program_.pump.wait(10000);
    const auto messages = program_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_THAT(messages[0].text, StartsWith("  Error "));
}

TEST_F(LostLineTest, LeavesEverythingAsTheButtonDoes) {
    EXPECT_FALSE(window_.MSComm1.PortOpen());
    EXPECT_FALSE(window_.isConnected);
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Connect");
    EXPECT_FALSE(window_.TimerRequestData.Enabled);
}

TEST_F(LostLineTest, ConnectingWorksAgain) {
    program_.connect();
    EXPECT_TRUE(window_.MSComm1.PortOpen());
    EXPECT_EQ(window_.btnConnect.Caption.get(), "Disconnect");
    program_.receiveFrame('T', {7, 1, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 7);
}

TEST_F(LostLineTest, WhatWasInTheBufferIsGone) {
    program_.line.inject(Bytes{'T', 1, 9, 0xAB});
    program_.pump.wait(100);
    EXPECT_EQ(window_.bytesReceived, 0);
}

TEST_F(LostLineTest, TheProgramClosesAtOnceAfterwards) {
    EXPECT_TRUE(window_.unload());
    EXPECT_TRUE(program_.program.ended());
}

}  // namespace
}  // namespace korvane::link
