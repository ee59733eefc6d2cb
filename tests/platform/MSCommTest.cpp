#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "platform/Bench.h"
#include "platform/MSComm.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

class MSCommTest : public Bench {
protected:
    MSCommTest() {
        port.RThreshold = 1;
        port.OnComm = [this] { events.push_back(port.InBufferCount()); };
        port.LineLost = [this](const std::string& reason) { losses.push_back(reason); };
    }

    template <class Call>
    static int errorOf(Call call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    }

    MSComm port{window, "MSComm1"};
    std::vector<std::size_t> events;
    std::vector<std::string> losses;
};

TEST_F(MSCommTest, OpensAtTheRateOfItsSettings) {
    port.Settings = "76800,N,8,1";
    port.setPortOpen(true);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.lineBaud(), 76800);
    EXPECT_TRUE(port.setLineBaud(9600));
    EXPECT_EQ(port.lineBaud(), 9600);
}

TEST_F(MSCommTest, OpensAPort1To16Only) {
    for (const int number : {0, 17, -1}) {
        port.CommPort = number;
        EXPECT_EQ(errorOf([&] { port.setPortOpen(true); }), 8002) << number;
        EXPECT_FALSE(port.PortOpen());
    }
    port.CommPort = 16;
    EXPECT_EQ(errorOf([&] { port.setPortOpen(true); }), 0);
}

TEST_F(MSCommTest, SettingsThatAreNoneAreRefused) {
    for (const auto* settings : {"", "N,8,1", "9600", "9600,E,8,1", "0,N,8,1", "-9600,N,8,1", "99999999999,N,8,1"}) {
        port.Settings = std::string(settings);
        EXPECT_EQ(errorOf([&] { port.setPortOpen(true); }), 380) << settings;
        EXPECT_FALSE(port.PortOpen());
    }
}

TEST_F(MSCommTest, AClosedPortSendsNothingAndKnowsNoRate) {
    EXPECT_EQ(errorOf([&] { port.Output('x'); }), 8018);
    EXPECT_EQ(errorOf([&] { static_cast<void>(port.lineBaud()); }), 8018);
    EXPECT_EQ(errorOf([&] { static_cast<void>(port.setLineBaud(9600)); }), 8018);
    EXPECT_EQ(port.OutBufferCount(), 0);
}

TEST_F(MSCommTest, BytesThatComeTogetherRaiseOneEvent) {
    port.setPortOpen(true);
    line.inject(Bytes{1, 2});
    line.inject(Bytes{3});
    EXPECT_THAT(events, IsEmpty()) << "handlers run between events only";
    pump.pump();
    EXPECT_THAT(events, ElementsAre(3));
    EXPECT_THAT(port.waitingInput(), ElementsAre(1, 2, 3));
}

TEST_F(MSCommTest, BytesAreTakenFromTheFront) {
    port.setPortOpen(true);
    line.inject(Bytes{1, 2, 3});
    port.takeInput(1);
    EXPECT_THAT(port.waitingInput(), ElementsAre(2, 3));
    line.inject(Bytes{4});
    port.takeInput(2);
    EXPECT_THAT(port.waitingInput(), ElementsAre(4));
    port.takeInput(100);
    EXPECT_EQ(port.InBufferCount(), 0U);
}

TEST_F(MSCommTest, WhatAnotherHandlerTookRaisesNoEvent) {
    port.setPortOpen(true);
    line.inject(Bytes{1});
    port.takeInput(1);
    pump.pump();
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(MSCommTest, AThresholdOfZeroRaisesNoEventAndKeepsTheBytes) {
    port.RThreshold = 0;
    port.setPortOpen(true);
    line.inject(Bytes{1});
    pump.wait(10);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_EQ(port.InBufferCount(), 1U);
}

TEST_F(MSCommTest, ClosingDropsWhatWasNotRead) {
    port.setPortOpen(true);
    line.inject(Bytes{1});
    port.setPortOpen(false);
    EXPECT_EQ(port.InBufferCount(), 0U);
    port.setPortOpen(true);
    pump.wait(10);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(MSCommTest, WhatNobodyReadsIsKeptUpToOneMebibyte) {
    port.setPortOpen(true);
    line.inject(Bytes((1U << 20U) - 1, 7));
    line.inject(Bytes{1, 2, 3});
    EXPECT_EQ(port.InBufferCount(), 1U << 20U);
    EXPECT_EQ(port.waitingInput().back(), 1);
}

TEST_F(MSCommTest, ALostLineClosesThePortBeforeItTells) {
    port.setPortOpen(true);
    line.inject(Bytes{1});
    bool open = true;
    port.LineLost = [&](const std::string&) { open = port.PortOpen(); };
    line.pullOut();
    EXPECT_FALSE(open);
    EXPECT_EQ(port.InBufferCount(), 0U);
    pump.wait(10);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(MSCommTest, ItMayBeOpenedAgainInTheVeryEventOfTheLoss) {
    port.setPortOpen(true);
    port.LineLost = [&](const std::string&) { port.setPortOpen(true); };
    line.pullOut();
    line.inject(Bytes{9});
    pump.pump();
    EXPECT_THAT(events, ElementsAre(1));
}

TEST_F(MSCommTest, AnEventMayCloseThePort) {
    port.OnComm = [&] { port.setPortOpen(false); };
    port.setPortOpen(true);
    line.inject(Bytes{1, 2});
    pump.pump();
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(log.lines, IsEmpty());
}

}  // namespace
}  // namespace korvane::platform
