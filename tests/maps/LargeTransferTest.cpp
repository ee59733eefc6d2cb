#include "TransferBench.h"
#include "link/Dispatcher.h"

namespace korvane::maps {
namespace {

using support::Bytes;
using testing::IsEmpty;

// One half takes 320 ms: 160 cells at 2 ms each.
class LargeWrite : public LargeTransferBench {
protected:
    LargeWrite() {
        number(tables_.FuelMapOut);
        number(tables_.IgnMapOut);
    }

    void acknowledge(int milliseconds, std::int16_t count) {
        at(milliseconds,
           [this, count] { tables_.FuelSendAcks = static_cast<std::int16_t>(tables_.FuelSendAcks + count); });
    }

    [[nodiscard]] Bytes halves(const Bytes& commit) const {
        Bytes bytes = framed({'F'}, tables_.FuelMapOut, 0, 159, {0xB9});
        const Bytes second = framed({246}, tables_.FuelMapOut, 160, 319, {9});
        bytes.insert(bytes.end(), second.begin(), second.end());
        bytes.insert(bytes.end(), commit.begin(), commit.end());
        return bytes;
    }
};

// The first half ends at 320. Its acknowledgement at 330 is seen in the second turn, the second half runs to 650, its
// acknowledgement at 660 is seen at once, and the commit follows at 760.
TEST_F(LargeWrite, CommitsWhenBothHalvesAreAcknowledged) {
    openPort();
    acknowledge(330, 1);
    acknowledge(660, 10);
    window_.btnWriteFuel.press();
    EXPECT_EQ(now(), 860);
    EXPECT_EQ(window_.Caption.get(), "Fuel kartta lähetetty ja talletettu autoon");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_EQ(arrivalOf(162), 330'000 + 173);  // 246
    EXPECT_EQ(arrivalOf(324), 760'000 + 173);  // the commit
    EXPECT_EQ(sent(), halves({'c'}));
}

TEST_F(LargeWrite, SendsIgnitionWithLettersAndACounterOfItsOwn) {
    openPort();
    at(330, [this] { tables_.IgnSendAcks = 1; });
    at(660, [this] { tables_.IgnSendAcks = 11; });
    window_.btnWriteIgn.press();
    EXPECT_EQ(window_.Caption.get(), "Ignition kartta lähetetty ja talletettu autoon");
    Bytes expected = framed({'A'}, tables_.IgnMapOut, 0, 159, {0xBE});
    const Bytes second = framed({248}, tables_.IgnMapOut, 160, 319, {7, 'b'});
    expected.insert(expected.end(), second.begin(), second.end());
    EXPECT_EQ(sent(), expected);
}

// 320 + 500 ms for the missing acknowledgement, 320 for the second half, 1000 for the count and 100 at the end.
TEST_F(LargeWrite, WithoutTheFirstAcknowledgementSendsTheSecondHalfButNoCommit) {
    openPort();
    acknowledge(1150, 10);
    window_.btnWriteFuel.press();
    EXPECT_EQ(arrivalOf(162), 820'000 + 173);
    EXPECT_EQ(now(), 2240);
    EXPECT_EQ(window_.Caption.get(), "Sending  fuel data");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
    EXPECT_EQ(sent(), halves({}));
}

TEST_F(LargeWrite, CommitsAlsoWhenTheFirstAcknowledgementComesLate) {
    openPort();
    acknowledge(900, 1);
    acknowledge(1150, 10);
    window_.btnWriteFuel.press();
    EXPECT_EQ(sent(), halves({'c'}));
}

// 330 + 320 + 1000 + 100.
TEST_F(LargeWrite, WithoutTheSecondAcknowledgementCommitsNothing) {
    openPort();
    acknowledge(330, 1);
    window_.btnWriteFuel.press();
    EXPECT_EQ(now(), 1750);
    EXPECT_EQ(window_.Caption.get(), "Sending  fuel data");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), halves({}));
}

TEST_F(LargeWrite, WhoseSecondHalfIsRefusedCommitsNothing) {
    openPort();
    link::Windows windows;
    link::Dispatcher dispatcher(machine_.machine, main_, tables_, windows);
    Bytes accepted{1};
    Bytes refused{0};
    at(330, [&] { dispatcher.DoCommand('F', accepted); });
    at(660, [&] { dispatcher.DoCommand(246, refused); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(tables_.FuelSendAcks, 1);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), halves({}));
    const auto messages = machine_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].title, "Virhe");
}

TEST_F(LargeWrite, DoesNotCountAcknowledgementsOfAnEarlierOne) {
    openPort();
    tables_.FuelSendAcks = 11;
    window_.btnWriteFuel.press();
    EXPECT_EQ(tables_.FuelSendAcks, 0);
    EXPECT_EQ(sent(), halves({}));
}

TEST_F(LargeWrite, CommitsOnNoOtherCountThanEleven) {
    openPort();
    acknowledge(330, 2);
    acknowledge(1150, 10);
    window_.btnWriteFuel.press();
    EXPECT_EQ(tables_.FuelSendAcks, 12);
    EXPECT_EQ(sent(), halves({}));
}

TEST_F(LargeWrite, StopsAPollThatSomethingElseHasStartedBeforeTheCommit) {
    openPort();
    acknowledge(330, 1);
    acknowledge(660, 10);
    bool seen = false;
    at(500, [this] { poll().Enabled = true; });
    at(700, [&] {
        seen = true;
        EXPECT_FALSE(poll().Enabled);
    });
    window_.btnWriteFuel.press();
    EXPECT_TRUE(seen);
}

TEST_F(LargeWrite, ShowsHowFarItIsOverBothHalves) {
    openPort();
    acknowledge(330, 1);
    acknowledge(660, 10);
    std::vector<int> values;
    for (const int moment : {322, 431, 655}) {
        at(moment, [&] {
            EXPECT_TRUE(window_.prgTransfer.Visible);
            EXPECT_EQ(window_.prgTransfer.Max.get(), 320);
            values.push_back(window_.prgTransfer.Value);
        });
    }
    window_.btnWriteFuel.press();
    EXPECT_THAT(values, testing::ElementsAre(160, 210, 320));
}

// At 431 ms, 50 cells of the second half have left.
TEST_F(LargeWrite, ThatLosesThePortInTheSecondHalfEndsWithThePortsError) {
    openPort();
    acknowledge(330, 1);
    at(431, [this] { main_.MSComm1.setPortOpen(false); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_FALSE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_EQ(sent().size(), 162U + 51U);
}

// A pulled cable while it waits for the first acknowledgement: the second half meets the closed port.
TEST_F(LargeWrite, ThatLosesThePortInAPauseEndsWithThePortsError) {
    openPort();
    at(400, [this] { machine_.line.pullOut(); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(now(), 820);
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_FALSE(poll().Enabled);
}

TEST_F(LargeWrite, PressedAgainWhileItRunsEndsBoth) {
    openPort();
    at(101, [this] { window_.btnWriteFuel.press(); });
    window_.btnWriteFuel.press();
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_EQ(sent().size(), 2 * 324U);
}

TEST_F(LargeWrite, GoesOnWhenItsWindowIsClosed) {
    openPort();
    acknowledge(330, 1);
    acknowledge(660, 10);
    at(325, [this] { EXPECT_TRUE(window_.unload()); });
    window_.btnWriteFuel.press();
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), halves({'c'}));
}

}  // namespace
}  // namespace korvane::maps
