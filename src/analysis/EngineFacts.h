// What the steady agent has to know of the ECU's settings, and a live frame as it takes it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/steady/Frame.h"
#include "analysis/steady/SteadySetup.h"
#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::analysis {

// How the ECU finds the row of its maps.
struct LoadRule {
    bool fromThrottle = false;
    double perBar = 100.0;  // per cent of load for a bar above `start`
    double start = 0.0;     // bar

    bool operator==(const LoadRule&) const = default;
};

// By which the program makes a channel's value of the ECU's number.
struct Calibration {
    double gain = 1.0;
    double offset = 0.0;

    bool operator==(const Calibration&) const = default;
};

struct EngineFacts {
    double offsetCounts = 0.0;  // of the fuel map, that the injection offset adds to each cell
    int highest = 255;          // the stop of the key +
    LoadRule load;
    bool lambdaControl = false;
    bool throttleKnown = false;
    std::array<Calibration, 3> calibrations;  // of the pressure, the throttle and lambda
    int throttleFrom = 0;                     // its ends
    int throttleTo = 0;

    [[nodiscard]] bool calibratedAs(const EngineFacts& other) const { return calibrations == other.calibrations; }
    bool operator==(const EngineFacts&) const = default;
};

// The facts as this connection has told them, or else in words what is missing.
struct FactsFound {
    std::optional<EngineFacts> facts;
    std::string missing;
};
// That the line has not told `what`, and since when: "the fuel map has".
[[nodiscard]] std::string unread(std::string_view what, const link::ConnectionPanel& connection);
[[nodiscard]] FactsFound factsOf(const core::SharedTables& tables, const link::ConnectionPanel& connection,
                                 const maps::MapGeometry& geometry);

// The part of the map that can be changed cell by cell: the command for a cell names it by one byte.
[[nodiscard]] steady::Grid gridOf(const maps::MapGeometry& geometry);

// The channels as a frame. In the last half row of a grid that is cut the ECU may use cells behind it: such a place
// counts as outside the map.
[[nodiscard]] steady::Frame frameOf(const core::LiveTable& live, const LoadRule& rule,
                                    const maps::MapGeometry& geometry, double seconds);

}  // namespace korvane::analysis
