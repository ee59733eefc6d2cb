// The equations for the needs of all cells, as the samples give them.
#pragma once

#include <array>

#include "analysis/steady/Grid.h"
#include "analysis/steady/WallFilm.h"

namespace korvane::steady {

// Normal equations of least squares, kept as sums. A sample is a need between the centres of four cells. Samples wait
// until they are vouched for.
class NeedEquations {
public:
    void reset(const Grid& grid);
    // Into those that wait.
    void add(const Corners& corners, double weight, double need, const Departures& departures);
    void commit();
    void discard() { waiting_.fill({}); }
    // What the cell needs by them, if the other cells need `needs`, `expected` is what is thought of it without
    // samples, and the walls are wetted by those shares.
    [[nodiscard]] double solve(std::size_t index, const std::array<double, kMostCells>& needs, double expected,
                               const Departures& wallShares) const;
    // Weight of the samples for this cell alone, when its neighbours are unknown as well.
    [[nodiscard]] double marginal(std::size_t index) const;

private:
    // The upper triangle: a cell with itself, right, down left, down, down right.
    struct Row {
        double self = 0.0;
        double right = 0.0;
        double downLeft = 0.0;
        double down = 0.0;
        double downRight = 0.0;
        double value = 0.0;
        Departures wet{};  // the same sum as of the needs, of the departures

        void operator+=(const Row& other);
    };
    using Rows = std::array<Row, kMostCells>;
    using Needs = std::array<double, kMostCells>;

    void addPair(std::size_t a, std::size_t b, double product);
    [[nodiscard]] double smooth(std::size_t index, const Needs& needs, double& diagonal) const;
    [[nodiscard]] double others(std::size_t index, const Needs& needs) const;

    Grid grid_;
    Rows known_{};
    Rows waiting_{};
};

}  // namespace korvane::steady
