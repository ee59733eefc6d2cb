// Engine speed to road speed.
#pragma once

namespace korvane::performance {

struct Gearing {
    double gear = 1.0;  // ratio of the gear in use
    double finalDrive = 1.0;
    double tyre = 0.0;  // diameter in centimetres
};

// km/h at `rpm`, with 3.1415 for pi. Raises RuntimeError 11 if a ratio is 0, and 6 for what no number can hold.
[[nodiscard]] double roadSpeed(double rpm, const Gearing& gearing);

// The speed as it is shown: cut to one decimal.
[[nodiscard]] double shownSpeed(double speed);

}  // namespace korvane::performance
