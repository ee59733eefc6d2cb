#include "TransferBench.h"

namespace korvane::maps {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

using PwmRead = SmallTransferBench;

TEST_F(PwmRead, AsksOnceTheLineIsQuiet) {
    openPort();
    bool seen = false;
    at(100, [&] {
        seen = true;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(window_.Caption.get(), "Receiving data from Device...12:00:00");
        EXPECT_THAT(machine_.recorder.arrivals, IsEmpty());
    });
    window_.btnReadPWM.press();
    EXPECT_TRUE(seen);
    EXPECT_EQ(now(), 200);
    EXPECT_EQ(window_.Caption.get(), "PWM table Received 12:00:00");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_THAT(sent(), ElementsAre('p', 0, 0x8F));
}

TEST_F(PwmRead, ChangesTheCaptionAloneOnAClosedPort) {
    for (const bool polls : {true, false}) {
        poll().Enabled = polls;
        window_.btnReadPWM.press();
        EXPECT_EQ(window_.Caption.get(), "PWM table Received 12:00:00");
        EXPECT_EQ(poll().Enabled.get(), polls);
    }
    EXPECT_EQ(now(), 0);
    EXPECT_THAT(sent(), IsEmpty());
}

class PwmSave : public SmallTransferBench {
protected:
    PwmSave() { number(tables_.PwmMapOut); }

    static Bytes cellFrames(int first, int last) {
        Bytes bytes;
        for (int cell = first; cell <= last; ++cell) {
            const auto index = static_cast<std::uint8_t>(cell);
            const auto value = static_cast<std::uint8_t>(cell + 3);
            bytes.insert(bytes.end(), {'P', index, index, value, value, 0xAF});
        }
        return bytes;
    }
    static Bytes withEnd(Bytes bytes) {
        bytes.insert(bytes.end(), {'o', 0x90, 'X', 0xA7});
        return bytes;
    }
};

TEST_F(PwmSave, SendsEachCellTwiceCheckedAndRestartsTheEcu) {
    openPort();
    window_.btnSavePWM.press();
    EXPECT_EQ(sent(), withEnd(cellFrames(61, 159)));
}

// 200 ms, then 99 cells of 50 ms.
TEST_F(PwmSave, TakesFiftyMillisecondsForACell) {
    openPort();
    window_.btnSavePWM.press();
    EXPECT_EQ(now(), 5150);
    ASSERT_GE(machine_.recorder.arrivals.size(), 594U);
    EXPECT_EQ(arrivalOf(0), 200'000 + 173);
    EXPECT_EQ(arrivalOf(6), 250'000 + 173);
    EXPECT_EQ(arrivalOf(588), 200'000 + 98 * 50'000 + 173);
    EXPECT_EQ(window_.Caption.get(), "PWM table have been sent to ECU 12:00:05");
}

TEST_F(PwmSave, StopsThePollAndShowsHowFarItIs) {
    openPort();
    int seen = 0;
    at(100, [&] {
        ++seen;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps ");
    });
    at(675, [&] {
        ++seen;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(window_.Caption.get(), "Sending PWM table 12:00:00");
        EXPECT_TRUE(window_.prgTransfer.Visible);
        EXPECT_EQ(window_.prgTransfer.Max.get(), 99);
        EXPECT_EQ(window_.prgTransfer.Value.get(), 10);
    });
    window_.btnSavePWM.press();
    EXPECT_EQ(seen, 2);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
}

TEST_F(PwmSave, OnAClosedPortStillWalksTheCells) {
    window_.btnSavePWM.press();
    EXPECT_EQ(now(), 5150);
    EXPECT_EQ(window_.Caption.get(), "PWM table have been sent to ECU 12:00:05");
    EXPECT_EQ(window_.pwm(60).ToolTipText.get(), "");
    EXPECT_EQ(window_.pwm(61).ToolTipText.get(), "64");
    EXPECT_EQ(window_.pwm(159).ToolTipText.get(), "162");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(PwmSave, SendsNoCellBeforeTheWindowHasFinishedLoading) {
    openPort();
    window_.isFormLoaded = false;
    window_.btnSavePWM.press();
    EXPECT_EQ(window_.pwm(61).ToolTipText.get(), "64");
    EXPECT_THAT(sent(), ElementsAre('o', 0x90, 'X', 0xA7));
}

// Ten cells have left by 675 ms.
TEST_F(PwmSave, ThatLosesThePortGoesOnWithoutIt) {
    openPort();
    at(675, [this] { machine_.line.pullOut(); });
    window_.btnSavePWM.press();
    EXPECT_EQ(window_.Caption.get(), "PWM table have been sent to ECU 12:00:05");
    EXPECT_EQ(window_.pwm(159).ToolTipText.get(), "162");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), cellFrames(61, 70));
}

TEST_F(PwmSave, PressedAgainWhileItRunsSendsTheTableInTheMiddleOfTheOther) {
    openPort();
    Bytes expected = cellFrames(61, 70);
    const Bytes whole = withEnd(cellFrames(61, 159));
    const Bytes rest = withEnd(cellFrames(71, 159));
    expected.insert(expected.end(), whole.begin(), whole.end());
    expected.insert(expected.end(), rest.begin(), rest.end());
    at(675, [this] { window_.btnSavePWM.press(); });
    window_.btnSavePWM.press();
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_EQ(sent(), expected);
}

}  // namespace
}  // namespace korvane::maps
