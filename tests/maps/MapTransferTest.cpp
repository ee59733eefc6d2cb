#include "TransferBench.h"
#include "support/PropertyWatch.h"

namespace korvane::maps {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

class MapReads : public SmallTransferBench {
protected:
    void expectRequest(controls::CommandButton& button, std::uint8_t letter) {
        window_.Caption = "";
        button.press();
        EXPECT_EQ(window_.Caption.get(), "Receiving data from Device...12:00:00");
        EXPECT_EQ(now(), 0);
        EXPECT_TRUE(poll().Enabled);
        machine_.pump.runUntil(machine_.pump.now() + 200);
        ASSERT_EQ(machine_.recorder.arrivals.size(), 1U);
        EXPECT_EQ(machine_.recorder.arrivals[0].byte, letter);
        machine_.recorder.arrivals.clear();
    }
};

TEST_F(MapReads, AskWithOneLetterAndReturnAtOnce) {
    openPort();
    expectRequest(window_.btnReadFuel, 'f');
    expectRequest(window_.btnReadIgn, 'a');
    expectRequest(window_.btnReadMisc, 'm');
}

TEST_F(MapReads, OnAClosedPortChangeTheCaptionAlone) {
    for (auto* button : {&window_.btnReadFuel, &window_.btnReadIgn, &window_.btnReadMisc}) {
        window_.Caption = "";
        button->press();
        EXPECT_EQ(window_.Caption.get(), "Receiving data from Device...12:00:00");
        EXPECT_TRUE(poll().Enabled);
    }
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(MapReads, AllGoOutInARowAfterTheLoad) {
    openPort();
    window_.initialReads();
    EXPECT_EQ(now(), 200);
    EXPECT_EQ(window_.Caption.get(), "PWM table Received 12:00:00");
    EXPECT_THAT(sent(), ElementsAre('m', 'f', 'a', 'p', 0, 0x8F));
}

TEST_F(MapReads, NoneGoesOutAfterTheLoadWhileThePortIsClosed) {
    window_.initialReads();
    EXPECT_EQ(now(), 0);
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps ");
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(MapReads, ThatLoseThePortInARowGoOnToTheirEnd) {
    openPort();
    at(100, [this] { main_.MSComm1.setPortOpen(false); });
    window_.initialReads();
    EXPECT_THAT(sent(), ElementsAre('m', 'f', 'a'));
    EXPECT_TRUE(poll().Enabled);
}

class MapWrite : public SmallTransferBench {
protected:
    MapWrite() {
        number(tables_.FuelMapOut);
        number(tables_.IgnMapOut);
        tables_.FuelMapIn.fill(99);
        tables_.IgnMapIn.fill(98);
    }
};

TEST_F(MapWrite, SendsTheEditedFuelMapItsEndAndTheCommit) {
    openPort();
    window_.btnWriteFuel.press();
    EXPECT_EQ(window_.Caption.get(), "Fuel kartta lähetetty ja talletettu autoon");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), framed({'F'}, tables_.FuelMapOut, 0, 159, {0xB9, 'c'}));
}

TEST_F(MapWrite, SendsTheEditedIgnitionMapItsEndAndTheCommit) {
    openPort();
    window_.btnWriteIgn.press();
    EXPECT_EQ(window_.Caption.get(), "Ignition kartta lähetetty ja talletettu autoon");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), framed({'A'}, tables_.IgnMapOut, 0, 159, {0xBE, 'b'}));
}

TEST_F(MapWrite, LeavesWhatWasReceivedSoThatEditedCellsStayBlue) {
    openPort();
    window_.btnWriteFuel.press();
    window_.btnWriteIgn.press();
    EXPECT_THAT(tables_.FuelMapIn, testing::Each(99));
    EXPECT_THAT(tables_.IgnMapIn, testing::Each(98));
}

