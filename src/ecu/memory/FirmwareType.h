// What the firmware types differ in.
#pragma once

namespace korvane::ecu {

struct FirmwareType {
    bool large = false;   // 320 cells in 16 rows of 20 instead of 160 in 10 rows of 16
    bool injects = true;  // has a fuel map and drives injectors
    bool ignites = true;  // fires the spark plugs
    bool ignitionMap = true;
    bool limiter = false;       // has its limits in rows 1900 to 1960, which take effect at its start
    bool idleRegulator = true;  // without one, cells 500 and 501 hold the launch limit

    [[nodiscard]] int rows() const { return large ? 16 : 10; }
    [[nodiscard]] int columns() const { return large ? 20 : 16; }
    [[nodiscard]] int cells() const { return rows() * columns(); }
    // Where map cell `index` begins in speed, and the middle of its load in percent.
    [[nodiscard]] int cellRpm(int index) const { return 1000 + 500 * (index % columns()); }
    [[nodiscard]] int cellLoad(int index) const { return 10 * (index / columns()) + 5; }
};

// A type number that no firmware has is taken for a full engine control.
[[nodiscard]] FirmwareType firmwareType(int number);

}  // namespace korvane::ecu
