#include "analysis/steady/NeedEquations.h"

#include <algorithm>

namespace korvane::steady {

namespace {

constexpr double kPrior = 0.02;  // samples that the expected need is worth,
constexpr double kSmooth = 0.5;  // and that a smooth need is worth, along the row and along the column

}  // namespace

void NeedEquations::Row::operator+=(const Row& other) {
    self += other.self;
    right += other.right;
    downLeft += other.downLeft;
    down += other.down;
    downRight += other.downRight;
    value += other.value;
    wet[0] += other.wet[0];
    wet[1] += other.wet[1];
}

void NeedEquations::reset(const Grid& grid) {
    grid_ = grid;
    known_.fill({});
    waiting_.fill({});
}

// Cells that are given twice at the map's edge are one cell.
void NeedEquations::addPair(std::size_t a, std::size_t b, double product) {
    const auto columns = static_cast<std::size_t>(grid_.columns);
    if (b < a) {
        std::swap(a, b);
    }
    Row& row = waiting_[a];
    const std::size_t apart = b - a;
    if (apart == 0) {
        row.self += 2.0 * product;
    } else if (apart == 1) {
        row.right += product;
    } else if (apart == columns) {
        row.down += product;
    } else if (apart == columns + 1) {
        row.downRight += product;
    } else {
        row.downLeft += product;
    }
}

void NeedEquations::add(const Corners& corners, double weight, double need, const Departures& departures) {
    for (std::size_t i = 0; i < corners.cell.size(); ++i) {
        const double share = weight * corners.share[i];
        Row& row = waiting_[corners.cell[i]];
        row.self += share * corners.share[i];
        row.value += share * need;
        row.wet[0] += share * departures[0];
        row.wet[1] += share * departures[1];
        for (std::size_t j = i + 1; j < corners.cell.size(); ++j) {
            addPair(corners.cell[i], corners.cell[j], share * corners.share[j]);
        }
    }
}

void NeedEquations::commit() {
    for (std::size_t i = 0; i < grid_.cells(); ++i) {
        known_[i] += waiting_[i];
    }
    discard();
}

// The need changes evenly along rows and columns, if nothing else is known: `diagonal` grows by the weight of it.
double NeedEquations::smooth(std::size_t index, const Needs& needs, double& diagonal) const {
    const auto columns = static_cast<std::size_t>(grid_.columns);
    double sum = 0.0;
    const auto between = [&](std::size_t before, std::size_t behind) {
        sum += kSmooth * 0.5 * (needs[before] + needs[behind]);
        diagonal += kSmooth;
    };
    if (index % columns > 0 && index % columns + 1 < columns) {
        between(index - 1, index + 1);
    }
    if (index >= columns && index + columns < grid_.cells()) {
        between(index - columns, index + columns);
    }
    return sum;
}

// What the samples around the cell say of its neighbours' shares.
double NeedEquations::others(std::size_t index, const Needs& needs) const {
    const auto columns = static_cast<std::size_t>(grid_.columns);
    const bool left = index % columns > 0;
    const bool right = index % columns + 1 < columns;
    const bool up = index >= columns;
    const bool down = index + columns < grid_.cells();
    const Row& row = known_[index];
    double sum = right ? row.right * needs[index + 1] : 0.0;
    sum += left ? known_[index - 1].right * needs[index - 1] : 0.0;
    sum += down ? row.down * needs[index + columns] : 0.0;
    sum += up ? known_[index - columns].down * needs[index - columns] : 0.0;
    sum += down && right ? row.downRight * needs[index + columns + 1] : 0.0;
    sum += down && left ? row.downLeft * needs[index + columns - 1] : 0.0;
    sum += up && left ? known_[index - columns - 1].downRight * needs[index - columns - 1] : 0.0;
    sum += up && right ? known_[index - columns + 1].downLeft * needs[index - columns + 1] : 0.0;
    return sum;
}

double NeedEquations::solve(std::size_t index, const Needs& needs, double expected,
                            const Departures& wallShares) const {
    const Row& row = known_[index];
    double diagonal = row.self + kPrior;
    const double sum = row.value - wallShares[0] * row.wet[0] - wallShares[1] * row.wet[1] - others(index, needs) +
                       kPrior * expected + smooth(index, needs, diagonal);
    return sum / diagonal;
}

double NeedEquations::marginal(std::size_t index) const {
    const auto columns = static_cast<std::size_t>(grid_.columns);
    const Row& row = known_[index];
    double weight = row.self;
    const auto lose = [&](bool there, std::size_t other, double product) {
        if (there && known_[other].self > 0.0) {
            weight -= product * product / (known_[other].self + kSmooth);
        }
    };
    const bool left = index % columns > 0;
    const bool right = index % columns + 1 < columns;
    const bool down = index + columns < grid_.cells();
    lose(right, index + 1, row.right);
    lose(down, index + columns, row.down);
    lose(left, index - 1, left ? known_[index - 1].right : 0.0);
    lose(index >= columns, index - columns, index >= columns ? known_[index - columns].down : 0.0);
    return std::max(weight, 0.1 * row.self);
}

}  // namespace korvane::steady
