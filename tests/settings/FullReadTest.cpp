#include <set>

#include "MiscBench.h"
#include "support/PropertyWatch.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kLoading = "Receiving data from target device!:  Loading.. ";
const std::string kReceived = "Receiving data from target device!:  Received 100%";

// The pause of 30 ms, the one behind the block, and those behind 130 reads, three of which have two.
constexpr int kPass = 30 + 150 + 133 * 150;

class FullReadTest : public MiscBench {
protected:
    // "R 507" and so on, in the order in which the addresses go out.
    static Lines expectedReads() {
        Lines lines{"101"};
        const auto bytes = [&](const std::vector<int>& addresses) {
            for (const int address : addresses) {
                lines.push_back("R " + std::to_string(address));
            }
        };
        const auto range = [&](int first, int last) {
            for (int address = first; address <= last; ++address) {
                bytes({address});
            }
        };
        bytes({507, 508, 509, 510, 511, 512, 971, 346});
        range(392, 396);
        bytes({14, 1027, 367});
        range(558, 573);
        bytes({345, 1026, 1, 497, 496, 498, 399});
        range(540, 555);
        bytes({518, 516, 517, 969, 970, 979});
        range(950, 965);
        bytes({967, 968, 972, 977, 978, 503, 502, 504, 505, 515, 980, 982, 981, 983, 984, 985, 986, 987});
        lines.emplace_back("U 1005");
        bytes({500, 501, 520, 521, 522, 1002});
        lines.emplace_back("U 1000");
        bytes({514, 513, 365, 366, 11, 12, 367});
        bytes({13, 10, 9, 8, 1026, 971, 972, 973, 974, 361});
        range(350, 359);
        return lines;
    }

    static Lines withoutTimes(const Lines& lines) {
        Lines texts;
        for (const auto& line : lines) {
            texts.push_back(line.substr(line.find(' ') + 1));
        }
        return texts;
    }
};

TEST_F(FullReadTest, AsksForTheBlockAndThenForEveryAddressInItsOrder) {
    showOnOpenPort();
    frmMisc_.btnLoad.press();
    EXPECT_THAT(withoutTimes(sent()), ElementsAreArray(expectedReads()));
    EXPECT_EQ(expectedReads().size(), 131U);
}

TEST_F(FullReadTest, PausesBehindEachRead) {
    showOnOpenPort();
    frmMisc_.btnLoad.press();
    const Lines lines = sent();
    EXPECT_EQ(lines.at(0), "30 101");
    EXPECT_EQ(lines.at(1), "180 R 507");
    EXPECT_EQ(lines.at(2), "330 R 508");
    EXPECT_EQ(lines.at(5), "780 R 511");
    EXPECT_EQ(lines.at(6), "1080 R 512");  // two pauses
    EXPECT_EQ(lines.at(7), "1230 R 971");
    EXPECT_EQ(lines.at(38), "5880 R 498");
    EXPECT_EQ(lines.at(39), "6180 R 399");  // two pauses
    EXPECT_EQ(lines.at(96), "14730 U 1005");
    EXPECT_EQ(lines.at(97), "15030 R 500");  // two pauses
    EXPECT_EQ(lines.back(), "19980 R 359");
    EXPECT_EQ(now(), kPass);
}

// Some addresses are read twice.
TEST_F(FullReadTest, TellsThatASilentEcuHasAnsweredNothing) {
    showOnOpenPort();
    frmMisc_.btnLoad.press();
    EXPECT_EQ(frmMisc_.Caption.get(), kReceived);
    EXPECT_EQ(frmMisc_.readAnswers().Text.get(), "Parameters: no answer");
    EXPECT_TRUE(frmMisc_.readAnswers().Failed);
    const Lines reads = expectedReads();
    const std::set<std::string> places(reads.begin() + 1, reads.end());
    byteReply(507, 1);
    wordReply(1005, 300);
    EXPECT_EQ(frmMisc_.readAnswers().Text.get(), "Parameters: 2 of " + std::to_string(places.size()) + " answered");
    for (const auto& place : places) {
        byteReply(std::stoi(place.substr(2)), 1);
    }
    EXPECT_FALSE(frmMisc_.readAnswers().Failed);
}

TEST_F(FullReadTest, TellsThatThePortIsClosed) {
    show();
    frmMisc_.btnLoad.press();
    EXPECT_EQ(frmMisc_.readAnswers().Text.get(), "Parameters: the port is closed");
    openPort();
    EXPECT_EQ(frmMisc_.readAnswers().Text.get(), "Parameters: the port was closed");
}

