// Turns the byte stream of the line into frames.
//
//   position   0         1        2 .. L+1   L+2
//   content    command   length L payload    complement of the command (all bits inverted)
//
// There is no start mark, no escaping and no clock. A byte that is no known command is skipped while a command is
// awaited; a wrong complement drops the frame. A frame cut off in the middle stays open until the next bytes end it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace korvane::link {

class ReceiveMachine {
public:
    // Takes bytes from the front until a frame is whole (rxReady) or all are taken. Returns how many it took.
    std::size_t consume(std::span<const std::uint8_t> bytes);

    // The frame has been dispatched: forgets command and length, also those of a frame that began meanwhile.
    void frameDone();

    // The payload of the frame: rxLength bytes, or one zero byte for a frame without payload.
    [[nodiscard]] std::span<const std::uint8_t> payload() const;

    [[nodiscard]] std::int32_t rxPosition() const { return position_; }  // index of the next byte; 0 = hunting
    [[nodiscard]] std::uint8_t rxCommand() const { return command_; }
    [[nodiscard]] std::int16_t rxLength() const { return length_; }
    [[nodiscard]] std::int16_t rxTotal() const { return total_; }  // position of the complement byte
    [[nodiscard]] bool rxReady() const { return ready_; }

private:
    std::size_t hunt(std::span<const std::uint8_t> bytes);
    void takeLength(std::uint8_t byte);
    std::size_t takePayload(std::span<const std::uint8_t> bytes);
    void takeComplement(std::uint8_t byte);

    std::int32_t position_ = 0;
    std::int16_t length_ = 0;
    std::int16_t total_ = 0;
    std::uint8_t command_ = 0;
    bool ready_ = false;
    std::size_t payloadSize_ = 0;
    std::array<std::uint8_t, 255> payload_{};
};

}  // namespace korvane::link