// A turn that finds the buffer in use lets 1 ms go by, and each byte is preceded by 1 ms: cell i leaves at 2 * (i + 1).
TEST_F(MapWrite, SendsOneByteAtATimeAndNoFasterThanOneAMillisecond) {
    openPort();
    window_.btnWriteFuel.press();
    ASSERT_EQ(machine_.recorder.arrivals.size(), 163U);
    EXPECT_EQ(arrivalOf(0), 173);
    for (std::size_t cell = 0; cell < 160; ++cell) {
        ASSERT_EQ(arrivalOf(cell + 1), 2000 * (static_cast<platform::Micros>(cell) + 1) + 173) << cell;
    }
    EXPECT_EQ(arrivalOf(161), 320'000 + 2 * 173);  // the closing byte, behind the last cell
    EXPECT_EQ(arrivalOf(162), 420'000 + 173);      // the commit
    EXPECT_EQ(now(), 520);
}

// A byte takes 1041 us at 9600 baud, and the next one waits 1 ms after it has gone.
TEST_F(MapWrite, NeverHasMoreThanOneByteInTheBufferOfASlowLine) {
    openPort();
    ASSERT_TRUE(main_.MSComm1.setLineBaud(9600));
    window_.btnWriteFuel.press();
    ASSERT_EQ(machine_.recorder.arrivals.size(), 163U);
    for (std::size_t i = 1; i <= 160; ++i) {
        ASSERT_GE(arrivalOf(i) - arrivalOf(i - 1), 2041) << i;
    }
}

TEST_F(MapWrite, StopsThePollAndShowsHowFarItIs) {
    openPort();
    bool seen = false;
    at(101, [&] {
        seen = true;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(window_.Caption.get(), "Sending  fuel data");
        EXPECT_TRUE(window_.prgTransfer.Visible);
        EXPECT_EQ(window_.prgTransfer.Max.get(), 160);
        EXPECT_EQ(window_.prgTransfer.Value.get(), 50);
    });
    window_.btnWriteFuel.press();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(window_.prgTransfer.Visible);
}

TEST_F(MapWrite, KeepsThePollStoppedUntilTheCommitIsThrough) {
    openPort();
    int seen = 0;
    for (const int moment : {330, 519}) {
        at(moment, [&] {
            ++seen;
            EXPECT_FALSE(poll().Enabled);
            EXPECT_EQ(window_.Caption.get(), "Sending  Ignition data");
        });
    }
    window_.btnWriteIgn.press();
    EXPECT_EQ(seen, 2);
}

TEST_F(MapWrite, SwitchesThePollOnAndOffBeforeTheCommitOfIgnitionAlone) {
    openPort();
    support::PropertyValues observer(poll(), poll().Enabled);
    window_.btnWriteFuel.press();
    EXPECT_THAT(observer.values, ElementsAre(false, true));
    observer.values.clear();
    window_.btnWriteIgn.press();
    EXPECT_THAT(observer.values, ElementsAre(false, true, false, true));
}

TEST_F(MapWrite, SendsACellThatIsEditedAheadOfItAsEdited) {
    openPort();
    at(100, [this] { tables_.FuelMapOut[159] = 77; });
    window_.btnWriteFuel.press();
    EXPECT_EQ(machine_.recorder.arrivals.at(160).byte, 77);
}

TEST_F(MapWrite, OnAClosedPortEndsWithThePortsErrorAndLeavesThePollAsItIsThen) {
    for (auto* button : {&window_.btnWriteFuel, &window_.btnWriteIgn}) {
        poll().Enabled = true;
        button->press();
        EXPECT_EQ(window_.Caption.get(), kPortClosed);
        EXPECT_FALSE(poll().Enabled);
        EXPECT_FALSE(window_.prgTransfer.Visible);
    }
    EXPECT_THAT(sent(), IsEmpty());
}

// 50 cells have left at 100 ms.
TEST_F(MapWrite, ThatLosesThePortEndsWithThePortsError) {
    openPort();
    at(101, [this] { main_.MSComm1.setPortOpen(false); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_EQ(now(), 102);
    EXPECT_FALSE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_EQ(sent(), framed({'F'}, tables_.FuelMapOut, 0, 49, {}));
}

TEST_F(MapWrite, ThatLosesThePortBeforeItsCommitSaysSoToo) {
    openPort();
    at(400, [this] { machine_.line.pullOut(); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_FALSE(poll().Enabled);
    EXPECT_EQ(sent(), framed({'F'}, tables_.FuelMapOut, 0, 159, {0xB9}));
}

// The second press runs to its end inside the first, which then goes on with cell 50.
TEST_F(MapWrite, PressedAgainWhileItRunsSendsTheMapInTheMiddleOfTheOther) {
    openPort();
    Bytes expected = framed({'F'}, tables_.FuelMapOut, 0, 49, {});
    const Bytes whole = framed({'F'}, tables_.FuelMapOut, 0, 159, {0xB9, 'c'});
    const Bytes rest = framed({}, tables_.FuelMapOut, 50, 159, {0xB9, 'c'});
    expected.insert(expected.end(), whole.begin(), whole.end());
    expected.insert(expected.end(), rest.begin(), rest.end());
    bool seen = false;
    at(101, [this] { window_.btnWriteFuel.press(); });
    at(650, [&] {
        seen = true;
        EXPECT_TRUE(window_.prgTransfer.Visible);
        EXPECT_GT(window_.prgTransfer.Value.get(), 50);
        EXPECT_LT(window_.prgTransfer.Value.get(), 160);
    });
    window_.btnWriteFuel.press();
    EXPECT_TRUE(seen);
    EXPECT_EQ(window_.Caption.get(), "Fuel kartta lähetetty ja talletettu autoon");
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.prgTransfer.Visible);
    EXPECT_EQ(sent(), expected);
}

TEST_F(MapWrite, GoesOnWhenItsWindowIsClosed) {
    openPort();
    at(101, [this] { EXPECT_TRUE(window_.unload()); });
    window_.btnWriteFuel.press();
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(sent(), framed({'F'}, tables_.FuelMapOut, 0, 159, {0xB9, 'c'}));
}

TEST_F(MapWrite, OnALineThatTakesNothingLetsTimeAndEventsGoOn) {
    openPort();
    ASSERT_TRUE(main_.MSComm1.setLineBaud(1));
    at(3000, [this] { main_.MSComm1.setPortOpen(false); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_GE(now(), 3000);
    EXPECT_LE(now(), 3002);
}

}  // namespace
}  // namespace korvane::maps
