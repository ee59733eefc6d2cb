#include <gtest/gtest.h>

#include "TransferBench.h"
#include "maps/transfer/TransferResult.h"

namespace korvane::maps {
namespace {

using support::Bytes;

const Bytes kHalf(160, 1);
const Bytes kTaken{1};
const Bytes kRefusal{0};

class TransferResultTest : public testing::Test {
protected:
    void hear(std::uint8_t code, const Bytes& payload) { static_cast<void>(result_.heard(code, payload)); }

    TransferResult result_;
};

TEST_F(TransferResultTest, SaysNothingBeforeTheFirstTransfer) {
    hear('f', kHalf);
    EXPECT_EQ(result_.text(), "");
    EXPECT_FALSE(result_.isWaiting());
}

TEST_F(TransferResultTest, ASilentEcuIsNoSuccess) {
    result_.begin('f', 160);
    EXPECT_EQ(result_.text(), "Fuel: waiting");
    result_.silent();
    EXPECT_EQ(result_.text(), "Fuel: no answer");
}

TEST_F(TransferResultTest, AWholeReadCountsItsBytes) {
    result_.begin('f', 160);
    hear('f', kHalf);
    EXPECT_EQ(result_.text(), "Fuel: 160 of 160 bytes");
    EXPECT_FALSE(result_.isWaiting());
}

TEST_F(TransferResultTest, ALargeMapNeedsBothHalves) {
    result_.begin('a', 320);
    hear('a', kHalf);
    EXPECT_TRUE(result_.isWaiting());
    result_.silent();
    EXPECT_EQ(result_.text(), "Ignition: 160 of 320 bytes");
    hear(247, kHalf);
    EXPECT_EQ(result_.text(), "Ignition: 320 of 320 bytes");
}

TEST_F(TransferResultTest, AShortAnswerTellsHowFarItGot) {
    result_.begin('f', 160);
    hear('f', Bytes(100, 1));
    result_.silent();
    EXPECT_EQ(result_.text(), "Fuel: 100 of 160 bytes");
}

TEST_F(TransferResultTest, AFrameThatWasCutOffCountsAsFarAsItWasHeard) {
    result_.begin('f', 320);
    hear('f', kHalf);
    result_.partlyHeard(245, 20);
    result_.partlyHeard(245, 70);
    result_.silent();
    EXPECT_EQ(result_.text(), "Fuel: 230 of 320 bytes");
}

TEST_F(TransferResultTest, AFrameThatCameWholeAfterAllCountsOnce) {
    result_.begin('f', 320);
    result_.partlyHeard('f', 90);
    hear('f', kHalf);
    result_.silent();
    EXPECT_EQ(result_.text(), "Fuel: 160 of 320 bytes");
}

TEST_F(TransferResultTest, BytesBeyondAHalfAreNoneOfTheMap) {
    result_.begin('f', 320);
    hear('f', Bytes(200, 1));
    result_.silent();
    EXPECT_EQ(result_.text(), "Fuel: 160 of 320 bytes");
}

TEST_F(TransferResultTest, ATransferThatIsBegunAgainIsToldOnce) {
    result_.begin('f', 160);
    result_.begin('f', 160);
    EXPECT_EQ(result_.text(), "Fuel: waiting");
}

TEST_F(TransferResultTest, AllBytesInAFrameThatWasDroppedAreNoAnswer) {
    result_.begin('m', 9);
    result_.partlyHeard('m', 9);
    result_.silent();
    EXPECT_EQ(result_.text(), "Misc: damaged answer");
}

TEST_F(TransferResultTest, PwmCellsComeOneByOne) {
    result_.begin('p', 160);
    for (std::uint8_t cell = 0; cell < 150; ++cell) {
        hear('p', {cell, 7});
    }
    result_.silent();
    EXPECT_EQ(result_.text(), "PWM: 150 of 160 bytes");
}

TEST_F(TransferResultTest, ASendIsAcknowledgedOrRefused) {
    result_.begin('F', 1);
    hear('F', kTaken);
    EXPECT_EQ(result_.text(), "Fuel: acknowledged");
    result_.begin('A', 1);
    hear('A', kRefusal);
    EXPECT_EQ(result_.text(), "Ignition: refused");
    hear('A', kTaken);
    EXPECT_EQ(result_.text(), "Ignition: refused");
}

TEST_F(TransferResultTest, ASendThatAnotherTransferWasMixedIntoIsNoSuccess) {
    result_.begin('F', 1);
    result_.begin('f', 160);
    hear('F', kTaken);
    EXPECT_EQ(result_.text(), "Fuel send: acknowledged, but mixed with another transfer; Fuel read: waiting");
    EXPECT_TRUE(result_.hasFailed());
    result_.silent();
    result_.begin('a', 160);
    result_.begin('F', 1);
    hear('F', kTaken);
    EXPECT_EQ(result_.text(), "Ignition: waiting; Fuel: acknowledged");
    EXPECT_FALSE(result_.hasFailed());
}

TEST_F(TransferResultTest, OneAcknowledgedHalfIsNotTheMap) {
    result_.begin('F', 2);
    hear('F', kTaken);
    result_.silent();
    EXPECT_EQ(result_.text(), "Fuel: only the first half acknowledged");
    result_.begin('F', 2);
    hear('F', kTaken);
    hear(246, kTaken);
    EXPECT_EQ(result_.text(), "Fuel: acknowledged");
}

TEST_F(TransferResultTest, ACommandThatTheEcuDoesNotKnowIsARefusal) {
    result_.begin('m', 9);
    result_.begin('f', 160);
    hear(153, {});
    hear('f', kHalf);
    EXPECT_EQ(result_.text(), "Misc: refused; Fuel: complete");
}

TEST_F(TransferResultTest, SendsThatTheProtocolLeavesUnansweredAreNotTakenForASuccess) {
    result_.begin('M', 0);
    result_.silent();
    EXPECT_EQ(result_.text(), "Misc: sent, the ECU does not confirm it");
    result_.begin('P', 1);
    hear(170, {});
    EXPECT_EQ(result_.text(), "PWM: the ECU has restarted");
}

TEST_F(TransferResultTest, TransfersOfOneTimeAreToldTogether) {
    for (const char command : {'m', 'f', 'a', 'p'}) {
        result_.begin(static_cast<std::uint8_t>(command), 160);
    }
    hear('f', kHalf);
    hear('a', kHalf);
    result_.silent();
    EXPECT_EQ(result_.text(), "Misc, PWM: no answer; Fuel, Ignition: complete");
    result_.begin('f', 160);
    EXPECT_EQ(result_.text(), "Fuel: waiting");
}

TEST_F(TransferResultTest, AClosedPortEndsTheWait) {
    result_.begin('a', 160);
    result_.lineClosed();
    EXPECT_EQ(result_.text(), "Ignition: the port is closed");
    EXPECT_FALSE(result_.isWaiting());
}

TEST_F(TransferResultTest, NothingAnswersATransferThatTheClosedPortEnded) {
    result_.begin('a', 160);
    result_.lineClosed();
    hear('a', kHalf);
    EXPECT_EQ(result_.text(), "Ignition: the port is closed");
}

TEST_F(TransferResultTest, ALateAnswerCountsUntilItIsTooLate) {
    result_.begin('f', 160);
    result_.begin('a', 160);
    result_.silent();
    hear('f', kHalf);
    result_.tooLate();
    hear('a', kHalf);
    EXPECT_EQ(result_.text(), "Fuel: complete; Ignition: no answer");
}

TEST_F(TransferResultTest, TheAnswerToAnotherWindowIsNoLateAnswer) {
    result_.begin('f', 160);
    result_.begin('a', 160);
    result_.silent();
    result_.begunElsewhere('f');
    hear('f', kHalf);
    hear('a', kHalf);
    EXPECT_EQ(result_.text(), "Fuel: no answer; Ignition: complete");
}

TEST_F(TransferResultTest, AnotherWindowsTransferLeavesOneThatWaitsAlone) {
    result_.begin('f', 160);
    result_.begunElsewhere('f');
    hear('f', kHalf);
    EXPECT_EQ(result_.text(), "Fuel: 160 of 160 bytes");
}

TEST_F(TransferResultTest, OtherCommandsAreNoTransfers) {
    result_.begin('x', 1);
    EXPECT_EQ(result_.text(), "");
}

class TransferWatchTest : public SmallTransferBench {
protected:
    [[nodiscard]] const std::string& text() { return window_.line().watch().Text.get(); }
    void hear(std::uint8_t code, const Bytes& payload) { main_.witnesses.tell(code, payload); }
};

TEST_F(TransferWatchTest, AReadThatNobodyAnswersEndsAfterTwoSeconds) {
    openPort();
    window_.btnReadFuel.press();
    machine_.pump.wait(1900);
    EXPECT_EQ(text(), "Fuel: waiting");
    machine_.pump.wait(200);
    EXPECT_EQ(text(), "Fuel: no answer");
}

TEST_F(TransferWatchTest, AnAnswerThatIsLateByLessThanTenSecondsCounts) {
    openPort();
    window_.btnReadMisc.press();
    machine_.pump.wait(9900);
    hear('m', Bytes(9, 1));
    EXPECT_EQ(text(), "Misc: 9 of 9 bytes");
}

// As a restart that has nothing to do with the table.
TEST_F(TransferWatchTest, WhatComesTenSecondsLaterAnswersSomethingElse) {
    openPort();
    window_.btnSavePWM.press();
    machine_.pump.wait(10'100);
    hear(170, {});
    EXPECT_EQ(text(), "PWM: no answer");
    EXPECT_TRUE(window_.line().watch().Failed);
}

TEST_F(TransferWatchTest, AnAnswerToAnotherWindowIsNotThisOnes) {
    openPort();
    BenchWindow other(machine_.machine, context_, kOrdinaryMaps);
    other.load();
    window_.btnReadFuel.press();
    machine_.pump.wait(2100);
    other.btnReadFuel.press();
    hear('f', kHalf);
    EXPECT_EQ(text(), "Fuel: no answer");
    EXPECT_EQ(other.line().watch().Text.get(), "Fuel: 160 of 160 bytes");
}

TEST_F(TransferWatchTest, EachSignOfTheEcuMakesItWaitLonger) {
    openPort();
    tables_.SWType = 15;
    window_.btnReadIgn.press();
    machine_.pump.wait(1500);
    hear('a', kHalf);
    machine_.pump.wait(1500);
    EXPECT_EQ(text(), "Ignition: waiting");
    hear(247, kHalf);
    EXPECT_EQ(text(), "Ignition: 320 of 320 bytes");
}

TEST_F(TransferWatchTest, OnAClosedPortNothingIsAwaited) {
    window_.btnReadMisc.press();
    EXPECT_EQ(text(), "Misc: the port is closed");
    window_.btnWriteFuel.press();
    EXPECT_EQ(text(), "Fuel: the port is closed");
}

TEST_F(TransferWatchTest, ALostLineEndsTheWaitAtOnce) {
    openPort();
    window_.btnReadFuel.press();
    main_.MSComm1.setPortOpen(false);
    EXPECT_EQ(text(), "Fuel: the port is closed");
}

TEST_F(TransferWatchTest, ASendThatIsUnderWayIsNotSilence) {
    openPort();
    window_.btnSavePWM.press();  // five seconds
    EXPECT_GT(now(), 4000);
    EXPECT_EQ(text(), "PWM: waiting");
    machine_.pump.wait(2100);
    EXPECT_EQ(text(), "PWM: no answer");
}

TEST_F(TransferWatchTest, AnAnswerDuringTheSendCounts) {
    openPort();
    at(100, [this] { hear('F', kTaken); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(text(), "Fuel: acknowledged");
}

TEST_F(TransferWatchTest, TwoSendsOfOneMapAtOnceAreMixedWhateverTheEcuSays) {
    openPort();
    at(100, [this] { window_.btnWriteFuel.press(); });
    window_.btnWriteFuel.press();
    hear('F', kRefusal);
    EXPECT_EQ(text(), "Fuel: refused, but mixed with another transfer");
    window_.btnWriteFuel.press();
    hear('F', kRefusal);
    EXPECT_EQ(text(), "Fuel: refused") << "one behind the other";
}

TEST_F(TransferWatchTest, AFrameThatIsCutOffIsCountedWhileItIsOpen) {
    openPort();
    window_.btnReadFuel.press();
    Bytes begun{'f', 160};
    begun.insert(begun.end(), 90, 1);
    at(100, [&] { static_cast<void>(main_.receiver.consume(begun)); });
    machine_.pump.wait(2200);
    EXPECT_EQ(text(), "Fuel: 90 of 160 bytes");
}

TEST_F(TransferWatchTest, LiveDataAnswersNothing) {
    openPort();
    window_.btnReadFuel.press();
    for (int turn = 0; turn < 30; ++turn) {
        hear('R', Bytes(19, 0));
        machine_.pump.wait(100);
    }
    EXPECT_EQ(text(), "Fuel: no answer");
}

TEST_F(TransferWatchTest, ScriptsReadItOfTheWindow) {
    window_.btnReadFuel.press();
    const auto* const property = window_.findProperty("TransferResult");
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(property->get(window_), controls::Value(std::string("Fuel: the port is closed")));
    EXPECT_EQ(property->set, nullptr);
}

TEST_F(TransferWatchTest, FailsUnlessTheWholeAnswerHasCome) {
    openPort();
    window_.btnReadMisc.press();
    EXPECT_FALSE(window_.line().watch().Failed);
    machine_.pump.wait(2100);
    EXPECT_TRUE(window_.line().watch().Failed);
    hear('m', Bytes(9, 1));
    EXPECT_FALSE(window_.line().watch().Failed);
    window_.btnSaveMisc.press();
    machine_.pump.wait(2100);
    EXPECT_FALSE(window_.line().watch().Failed);
}

TEST_F(TransferWatchTest, SendsNothingItself) {
    openPort();
    window_.btnReadFuel.press();
    machine_.pump.wait(3000);
    EXPECT_EQ(sent(), Bytes{'f'});
}

TEST_F(TransferWatchTest, AReadAndASendOfOneMapAreToldApart) {
    openPort();
    window_.btnReadFuel.press();
    at(static_cast<int>(now()) + 100, [this] { hear('F', kTaken); });
    window_.btnWriteFuel.press();
    EXPECT_EQ(text(), "Fuel read: waiting; Fuel send: acknowledged");
    hear('f', kHalf);
    EXPECT_EQ(text(), "Fuel read: complete; Fuel send: acknowledged");
}

TEST_F(TransferWatchTest, APortThatIsOpenAgainWasClosed) {
    openPort();
    window_.btnReadFuel.press();
    main_.MSComm1.setPortOpen(false);
    EXPECT_EQ(text(), "Fuel: the port is closed");
    main_.MSComm1.setPortOpen(true);
    EXPECT_EQ(text(), "Fuel: the port was closed");
    EXPECT_TRUE(window_.line().watch().Failed);
    main_.MSComm1.setPortOpen(false);
    EXPECT_EQ(text(), "Fuel: the port was closed");
}

TEST_F(TransferResultTest, ARefusalOfASendThatAnotherTransferWasMixedIntoSaysSo) {
    result_.begin('F', 1);
    result_.begin('A', 1);
    hear('F', kRefusal);
    hear('A', kRefusal);
    EXPECT_EQ(result_.text(), "Fuel: refused, but mixed with another transfer; Ignition: refused");
    result_.begin('F', 1);
    result_.mixedInto('F');
    hear('F', kRefusal);
    EXPECT_EQ(result_.text(), "Fuel: refused, but mixed with other commands");
}

TEST_F(TransferResultTest, ASendWithOtherCommandsAmongItsBytesIsNoSuccess) {
    result_.begin('F', 1);
    result_.mixedInto('A');
    hear('F', kTaken);
    EXPECT_EQ(result_.text(), "Fuel: acknowledged");
    result_.begin('F', 1);
    result_.mixedInto('F');
    EXPECT_EQ(result_.text(), "Fuel: waiting");
    hear('F', kTaken);
    EXPECT_EQ(result_.text(), "Fuel: acknowledged, but mixed with other commands");
    EXPECT_TRUE(result_.hasFailed());
    result_.begin('F', 1);
    hear('F', kTaken);
    EXPECT_EQ(result_.text(), "Fuel: acknowledged");
    EXPECT_FALSE(result_.hasFailed());
}

}  // namespace
}  // namespace korvane::maps
