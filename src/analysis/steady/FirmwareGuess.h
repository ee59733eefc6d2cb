// Finds out from the injectors' duty whether the ECU uses one cell of the map or interpolates between four.
#pragma once

#include <optional>

#include "analysis/steady/PulseMap.h"

namespace korvane::steady {

enum class Firmware { Unknown, OneByte, FourBytes };

// Duty is proportional to engine speed and pulse. Of both guesses the one holds under which duty / (speed * pulse)
// varies less.
class FirmwareGuess {
public:
    void reset() { *this = FirmwareGuess(); }
    // A frame with fuel: duty in counts, and the pulse in both ways. What is too short to tell is left out.
    void add(double duty, double rpm, double oneByte, double fourBytes);
    [[nodiscard]] Firmware firmware() const { return firmware_; }
    // By what share the injected pulse is off from that of the map, as the duty shows it; nothing while the firmware is
    // not known, or where the duty is too short to tell.
    [[nodiscard]] std::optional<double> off(double duty, double rpm, double oneByte, double fourBytes) const;

private:
    struct Spread {
        double mean = 0.0;
        double square = 0.0;

        void add(double value, double share, double most);
        [[nodiscard]] double variance() const { return square - mean * mean; }
    };
    void decide();

    Spread one_;
    Spread four_;
    double weight_ = 0.0;
    int count_ = 0;
    Firmware firmware_ = Firmware::Unknown;
};

}  // namespace korvane::steady
