#include <gmock/gmock.h>

#include "link/Frames.h"
#include "link/LinkState.h"
#include "support/PropertyWatch.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using State = LinkState::State;
using support::Bytes;
using support::frame;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr platform::Micros kMilli = platform::kMicrosPerMilli;
const Bytes kLive(19, 0);

// Notes each state with its moment in milliseconds.
class StateNotes : private controls::Observer {
public:
    explicit StateNotes(LinkState& link, const platform::EventPump& pump) : link_(link), pump_(pump) {
        link_.addObserver(*this);
    }
    StateNotes(const StateNotes&) = delete;
    StateNotes& operator=(const StateNotes&) = delete;
    ~StateNotes() override { link_.removeObserver(*this); }

    std::vector<std::string> notes;

private:
    void propertyChanged(controls::Object&, const void* property) override {
        if (property == link_.stateProperty()) {
            notes.push_back(std::to_string(pump_.milliseconds()) + " " + std::string(nameOf(link_.state())));
        }
    }

    LinkState& link_;
    const platform::EventPump& pump_;
};

// A message box is open: the program's alarms wait.
class PumpUnderABox : public platform::EventPump {
public:
    explicit PumpUnderABox(platform::EventPump& pump) : pump_(pump) {}

    [[nodiscard]] platform::Micros now() const override { return pump_.now(); }
    [[nodiscard]] platform::WallTime wallTime() const override { return pump_.wallTime(); }
    void pump() override { pump_.pump(); }
    void wait(int milliseconds) override { pump_.wait(milliseconds); }
    void sleep(int milliseconds) override { pump_.sleep(milliseconds); }
    void whenSettled(std::function<void()> call, platform::Micros patience) override {
        pump_.whenSettled(std::move(call), patience);
    }
    [[nodiscard]] std::unique_ptr<platform::Alarm> makeAlarm(std::function<void()> call,
                                                             platform::AlarmKind kind) override {
        return pump_.makeAlarm(kind == platform::AlarmKind::Program ? std::function<void()>([] {}) : std::move(call),
                               kind);
    }

private:
    platform::EventPump& pump_;
};

// The interval of the poll is 10 ms; nobody answers but the test. The identity is not asked for.
class LinkStateTest : public testing::Test {
protected:
    void open() {
        program_.connect();
        program_.window.TimerGetSettings.Enabled = false;
    }
    void live() { program_.receiveFrame('R', kLive); }
    void wait(int milliseconds) { program_.pump.wait(milliseconds); }
    void poll(bool on) { program_.window.TimerRequestData.Enabled = on; }
    [[nodiscard]] State state() const { return link_.state(); }
    [[nodiscard]] platform::Micros age() const { return link_.age() / kMilli; }

    support::VirtualProgram program_;
    LinkState& link_ = program_.window.linkState;
};

TEST_F(LinkStateTest, IsClosedWithoutAPort) {
    wait(1500);
    EXPECT_EQ(state(), State::Closed);
    EXPECT_EQ(age(), 1500);
}

TEST_F(LinkStateTest, IsSilentUntilAFrameComes) {
    open();
    wait(5000);
    EXPECT_EQ(state(), State::Silent);
    EXPECT_EQ(age(), 5000);
    live();
    EXPECT_EQ(state(), State::Live);
    EXPECT_EQ(age(), 0);
}

TEST_F(LinkStateTest, IsLateASecondBehindTheLastLiveFrame) {
    open();
    live();
    wait(999);
    EXPECT_EQ(state(), State::Live);
    wait(1);
    EXPECT_EQ(state(), State::Late);
    EXPECT_EQ(age(), 1000);
    live();
    EXPECT_EQ(state(), State::Live);
}

TEST_F(LinkStateTest, GetsLateUnderAMessageBoxToo) {
    open();
    PumpUnderABox box(program_.pump);
    LinkState link(box, program_.window.MSComm1, program_.window.TimerRequestData, program_.window.receiver);
    program_.window.MSComm1.setPortOpen(false);
    program_.window.MSComm1.setPortOpen(true);
    poll(true);
    link.frameReceived(kLiveDataFrame, program_.pump.now());
    const StateNotes watch(link, program_.pump);
    const auto begin = program_.pump.milliseconds();
    wait(5000);
    EXPECT_THAT(watch.notes, ElementsAre(std::to_string(begin + 1000) + " late"));
}

