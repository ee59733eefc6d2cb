// A car of a few lines for the steady agent: it wanders over the map, lifts the throttle now and then, and has a lambda
// sensor that is late.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <deque>
#include <random>
#include <vector>

#include "analysis/steady/SteadyAgent.h"

namespace korvane::steady {

class TinyCar {
public:
    enum class Fault { None, Stuck, Lean, Rich, Noisy, Quiet };

    explicit TinyCar(unsigned seed, bool interpolates = true) : random_(seed), interpolates_(interpolates) {
        for (std::size_t cell = 0; cell < bytes_.size(); ++cell) {
            bytes_[cell] = static_cast<std::uint8_t>(std::lround(needAt(centreOf(cell))));
        }
    }

    // Counts that give the target of 12.5 at a place: even along rows and columns.
    [[nodiscard]] static double needAt(const Place& place) { return 50.0 + 8.0 * place.row + 1.5 * place.column; }
    [[nodiscard]] static Place centreOf(std::size_t cell) {
        return {static_cast<double>(cell % 16) + 0.5, static_cast<double>(cell / 16) + 0.5};
    }

    // All cells by so many per cent.
    void spoil(double percent) {
        for (auto& byte : bytes_) {
            byte = static_cast<std::uint8_t>(std::lround(byte * (1.0 + percent / 100.0)));
        }
    }
    void setFault(Fault fault) { fault_ = fault; }
    void setDelay(double seconds) { delay_ = seconds; }
    // From now on it needs so much of the fuel that it needed.
    void setNeed(double share) { needShare_ = share; }
    // Its need is off by up to so many per cent from cell to cell, at random.
    void roughen(double percent) {
        for (double& share : rough_) {
            share = 1.0 + percent / 100.0 * (2.0 * uniform() - 1.0);
        }
    }
    // Counts that give the target of 12.5 at a place.
    [[nodiscard]] double needHere(const Place& place) const {
        const Corners corners = grid_.cornersOf(place);
        double share = 0.0;
        for (std::size_t i = 0; i < 4; ++i) {
            share += corners.share[i] * rough_[corners.cell[i]];
        }
        return needAt(place) * share * needShare_;
    }
    // The ECU adds so much fuel when the load rises quickly; it fades in 0.8 s, and no lamp tells of it.
    void setEnrichment(double share) { enrichment_ = share; }
    // A lamp tells of the first 0.3 s of it.
    void lightEnrichment() { lit_ = true; }
    // It stays at a place until release().
    void hold(const Place& place) {
        held_ = true;
        place_ = aim_ = place;
    }
    void release() {
        held_ = false;
        place_ = {3.0, 4.0};
    }
    [[nodiscard]] bool isCut() const { return cutFor_ > 0.0; }
    void allowCuts(bool allowed) { cutsAllowed_ = allowed; }
    void take(std::span<const CellChange> changes) {
        for (const CellChange& change : changes) {
            bytes_.at(change.cell) = change.to;
        }
    }
    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }
    void set(std::size_t cell, std::uint8_t byte) { bytes_.at(cell) = byte; }

    // 75 ms later.
    const Frame& next() {
        for (int step = 0; step < 15; ++step) {
            turn();
        }
        const bool cut = cutFor_ > 0.0;
        frame_.seconds = seconds_;
        frame_.rpm = std::round(1000.0 + 500.0 * place_.column);
        frame_.load = 10.0 * place_.row;
        frame_.throttle = cut ? 0.0 : 30.0;
        frame_.cell = grid_.cellAt(place_);
        frame_.duty = cut ? 0.0 : std::round(pulse() * (1.0 + enriched_) * frame_.rpm / 4000.0);
        frame_.waterC = 85.0;
        const bool pump = lit_ && enriched_ > enrichment_ * std::exp(-0.3 / 0.8);
        frame_.lamps = (1U << 13U) | (pump ? 1U << 4U : 0U) | (cut ? 1U << 10U : 1U << 3U);
        frame_.lambda = std::round(reading() * 25.6) / 25.6;
        return frame_;
    }

private:
    static constexpr double kStep = 0.005;
    static constexpr double kLag = 0.1;

    static std::array<double, 160> filled(double value) {
        std::array<double, 160> values{};
        values.fill(value);
        return values;
    }
    double uniform() { return static_cast<double>(random_() % 10000U) / 10000.0; }
    [[nodiscard]] double pulse() const {
        if (!interpolates_) {
            return bytes_[grid_.cellAt(place_)];
        }
        const Corners corners = grid_.cornersOf(place_);
        double counts = 0.0;
        for (std::size_t i = 0; i < 4; ++i) {
            counts += corners.share[i] * bytes_[corners.cell[i]];
        }
        return counts;
    }
    void turn() {
        seconds_ += kStep;
        steer();
        place_.column += std::clamp(aim_.column - place_.column, -1.0, 1.0) * kStep;
        place_.row += std::clamp(aim_.row - place_.row, -1.0, 1.0) * kStep;
        enriched_ *= std::exp(-kStep / 0.8);
        const double given = pulse() * (1.0 + enriched_);
        const double burnt = cutFor_ > 0.0 ? 20.0 : std::min(12.5 * needHere(place_) / given, 20.0);
        pipe_.push_back(burnt);
        sensor_ += (pipe_.front() - sensor_) * kStep / kLag;
        if (static_cast<double>(pipe_.size()) * kStep > delay_) {
            pipe_.pop_front();
        }
    }
    void steer() {
        cutFor_ -= kStep;
        aimFor_ -= kStep;
        if (aimFor_ <= 0.0 && !held_) {
            aimFor_ = 3.0;
            const double before = aim_.row;
            aim_ = {2.0 + 4.0 * uniform(), 3.0 + 3.0 * uniform()};
            enriched_ = aim_.row > before + 1.0 ? enrichment_ : enriched_;
        }
        if (cutsAllowed_ && seconds_ > cutAt_) {
            cutAt_ = seconds_ + 12.0 + 6.0 * uniform();
            cutFor_ = 2.0;
        }
    }
    double reading() {
        const double noise = 0.1 * (uniform() + uniform() - 1.0);
        switch (fault_) {
            case Fault::Stuck:
                return 12.5;
            case Fault::Noisy:
                return 12.5 + noise;
            case Fault::Lean:
                return 19.96;
            case Fault::Rich:
                return 10.0;
            case Fault::Quiet:
                return std::clamp(sensor_, 10.0, 19.96);
            case Fault::None:
                break;
        }
        return std::clamp(sensor_ + noise, 10.0, 19.96);
    }

    std::mt19937 random_;
    bool interpolates_;
    Grid grid_;
    std::vector<std::uint8_t> bytes_ = std::vector<std::uint8_t>(160);
    Place place_{3.0, 4.0};
    Place aim_{3.0, 4.0};
    std::deque<double> pipe_;
    std::array<double, 160> rough_ = filled(1.0);
    double needShare_ = 1.0;
    double enrichment_ = 0.0;
    double enriched_ = 0.0;
    bool lit_ = false;
    bool held_ = false;
    double delay_ = 0.25;
    double sensor_ = 12.5;
    double seconds_ = 0.0;
    double aimFor_ = 0.0;
    double cutFor_ = 0.0;
    double cutAt_ = 30.0;
    bool cutsAllowed_ = true;
    Fault fault_ = Fault::None;
    Frame frame_;
};

}  // namespace korvane::steady
