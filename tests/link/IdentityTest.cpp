#include <gmock/gmock.h>

#include "LinkBench.h"

namespace korvane::link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kStartCaption = "Korvane Tuner v1.3 by Dulmer";

class IdentityTest : public LinkBench {
protected:
    IdentityTest() {
        window_.Caption = kStartCaption;
        panel_.TimerGetSettings.Enabled = true;
    }
    [[nodiscard]] std::string caption() const { return window_.Caption.get(); }
};

TEST_F(IdentityTest, FiveBytesSetEverything) {
    command('y', {1, 2, 13, 58, 11});
    EXPECT_EQ(tables_.Features, 258);
    EXPECT_FLOAT_EQ(tables_.HwVersion, 3.386F);
    EXPECT_EQ(tables_.EEParams[2999].value, core::ParameterValue(3.386F));
    EXPECT_EQ(panel_.lblHWVer.Caption.get(), "hwVer: 3.386");
    EXPECT_TRUE(panel_.lblHWVer.Visible);
    EXPECT_EQ(panel_.lblFeatures.Caption.get(), "258");
    EXPECT_FALSE(panel_.TimerGetSettings.Enabled);
    EXPECT_EQ(tables_.SWType, 11);
    EXPECT_EQ(caption(), "Korvane Tuner v1.3 by Dulmer  Korvane3 full engine control");
    EXPECT_EQ(tables_.EEParams[3000].value, core::ParameterValue(std::int32_t{11}));
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(IdentityTest, TheVersionIsHiddenUntilItIsKnown) {
    EXPECT_FALSE(panel_.lblHWVer.Visible);
}

TEST_F(IdentityTest, TheTimeUnitsAreComputedAnew) {
    tables_.TickD = 0;
    command('y', {1, 1, 13, 58});
    EXPECT_NEAR(tables_.TickD, 256000.0 / 18432000.0, 1e-15);
}

TEST_F(IdentityTest, NumbersReachTheirLargest) {
    command('y', {255, 255, 255, 255});
    EXPECT_EQ(tables_.Features, 65535);
    EXPECT_EQ(panel_.lblFeatures.Caption.get(), "65535");
    EXPECT_EQ(panel_.lblHWVer.Caption.get(), "hwVer: 65.535");
}

TEST_F(IdentityTest, AVersionOfZeroIsShownAsZero) {
    command('y', {0, 0, 0, 0});
    EXPECT_EQ(tables_.Features, 0);
    EXPECT_EQ(panel_.lblHWVer.Caption.get(), "hwVer: 0");
}

TEST_F(IdentityTest, FourBytesLeaveTypeLayoutAndCaption) {
    tables_.SWType = 30;
    core::InitParams(tables_, 30);
    command('y', {0, 5, 4, 116});
    EXPECT_EQ(tables_.Features, 5);
    EXPECT_EQ(panel_.lblHWVer.Caption.get(), "hwVer: 1.14");
    EXPECT_TRUE(panel_.lblHWVer.Visible);
    EXPECT_FALSE(panel_.TimerGetSettings.Enabled);
    EXPECT_EQ(tables_.SWType, 30);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 500);
    EXPECT_EQ(caption(), kStartCaption);
    EXPECT_EQ(pump_.now(), 0) << "no pause without a type";
}

TEST_F(IdentityTest, ThreeBytesSetTheFeaturesAlone) {
    command('y', {1, 0, 3});
    EXPECT_EQ(tables_.Features, 256);
    EXPECT_FLOAT_EQ(tables_.HwVersion, 3.1F);
    EXPECT_FALSE(panel_.lblHWVer.Visible);
    EXPECT_EQ(panel_.lblFeatures.Caption.get(), "");
    EXPECT_TRUE(panel_.TimerGetSettings.Enabled);
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
}

TEST_F(IdentityTest, TwoBytesSetTheFeaturesAlone) {
    command('y', {2, 1});
    EXPECT_EQ(tables_.Features, 513);
    EXPECT_FLOAT_EQ(tables_.HwVersion, 3.1F);
    EXPECT_TRUE(panel_.TimerGetSettings.Enabled);
}

TEST_F(IdentityTest, OneByteSetsNothing) {
    command('y', {2});
    EXPECT_EQ(tables_.Features, -1);
    EXPECT_TRUE(panel_.TimerGetSettings.Enabled);
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
}

