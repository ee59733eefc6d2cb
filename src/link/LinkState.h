// What is known of the line to the ECU: whether live data comes in, how old it is, and what went wrong.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "controls/MSComm.h"
#include "controls/Object.h"
#include "controls/Timer.h"
#include "link/PollTimes.h"
#include "link/ReceiveMachine.h"
#include "platform/EventPump.h"

namespace korvane::link {

// One for the program, at frmSarn2. All times are of the machine's clock. An observer is told of stateProperty() at the
// moment of the change, also where nothing but time causes it, and of countsProperty() with every frame and every loss.
class LinkState : public controls::Object, private controls::Observer {
public:
    enum class State {
        Closed,  // the port is closed
        Silent,  // it is open, and no frame has come yet
        Live,    // the last live frame is younger than lateAfter()
        Late,    // the ECU is asked, and no live frame has come for lateAfter()
        Paused,  // it is not asked: a transfer runs, the ignition debug window has left the poll off, or programWaits()
    };

    // The poll is `poll`, whose requests the connection reports; losses are those of `receiver`. All outlive the state.
    LinkState(platform::EventPump& pump, controls::MSComm& port, controls::Timer& poll, const ReceiveMachine& receiver);
    ~LinkState() override;

    // A poll that runs again stays Paused until a live frame comes or lateAfter() is over.
    [[nodiscard]] State state() const { return stateAt(pump_.now()); }
    // The poll is on, and nothing was asked before the answer was due: a message box or a question is open. An ECU that
    // was late before stays Late.
    [[nodiscard]] bool programWaits() const;
    // Whether an ECU is there to take a command that it does not acknowledge. One that was late is heard again with its
    // next live frame.
    [[nodiscard]] bool isHeard() const { return !wasLate_ && (state() == State::Live || state() == State::Paused); }
    // Time since the last live frame of this connection; without one since the port was opened; with the port closed
    // since it was closed, or since the start of the program.
    [[nodiscard]] platform::Micros age() const { return pump_.now() - ageFrom(); }
    // The part of it in which the ECU was asked.
    [[nodiscard]] platform::Micros silence() const { return pump_.now() - awaitedFrom(); }
    // Three polls or one second, whichever is longer.
    [[nodiscard]] platform::Micros lateAfter() const;

    // Since the port was opened last.
    struct Counts {
        std::int64_t frames = 0;      // whole frames of any kind
        std::int64_t bytes = 0;       // of all that came, also noise and broken frames
        std::int64_t dropped = 0;     // frames with a wrong complement
        std::int64_t resyncs = 0;     // runs of bytes that belong to no frame, skipped to find the next one
        std::int64_t unanswered = 0;  // live polls without a live frame (PollTimes)
    };
    [[nodiscard]] Counts counts() const;
    // Time from a live poll to its frame, over the last minute; nothing without one.
    [[nodiscard]] std::optional<PollTimes::RoundTrip> roundTrip() const { return polls_.lastMinute(pump_.now()); }

    // Of the answers behind this moment of the machine's clock.
    [[nodiscard]] std::optional<PollTimes::RoundTrip> roundTripSince(platform::Micros moment) const {
        return polls_.since(moment);
    }
    // Of the last live frame, from its code to its complement; 0 before the first.
    [[nodiscard]] int liveFrameBytes() const { return liveBytes_; }

    // Whether a transfer has the line: a read or write of maps, settings or the EEPROM. At once false when the port
    // closes, even though the loop that does the transfer goes on counting.
    [[nodiscard]] bool isBusy() const { return transfers_ > 0 && port_.PortOpen(); }

    // Exists for as long as a transfer runs; one may run inside another. Null: no state to tell.
    class Transfer {
    public:
        explicit Transfer(LinkState* state) : state_(state) { count(1); }
        Transfer(const Transfer&) = delete;
        Transfer& operator=(const Transfer&) = delete;
        ~Transfer() { count(-1); }

    private:
        void count(int change) {
            if (state_ != nullptr) {
                state_->transferChanged(change);
            }
        }
        LinkState* state_;
    };

    // What the connection reports.
    void pollSent();
    void frameReceived(std::uint8_t code, platform::Micros now);
    void bytesReceived(std::size_t count);

    // For scripts: "state", "age", "busy", the counts, and "roundTrip" and "roundTripWorst" in ms, read only.
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;
    [[nodiscard]] const void* stateProperty() const { return &shown_; }
    [[nodiscard]] const void* countsProperty() const { return &frames_; }
    [[nodiscard]] const void* busyProperty() const { return &transfers_; }

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void portChanged();
    void pollChanged();
    void transferChanged(int change);
    // Tells a change of the state, and looks again when time alone could change it.
    void refresh();
    [[nodiscard]] State stateAt(platform::Micros now) const;
    [[nodiscard]] platform::Micros ageFrom() const;
    [[nodiscard]] platform::Micros awaitedFrom() const;
    [[nodiscard]] platform::Micros frameTime();
    [[nodiscard]] bool isAskedBefore(platform::Micros due) const;

    platform::EventPump& pump_;
    controls::MSComm& port_;
    controls::Timer& poll_;
    const ReceiveMachine& receiver_;
    std::unique_ptr<platform::Alarm> look_;
    PollTimes polls_;
    State shown_ = State::Closed;
    bool wasLate_ = false;  // and no live frame came since
    bool open_ = false;
    bool pollRuns_ = false;
    std::optional<platform::Micros> live_;   // the last live frame of this connection
    platform::Micros opened_ = 0;            // or closed
    platform::Micros pollFrom_ = 0;          // it runs since then
    std::optional<platform::Micros> asked_;  // the last poll of this connection
    int liveBytes_ = 0;
    int baud_ = 0;  // 0: not asked for
    std::int64_t frames_ = 0;
    std::int64_t bytes_ = 0;
    std::int64_t droppedBefore_ = 0;  // the port was opened
    std::int64_t resyncsBefore_ = 0;
    std::int64_t lossesTold_ = 0;
    int transfers_ = 0;
};

// "closed", "silent", "live", "late", "paused".
[[nodiscard]] std::string_view nameOf(LinkState::State state);

}  // namespace korvane::link
