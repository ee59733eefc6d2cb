// Bytes from the PC to commands.
//
//   single        cmd
//   pair          cmd ~cmd
//   counted       cmd L payload ~cmd        L is fixed by the command
//   fixed body    cmd body ~cmd             the body's length is fixed by the command
//
// 'p' and 'o' come in two forms; the short one is over when another command or kQuiet of silence follows.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "ecu/engine/Micros.h"

namespace korvane::ecu {

class CommandHandler {
public:
    virtual ~CommandHandler() = default;
    // A whole command whose last byte arrived at `at`; `body` is the bytes between command and complement (of a
    // counted form the payload), valid during the call.
    virtual void command(std::uint8_t code, std::span<const std::uint8_t> body, Micros at) = 0;
    // A byte that begins no command.
    virtual void unknown(std::uint8_t code, Micros at) = 0;
};

class CommandParser {
public:
    // Silence that ends the short form of a command with two forms.
    static constexpr Micros kQuiet = 50'000;
    // Silence inside a command after which it is given up.
    static constexpr Micros kPatience = 200'000;

    // A frame that is wrong in its length or complement byte is dropped with that byte.
    void feed(std::uint8_t byte, Micros at, CommandHandler& handler);
    // When a short form will be over if nothing more comes, or nothing.
    [[nodiscard]] std::optional<Micros> shortFormEnd() const;
    // The time is now `at`: a short form that has ended by then is passed on, with the time at which it ended.
    void settle(Micros at, CommandHandler& handler);
    void reset() { stage_ = Stage::Idle; }

private:
    enum class Stage { Idle, ShortForm, Length, Body, Complement };

    void begin(std::uint8_t byte, Micros at, CommandHandler& handler);
    void endShortForm(Micros at, CommandHandler& handler);
    [[nodiscard]] bool continuesShortForm(std::uint8_t byte) const;
    void takeAfterShortForm(std::uint8_t byte, Micros at, CommandHandler& handler);
    void takeLength(std::uint8_t byte);
    void takeBody(std::uint8_t byte);
    void takeComplement(std::uint8_t byte, Micros at, CommandHandler& handler);

    Stage stage_ = Stage::Idle;
    std::uint8_t code_ = 0;
    std::size_t bodyLength_ = 0;
    bool counted_ = false;
    std::size_t filled_ = 0;
    std::array<std::uint8_t, 160> body_{};
    Micros lastByte_ = 0;
};

}  // namespace korvane::ecu
