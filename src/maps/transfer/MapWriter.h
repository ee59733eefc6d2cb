// Writes the fuel or the ignition map to the ECU.
//
//     opening letter, 160 bytes, complement of the letter    a whole map, or the first half of a large one
//     second opening byte, 160 bytes, its complement         the second half
//     commit letter                                          the ECU stores what it was sent
#pragma once

#include "fields/Progress.h"
#include "maps/transfer/MapLine.h"
#include "maps/transfer/MapVerification.h"

namespace korvane::maps {

class PaneWindow;

// In how many halves a map is sent; two need an acknowledgement each.
enum class Halves { One, Two };

// While a write waits, another one may begin, the window may be closed and the cable may be pulled out.
class MapWriter {
public:
    struct Kind;
    static const Kind kFuel;
    static const Kind kIgnition;

    MapWriter(PaneWindow& window, const Kind& kind, Halves halves);

    void write();

private:
    struct Sent {
        SentCells cells;
        bool stored = false;
    };

    void writeTrapped(Sent& sent);
    void writeWhole(Sent& sent);
    void writeHalves(Sent& sent);
    void store(Sent& sent);
    [[nodiscard]] link::EcuMap& inEcu();
    void sendHalf(std::uint8_t command, std::size_t first, fields::Progress& progress, Sent& sent);
    // Whether the count of acknowledgements reached `count` within so many turns of 5 ms.
    [[nodiscard]] bool acknowledged(int count, int turns);

    PaneWindow& window_;
    core::SharedTables& tables_;
    MapLine& line_;
    const Kind& kind_;
    Halves halves_;
};

}  // namespace korvane::maps
