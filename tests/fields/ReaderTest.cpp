// What holds for any plan: depth, the poll, the bars, and a window that is unloaded.
#include "FieldsBench.h"
#include "fields/PollStop.h"

namespace korvane::fields {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr std::array kTwo{one(&A::NTC1_OFF), one(&A::NTC2_OFF)};

class ReaderTest : public FieldsBench {
protected:
    controls::ProgressBar bar_{window_, "bar"};
};

TEST_F(ReaderTest, ReadsInsideReadsEndAtEight) {
    Reader reader(context_, {kTwo, 10});
    const std::function<void()> again = [&] { reader.run(again); };
    reader.run(again);
    EXPECT_THAT(line_.sent(), SizeIs(8 * 2));
}

TEST_F(ReaderTest, AWindowThatGoesEndsTheRead) {
    virtual_.at(5, [&] { window_.unload(); });
    Reader(context_, {kTwo, 10}).run();
    EXPECT_THAT(line_.sent(), SizeIs(1));
}

TEST_F(ReaderTest, ThePollStandsStillWithItsOwnInterval) {
    auto& poll = context_.poll;
    poll.Interval = 200;
    poll.Enabled = true;
    bool seen = false;
    virtual_.at(5, [&] {
        seen = true;
        EXPECT_FALSE(poll.Enabled);
        EXPECT_EQ(poll.Interval.get(), 500);
    });
    Reader(context_, {kTwo, 10, {}, 500}).run();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(poll.Enabled);
    EXPECT_EQ(poll.Interval.get(), 200);
}

TEST_F(ReaderTest, BarsCountTheReadsAndHideBehindThem) {
    std::vector<int> values;
    for (const int ms : {5, 15}) {
        virtual_.at(ms, [&] {
            EXPECT_TRUE(bar_.Visible);
            EXPECT_EQ(bar_.Max.get(), 2);
            values.push_back(bar_.Value);
        });
    }
    Reader(context_, {kTwo, 10}, {&bar_}).run();
    EXPECT_THAT(values, ElementsAre(0, 1));
    EXPECT_FALSE(bar_.Visible);
}

// One read inside another, on the same bar: the inner one runs from 0 to 2, then the outer one has its 1 back.
TEST_F(ReaderTest, AnInnerReadGivesTheBarBack) {
    Reader reader(context_, {kTwo, 10}, {&bar_});
    int value = -1;
    virtual_.at(15, [&] {
        reader.run();
        value = bar_.Value;
    });
    reader.run();
    EXPECT_EQ(value, 1);
    EXPECT_FALSE(bar_.Visible);
}

TEST_F(ReaderTest, ASaveStopsThePollWhereItsPlanSaysSo) {
    static constexpr std::array steps{SaveStep{&A::LAUNCH_DELAY_OFF, k50}};
    for (const bool stops : {true, false}) {
        context_.poll.Enabled = true;
        virtual_.at(static_cast<int>(now()) + 25, [&] { EXPECT_EQ(context_.poll.Enabled.get(), !stops); });
        saver_.run({steps, stops});
        EXPECT_TRUE(context_.poll.Enabled);
    }
}

// A word takes 50 ms between its bytes by itself. The word of the launch limit is written as two bytes, and the mark of
// its first lets that one clear the second before it comes.
TEST_F(ReaderTest, ASaveMayWaitBetweenTheBytesOfAPair) {
    static constexpr std::array steps{SaveStep{.address = &A::RPM_LIMIT_OFF, .pause = k50},
                                      SaveStep{.address = &A::LAUNCHCONTROL_LO, .pause = k50, .betweenBytes = 70}};
    txtLimit_.Text = "40000";  // 156 * 256 + 64
    txtLaunch_.Text = "5000";  // 19 * 256 + 136
    EXPECT_TRUE(saver_.run({steps}));
    EXPECT_THAT(line_.sent(), ElementsAre("0 1908=64", "50 1909=156", "100 511=136", "150 512=0", "220 512=19"));
    EXPECT_EQ(now(), 270);
}

TEST_F(ReaderTest, ASaveEndsAtANumberThatDoesNotFit) {
    static constexpr std::array steps{SaveStep{&A::LAUNCH_DELAY_OFF}, SaveStep{&A::RPM_LIMIT_OFF}};
    txtDelay_.Text = "7";
    for (const char* text : {"65536", "-1", "1e12"}) {
        txtLimit_.Text = text;
        line_.notes.clear();
        EXPECT_FALSE(saver_.run({steps})) << text;
        EXPECT_THAT(line_.sent(), SizeIs(1)) << text;
        const auto messages = virtual_.dialogs.takeMessages();
        ASSERT_THAT(messages, SizeIs(1)) << text;
        EXPECT_THAT(messages.front().text, HasSubstr("it must be from 0 to 65535.")) << text;
    }
}

}  // namespace
}  // namespace korvane::fields
