#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/MSComm.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Bytes = std::vector<std::uint8_t>;

class MSCommTest : public ModelBench {
protected:
    MSCommTest() {
        comm_.OnComm = [this] {
            ++events_;
            if (takes_) {
                const auto waiting = comm_.waitingInput();
                taken_.insert(taken_.end(), waiting.begin(), waiting.end());
                comm_.takeInput(waiting.size());
            }
        };
    }
    void open() {
        comm_.RThreshold = 1;
        comm_.setPortOpen(true);
    }
    void inject(const Bytes& bytes) { line_.inject(bytes); }

    MSComm comm_{window_, "MSComm1"};
    int events_ = 0;
    bool takes_ = true;
    Bytes taken_;
};

TEST_F(MSCommTest, StartsClosed) {
    EXPECT_FALSE(comm_.PortOpen());
    EXPECT_EQ(comm_.InBufferCount(), 0U);
    EXPECT_EQ(comm_.OutBufferCount(), 0);
}

TEST_F(MSCommTest, OpensAtTheRateOfItsSettings) {
    comm_.Settings = "38400,N,8,1";
    open();
    EXPECT_TRUE(comm_.PortOpen());
    EXPECT_EQ(comm_.lineBaud(), 38400);
    EXPECT_EQ(line_.baud(), 38400);
}

TEST_F(MSCommTest, APortNumberThatDoesNotExistRaises8002) {
    for (const int port : {0, -1, 17}) {
        comm_.CommPort = port;
        EXPECT_EQ(errorOf([&] { comm_.setPortOpen(true); }), 8002);
        EXPECT_FALSE(comm_.PortOpen());
    }
}

TEST_F(MSCommTest, PortsGoUpTo16) {
    comm_.CommPort = 16;
    open();
    EXPECT_TRUE(comm_.PortOpen());
}

TEST_F(MSCommTest, SettingsThatMakeNoSenseRaiseAndStayClosed) {
    for (const auto* settings : {"", "fast", "9600", "9600,E,7,2", "0,N,8,1", "-5,N,8,1", "99999999999,N,8,1"}) {
        comm_.Settings = settings;
        EXPECT_EQ(errorOf([&] { comm_.setPortOpen(true); }), 380) << settings;
        EXPECT_FALSE(comm_.PortOpen());
    }
}

TEST_F(MSCommTest, AClosedPortCantSendNorTellItsRate) {
    EXPECT_EQ(errorOf([&] { comm_.Output('x'); }), 8018);
    EXPECT_EQ(errorOf([&] { static_cast<void>(comm_.lineBaud()); }), 8018);
    EXPECT_EQ(errorOf([&] { static_cast<void>(comm_.setLineBaud(9600)); }), 8018);
}

TEST_F(MSCommTest, TellsWhenItOpensAndCloses) {
    NotingObserver observer(comm_);
    comm_.setPortOpen(true);
    comm_.setPortOpen(true);
    comm_.setPortOpen(false);
    comm_.setPortOpen(false);
    EXPECT_THAT(observer.changes, ElementsAre(comm_.portOpenProperty(), comm_.portOpenProperty()));
}

TEST_F(MSCommTest, OneEventTellsOfAllBytesThatAreThere) {
    open();
    inject({1, 2});
    inject({3});
    EXPECT_EQ(events_, 0) << "never from inside the arrival";
    pump_.pump();
    EXPECT_EQ(events_, 1);
    EXPECT_THAT(taken_, ElementsAre(1, 2, 3));
    pump_.pump();
    EXPECT_EQ(events_, 1);
}

TEST_F(MSCommTest, BytesThatNobodyTakesStay) {
    takes_ = false;
    open();
    inject({1, 2});
    pump_.pump();
    EXPECT_EQ(comm_.InBufferCount(), 2U);
    inject({3});
    pump_.pump();
    EXPECT_EQ(events_, 2);
    EXPECT_EQ(comm_.InBufferCount(), 3U);
    comm_.takeInput(1);
    EXPECT_THAT(comm_.waitingInput(), ElementsAre(2, 3));
    comm_.takeInput(100);
    EXPECT_EQ(comm_.InBufferCount(), 0U);
}

