// The second tuning agent: brings the fuel map to the target, stays there, and stops by itself.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "analysis/steady/BurnHistory.h"
#include "analysis/steady/CellEstimator.h"
#include "analysis/steady/Contradiction.h"
#include "analysis/steady/Corrector.h"
#include "analysis/steady/CountLimit.h"
#include "analysis/steady/CutTrace.h"
#include "analysis/steady/Decision.h"
#include "analysis/steady/DelayEstimator.h"
#include "analysis/steady/FirmwareGuess.h"
#include "analysis/steady/Frame.h"
#include "analysis/steady/MinuteMemory.h"
#include "analysis/steady/ProofLimit.h"
#include "analysis/steady/PulseCheck.h"
#include "analysis/steady/SampleGate.h"
#include "analysis/steady/SecondSend.h"
#include "analysis/steady/Watch.h"

namespace korvane::steady {

// A cell is to get another byte; where both are the same, that byte is to be sent again.
struct CellChange {
    std::size_t cell = 0;
    std::uint8_t from = 0;
    std::uint8_t to = 0;
    bool carried = false;  // from a close neighbour, without samples of its own
    bool putBack = false;

    [[nodiscard]] bool isRepeat() const { return from == to; }
    bool operator==(const CellChange&) const = default;
};

// What the agent knows of a cell, and what it does with it.
struct CellReport {
    double weight = 0.0;
    double errorPercent = 0.0;  // of fuel that the cell lacks; positive: too lean
    double spread = 0.0;        // of a single sample, per cent of fuel
    double confidence = 0.0;    // 0 to 1
    std::uint8_t baseline = 0;
    std::uint8_t byte = 0;
    std::uint64_t used = 0;  // samples burnt in the cell,
    std::uint64_t rejected = 0;
    bool limited = false;  // the authority ends before the target
    bool carried = false;
    WhyHeld held = WhyHeld::NotWorking;  // why it is not changed now
};

// Has no clock, no input or output of its own, and allocates nothing; the same calls give the same changes. The caller
// makes the changes in the working map and sends them, in order.
class SteadyAgent {
public:
    // Takes the map as it is for the baseline, or `baseline` where an earlier run has left one. Whatever was learnt
    // is forgotten.
    void start(const SteadySetup& setup, std::span<const std::uint8_t> map, double seconds,
               std::span<const std::uint8_t> baseline = {});
    // The tuner has switched it off. Nothing is changed any more; the map stays as it is.
    void stop();
    // All cells back to the baseline, with the next frames or calls of onTime(); then it is stopped. Nothing before the
    // first start.
    void putBack();

    // A live frame. Returns what is to be changed; valid until the next call. A frame with a number that is none is
    // left out.
    std::span<const CellChange> onFrame(const Frame& frame);
    // Where no frame comes: the link may be late. The same as onFrame otherwise.
    std::span<const CellChange> onTime(double seconds);
    // So many seconds have passed that its clock leaves out: what was proved is older by that.
    void rested(double seconds) { provedAt_ -= seconds; }
    void ecuRestarted() { fault(StopReason::EcuRestarted); }
    void sendRefused() { fault(StopReason::SendRefused); }
    // The ECU has begun to correct by lambda itself: what lambda has told since the last proof may not be the map's.
    void lambdaControlBegan() { fault(StopReason::LambdaControl); }
    // Somebody else has changed the cell of the working map. It is not changed until the next start, but by putBack().
    void cellEdited(std::size_t cell, std::uint8_t byte);
    // The target of a cell, while it works; one that is none, by isTarget(), is not taken.
    void setTarget(std::size_t cell, float lambda);
    // The delay of a zone as the tuner fixes it, in ms; 0: it is estimated again.
    void fixDelay(std::size_t zone, double delayMs) { delays_.fix(zone, delayMs); }
    // The limits alone, while it works. Cells that are beyond them by that come back first, whatever they need.
    void setAuthority(double richPercent, double leanPercent);

    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] StopReason stopReason() const { return stopReason_; }
    [[nodiscard]] const SteadySetup& setup() const { return setup_; }
    [[nodiscard]] Firmware firmware() const { return guess_.firmware(); }
    [[nodiscard]] Zone zone(std::size_t index) const { return delays_.zone(index); }
    [[nodiscard]] std::uint64_t counted(Verdict verdict) const { return gate_.counted(verdict); }
    // Of the last frame.
    [[nodiscard]] Verdict lastVerdict() const { return verdict_; }
    // In which it was burnt, and is counted.
    [[nodiscard]] std::size_t lastCell() const { return lastCell_; }
    [[nodiscard]] CellReport cell(std::size_t index) const;
    [[nodiscard]] const MapBytes& baseline() const { return baseline_; }
    [[nodiscard]] const MapBytes& map() const { return map_.bytes(); }

private:
    struct Need {
        CellNeed need;
        bool carried = false;
    };

