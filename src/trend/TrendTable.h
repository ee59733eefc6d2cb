// The values behind one live plot: six series of the last 399 samples.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace korvane::trend {

// Seen as rows: 0 the series' name, 1 its unit, 2 the newest sample, 3 to 400 older ones. A sample never pushed is 0.
class TrendTable {
public:
    static constexpr int kSeries = 6;
    static constexpr int kNewestRow = 2;
    static constexpr int kLastRow = 400;

    TrendTable();

    // All members raise RuntimeError 9 for a series or row that does not exist.
    void describe(int series, std::string name, std::string unit);
    [[nodiscard]] const std::string& name(int series) const { return at(series).name; }
    [[nodiscard]] const std::string& unit(int series) const { return at(series).unit; }

    // The newest sample gets row 2; all others move one row up, and the one in row 400 is dropped.
    void push(double value, int series);

    [[nodiscard]] double value(int series, int row) const;
    [[nodiscard]] bool hasSamples(int series) const { return at(series).pushed; }
    // Rows `first` to `last`, the newest first.
    [[nodiscard]] std::span<const double> rows(int series, int first, int last) const;

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
        bool pushed = false;
    };

    [[nodiscard]] const Series& at(int series) const;

    std::array<Series, kSeries> series_;
};

}  // namespace korvane::trend
