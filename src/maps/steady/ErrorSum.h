// How far some cells are from their targets, together.
#pragma once

namespace korvane::maps {

// The weighted mean and the worst of some cells.
class ErrorSum {
public:
    void add(double percent, double weight);
    [[nodiscard]] bool isEmpty() const { return weight_ <= 0.0; }
    [[nodiscard]] double mean() const { return isEmpty() ? 0.0 : sum_ / weight_; }
    [[nodiscard]] double worst() const { return worst_; }

private:
    double sum_ = 0.0;
    double weight_ = 0.0;
    double worst_ = 0.0;
};

}  // namespace korvane::maps
