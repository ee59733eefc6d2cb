// Turns the byte stream of the line into frames.
//
//   position   0         1        2 .. L+1   L+2
//   content    command   length L payload    complement of the command (all bits inverted)
//
// There is no start mark, no escaping and no time limit. A byte that is no known command is skipped while a command is
// awaited; a wrong complement drops the frame. A frame cut off in the middle stays open until the next bytes end it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>

#include "link/DroppedFrame.h"

namespace korvane::link {

class ReceiveMachine {
private:
    struct Payload {
        std::array<std::uint8_t, 255> bytes{};
        std::size_t size = 0;
        bool inUse = false;  // by a handler: a new frame takes another place
    };

public:
    ReceiveMachine() = default;
    ReceiveMachine(const ReceiveMachine&) = delete;
    ReceiveMachine& operator=(const ReceiveMachine&) = delete;
    ~ReceiveMachine() = default;

    // Keeps the payload of a whole frame for a handler. What the handler changes is visible in payload(). A frame that
    // arrives while the handler waits does not overwrite these bytes.
    class Loan {
    public:
        explicit Loan(ReceiveMachine& machine) : payload_(*machine.current_) { payload_.inUse = true; }
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;
        ~Loan() { payload_.inUse = false; }

        [[nodiscard]] std::span<std::uint8_t> bytes() const { return std::span(payload_.bytes).first(payload_.size); }

    private:
        Payload& payload_;
    };

    // Told of each frame that is dropped because of a wrong complement, if it is set.
    std::function<void(const DroppedFrame&)> frameDropped;

    // Takes bytes from the front until a frame is whole (rxReady) or all are taken. Returns how many it took.
    std::size_t consume(std::span<const std::uint8_t> bytes);

    // The frame has been dispatched: forgets command and length, also those of a frame that began meanwhile.
    void frameDone();

    // The payload of the frame: rxLength bytes, or one zero byte for a frame without payload.
    [[nodiscard]] std::span<const std::uint8_t> payload() const;

    [[nodiscard]] std::int32_t rxPosition() const { return position_; }  // index of the next byte
    [[nodiscard]] std::uint8_t rxCommand() const { return command_; }
    [[nodiscard]] std::int16_t rxLength() const { return length_; }
    [[nodiscard]] std::int16_t rxTotal() const { return total_; }  // position of the complement byte
    [[nodiscard]] bool rxReady() const { return ready_; }

    // Since the start: frames with a wrong complement, and runs of bytes that belong to no frame, each run once.
    [[nodiscard]] std::int64_t dropped() const { return dropped_; }
    [[nodiscard]] std::int64_t resyncs() const { return resyncs_; }

private:
    std::size_t hunt(std::span<const std::uint8_t> bytes);
    void takeLength(std::uint8_t byte);
    Payload& freePayload();
    std::size_t takePayload(std::span<const std::uint8_t> bytes);
    void takeComplement(std::uint8_t byte);
    void drop(std::uint8_t wrongComplement);
    void noteSkipped(std::size_t count);

    std::int32_t position_ = 0;
    std::int16_t length_ = 0;
    std::int16_t total_ = 0;
    std::uint8_t command_ = 0;
    bool ready_ = false;
    bool skipping_ = false;  // inside a run of bytes that belong to no frame
    std::int64_t dropped_ = 0;
    std::int64_t resyncs_ = 0;
    // One for each handler that waits inside another's wait, and one more. A deque, because elements must not move.
    std::deque<Payload> payloads_{1};
    Payload* current_ = &payloads_.front();
};

}  // namespace korvane::link
