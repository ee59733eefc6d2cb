// Writes the fuel and the ignition map to the ECU.
//
//     opening letter, 160 bytes, complement of the letter    a whole map, or the first half of a large one
//     second opening byte, 160 bytes, its complement         the second half
//     commit letter                                          the ECU stores what it was sent
#pragma once

#include "maps/MapLine.h"

namespace korvane::maps {

// How many halves a map goes out in; two need an acknowledgement each.
enum class Halves { One, Two };

// Sets the clicks of btnWriteFuel and btnWriteIgn.
class MapWriter {
public:
    MapWriter(MapControls& window, const MapContext& context, Halves halves);

private:
    struct Kind;
    static const Kind kFuel;
    static const Kind kIgnition;

    void write(const Kind& kind);
    void writeWhole(const Kind& kind);
    void writeHalves(const Kind& kind);
    void sendHalf(std::uint8_t letter, const Kind& kind, std::size_t first, Progress& progress);
    // Whether the count of acknowledgements came to `count` within so many turns of 5 ms.
    [[nodiscard]] bool acknowledged(const Kind& kind, int count, int turns);

    MapControls& window_;
    const MapContext& context_;
    MapLine line_;
    Halves halves_;
};

}  // namespace korvane::maps