TEST_F(MSCommTest, WithoutAThresholdNoEventComes) {
    comm_.setPortOpen(true);
    inject({1});
    pump_.pump();
    EXPECT_EQ(events_, 0);
    EXPECT_EQ(comm_.InBufferCount(), 1U);
}

TEST_F(MSCommTest, WhatAnotherHandlerTookRaisesNoEvent) {
    open();
    inject({1});
    comm_.takeInput(1);
    pump_.pump();
    EXPECT_EQ(events_, 0);
}

TEST_F(MSCommTest, AnEventMayCloseThePort) {
    comm_.OnComm = [&] { comm_.setPortOpen(false); };
    open();
    inject({1, 2});
    pump_.pump();
    EXPECT_FALSE(comm_.PortOpen());
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(MSCommTest, ItMayBeOpenedAgainInTheVeryEventOfTheLoss) {
    comm_.LineLost = [&](const std::string&) { comm_.setPortOpen(true); };
    open();
    line_.pullOut();
    inject({9});
    pump_.pump();
    EXPECT_THAT(taken_, ElementsAre(9));
}

TEST_F(MSCommTest, BytesThatComeWhileAHandlerWaitsRaiseANestedEvent) {
    const auto more = pump_.makeAlarm([&] { inject({9}); });
    more->callAt(50 * platform::kMicrosPerMilli);
    int depth = 0;
    int deepest = 0;
    comm_.OnComm = [&] {
        deepest = std::max(deepest, ++depth);
        comm_.takeInput(comm_.InBufferCount());
        if (depth == 1) {
            pump_.wait(100);
        }
        --depth;
    };
    open();
    inject({1});
    pump_.wait(10);
    EXPECT_EQ(deepest, 2);
}

TEST_F(MSCommTest, ClosingDropsWhatWasNotReadAndRaisesNothing) {
    open();
    inject({1, 2});
    comm_.setPortOpen(false);
    pump_.wait(100);
    EXPECT_EQ(events_, 0);
    EXPECT_EQ(comm_.InBufferCount(), 0U);
    open();
    pump_.wait(100);
    EXPECT_EQ(events_, 0);
}

TEST_F(MSCommTest, SentBytesCountUntilTheyHaveLeft) {
    open();
    comm_.Output(Bytes{1, 2, 3});
    EXPECT_EQ(comm_.OutBufferCount(), 3);
    pump_.wait(100);
    EXPECT_EQ(comm_.OutBufferCount(), 0);
}

TEST_F(MSCommTest, ALostLineClosesThePortAndTells) {
    std::string reason;
    bool openThen = true;
    comm_.LineLost = [&](const std::string& text) {
        reason = text;
        openThen = comm_.PortOpen();
    };
    open();
    inject({1});
    line_.pullOut();
    EXPECT_FALSE(reason.empty());
    EXPECT_FALSE(openThen);
    EXPECT_EQ(comm_.InBufferCount(), 0U);
    pump_.wait(100);
    EXPECT_EQ(events_, 0);
    open();
    inject({5});
    pump_.pump();
    EXPECT_THAT(taken_, ElementsAre(5));
}

TEST_F(MSCommTest, AFailingHandlerIsLoggedAndTheNextBytesComeThrough) {
    comm_.OnComm = [&] {
        comm_.takeInput(1);
        ++events_;
        throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
    };
    open();
    inject({1, 2});
    pump_.pump();
    EXPECT_EQ(log_.lines.size(), 1U);
    EXPECT_EQ(comm_.InBufferCount(), 1U);
    inject({3});
    pump_.pump();
    EXPECT_EQ(events_, 2);
}

// At most a megabyte is kept; a driver loses the rest as well.
TEST_F(MSCommTest, ABufferThatNobodyEmptiesDoesNotGrowWithoutEnd) {
    takes_ = false;
    open();
    for (int i = 0; i < 40; ++i) {
        inject(Bytes(100000, 1));
    }
    EXPECT_EQ(comm_.InBufferCount(), 1048576U);
    comm_.takeInput(48576);
    inject(Bytes(10, 2));
    EXPECT_EQ(comm_.InBufferCount(), 1000010U);
    EXPECT_EQ(comm_.waitingInput().back(), 2);
}

}  // namespace
}  // namespace korvane::controls
