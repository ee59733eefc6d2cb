#include <gmock/gmock.h>

#include "core/tables/ModuleReg.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using platform::kMicrosPerMilli;
using support::VirtualProgram;

class ClosingTest : public testing::Test {
protected:
    [[nodiscard]] std::string remembered(const char* name) const {
        return program_.preferences.read(core::kSettingsKey, name).value_or("nothing");
    }

    // Port, speed, refresh time and sound.
    void expectRemembered(const std::vector<std::string>& choices) const {
        EXPECT_EQ((std::vector{remembered("Port"), remembered("Speed"), remembered("Refresh"), remembered("UseSound")}),
                  choices);
    }

    // With these rows chosen and the sound on.
    void leaveWith(int port, int speed, int refresh) {
        window_.ComboPort.choose(port);
        window_.ComboBaud.choose(speed);
        window_.ComboRefresh.choose(refresh);
        window_.chkUseSound.press();
        EXPECT_TRUE(window_.unload());
    }

    VirtualProgram program_;
    live::FrmSarn2& window_ = program_.window;
};

TEST_F(ClosingTest, GoesThroughAtOnceWhenNotConnected) {
    EXPECT_TRUE(window_.unload());
    EXPECT_TRUE(program_.program.ended());
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_FALSE(window_.Visible);
    EXPECT_EQ(program_.pump.now(), 0);
}

TEST_F(ClosingTest, TakesOneSecondWhenConnectedAndLeavesThePortClosed) {
    program_.connect();
    program_.pump.wait(250);
    EXPECT_FALSE(window_.unload());
    EXPECT_FALSE(window_.MSComm1.PortOpen());
    EXPECT_FALSE(window_.isConnected);
    EXPECT_FALSE(program_.program.ended());
    EXPECT_TRUE(window_.isLoaded());
    EXPECT_TRUE(window_.Visible);
    program_.pump.runUntil(1250 * kMicrosPerMilli - 1);
    EXPECT_TRUE(window_.isLoaded());
    program_.pump.runUntil(1250 * kMicrosPerMilli);
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_TRUE(program_.program.ended());
    EXPECT_FALSE(window_.MSComm1.PortOpen());
}

TEST_F(ClosingTest, StoresTheChoices) {
    leaveWith(4, 5, 7);
    expectRemembered({"4", "5", "7", "1"});
}

TEST_F(ClosingTest, StoresThemWhenConnectedTooAndBeforeAnythingElse) {
    window_.ComboPort.choose(9);
    program_.connect();
    EXPECT_FALSE(window_.unload());
    expectRemembered({"9", "3", "0", "0"});
}

TEST_F(ClosingTest, NothingIsStoredBefore) {
    window_.ComboPort.choose(9);
    EXPECT_EQ(remembered("Port"), "nothing");
}

TEST_F(ClosingTest, ASpeedOf9600IsStoredButDoesNotSurviveARestart) {
    window_.ComboBaud.choose(0);
    EXPECT_TRUE(window_.unload());
    EXPECT_EQ(remembered("Speed"), "0");
    program::Program next(program_.machine);
    next.start();
    EXPECT_EQ(next.frmSarn2().ComboBaud.Text(), "57600");
}

TEST_F(ClosingTest, TheChoicesComeBackAtTheNextStart) {
    leaveWith(14, 1, 11);
    program::Program next(program_.machine);
    next.start();
    EXPECT_EQ(next.frmSarn2().ComboPort.Text(), "COM15");
    EXPECT_EQ(next.frmSarn2().ComboBaud.Text(), "19200");
    EXPECT_EQ(next.frmSarn2().TimerRequestData.Interval.get(), 275);
    EXPECT_EQ(next.frmSarn2().chkUseSound.Value.get(), 1);
    EXPECT_TRUE(next.tables().useSound);
}

TEST_F(ClosingTest, ATunerWhoReconnectsInThatSecondIsAskedTheSameWay) {
    program_.connect();
    EXPECT_FALSE(window_.unload());
    program_.connect();
    program_.pump.wait(1000);
    EXPECT_FALSE(program_.program.ended());
    EXPECT_FALSE(window_.MSComm1.PortOpen());
    program_.pump.wait(1000);
    EXPECT_TRUE(program_.program.ended());
}

}  // namespace
}  // namespace korvane::link
