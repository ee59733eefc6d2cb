// What the map windows and the analyser need of each other.
#pragma once

#include <cstdint>
#include <string_view>

#include "controls/PropertyTable.h"

namespace korvane::maps {

// The open map window, as the analyser and its agent act on it. The analyser has more cells than any window: a cell
// that the window does not have is skipped.
class TunedMap {
public:
    virtual ~TunedMap() = default;

    // The tool-tip of txtInjAnalys(cell).
    virtual void setSetpointToolTip(int cell, std::string_view text) = 0;
    virtual void setOnlineChanges(bool ticked) = 0;  // chkOnlineChanges
    virtual void setAgentLamp(controls::Picture lamp) = 0;
    // The key-down handler of txtFuel(cell), as if the tuner pressed the key.
    virtual void pressFuelKey(int cell, int keyCode, int shift) = 0;
    virtual void populateFuelOUT() = 0;
};

// The analyser, as the map windows use it. Cells count from 0 to 320 whatever the map; RuntimeError 9 for others.
class Analyser {
public:
    virtual ~Analyser() = default;

    // The map window that has opened; null when it closes, which stops the agent.
    virtual void setMapWindow(TunedMap* window) = 0;

    // Targets and means are air-fuel ratios; a proposal is the mean less the target, positive when lean.
    virtual void Setpoint(float value, std::int32_t index) = 0;
    [[nodiscard]] virtual float Setpointget(std::int32_t index) const = 0;
    [[nodiscard]] virtual float Proposal(std::int32_t index) const = 0;
    [[nodiscard]] virtual float LambdaAvg(std::int32_t index) const = 0;
    virtual void setSimpleMode(bool on) = 0;
    virtual void setLogData(bool on) = 0;
    virtual void setAgentEnable(bool on) = 0;
    virtual void ClearTables() = 0;
};

}  // namespace korvane::maps