TEST_F(LinkStateTest, IsLateAfterThreePollsWhereTheseTakeLonger) {
    open();
    program_.window.TimerRequestData.Interval = 500;
    live();
    wait(1499);
    EXPECT_EQ(state(), State::Live);
    wait(1);
    EXPECT_EQ(state(), State::Late);
}

TEST_F(LinkStateTest, AShorterPollIsLateSooner) {
    open();
    program_.window.TimerRequestData.Interval = 500;
    live();
    StateNotes notes(link_, program_.pump);
    program_.window.TimerRequestData.Interval = 10;
    wait(3000);
    EXPECT_THAT(notes.notes, ElementsAre("1000 late"));
}

TEST_F(LinkStateTest, OtherFramesKeepNoLineLive) {
    open();
    live();
    wait(900);
    program_.receiveFrame('T', {7, 1, 0});
    EXPECT_EQ(age(), 900);
    wait(100);
    EXPECT_EQ(state(), State::Late);
}

TEST_F(LinkStateTest, AnEcuThatSendsOtherFramesOnlyIsLate) {
    open();
    program_.receiveFrame('T', {7, 1, 0});
    wait(999);
    EXPECT_EQ(state(), State::Silent);
    wait(1);
    EXPECT_EQ(state(), State::Late);
}

