// What fuel each cell of the map needs, estimated for all cells together.
#pragma once

#include <array>

#include "analysis/steady/FirmwareGuess.h"
#include "analysis/steady/Grid.h"
#include "analysis/steady/NeedEquations.h"
#include "analysis/steady/PulseMap.h"
#include "analysis/steady/WallFilm.h"

namespace korvane::steady {

// One sample: the logarithm of the fuel that would have given a lambda of 1 on the scale of the readings, at a place.
struct NeedSample {
    Place place;
    std::size_t cell = 0;  // in which it was burnt
    double need = 0.0;
    double weight = 1.0;
    Departures departures{};  // of the fuel's rate
    bool pure = false;        // burnt in that cell alone
    double seconds = 0.0;
};

// What is known of a cell.
struct CellNeed {
    double need = 0.0;        // logarithm
    double weight = 0.0;      // of the samples near it
    double visits = 0.0;      // in which they were taken, a second apart at least
    double spread = 0.0;      // of a single sample, as a share of the fuel
    double error = 0.0;       // standard error of `need`
    double doubt = 0.0;       // what samples of short visits that differ much may all have in common, share of the fuel
    double confidence = 0.0;  // 0 to 1
};

// The need is taken for a smooth function: even between the centres of four cells. It does not depend on what the map
// holds, so the samples stay good when cells are changed. Samples wait until they are
// vouched for, and are then added, or are discarded. For an ECU that uses one byte a cell, the need of a cell
// is the mean over the places where the engine ran in it.
class CellEstimator {
public:
    // `map` is what the needs are expected to be near to.
    void reset(const SteadySetup& setup, const PulseMap& map);
    // Into the samples that wait.
    void add(const NeedSample& sample);
    // The engine runs at that place with fuel; whether or not lambda can be used.
    void enginePassed(const Place& place, std::size_t cell);
    void commit();
    void discard();
    // Solves for some of the cells; cheap enough for each frame.
    void relax();

    [[nodiscard]] CellNeed cell(std::size_t index, Firmware firmware) const;
    // The same for a cell without samples of its own, from those of its close neighbours that are known well; nothing
    // where there are not two of them.
    [[nodiscard]] CellNeed carried(std::size_t index, Firmware firmware) const;
    // The need at a place as it is estimated now.
    [[nodiscard]] double at(const Place& place) const;

private:
    // What the samples of a cell tell of it alone.
    struct Own {
        double near = 0.0;               // samples within the cell
        double visits = 0.0;             // stretches of them, with a second between two
        double pure = 0.0;               // weight of the samples of the cell alone,
        double mean = 0.0;               // sum of their needs,
        Departures meanWet{};            // and of their departures
        std::array<double, 9> places{};  // sum of their shares of the cells around

        void operator+=(const Own& other);
    };
    using Owns = std::array<Own, kMostCells>;

    // What samples differ by around their own mean, of the need at the cell's centre as each of them tells it.
    struct Spread {
        double mean = 0.0;
        double square = 0.0;
        int count = 0;

        void add(double need);
        // Nothing while there are few.
        [[nodiscard]] double deviation() const;
        // The same where it is more than noise: a part of the samples is wrong.
        [[nodiscard]] double beyondUsual() const;
    };

    void addOwn(const NeedSample& sample, const Corners& corners, double off);
    [[nodiscard]] double errorOf(std::size_t index, bool one) const;
    [[nodiscard]] double placesSquare(std::size_t index) const;
    [[nodiscard]] double placesError(std::size_t index) const;
    [[nodiscard]] double likelyNeed(std::size_t index) const;
    void judgeMap();
    [[nodiscard]] double meanNeed(std::size_t index) const;
    [[nodiscard]] double around(std::size_t index, const std::array<double, 9>& shares) const;
    void addPlace(std::array<double, 9>& shares, std::size_t cell, const Corners& corners, double weight) const;
    [[nodiscard]] std::size_t neighbour(std::size_t index, int down, int right) const;

    Grid grid_;
    WallFilm film_;
    NeedEquations equations_;
    Owns known_{};
    Owns waiting_{};
    // Where the engine ran in a cell, with or without samples.
    struct Stay {
        std::array<double, 9> places{};  // sum of the shares of the cells around
        double mean = 0.0;               // of the need there, and of its square
        double square = 0.0;
        int count = 0;
    };
    std::array<Stay, kMostCells> stays_{};
    std::array<double, kMostCells> need_{};
    std::array<double, kMostCells> expected_{};
    std::array<Spread, kMostCells> spreads_{};
    struct Judged {
        std::size_t next = 0;  // cell
        double sum = 0.0;      // of those before, of the squared distances from what was expected
        int cells = 0;
    };
    Judged judged_;
    double mapSquare_ = 0.0;                   // by how much the map is off, as a share of the fuel, squared
    std::array<double, kMostCells> square_{};  // of what the last samples in the cell differed by
    std::size_t next_ = 0;
    std::array<double, kMostCells> seenAt_{};  // the last sample in the cell, seconds
    double residual_ = 0.0;  // root mean square of what the samples differ by from at(), as a share of the fuel
    bool waits_ = false;
};

}  // namespace korvane::steady
