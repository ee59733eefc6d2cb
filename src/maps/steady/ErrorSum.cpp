#include "maps/steady/ErrorSum.h"

#include <algorithm>
#include <cmath>

namespace korvane::maps {

void ErrorSum::add(double percent, double weight) {
    const double size = std::fabs(percent);
    sum_ += size * weight;
    weight_ += weight;
    worst_ = std::max(worst_, size);
}

}  // namespace korvane::maps
