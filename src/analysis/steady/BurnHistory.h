// What the engine burnt in the last seconds, so that lambda can be matched with the mixture it belongs to.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "analysis/steady/Grid.h"
#include "analysis/steady/Verdict.h"
#include "analysis/steady/WallFilm.h"

namespace korvane::steady {

// The engine at the moment of a frame.
struct Burn {
    Place place;
    std::size_t cell = 0;
    double oneByte = 0.0;  // fuel, as PulseMap has it
    double fourBytes = 0.0;
    double rate = 0.0;                // of the fuel, in any unit; 0 while it is cut
    Verdict verdict = Verdict::Used;  // of the mixture
};

// As the sensor sees it: smoothed by its lag.
struct Smeared {
    Place place;
    double oneByte = 0.0;
    double fourBytes = 0.0;
    std::size_t cell = 0;              // at that moment
    double purity = 0.0;               // the share of that cell, 0 to 1
    double row = 0.0;                  // of the place, not smoothed
    Departures films{};                // means of the rate over the times of the wall film
    Departures departures{};           // of the rate from them, as shares of the rate
    double pace = 0.0;                 // how fast the row changes, in a second
    Verdict last = Verdict::LinkLate;  // the last mixture that was of no use,
    double since = 0.0;                // and how many seconds ago that was
    double sinceCut = 1e9;             // seconds since the fuel was cut
};

// Kept in even steps of time, between the frames by straight lines.
class BurnHistory {
public:
    static constexpr double kStep = 0.01;  // seconds
    static constexpr double kLongestGap = 0.5;

    // Forgets everything; the next frame is the first.
    void reset();
    // Lag of the sensor in seconds, from now on.
    void setLag(double seconds);
    // `seconds` must not go back. After a gap that is too long the history begins anew.
    void add(double seconds, const Burn& burn);
    // The mixture so many seconds before the last frame; the oldest one there is for longer times.
    [[nodiscard]] const Smeared& before(double seconds) const;
    // How long the gas that arrives now was under way, if gas burnt at row r takes delay(r) at steady load: it moves
    // through the pipe by the delay that holds at each moment. In steps of kStep.
    template <typename Delay>
    [[nodiscard]] double age(const Delay& delay) const {
        double way = 0.0;
        std::size_t back = 0;
        while (way < 1.0 && back + 1 < filled_) {
            way += kStep / std::max(delay(ticks_[(newest_ + kTicks - back) % kTicks].row), kStep);
            ++back;
        }
        return kStep * static_cast<double>(back);
    }
    // Seconds of the newest mixture.
    [[nodiscard]] double time() const { return time_; }

private:
    static constexpr std::size_t kTicks = 256;

    void begin(double seconds, const Burn& burn);
    void tick(const Burn& burn);
    [[nodiscard]] Burn between(const Burn& to, double share) const;

    std::array<Smeared, kTicks> ticks_{};
    std::size_t newest_ = 0;
    std::size_t filled_ = 0;
    double time_ = 0.0;  // of the newest
    Burn latest_;
    double latestSeconds_ = 0.0;
    bool begun_ = false;
    double follow_ = kStep / (kStep + 0.15);
};

}  // namespace korvane::steady