    [[nodiscard]] bool wasProved() const { return state_ == State::Working || state_ == State::Unproved; }
    void handle(Event event);
    void act(Action action);
    void fault(StopReason reason);
    void begin();
    void forgetNeeds();
    void setRange(std::size_t cell);
    void beginPutBack(WayBack way);
    void keepBackInside();
    [[nodiscard]] MapBytes lastGood() const;
    void observe(const Frame& frame);
    [[nodiscard]] Burn burnOf(const Frame& frame);
    [[nodiscard]] Verdict checkPulse(const Frame& frame, const Burn& burn);
    void guessFirmware(const Frame& frame, const Burn& burn);
    void learnDelay();
    void proved(double seconds);
    [[nodiscard]] CutTrace::Outcome followCut(const Frame& frame, Verdict mixture);
    void judge(const Frame& frame, Verdict mixture, CutTrace::Outcome cut);
    [[nodiscard]] Verdict verdictOn(Verdict mixture, const Smeared& burnt) const;
    void take(const Frame& frame, const Smeared& burnt);
    [[nodiscard]] bool contradicts(const NeedSample& sample) const;
    [[nodiscard]] bool clear(Verdict mixture, double age) const;
    void lookAtSome();
    void putBackSome(double seconds);
    void correctCell(std::size_t cell);
    void sendAgain(std::size_t cell);
    void change(std::size_t cell, int byte, bool carried, bool back);
    [[nodiscard]] Need needOf(std::size_t cell) const;
    [[nodiscard]] Correction correctionOf(std::size_t cell, const CellNeed& need) const;
    [[nodiscard]] bool mayMove(std::size_t cell, int step) const;

    static constexpr std::size_t kAtOnce = 16;  // changes for a frame

    SteadySetup setup_;
    PulseMap map_;
    MapBytes baseline_{};
    MapBytes back_{};  // what is being put back
    std::array<ByteRange, kMostCells> ranges_{};
    std::bitset<kMostCells> edited_;  // by hand
    std::bitset<kMostCells> beyond_;  // their range, which was made smaller
    std::array<std::uint64_t, kMostCells> used_{};
    std::array<std::uint64_t, kMostCells> rejected_{};
    SampleGate gate_;
    BurnHistory history_;
    FirmwareGuess guess_;
    CutTrace cuts_;
    DelayEstimator delays_;
    CellEstimator cells_;
    Contradiction contradiction_;
    ProofLimit proof_;
    MinuteMemory minute_;
    CountLimit counts_;
    SecondSend again_;
    PulseCheck pulse_;
    Watch watch_;
    State state_ = State::Off;
    StopReason stopReason_ = StopReason::None;
    Firmware learntFor_ = Firmware::Unknown;
    Verdict reading_ = Verdict::Used;
    Verdict verdict_ = Verdict::Used;
    std::size_t lastCell_ = 0;
    double seconds_ = 0.0;
    bool begun_ = false;  // there is a baseline
    double provedAt_ = 0.0;
    std::size_t next_ = 0;
    std::optional<double> wentBackAt_;  // all cells, for the first time
    std::array<CellChange, kAtOnce> changes_{};
    std::size_t changed_ = 0;
};

}  // namespace korvane::steady