TEST_F(FullReadTest, CountsInTheCaption) {
    showOnOpenPort();
    const support::PropertyValues captions(frmMisc_, frmMisc_.Caption);
    frmMisc_.btnLoad.press();
    Lines expected;
    const auto percents = [&](double first, double last, double step) {
        for (double percent = first; percent <= last; percent += step) {
            const int tenths = static_cast<int>(percent * 10);
            expected.push_back(kLoading + std::to_string(tenths / 10) + (tenths % 10 != 0 ? ".5%" : "%"));
        }
    };
    percents(0, 0, 1);
    percents(10, 12, 2);
    percents(16, 20, 1);
    percents(45, 60, 1);
    percents(12, 12, 1);
    percents(20, 22, 2);
    percents(25, 40, 1);  // 25 is shown already when the boost cells begin
    percents(43, 45, 2);
    percents(70, 77.5, 0.5);
    percents(87, 87, 1);
    percents(90, 95, 1);
    percents(95.5, 99.5, 0.5);  // 95 is shown already when the acceleration cells begin
    expected.push_back(kReceived);
    EXPECT_THAT(captions.values, ElementsAreArray(expected));
}

TEST_F(FullReadTest, TakesAsLongOnAClosedPortAndChangesNoField) {
    show();
    frmMisc_.txtInjMode.Text = "typed";
    frmMisc_.btnLoad.press();
    EXPECT_EQ(now(), kPass);
    EXPECT_EQ(frmMisc_.Caption.get(), kReceived);
    EXPECT_EQ(frmMisc_.txtInjMode.Text.get(), "typed");
    EXPECT_EQ(frmMisc_.txtStart.Text.get(), "");
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(virtual_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(FullReadTest, StopsThePollAndGivesItsIntervalBack) {
    show();
    poll().Enabled = true;
    poll().Interval = 75;
    bool seen = false;
    at(1000, [&] {
        seen = true;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(poll().Interval, 500);
    });
    frmMisc_.btnLoad.press();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(poll().Interval, 75);
}

TEST_F(FullReadTest, StartsAPollThatDidNotRun) {
    show();
    poll().Enabled = false;
    frmMisc_.btnLoad.press();
    EXPECT_TRUE(poll().Enabled);
}

// The answer to the block starts the poll in the middle of the list.
TEST_F(FullReadTest, PollsSlowlyOnceTheBlockHasCome) {
    showOnOpenPort();
    poll().Interval = 10;
    main_.TimerRequestData.Tick = [this] { main_.MSComm1.Output('x'); };
    at(100, [&] { reply('e', {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 20, 200}); });
    frmMisc_.btnLoad.press();
    Lines polls;
    for (const auto& line : sent()) {
        if (line.ends_with(" 120")) {
            polls.push_back(line);
        }
    }
    ASSERT_GE(polls.size(), 2U);
    EXPECT_EQ(polls[0], "1200 120");  // 100 + 2 pauses of 300 + 500
    EXPECT_EQ(polls[1], "1700 120");
    EXPECT_EQ(poll().Interval, 10);
}

TEST_F(FullReadTest, PressedAgainRunsAWholePassInside) {
    showOnOpenPort();
    poll().Interval = 75;
    at(1000, [&] { frmMisc_.btnLoad.press(); });
    frmMisc_.btnLoad.press();
    EXPECT_EQ(now(), 1000 + kPass + (kPass - 1080));  // the outer one is asking for 511 when the inner one begins
    const Lines lines = sent();
    EXPECT_EQ(lines.size(), 2 * 131U);
    EXPECT_EQ(lines.at(6), "1030 101");
    EXPECT_EQ(lines.at(6 + 130), std::to_string(1000 + kPass - 150) + " R 359");
    EXPECT_THAT(lines.at(6 + 131), testing::EndsWith("R 512"));
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(poll().Interval, 75);
    EXPECT_EQ(frmMisc_.Caption.get(), kReceived);
}

TEST_F(FullReadTest, PressedOverAndOverDoesNotPileUp) {
    show();
    poll().Interval = 75;
    for (int i = 1; i <= 100; ++i) {
        at(i, [&] { frmMisc_.btnLoad.press(); });
    }
    frmMisc_.btnLoad.press();
    EXPECT_LE(now(), 9 * kPass);
    EXPECT_EQ(poll().Interval, 75);
    EXPECT_TRUE(poll().Enabled);
}

TEST_F(FullReadTest, GoesOnInSilenceWhenTheCableIsPulledOut) {
    showOnOpenPort();
    at(1000, [&] { line_.pullOut(); });
    frmMisc_.btnLoad.press();
    EXPECT_EQ(now(), kPass);
    EXPECT_EQ(sent().size(), 6U);
    EXPECT_EQ(frmMisc_.Caption.get(), kReceived);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(frmMisc_.prgLoad.Visible);
    EXPECT_THAT(virtual_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(FullReadTest, GoesOnBehindTheCloseBox) {
    showOnOpenPort();
    at(1000, [&] { EXPECT_FALSE(frmMisc_.unload()); });
    frmMisc_.btnLoad.press();
    EXPECT_EQ(now(), kPass);
    EXPECT_EQ(sent().size(), 131U);
    EXPECT_FALSE(frmMisc_.Visible);
}

// Up to the end of the pause in which it is.
TEST_F(FullReadTest, EndsWithTheProgram) {
    showOnOpenPort();
    at(1000, [&] { frmMisc_.leave(); });
    frmMisc_.btnLoad.press();
    EXPECT_EQ(now(), 1080);
    EXPECT_FALSE(main_.prgSettings.Visible);
    EXPECT_FALSE(frmMisc_.isLoaded());
}

// The bar counts what was asked for.
TEST_F(FullReadTest, TheMainWindowTellsHowManyCellsHaveAnswered) {
    showOnOpenPort();
    std::string none;
    std::string one;
    at(200, [&] {
        none = main_.settingsTally.Text;
        byteReply(507, 0xDC);
        one = main_.settingsTally.Text;
    });
    frmMisc_.btnLoad.press();
    EXPECT_THAT(none, testing::MatchesRegex("0 of [0-9]+ cells? answered"));
    EXPECT_THAT(one, testing::MatchesRegex("1 of [0-9]+ cells? answered"));
}

TEST_F(FullReadTest, TakesRepliesInItsPauses) {
    showOnOpenPort();
    at(200, [&] { byteReply(507, 0xDC); });
    at(350, [&] {
        EXPECT_EQ(frmMisc_.txtMotorBrakeLow.Text.get(), "220");
        byteReply(508, 5);
    });
    frmMisc_.btnLoad.press();
    EXPECT_EQ(frmMisc_.txtMotorBrakeLow.Text.get(), "1500");
}

TEST_F(FullReadTest, ShowsItsProgress) {
    show();
    EXPECT_FALSE(frmMisc_.prgLoad.Visible);
    int seen = 0;
    at(100, [&] {
        ++seen;
        EXPECT_TRUE(frmMisc_.prgLoad.Visible);
        EXPECT_EQ(frmMisc_.prgLoad.Value, 0);
        EXPECT_EQ(frmMisc_.prgLoad.Max, 130);
    });
    at(kPass - 100, [&] {
        ++seen;
        EXPECT_EQ(frmMisc_.prgLoad.Value, 129);
    });
    frmMisc_.btnLoad.press();
    EXPECT_EQ(seen, 2);
    EXPECT_FALSE(frmMisc_.prgLoad.Visible);
}

// Firmware of type 30 keeps its launch limit where the others have the idle regulator.
TEST_F(FullReadTest, AsksForTheAddressesOfTheFirmwaresLayout) {
    core::InitParams(tables_, 30);
    showOnOpenPort();
    frmMisc_.btnLoad.press();
    const Lines lines = sent();
    EXPECT_EQ(lines.at(5), "780 R 500");
    EXPECT_EQ(lines.at(6), "1080 R 501");
}

TEST_F(FullReadTest, BeginsATenthOfASecondBehindTheLoad) {
    openPort();
    frmMisc_.load();
    EXPECT_THAT(sent(), ElementsAre("0 R 518"));
    virtual_.pump.wait(99);
    EXPECT_EQ(frmMisc_.Caption.get(), "Misc");
    virtual_.pump.wait(1);
    EXPECT_EQ(now(), 100 + kPass);
    EXPECT_EQ(sent().front(), "130 101");
    virtual_.pump.wait(1000);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_FALSE(frmMisc_.TimerInitialGetData.Enabled);
}

TEST_F(FullReadTest, WithoutAConnectionTheOpeningRunsToItsEndAllTheSame) {
    frmMisc_.show();
    virtual_.pump.wait(100);
    EXPECT_EQ(now(), 100 + kPass);
    EXPECT_EQ(frmMisc_.Caption.get(), kReceived);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(frmMisc_.txtInjMode.Text.get(), "");
    EXPECT_EQ(frmMisc_.txtMotorBrakeLow.Text.get(), "");
}

}  // namespace
}  // namespace korvane::settings
