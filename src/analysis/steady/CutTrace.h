// How lambda answered a fuel cut: what shows that the sensor lives, and how late it is.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace korvane::steady {

// A fuel cut or its end, and lambda's answer.
struct Answer {
    double changedAt = 0.0;  // when the fuel changed, seconds
    double delay = 0.0;      // seconds until lambda had gone 63 per cent of the way
    double lag = 0.0;        // seconds of a first-order sensor, from the slope
};

// Follows one fuel cut after the other.
class CutTrace {
public:
    static constexpr double kLatest = 1.3;  // seconds after which a live sensor has answered

    enum class Outcome {
        None,
        Proved,   // gone lean with the cut and come back
        NotLean,  // lambda did not follow: one long cut, or two short ones
        NotBack,  // lambda stayed lean when the fuel was back
    };

    void reset() { *this = CutTrace(); }
    // Lag of the sensor in seconds; 0 while it is not known. Short cuts tell nothing without it.
    void expectLag(double seconds) { lag_ = seconds; }
    // `cut`: the fuel is off now. Returns what has been decided with this frame.
    Outcome add(double seconds, double lambda, bool cut);
    // Measured with the last frames; each is told once.
    [[nodiscard]] std::optional<Answer> takeAnswer();
    // A fuel cut, or its answer, is under way.
    [[nodiscard]] bool busy() const { return phase_ != Phase::Quiet; }
    // The present cut, or the one whose answer is under way, began then.
    [[nodiscard]] double cutAt() const { return cutAt_; }

private:
    enum class Phase { Quiet, Cut, Ended };
    struct Reading {
        double seconds = 0.0;
        double lambda = 0.0;
    };

    void quiet(double lambda);
    void beginCut(double seconds);
    void endCut(double seconds);
    Outcome follow(const Reading& now, bool cut);
    void watchRise(const Reading& now);
    [[nodiscard]] double crossing(const Reading& now, double level) const;
    Outcome judgeReturn(const Reading& now, bool cutAgain);
    void measureReturn();
    [[nodiscard]] bool weak() const;
    Outcome outcomeOf(bool back);
    [[nodiscard]] double returnCrossing(double level) const;
    [[nodiscard]] double settledLevel() const;

    Phase phase_ = Phase::Quiet;
    Reading last_;
    double gap_ = 0.0;    // seconds since the frame before
    double level_ = 0.0;  // lambda before the cut
    int levels_ = 0;      // frames behind it
    double cutAt_ = 0.0;
    double endedAt_ = 0.0;
    double early_ = 0.0;    // when a third of the way up was gone; 0: not yet
    double late_ = 0.0;     // when 63 per cent was
    bool settled_ = false;  // lambda was at its lean end when the fuel came back
    bool told_ = false;     // an outcome of this cut
    double lag_ = 0.0;
    double firstCut_ = 0.0;  // frames that saw the fuel cut
    double lastCut_ = 0.0;
    double peak_ = 0.0;
    int weak_ = 0;  // short cuts in a row that lambda hardly answered
    std::array<Reading, 128> after_{};
    std::size_t count_ = 0;
    std::optional<Answer> answer_;
    std::optional<Answer> next_;
};

}  // namespace korvane::steady
