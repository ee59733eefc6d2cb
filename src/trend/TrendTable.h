// The values behind one live plot: six series of the last 399 samples.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "trend/RunningPeak.h"

namespace korvane::trend {

// A series at one moment.
struct TrendSeries {
    std::string_view name;
    std::string_view unit;
    bool hasSamples = false;
    std::span<const double> samples;  // rows 2 to 400
};

// Seen as rows: 0 the series' name, 1 its unit, 2 the newest sample, 3 to 400 older ones. A sample never pushed is 0.
class TrendTable {
public:
    static constexpr int kSeries = 6;
    static constexpr int kNewestRow = 2;
    static constexpr int kLastRow = 400;

    TrendTable();

    // Called before rows that were handed out, or a name or unit, move or change. A push alone moves none: it is called
    // in a push of thousands.
    std::function<void()> BeforeMove;

    // All members raise RuntimeError 9 for a series or row that does not exist.
    void describe(int series, std::string name, std::string unit);
    [[nodiscard]] const std::string& name(int series) const { return at(series).name; }
    [[nodiscard]] const std::string& unit(int series) const { return at(series).unit; }

    // The newest sample gets row 2; all others move one row up, and the one in row 400 is dropped.
    void push(double value, int series);

    [[nodiscard]] double value(int series, int row) const;
    [[nodiscard]] bool hasSamples(int series) const { return at(series).pushes != 0; }
    // Rows `first` to `last`, the newest first.
    [[nodiscard]] std::span<const double> rows(int series, int first, int last) const;
    // All as it is now, until the next BeforeMove.
    [[nodiscard]] std::array<TrendSeries, kSeries> seen() const;
    // The highest value from row 2 to `last`, at least 0.
    [[nodiscard]] double peak(int series, int last) const;

private:
    static constexpr std::size_t kSamples = kLastRow - kNewestRow + 1;
    static constexpr std::size_t kRoom = 8 * kSamples;

    // The rows are contiguous and begin at `head`, which moves down through a larger buffer, so that a push copies
    // nothing.
    struct Series {
        std::string name;
        std::string unit;
        std::vector<double> room;
        std::size_t head = 0;
        std::uint64_t pushes = 0;
        mutable RunningPeak peak;

        [[nodiscard]] std::span<const double> samples() const { return std::span(room).subspan(head, kSamples); }
    };

    [[nodiscard]] const Series& at(int series) const;
    void beforeMove() const;
    void moveUp(Series& row) const;

    std::array<Series, kSeries> series_;
};

}  // namespace korvane::trend
