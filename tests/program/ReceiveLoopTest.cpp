#include <functional>
#include <gmock/gmock.h>
#include <limits>
#include <memory>

#include "platform/EventPump.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using platform::kMicrosPerMilli;
using support::Bytes;
using support::frame;
using support::VirtualProgram;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
const Bytes kIdentity{0, 1, 13, 58, 11};

class ReceiveLoopTest : public testing::Test {
protected:
    ReceiveLoopTest() {
        program_.connect();
        program_.window.TimerRequestData.Enabled = false;
        program_.window.TimerGetSettings.Enabled = false;
    }

    // Calls `what` after so many milliseconds, inside whatever is running then.
    void after(int milliseconds, std::function<void()> what) {
        alarms_.push_back(program_.pump.makeAlarm(std::move(what)));
        alarms_.back()->callAt(program_.pump.now() + milliseconds * kMicrosPerMilli);
    }
    void injectAfter(int milliseconds, const Bytes& bytes) {
        after(milliseconds, [this, bytes] { program_.line.inject(bytes); });
    }
    // Also while the program blocks.
    void injectFromDeviceAfter(int milliseconds, const Bytes& bytes) {
        alarms_.push_back(
            program_.pump.makeAlarm([this, bytes] { program_.line.inject(bytes); }, platform::AlarmKind::Device));
        alarms_.back()->callAt(program_.pump.now() + milliseconds * kMicrosPerMilli);
    }
    [[nodiscard]] const ReceiveMachine& receiver() const { return program_.window.receiver; }
    [[nodiscard]] int storedType() const { return std::get<std::int32_t>(program_.tables.EEParams.at(3000).value); }

    VirtualProgram program_;
    std::vector<std::unique_ptr<platform::Alarm>> alarms_;
};

