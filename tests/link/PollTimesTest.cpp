#include <gtest/gtest.h>

#include "link/PollTimes.h"

namespace korvane::link {
namespace {

using platform::Micros;

constexpr Micros kMilli = platform::kMicrosPerMilli;

// Requests and replies at milliseconds.
class PollTimesTest : public testing::Test {
protected:
    void sent(int at) { times_.sent(at * kMilli); }
    void answered(int at) { times_.answered(at * kMilli); }

    // A request every ten milliseconds from `first` on, each answered so many milliseconds later.
    void steady(int first, int count, int roundTrip) {
        for (int at = first; at < first + 10 * count + roundTrip; ++at) {
            if ((at - first) % 10 == 0 && at < first + 10 * count) {
                sent(at);
            }
            if (at >= first + roundTrip && (at - first - roundTrip) % 10 == 0) {
                answered(at);
            }
        }
    }
    [[nodiscard]] double median(int at) const {
        return static_cast<double>(times_.lastMinute(at * kMilli).value().median) / kMilli;
    }
    [[nodiscard]] double worst(int at) const {
        return static_cast<double>(times_.lastMinute(at * kMilli).value().worst) / kMilli;
    }

    PollTimes times_;
};

TEST_F(PollTimesTest, WithoutAnAnswerThereIsNoRoundTrip) {
    sent(0);
    EXPECT_FALSE(times_.lastMinute(kMilli));
    EXPECT_EQ(times_.unanswered(kMilli), 0);
}

TEST_F(PollTimesTest, MedianAndWorstAreOfAllAnswers) {
    for (const auto& [at, length] : {std::pair{0, 4}, {100, 9}, {200, 5}}) {
        sent(at);
        answered(at + length);
    }
    EXPECT_EQ(median(300), 5);
    EXPECT_EQ(worst(300), 9);
}

TEST_F(PollTimesTest, AnAnswerCountsForOneMinute) {
    sent(0);
    answered(20);
    sent(1000);
    answered(1004);
    EXPECT_EQ(worst(60'019), 20);
    EXPECT_EQ(worst(60'020), 4);
    EXPECT_FALSE(times_.lastMinute(61'004 * kMilli));
}

TEST_F(PollTimesTest, RepliesBehindLaterRequestsAnswerTheOldestOnes) {
    steady(0, 50, 27);
    EXPECT_EQ(median(600), 27);
    EXPECT_EQ(worst(600), 27);
    EXPECT_EQ(times_.unanswered(600 * kMilli), 0);
}

TEST_F(PollTimesTest, ARequestIsUnansweredAfterAQuarterOfASecond) {
    sent(0);
    EXPECT_EQ(times_.unanswered(249 * kMilli), 0);
    EXPECT_EQ(times_.unanswered(250 * kMilli), 1);
    sent(300);
    answered(304);
    EXPECT_EQ(times_.unanswered(304 * kMilli), 1);
    EXPECT_EQ(worst(304), 4);
}

TEST_F(PollTimesTest, ALostReplyIsFoundByTheEightBehindIt) {
    steady(0, 20, 4);
    sent(200);
    steady(210, 16, 4);
    EXPECT_EQ(times_.unanswered(370 * kMilli), 1);
    EXPECT_EQ(median(370), 4);
    sent(370);
    answered(374);
    EXPECT_EQ(times_.lastMinute(374 * kMilli)->worst, 14 * kMilli);
    EXPECT_EQ(times_.unanswered(374 * kMilli), 1);
}

TEST_F(PollTimesTest, WhatAnEcuMissedWhileItWasOffIsNotTheRoundTripOfItsFirstReply) {
    for (int at = 0; at < 1000; at += 10) {
        sent(at);
    }
    answered(993);
    EXPECT_EQ(worst(993), 3);
    EXPECT_EQ(times_.unanswered(993 * kMilli), 99);
}

TEST_F(PollTimesTest, AReplyNobodyAskedForIsNoAnswer) {
    answered(5);
    EXPECT_FALSE(times_.lastMinute(5 * kMilli));
    sent(10);
    answered(12);
    answered(13);
    EXPECT_EQ(worst(13), 2);
}

// What answers slower now would seem to have lost two requests by the round trip of before.
TEST_F(PollTimesTest, APollThatStartsAnewLearnsTheShortestRoundTripAgain) {
    steady(0, 20, 5);
    times_.restarted(1000 * kMilli);
    steady(1000, 40, 27);
    EXPECT_EQ(median(1500), 27);
    EXPECT_EQ(times_.unanswered(1427 * kMilli), 0);
}

// At the reply the second request is as old as the shortest round trip.
TEST_F(PollTimesTest, AFirstRequestThatIsLostBehindAPauseIsFoundAtOnce) {
    steady(0, 20, 4);
    times_.restarted(1000 * kMilli);
    sent(1000);
    steady(1010, 20, 4);
    EXPECT_EQ(worst(1300), 4);
    EXPECT_EQ(times_.unanswered(1300 * kMilli), 1);
}

// They keep the ECU busy, and what it was asked meanwhile is lost.
TEST_F(PollTimesTest, BehindFramesOfAnotherKindTheShortestRoundTripIsNotLearnt) {
    for (int at = 0; at < 50; at += 10) {
        sent(at);
        times_.otherFrame();
    }
    for (int at = 50; at < 500; at += 10) {
        sent(at);
        times_.answered((at + 4) * kMilli, 4 * kMilli);
    }
    EXPECT_EQ(median(500), 4);
    EXPECT_EQ(times_.unanswered(500 * kMilli), 5);
}

// 25 ms instead of 5 look like two requests that were lost, until the last replies come.
TEST_F(PollTimesTest, AReplyTooManyShowsThatTheRoundTripIsLonger) {
    steady(0, 20, 5);
    times_.restarted(2000 * kMilli);
    steady(2000, 20, 25);
    times_.restarted(4000 * kMilli);
    steady(4000, 60, 25);
    EXPECT_EQ(static_cast<double>(times_.since(4000 * kMilli)->median) / kMilli, 25);
}

// 23 ms are 22 bytes at 9600 baud: every other request is dropped.
TEST_F(PollTimesTest, WhereTheLineCanNotBringAllRepliesEachIsOfTheNewestRequest) {
    for (int at = 0; at < 3000; at += 10) {
        sent(at);
        if (at % 30 == 20) {
            times_.answered((at + 5) * kMilli, 23 * kMilli);
        }
    }
    EXPECT_EQ(median(3000), 25);
}

TEST_F(PollTimesTest, AnotherConnectionForgetsAll) {
    sent(0);
    sent(300);
    answered(305);
    times_.reset();
    EXPECT_EQ(times_.unanswered(1000 * kMilli), 0);
    EXPECT_FALSE(times_.lastMinute(1000 * kMilli));
}

TEST_F(PollTimesTest, AClosedPortLeavesNothingOpen) {
    sent(0);
    times_.forgetOpen();
    EXPECT_EQ(times_.unanswered(1000 * kMilli), 0);
}

}  // namespace
}  // namespace korvane::link