TEST_F(IdentityTest, TheOldCaptionIsCutTo30CharactersBeforeTheType) {
    window_.Caption = "Korvane Tuner v1.3 by Dulmer,   Device started 12:00:00";
    command('y', {0, 0, 0, 0, 32});
    EXPECT_EQ(caption(), "Korvane Tuner v1.3 by Dulmer, Mirel Ignition, QV");
}

TEST_F(IdentityTest, AShortCaptionGetsSixBlanksAndNoMore) {
    window_.Caption = "abc";
    command('y', {0, 0, 0, 0, 20});
    EXPECT_EQ(caption(), "abc      Mirel Injection, full");
}

TEST_F(IdentityTest, TheCutCountsCharactersAndNotBytes) {
    window_.Caption = "ääääääääääääääääääääääääääääääöö";  // 30 and two more
    command('y', {0, 0, 0, 0, 99});
    EXPECT_EQ(caption(), "ääääääääääääääääääääääääääääää-");
}

TEST_F(IdentityTest, ASecondIdentityDoesNotPileUpTypes) {
    command('y', {0, 0, 0, 0, 14});
    command('y', {0, 0, 0, 0, 30});
    EXPECT_EQ(caption(), "Korvane Tuner v1.3 by Dulmer  Mirel Ignition");
}

TEST_F(IdentityTest, AnUnknownTypeShowsADashAndHasTheGeneralLayout) {
    command('y', {0, 0, 0, 0, 99});
    EXPECT_EQ(caption(), "Korvane Tuner v1.3 by Dulmer  -");
    EXPECT_EQ(tables_.SWType, 99);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 511);
}

TEST_F(IdentityTest, Type30MovesTheLaunchLimitAndType10PutsItBack) {
    command('y', {0, 0, 0, 0, 30});
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 500);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_HI, 501);
    EXPECT_EQ(tables_.addresses.IDLEPID_SPEED, 500);
    EXPECT_EQ(tables_.EEParams[511].name, "LAUNCHCONTROL_LO");
    EXPECT_TRUE(tables_.EEParams[511].is16bit);
    EXPECT_FALSE(tables_.EEParams[500].is16bit);
    command('y', {0, 0, 0, 0, 10});
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 511);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_HI, 512);
}

// The pause lies between the caption and the layout.
TEST_F(IdentityTest, TheLayoutFollowsTheCaptionAfter300Milliseconds) {
    bool handlerRan = false;
    const auto handler = pump_.makeAlarm([&] { handlerRan = true; });
    handler->callAt(100 * platform::kMicrosPerMilli);
    bool looked = false;
    const auto look = [&] {
        looked = true;
        EXPECT_FALSE(handlerRan) << "the program blocks";
        EXPECT_EQ(tables_.SWType, 30);
        EXPECT_EQ(caption(), "Korvane Tuner v1.3 by Dulmer  Mirel Ignition");
        EXPECT_FALSE(panel_.TimerGetSettings.Enabled);
        EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 511);
        EXPECT_EQ(tables_.EEParams[3000].value, core::ParameterValue(std::int32_t{0}));
    };
    const auto alarm = pump_.makeAlarm(look, platform::AlarmKind::Device);
    alarm->callAt(299 * platform::kMicrosPerMilli);
    command('y', {0, 0, 0, 0, 30});
    EXPECT_EQ(pump_.now(), 300 * platform::kMicrosPerMilli);
    EXPECT_TRUE(looked);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 500);
    EXPECT_EQ(tables_.EEParams[3000].value, core::ParameterValue(std::int32_t{30}));
}

TEST_F(IdentityTest, ReadParametersSurviveANewLayout) {
    command('T', {9, 0xF4, 0x01});
    command('y', {0, 0, 0, 0, 30});
    EXPECT_EQ(tables_.EEImage[500], 9);
    EXPECT_EQ(tables_.EETime[500], "12:00:00");
    EXPECT_EQ(tables_.EEParams[500].value, core::ParameterValue(std::uint8_t{9}));
}

TEST_F(IdentityTest, AnIdentityAsksForNothing) {
    command('y', {0, 0, 0, 0, 14});
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
    EXPECT_THAT(journal_, IsEmpty());
}

}  // namespace
}  // namespace korvane::link