TEST_F(ReceiveLoopTest, AFrameFromTheLineActsOnTheProgram) {
    program_.receiveFrame('T', {7, 1, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 7);
}

TEST_F(ReceiveLoopTest, FramesThatComeTogetherAreAllDispatchedInOrder) {
    Bytes bytes = frame('T', {7, 1, 0});
    for (const auto& more : {frame('T', {8, 1, 0}), frame('T', {9, 2, 0})}) {
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    program_.receive(bytes);
    EXPECT_EQ(program_.tables.EEImage[1], 8);
    EXPECT_EQ(program_.tables.EEImage[2], 9);
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 0U);
}

TEST_F(ReceiveLoopTest, EveryByteIsCountedAlsoNoiseAndBrokenFrames) {
    program_.receive({0, 0, 'R', 1, 2, 3, 9});
    EXPECT_EQ(program_.window.bytesReceived, 7);
}

TEST_F(ReceiveLoopTest, ADisconnectDoesNotResetTheCount) {
    program_.receive({0, 0, 0});
    program_.connect();
    program_.connect();
    EXPECT_EQ(program_.window.bytesReceived, 3);
    program_.receive({0});
    EXPECT_EQ(program_.window.bytesReceived, 4);
}

TEST_F(ReceiveLoopTest, ABrokenFrameIsSeenNowhere) {
    const auto caption = program_.window.Caption.get();
    program_.receive({'T', 3, 7, 1, 0, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 0);
    EXPECT_EQ(program_.window.Caption.get(), caption);
    EXPECT_THAT(program_.dialogs.takeMessages(), IsEmpty());
    program_.receiveFrame('T', {8, 1, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 8);
}

TEST_F(ReceiveLoopTest, ADisconnectInMidFrameLeavesItOpenAcrossAReconnect) {
    program_.receive({'T', 3, 7});
    program_.connect();
    EXPECT_FALSE(program_.window.MSComm1.PortOpen());
    EXPECT_EQ(receiver().rxPosition(), 3);
    EXPECT_EQ(receiver().rxCommand(), 'T');
    program_.connect();
    EXPECT_EQ(receiver().rxPosition(), 3);
    program_.receive({1, 0, 0xAB});
    EXPECT_EQ(program_.tables.EEImage[1], 7);
}

TEST_F(ReceiveLoopTest, WhatComesAfterAReconnectFillsTheOpenFrameAndIsDropped) {
    program_.receive({'T', 4, 7, 1});
    program_.connect();
    program_.connect();
    program_.receiveFrame('T', {9, 2, 0});
    EXPECT_EQ(program_.tables.EEImage[2], 0);
    program_.receiveFrame('T', {8, 2, 0});
    EXPECT_EQ(program_.tables.EEImage[2], 8);
}

TEST_F(ReceiveLoopTest, AFailingHandlerCostsItsFrameOnly) {
    program_.receiveFrame('R', {1, 2, 3});
    EXPECT_THAT(program_.log.lines, ElementsAre(StartsWith("err docommand ")));
    EXPECT_EQ(receiver().rxPosition(), 0);
    EXPECT_EQ(receiver().rxCommand(), 0);
    program_.receiveFrame('T', {7, 1, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 7);
}

// When the count is at its limit, each event loses the byte that it could not count; state and buffer are not changed.
TEST_F(ReceiveLoopTest, ACountThatOverflowsEndsTheEventAndKeepsTheRest) {
    program_.window.bytesReceived = kMost - 4;
    Bytes bytes = frame('T', {7});
    bytes.insert(bytes.end(), {'T', 1, 8});
    program_.receive(bytes);
    EXPECT_EQ(program_.tables.EEImage[0], 7);
    EXPECT_EQ(program_.window.bytesReceived, kMost);
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 2U);
    EXPECT_EQ(receiver().rxPosition(), 0);
    EXPECT_EQ(program_.log.lines.size(), 1U);
    program_.receive({0});
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 2U);
    EXPECT_EQ(program_.log.lines.size(), 2U);
    EXPECT_THAT(program_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(ReceiveLoopTest, AnOverflowInMidFrameLeavesTheReceiveStateAsItStood) {
    program_.window.bytesReceived = kMost - 2;
    program_.receive({'T', 3, 7, 1, 0, 0xAB});
    EXPECT_EQ(receiver().rxPosition(), 2);
    EXPECT_EQ(receiver().rxCommand(), 'T');
    EXPECT_EQ(receiver().rxLength(), 3);
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 3U);
}

TEST_F(ReceiveLoopTest, WhatComesInTheIdentityPauseWaitsForItsEnd) {
    injectFromDeviceAfter(100, frame('T', {7, 1, 0}));
    int pollsInThePause = 0;
    program_.window.TimerRequestData.restart(10);
    program_.window.TimerRequestData.Tick = [&] {
        pollsInThePause += program_.pump.now() < 300 * kMicrosPerMilli ? 1 : 0;
    };
    program_.receiveFrame('y', kIdentity);
    EXPECT_EQ(program_.pump.now(), 300 * kMicrosPerMilli);
    EXPECT_EQ(storedType(), 11);
    program_.pump.pump();
    EXPECT_EQ(program_.tables.EEImage[1], 7);
    EXPECT_EQ(pollsInThePause, 0);
}

// A live decoder that lets events run, as handlers of some frames do.
class WaitingDecoder : public LiveDecoder {
public:
    explicit WaitingDecoder(platform::EventPump& pump) : pump_(pump) {}
    void decodeLivePacket(std::span<std::uint8_t> payload) override {
        before.assign(payload.begin(), payload.end());
        pump_.wait(100);
        afterwards.assign(payload.begin(), payload.end());
    }
    Bytes before, afterwards;

private:
    platform::EventPump& pump_;
};

TEST_F(ReceiveLoopTest, AFrameBegunInAHandlersWaitAndUnfinishedAtItsEndIsLost) {
    WaitingDecoder decoder(program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    injectAfter(50, {'T', 3, 7});
    program_.receiveFrame('R', {5, 6});
    EXPECT_EQ(receiver().rxPosition(), 3);
    EXPECT_EQ(receiver().rxCommand(), 0);
    program_.receive({1, 0, 0xAB});
    EXPECT_EQ(program_.tables.EEImage[1], 0);
    program_.receiveFrame('T', {8, 1, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 8);
}

TEST_F(ReceiveLoopTest, AFrameThatLiesBehindTheIdentityWaitsForThePause) {
    Bytes bytes = frame('y', kIdentity);
    const auto more = frame('T', {7, 1, 0});
    bytes.insert(bytes.end(), more.begin(), more.end());
    int inThePause = -1;
    alarms_.push_back(
        program_.pump.makeAlarm([&] { inThePause = program_.tables.EEImage[1]; }, platform::AlarmKind::Device));
    alarms_.back()->callAt(program_.pump.now() + 299 * kMicrosPerMilli);
    program_.receive(bytes);
    EXPECT_EQ(inThePause, 0);
    EXPECT_EQ(program_.tables.EEImage[1], 7);
}

TEST_F(ReceiveLoopTest, APayloadSurvivesTheFramesThatAreHandledMeanwhile) {
    WaitingDecoder decoder(program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    injectAfter(50, frame('T', {7, 1, 0}));
    program_.receiveFrame('R', {5, 6, 7, 8});
    EXPECT_EQ(program_.tables.EEImage[1], 7);
    EXPECT_THAT(decoder.before, ElementsAre(5, 6, 7, 8));
    EXPECT_THAT(decoder.afterwards, ElementsAre(5, 6, 7, 8));
}

TEST_F(ReceiveLoopTest, ALineLostInsideAHandlersWaitEndsInAClosedPort) {
    WaitingDecoder decoder(program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    after(50, [&] { program_.line.pullOut(); });
    program_.receiveFrame('R', {5, 6});
    EXPECT_FALSE(program_.window.MSComm1.PortOpen());
    EXPECT_THAT(decoder.afterwards, ElementsAre(5, 6));
    EXPECT_EQ(program_.dialogs.takeMessages().size(), 1U);
}

TEST_F(ReceiveLoopTest, TheLoopEndsWithALookAtPendingEvents) {
    class Arming : public LiveDecoder {
    public:
        Arming(platform::Alarm& alarm, platform::EventPump& pump) : alarm_(alarm), pump_(pump) {}
        void decodeLivePacket(std::span<std::uint8_t>) override { alarm_.callAt(pump_.now()); }

    private:
        platform::Alarm& alarm_;
        platform::EventPump& pump_;
    };
    bool insideTheEvent = false;
    const auto alarm = program_.pump.makeAlarm([&] { insideTheEvent = program_.window.isBusy(); });
    Arming decoder(*alarm, program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    program_.receiveFrame('R', {1});
    EXPECT_TRUE(insideTheEvent);
}

// A message box is open until the user closes it; bytes arrive meanwhile.
class StandingBox : public platform::Dialogs {
public:
    void show(const platform::MessageBox&) override {
        ++shown;
        meanwhile();
    }
    [[nodiscard]] std::string choose(const platform::FileDialog&) override { return {}; }

    int shown = 0;
    std::function<void()> meanwhile;
};

TEST(ReceiveLoop, WhileARefusalStandsBytesQueueAndAreHandledAfterwards) {
    support::VirtualMachine machine;
    StandingBox box;
    box.meanwhile = [] {};
    platform::Machine own{machine.pump,          machine.line, box, machine.preferences, machine.log, machine.windows,
                          machine.folder.path(), '.',          {}};
    program::Program program(own);
    program.start();
    program.frmSarn2().btnConnect.press();
    box.shown = 0;
    box.meanwhile = [&] {
        machine.line.inject(frame('T', {7, 1, 0}));
        machine.pump.sleep(5000);
        EXPECT_EQ(program.tables().EEImage[1], 0);
        EXPECT_EQ(program.frmSarn2().MSComm1.InBufferCount(), 6U);
    };
    machine.line.inject(frame('A', {0}));
    machine.pump.pump();
    EXPECT_EQ(box.shown, 1);
    EXPECT_EQ(program.tables().EEImage[1], 7);
    EXPECT_EQ(program.tables().IgnSendAcks, 0);
}

// What a handler writes into the payload can be read there afterwards.
TEST_F(ReceiveLoopTest, TheScaledThrottleIsReadBackFromThePayload) {
    program_.tables.ThrottleMax = 200;
    Bytes live(19, 0);
    live[6] = 20;
    program_.receiveFrame('R', live);
    // 100 * 20 / 200
    EXPECT_EQ(program_.tables.liveValues[5].value, 10);
    EXPECT_EQ(receiver().payload()[6], 10);
}

Bytes settingsBlock(std::uint8_t value) {
    return frame('e', Bytes(19, value));
}

Bytes operator+(Bytes one, const Bytes& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

// Each block waits 100 ms, shows its values, and waits again. The run inside the first one's wait goes on until nothing
// is left, so the first one shows its values last.
TEST_F(ReceiveLoopTest, ARunInsideAWaitTakesAllThatIsThereBeforeTheWaitEnds) {
    injectAfter(1, settingsBlock(2) + settingsBlock(3) + settingsBlock(4));
    program_.receive(settingsBlock(1));
    program_.pump.wait(2000);
    EXPECT_EQ(program_.program.frmMisc().lblMAXTHR.Caption.get(), "1");
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 0U);
}

TEST_F(ReceiveLoopTest, FramesBehindAnIdentityAreTakenBeforeOtherEvents) {
    const Bytes twice = frame('y', kIdentity) + frame('y', kIdentity);
    std::vector<platform::Micros> ticks;
    program_.window.TimerRequestData.restart(10);
    program_.window.TimerRequestData.Tick = [&] { ticks.push_back(program_.pump.now()); };
    program_.receive(twice);
    program_.pump.wait(0);
    ASSERT_FALSE(ticks.empty());
    EXPECT_EQ(ticks.front(), 600 * kMicrosPerMilli);
}

TEST_F(ReceiveLoopTest, ACountBelowZeroGoesOnCounting) {
    program_.window.bytesReceived = std::numeric_limits<std::int32_t>::min();
    program_.receive({0, 0, 0});
    EXPECT_EQ(program_.window.bytesReceived, std::numeric_limits<std::int32_t>::min() + 3);
    program_.window.bytesReceived = -1;
    program_.receive({0, 0});
    EXPECT_EQ(program_.window.bytesReceived, 1);
}

// A device that sends whether or not the program can follow.
class ReceiveFlood : public ReceiveLoopTest {
protected:
    ReceiveFlood() { program_.line.setMayFlood(true); }

    // One more every `milliseconds`, also while the program blocks, until `end`.
    void flood(const Bytes& bytes, int milliseconds, platform::Micros end) {
        const auto index = alarms_.size();
        alarms_.push_back(program_.pump.makeAlarm(
            [this, bytes, milliseconds, end, index] {
                program_.line.inject(bytes);
                if (program_.pump.now() < end) {
                    alarms_[index]->callAt(program_.pump.now() + milliseconds * kMicrosPerMilli);
                }
            },
            platform::AlarmKind::Device));
        alarms_[index]->callAt(program_.pump.now());
    }
    // How long it takes until a new value shows.
    platform::Micros recovery() {
        const auto begin = program_.pump.now();
        for (std::uint8_t value = 1; value < 200; ++value) {
            program_.line.inject(frame('T', {value, 1, 0}));
            program_.pump.wait(100);
            if (program_.tables.EEImage[1] == value) {
                break;
            }
        }
        return program_.pump.now() - begin;
    }
};

// Each identity blocks for its pause; between two of them all other events run.
TEST_F(ReceiveFlood, IdentitiesLeaveRoomForOtherEvents) {
    int ticks = 0;
    program_.window.TimerRequestData.restart(10);
    program_.window.TimerRequestData.Tick = [&] { ++ticks; };
    program_.receive(frame('y', kIdentity) + frame('y', kIdentity) + frame('y', kIdentity));
    program_.pump.wait(900);
    EXPECT_GE(ticks, 3);
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 0U);
}

TEST_F(ReceiveFlood, IdentitiesInsideAWaitLeaveRoomForOtherEventsToo) {
    WaitingDecoder decoder(program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    std::vector<platform::Micros> ticks;
    program_.window.TimerRequestData.restart(10);
    program_.window.TimerRequestData.Tick = [&] { ticks.push_back(program_.pump.now()); };
    injectAfter(1, frame('y', kIdentity) + frame('y', kIdentity));
    program_.receiveFrame('R', {5, 6});
    // Between the two, which block from 1 to 301 and to 601 ms.
    EXPECT_THAT(ticks, testing::Contains(301 * kMicrosPerMilli));
}

TEST_F(ReceiveFlood, TheProgramFollowsAgainSoonAfterAFloodOfIdentities) {
    flood(frame('y', kIdentity), 1, 20'000 * kMicrosPerMilli);
    program_.pump.runUntil(20'001 * kMicrosPerMilli);
    EXPECT_LE(recovery(), 5000 * kMicrosPerMilli);
    EXPECT_THAT(program_.log.lines, testing::Contains(StartsWith("The line sends faster")));
}

TEST_F(ReceiveFlood, TheProgramFollowsAgainSoonAfterAFloodOfBlocksThatWaitInsideEachOther) {
    flood(settingsBlock(1), 4, 20'000 * kMicrosPerMilli);
    program_.pump.runUntil(20'001 * kMicrosPerMilli);
    EXPECT_LE(recovery(), 5000 * kMicrosPerMilli);
}

// Each frame waits inside the wait of the one before it. The outermost wait still ends.
TEST_F(ReceiveFlood, AWaitEndsThoughTheFloodGoesOn) {
    WaitingDecoder decoder(program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    flood(frame('R', {1}), 4, 20'000 * kMicrosPerMilli);
    program_.pump.wait(100);
    EXPECT_LE(program_.pump.now(), 4000 * kMicrosPerMilli);
}

// 250 frames a second, all of them handled at once: nothing is dropped, however long it goes on.
TEST_F(ReceiveFlood, FramesThatTakeNoTimeAreNeverDropped) {
    flood(frame('T', {7, 1, 0}), 4, 60'000 * kMicrosPerMilli);
    program_.pump.runUntil(61'000 * kMicrosPerMilli);
    EXPECT_EQ(program_.window.bytesReceived, 15'001 * 6);
    EXPECT_THAT(program_.log.lines, IsEmpty());
}

TEST_F(ReceiveLoopTest, AnyBytesInAnyChunksAreSurvived) {
    std::uint32_t state = 12345;
    const auto next = [&] { return state = state * 1664525 + 1013904223; };
    for (int round = 0; round < 2000; ++round) {
        Bytes chunk(next() / 65536 % 40);
        for (auto& byte : chunk) {
            byte = static_cast<std::uint8_t>(next() / 16777216);
        }
        program_.receive(chunk);
        program_.pump.wait(5);
    }
    program_.pump.wait(60000);
    EXPECT_EQ(program_.window.MSComm1.InBufferCount(), 0U);
    // Whatever frame is open now, 300 bytes that are no command end it.
    program_.receive(Bytes(300, 0));
    program_.receiveFrame('T', {7, 1, 0});
    EXPECT_EQ(program_.tables.EEImage[1], 7);
}

}  // namespace
}  // namespace korvane::link