TEST_F(LinkStateTest, IsPausedWhileThePollIsOff) {
    open();
    live();
    poll(false);
    EXPECT_EQ(state(), State::Paused);
    wait(20'000);
    EXPECT_EQ(state(), State::Paused);
    EXPECT_EQ(age(), 20'000);
}

TEST_F(LinkStateTest, AnEcuThatHasNeverAnsweredIsSilentAlsoWithoutAPoll) {
    open();
    poll(false);
    wait(2000);
    EXPECT_EQ(state(), State::Silent);
}

TEST_F(LinkStateTest, APollThatRunsAgainIsPausedUntilItsFirstFrame) {
    open();
    live();
    poll(false);
    wait(5000);
    poll(true);
    EXPECT_EQ(state(), State::Paused);
    wait(500);
    live();
    EXPECT_EQ(state(), State::Live);
}

TEST_F(LinkStateTest, APollThatRunsAgainAndGetsNothingIsLate) {
    open();
    live();
    poll(false);
    wait(5000);
    poll(true);
    wait(999);
    EXPECT_EQ(state(), State::Paused);
    wait(1);
    EXPECT_EQ(state(), State::Late);
}

TEST_F(LinkStateTest, TellsEachChangeAtItsMoment) {
    StateNotes notes(link_, program_.pump);
    open();
    wait(100);
    live();
    wait(300);
    live();
    wait(2000);
    live();
    wait(100);
    poll(false);
    wait(100);
    program_.connect();
    EXPECT_THAT(notes.notes,
                ElementsAre("0 silent", "100 live", "1400 late", "2400 live", "2500 paused", "2600 closed"));
}

TEST_F(LinkStateTest, ALineThatIsLostIsClosed) {
    open();
    live();
    wait(100);
    program_.line.pullOut();
    EXPECT_EQ(state(), State::Closed);
    EXPECT_EQ(age(), 0);
    wait(700);
    EXPECT_EQ(age(), 700);
}

TEST_F(LinkStateTest, AnotherConnectionStartsSilentAndCountsAnew) {
    open();
    live();
    program_.receive({0, 'T', 1, 5, 5});
    program_.connect();
    EXPECT_EQ(link_.counts().frames, 1);
    EXPECT_EQ(link_.counts().bytes, 22 + 5);
    wait(100);
    open();
    EXPECT_EQ(state(), State::Silent);
    EXPECT_EQ(age(), 0);
    const auto counts = link_.counts();
    EXPECT_EQ(counts.frames + counts.bytes + counts.dropped + counts.resyncs + counts.unanswered, 0);
}

TEST_F(LinkStateTest, UnansweredPollsAreCountedForTheirConnectionAlone) {
    open();
    wait(100);
    program_.connect();
    const auto before = link_.counts().unanswered;
    wait(1000);
    EXPECT_EQ(link_.counts().unanswered, before) << "no answer can come any more";
    open();
    wait(1000);
    EXPECT_GT(link_.counts().unanswered, 0);
    program_.connect();
    open();
    EXPECT_EQ(link_.counts().unanswered, 0);
}

TEST_F(LinkStateTest, ObserversHearOfEachFrameAndLoss) {
    open();
    live();
    int told = 0;
    const support::PropertyWatch watch(link_, link_.countsProperty(), [&] { ++told; });
    live();
    EXPECT_EQ(told, 1);
    program_.receive({0, 'T', 1, 5, 5});
    EXPECT_GE(told, 2);
}

TEST_F(LinkStateTest, ObserversHearOfATransferAndOfItsEndWithThePort) {
    open();
    int told = 0;
    const support::PropertyWatch watch(link_, link_.busyProperty(), [&] { ++told; });
    {
        const LinkState::Transfer transfer(&link_);
        EXPECT_EQ(told, 1);
        program_.line.pullOut();
        EXPECT_EQ(told, 2);
    }
    EXPECT_EQ(told, 3);
}

TEST_F(LinkStateTest, CountsFramesBytesAndLosses) {
    open();
    poll(false);
    live();
    program_.receiveFrame('T', {7, 1, 0});
    program_.receive({0, 0, 0});
    program_.receive({1, 2});
    program_.receive({'T', 1, 5, 5});
    program_.receive({9});
    program_.receiveFrame('T', {7, 1, 0});
    const auto counts = link_.counts();
    EXPECT_EQ(counts.frames, 3);
    EXPECT_EQ(counts.bytes, 22 + 6 + 5 + 4 + 1 + 6);
    EXPECT_EQ(counts.dropped, 1);
    EXPECT_EQ(counts.resyncs, 2) << "one run of five bytes in two pieces, one of a byte";
}

TEST_F(LinkStateTest, MeasuresTheWayFromAPollToItsFrame) {
    open();
    program_.window.TimerRequestData.Interval = 100;
    wait(100);
    wait(7);
    live();
    ASSERT_TRUE(link_.roundTrip());
    EXPECT_EQ(link_.roundTrip()->median, 7 * kMilli);
    EXPECT_EQ(link_.roundTrip()->worst, 7 * kMilli);
    wait(93 + 250);
    EXPECT_EQ(link_.counts().unanswered, 1);
}

TEST_F(LinkStateTest, AClosedPortPollsNothing) {
    poll(true);
    wait(1000);
    EXPECT_EQ(link_.counts().unanswered, 0);
}

TEST_F(LinkStateTest, ALineThatIsLateBringsNoEventsOfItsOwn) {
    open();
    live();
    wait(2000);
    StateNotes notes(link_, program_.pump);
    wait(60'000);
    EXPECT_THAT(notes.notes, IsEmpty());
}

TEST_F(LinkStateTest, ABackupIsBusyUntilItsEnd) {
    open();
    live();
    program_.window.TimerRequestData.Enabled = true;
    program_.at(1000, [this] {
        EXPECT_TRUE(link_.isBusy());
        EXPECT_EQ(state(), State::Paused);
    });
    program_.window.btnBackup.press();
    EXPECT_GT(program_.pump.milliseconds(), 100'000);
    EXPECT_FALSE(link_.isBusy());
}

TEST_F(LinkStateTest, ACableThatIsPulledEndsTheWaitWhileTheBackupCountsOn) {
    open();
    live();
    program_.at(1000, [this] { program_.line.pullOut(); });
    program_.at(1001, [this] {
        EXPECT_FALSE(link_.isBusy());
        EXPECT_EQ(state(), State::Closed);
        EXPECT_TRUE(program_.window.prgEeprom.Visible);
    });
    program_.window.btnBackup.press();
    EXPECT_GT(program_.pump.milliseconds(), 100'000);
}

TEST_F(LinkStateTest, AMapOnItsWayIsBusy) {
    open();
    program_.window.btnKartat.press();
    wait(1000);
    live();
    auto& map = *program_.windows.loaded().back();
    bool busy = false;
    program_.at(static_cast<int>(program_.pump.milliseconds()) + 50, [&] { busy = link_.isBusy(); });
    for (auto* control : map.controls()) {
        if (control->name() == "btnWriteFuel") {
            control->press();
        }
    }
    EXPECT_TRUE(busy);
    EXPECT_FALSE(link_.isBusy());
}

// The window leaves the poll off on purpose; only the user starts it again.
TEST_F(LinkStateTest, TheIgnitionDebugWindowClosedWhileItPollsLeavesThePausedState) {
    open();
    live();
    program_.window.Command5.press();
    auto& debug = *program_.windows.loaded().back();
    for (auto* control : debug.controls()) {
        if (control->name() == "Command1") {
            control->press();
        }
    }
    wait(100);
    static_cast<void>(debug.unload());
    wait(5000);
    EXPECT_EQ(state(), State::Paused);
    EXPECT_FALSE(link_.isBusy());
    program_.window.ComboRefresh.choose(2);
    live();
    EXPECT_EQ(state(), State::Live);
}

// A line whose polls the test sends itself: while a message box is open nobody does.
class PollsOfATest : public LinkStateTest {
protected:
    PollsOfATest() {
        open();
        program_.window.MSComm1.setPortOpen(false);
        program_.window.MSComm1.setPortOpen(true);
        poll(true);
    }
    void pollFor(int milliseconds, bool answered) {
        for (int i = 0; i < milliseconds / 10; ++i) {
            own_.pollSent();
            if (answered) {
                own_.frameReceived(kLiveDataFrame, program_.pump.now());
            }
            wait(10);
        }
    }

    LinkState own_{program_.pump, program_.window.MSComm1, program_.window.TimerRequestData, program_.window.receiver};
};

TEST_F(PollsOfATest, ALineThatWasLiveIsPausedWhileTheProgramWaits) {
    pollFor(2000, true);
    const StateNotes watch(own_, program_.pump);
    const auto begin = program_.pump.milliseconds();
    wait(5000);
    // The last frame came 10 ms before.
    EXPECT_THAT(watch.notes, ElementsAre(std::to_string(begin + 990) + " paused"));
    EXPECT_TRUE(own_.programWaits());
    EXPECT_EQ(nameOf(own_.state()), "paused");
}

TEST_F(PollsOfATest, BehindTheWaitTheEcuHasTheUsualTimeToAnswer) {
    pollFor(2000, true);
    wait(5000);
    pollFor(990, false);
    EXPECT_EQ(own_.state(), State::Paused);
    EXPECT_FALSE(own_.programWaits()) << "it asks";
    pollFor(10, false);
    EXPECT_EQ(own_.state(), State::Late);
}

TEST_F(PollsOfATest, BehindTheWaitAnAnswerIsLive) {
    pollFor(2000, true);
    wait(5000);
    pollFor(20, true);
    EXPECT_EQ(own_.state(), State::Live);
}

TEST_F(PollsOfATest, AnEcuThatWasLateBeforeStaysLate) {
    pollFor(2000, true);
    pollFor(1500, false);
    const StateNotes watch(own_, program_.pump);
    EXPECT_EQ(own_.state(), State::Late);
    wait(5000);
    EXPECT_EQ(own_.state(), State::Late);
    EXPECT_FALSE(own_.programWaits());
    pollFor(1500, false);
    EXPECT_THAT(watch.notes, IsEmpty());
}

// 1500 ms are late; a poll each 500 ms is no pause.
TEST_F(PollsOfATest, TheLongestIntervalIsNoWait) {
    program_.window.TimerRequestData.Interval = 500;
    own_.pollSent();
    own_.frameReceived(kLiveDataFrame, program_.pump.now());
    wait(500);
    own_.pollSent();
    wait(500);
    own_.pollSent();
    wait(499);
    EXPECT_EQ(own_.state(), State::Live);
    wait(1);
    EXPECT_EQ(own_.state(), State::Late);
}

}  // namespace
}  // namespace korvane::link
