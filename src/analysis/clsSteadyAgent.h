// The steady agent in the program: what it sees, what it may, and how its changes reach the map and the engine.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/CellSender.h"
#include "analysis/EngineFacts.h"
#include "analysis/LogRehearsal.h"
#include "analysis/SteadyLog.h"
#include "analysis/UnsentEdits.h"
#include "analysis/clsInjAnalyser.h"
#include "analysis/steady/SteadyAgent.h"
#include "controls/clsTimer.h"
#include "core/history/MapHistory.h"
#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "live/LiveUpdate.h"
#include "maps/steady/ErrorSum.h"
#include "maps/steady/FuelBaseline.h"
#include "maps/steady/SteadyTuner.h"
#include "platform/Machine.h"

namespace korvane::analysis {

static_assert(maps::SteadyChoices::kZones == steady::kZones, "a zone has no box, or a box no zone");

// One for the program. Changes FuelMapOut, and sends each cell as a "Realtime change"; it stores nothing. All that it
// changes from its start on is one step of the history. It has to be told of every live frame, sends none itself, and
// costs nothing while it is off.
class clsSteadyAgent : public maps::SteadyTuner,  // NOLINT(readability-identifier-naming)
                       public live::FrameTaker,
                       private link::FrameWitness,
                       private controls::Observer {
public:
    struct Parts {
        platform::Machine& machine;
        core::SharedTables& tables;
        link::ConnectionPanel& connection;
        clsInjAnalyser& analyser;  // has the targets
        core::MapHistory& history;
    };
    explicit clsSteadyAgent(const Parts& parts);
    ~clsSteadyAgent() override;

    void setBaselines(maps::BaselineKeeper baselines) { baselines_ = std::move(baselines); }

    bool start(const maps::MapGeometry& geometry, const void* window) override;
    void stop() override;
    [[nodiscard]] bool isOn(const void* window) const override { return window_ == window && runs() && !putsBack(); }
    void closes(const void* window) override;
    std::string putBack(const maps::MapGeometry& geometry) override;
    std::string newBaseline(const maps::MapGeometry& geometry) override;
    [[nodiscard]] std::string state() const override;
    [[nodiscard]] std::string whyStopped() const override;
    [[nodiscard]] std::string cellWords(int cell) const override;
    [[nodiscard]] std::string cellReasons(int cell) const override;
    [[nodiscard]] const maps::ErrorTrend& errors() const override { return errors_; }
    [[nodiscard]] std::string zoneWords(std::size_t zone) const override;
    [[nodiscard]] std::vector<std::string> sampleWords() const override;
    [[nodiscard]] maps::SteadyChoices& choices() override { return choices_; }

    void liveFrame() override;

    // What a rehearsal needs: the working map, targets and choices as they are, and the baseline that is kept, or else
    // the map. Sends and keeps nothing; the port may be closed.
    [[nodiscard]] RehearsalStart rehearsalStart(const maps::MapGeometry& geometry) const;

    // What it knows; of the last run while it is off.
    [[nodiscard]] const steady::SteadyAgent& agent() const { return agent_; }
    // Nothing for a cell that has none, and before the first start or put back.
    [[nodiscard]] std::optional<std::uint8_t> baselineOf(std::size_t cell) const;
    // All zero for a cell that the map does not have.
    [[nodiscard]] steady::CellReport cell(std::size_t index) const;

private:
    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void propertyChanged(controls::Object& object, const void* property) override;

    [[nodiscard]] bool runs() const;
    [[nodiscard]] bool putsBack() const { return agent_.state() == steady::State::PuttingBack; }
    [[nodiscard]] bool isGarbled();
    [[nodiscard]] bool isPaused();
    [[nodiscard]] maps::BaselineOwner owner(const maps::MapGeometry& geometry) const;
    [[nodiscard]] std::span<const std::uint8_t> cellsOf(const steady::Grid& grid) const;

    // Each says in words why it can't be done; empty if it can.
    [[nodiscard]] std::string refusal(const maps::MapGeometry& geometry);
    [[nodiscard]] bool isWatchedLong() const;
    [[nodiscard]] std::string mapRefusal(const maps::MapGeometry& geometry) const;
    [[nodiscard]] std::string targetRefusal(const maps::MapGeometry& geometry) const;
    [[nodiscard]] std::string findBaseline(const maps::MapGeometry& geometry);
    [[nodiscard]] std::string saveBaseline(const maps::MapGeometry& geometry);
    [[nodiscard]] std::string loadBaseline(const maps::MapGeometry& geometry);
    [[nodiscard]] std::string reasonToStop() const;

    // How many cells are farther from the baseline than the authority lets the agent go.
    [[nodiscard]] static std::size_t cellsBeyond(const steady::SteadySetup& setup, std::span<const std::uint8_t> cells,
                                                 std::span<const std::uint8_t> baseline);
    [[nodiscard]] std::size_t cellsBeyond(const maps::MapGeometry& geometry) const;
    [[nodiscard]] static std::string wordsOf(const maps::FuelBaseline& baseline);
    [[nodiscard]] static std::string beyondWords(std::size_t cells, const maps::FuelBaseline& baseline);
    // Whether this is asked for the second time.
    [[nodiscard]] bool isConfirmed();
    // How many cells differ from the baseline.
    std::size_t prepareWayBack();

    [[nodiscard]] steady::SteadySetup setupFor(const maps::MapGeometry& geometry, const EngineFacts& facts) const;
    void begin(const maps::MapGeometry& geometry);
    void tick();
    [[nodiscard]] bool ecuCorrects() const;
    // Looks for what the mathematics do not see. Whether it has stopped for it.
    bool stopsNow();
    void stopFor(std::string reason);
    void judged();
    void noteErrors();
    void noteOtherErrors();
    void note(const maps::ErrorSum& sum, double seconds);
    [[nodiscard]] double advance();
    void takeEdits();
    void watchEdits();
    void takeTargets();
    void make(std::span<const steady::CellChange> changes);

    Parts parts_;
    maps::SteadyChoices choices_;
    maps::BaselineKeeper baselines_;
    steady::SteadyAgent agent_;
    CellSender sender_;
    SteadyLog log_;
    UnsentEdits unsent_;
    maps::ErrorTrend errors_;
    bool otherRuns_ = false;  // the tuning agent, as far as the errors have been noted
    std::array<std::array<std::uint32_t, steady::kVerdicts>, steady::kMostCells> verdicts_{};
    controls::clsTimer timer_;
    const void* window_ = nullptr;
    maps::MapGeometry geometry_ = maps::kOrdinaryMaps;
    EngineFacts facts_;
    maps::BaselineOwner owner_;
    std::optional<maps::FuelBaseline> baseline_;
    std::string reason_;  // why it was stopped, or did not start; empty where the agent itself knows
    int openings_ = 0;    // of the port at the start
    platform::Micros last_ = 0;
    double seconds_ = 0.0;  // of the agent's clock
    double watchedFrom_ = 0.0;
    bool paused_ = false;
    std::int64_t bytes_ = 0;                 // that had come by the last tick
    std::optional<platform::Micros> asked_;  // whether to put back so much
};

}  // namespace korvane::analysis
