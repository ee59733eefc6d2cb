// The fuel map's places, as the steady agent counts them.
#pragma once

#include <array>
#include <cstddef>

namespace korvane::steady {

inline constexpr std::size_t kMostCells = 320;

// A point of the map: column 2.5 is the middle of the third column, row 0 the upper edge of the first row.
struct Place {
    double column = 0.0;
    double row = 0.0;

    bool operator==(const Place&) const = default;
};

// The four cells whose centres surround a place, with their shares, which add up to 1. Beyond the outer centres the
// outer cells have it all; cells may then occur twice.
struct Corners {
    std::array<std::size_t, 4> cell{};
    std::array<double, 4> share{};
};

struct Grid {
    int columns = 16;
    int rows = 10;

    [[nodiscard]] std::size_t cells() const { return static_cast<std::size_t>(columns * rows); }
    // `load` in per cent.
    [[nodiscard]] static Place placeOf(double rpm, double load) { return {(rpm - 1000.0) / 500.0, load / 10.0}; }
    [[nodiscard]] bool contains(const Place& place) const;
    // The place, or the nearest one within half a cell of the map.
    [[nodiscard]] Place near(const Place& place) const;
    // Places outside count as the edge.
    [[nodiscard]] std::size_t cellAt(const Place& place) const;
    [[nodiscard]] Corners cornersOf(const Place& place) const;
    // The same with a straight line through the outer two centres to the edge: there one share is negative.
    [[nodiscard]] Corners linesOf(const Place& place) const;
    // The place moved into `cell` if it lies in a cell beside it: the ECU knows better at the borders. A place further
    // away stays where it is.
    [[nodiscard]] Place within(const Place& place, std::size_t cell) const;
    // The place lies in the cell or in one that touches it.
    [[nodiscard]] bool touches(const Place& place, std::size_t cell) const;
};

}  // namespace korvane::steady
