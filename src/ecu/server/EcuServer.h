// The virtual ECU on a pseudo-terminal, in real time.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "ecu/VirtualEcu.h"
#include "ecu/engine/Micros.h"
#include "ecu/server/Descriptor.h"
#include "ecu/server/OpenWatch.h"
#include "ecu/server/Pty.h"

namespace korvane::ecu {

// SIGINT and SIGTERM no longer end the process; the descriptor becomes readable instead. Throws std::system_error.
[[nodiscard]] Descriptor endSignals();

// Bytes in both directions take the time that the terminal's speed gives them. Bytes towards the PC are handed over
// once a millisecond, as a serial adapter does.
class EcuServer {
public:
    EcuServer(VirtualEcu& ecu, const Pty& pty) : ecu_(ecu), pty_(pty), others_(pty.slavePath()) {}

    // Serves until `end` becomes readable. Throws std::system_error when the system fails.
    void run(const Descriptor& end);

private:
    struct Incoming {
        Micros arrival;
        std::uint8_t byte;
    };

    void hear(Micros now);
    void work(Micros now);
    [[nodiscard]] std::optional<Micros> nextWork() const;

    VirtualEcu& ecu_;
    const Pty& pty_;
    OpenWatch others_;
    std::deque<Incoming> incoming_;
    Micros lineFree_ = 0;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace korvane::ecu
