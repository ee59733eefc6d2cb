// What the ECU was heard to answer to the transfers that ran last.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace korvane::maps {

// A transfer is named by its command byte: 'f', 'a', 'm' and 'p' read, 'F', 'A', 'M' and 'P' send. Transfers that run
// at the same time are told together. Knows neither line nor clock.
class TransferResult {
public:
    // `total` is what a whole answer has: bytes of a read, acknowledgements of a send. A command that is no transfer is
    // left out.
    void begin(std::uint8_t command, int total);
    // A whole frame has come. True if it answers one of the transfers; one that is late still counts.
    bool heard(std::uint8_t code, std::span<const std::uint8_t> payload);
    // So many bytes of a frame that has not ended yet.
    void partlyHeard(std::uint8_t code, int bytes);
    // Nothing more is expected.
    void silent();
    // What comes from now on answers something else: any transfer, or that of a command which another window has begun.
    // One that waits is not touched by the latter.
    void tooLate();
    void begunElsewhere(std::uint8_t command);
    // Bytes of other commands have gone out among those of a send, as a "Realtime change" does.
    void mixedInto(std::uint8_t command);
    // The send has begun while the bytes of an earlier one of the same map were going out.
    void mixedWithItself(std::uint8_t command);
    // The port is closed; it is open again.
    void lineClosed();
    void lineOpened();

    [[nodiscard]] bool isWaiting() const;
    // Whether a transfer ended without the answer that it should have, or a send was mixed with anything.
    [[nodiscard]] bool hasFailed() const;
    // "Fuel: 160 of 160 bytes", "Fuel, Ignition: no answer", "Fuel read: complete; Fuel send: acknowledged" where a map
    // is read and sent at once; empty before the first transfer.
    [[nodiscard]] std::string text() const;

private:
    enum class Answer {
        Bytes,    // frames with the bytes of a map or block
        Cell,     // a frame for each cell
        Status,   // a frame with 0 for a refusal
        Restart,  // the ECU starts anew
        None      // the ECU has no answer to it
    };
    struct Kind;
    static const Kind kKinds[];

    enum class State { Waiting, Whole, Refused, Silent, Closed, WasClosed };

    struct Exchange {
        const Kind* kind;
        int total;
        int heard = 0;
        int partly = 0;  // bytes of a frame that was never whole
        State state = State::Waiting;
        bool isOver = false;     // nothing answers it any more
        bool hasOthers = false;  // mixedInto()
        bool hasTwin = false;    // mixedWithItself()
    };

    [[nodiscard]] std::string nameOf(const Exchange& exchange) const;
    [[nodiscard]] std::string_view mixture(const Exchange& exchange) const;
    [[nodiscard]] static std::string verdict(const Exchange& exchange, bool alone);
    [[nodiscard]] static std::string silence(const Exchange& exchange);
    [[nodiscard]] static const Kind* kindOf(std::uint8_t command);
    [[nodiscard]] Exchange* answeredBy(std::uint8_t code);
    bool refuseOldest();
    static bool count(Exchange& exchange, std::span<const std::uint8_t> payload);
    void endWaiting(State state);

    std::vector<Exchange> exchanges_;
};

}  // namespace korvane::maps
