#include "analysis/EngineFacts.h"

#include <algorithm>
#include <cmath>

#include "core/tables/LiveChannel.h"
#include "maps/grid/MapConversions.h"

namespace korvane::analysis {

namespace {

using core::LiveChannel;
using Missing = std::string;

constexpr int kCellNames = 256;     // that one byte has
constexpr unsigned kLambdaBit = 9;  // of the enable word
constexpr std::size_t kEnableHigh = 5;
constexpr std::size_t kInjectionOffset = 6;
constexpr double kOutside = 1000.0;  // per cent of load

std::optional<std::uint8_t> known(const link::ConnectionPanel& connection, int address) {
    const auto& cells = connection.ecuEeprom.cells();
    if (address < 0 || std::cmp_greater_equal(address, cells.size())) {
        return std::nullopt;
    }
    const auto& cell = cells[static_cast<std::size_t>(address)];
    return cell.known != link::Known::No ? std::optional(cell.byte) : std::nullopt;
}

// An offset in time is as many counts as its time takes.
Missing findOffset(EngineFacts& facts, double offset, const core::SharedTables& tables,
                   const link::ConnectionPanel& connection, const maps::MapGeometry& geometry) {
    const bool inCounts = tables.InjOff_type != 0;
    if (inCounts || offset == 0.0) {
        facts.offsetCounts = offset;
        facts.highest = inCounts ? static_cast<int>(255.0 - offset) : 255;
        return {};
    }
    const auto& places = tables.addresses;
    if (!known(connection, places.INJ_MODE_OFFSET) || !known(connection, places.INJ_MULTIPLIER_OFF)) {
        return unread("the injection mode has", connection);
    }
    const bool large = geometry.cells() > kCellNames;
    facts.offsetCounts = offset * tables.TickF / (large ? maps::largeScaleNow(tables) : maps::ordinaryScaleNow(tables));
    return {};
}

Missing findLoad(EngineFacts& facts, const core::ParameterAddresses& places, const link::ConnectionPanel& connection) {
    const auto mode = known(connection, places.LOAD_MODE);
    const auto gain = known(connection, places.MAPGAIN_OFF);
    const auto start = known(connection, places.MAPOFFSET_OFF);
    if (!mode || !gain || !start) {
        return unread("the load calculation has", connection);
    }
    facts.load = {.fromThrottle = *mode != 0, .perBar = 10.0 * std::max<int>(*gain, 1), .start = 0.01 * *start};
    return facts.load.fromThrottle && !facts.throttleKnown
               ? "the ends of the throttle have not been read from the ECU since the program started"
               : Missing();
}

std::array<Calibration, 3> calibrationsOf(const core::LiveTable& live) {
    const auto of = [&live](LiveChannel which) {
        const auto& channel = live.liveValues[core::indexOf(which)];
        return Calibration{channel.gain, channel.offset};
    };
    return {of(LiveChannel::Pressure), of(LiveChannel::Throttle), of(LiveChannel::Lambda)};
}

// At the ends of the sensor's range a calibration of the channel must not hide that it is there.
double lambdaOf(const core::LiveValue& channel) {
    constexpr double kRichEnd = 3.0;  // of the byte
    constexpr double kLeanEnd = 244.0;
    const bool atEnd = channel.raw <= kRichEnd || channel.raw >= kLeanEnd;
    return atEnd ? channel.raw / 256.0 * 10.0 + 10.0 : channel.value;
}

}  // namespace

std::string unread(std::string_view what, const link::ConnectionPanel& connection) {
    return std::string(what) + " not been read from the ECU since " +
           (connection.openings > 0 ? "it was connected" : "the program started");
}

FactsFound factsOf(const core::SharedTables& tables, const link::ConnectionPanel& connection,
                   const maps::MapGeometry& geometry) {
    const auto& misc = connection.ecuMisc.bytes();
    if (!misc) {
        return {{}, unread("the injection offset has", connection)};
    }
    EngineFacts facts;
    facts.throttleKnown = tables.ThrottleMax > tables.ThrottleMin;
    facts.calibrations = calibrationsOf(tables);
    facts.throttleFrom = tables.ThrottleMin;
    facts.throttleTo = tables.ThrottleMax;
    facts.lambdaControl = ((static_cast<unsigned>(misc->at(kEnableHigh)) << 8U) >> kLambdaBit & 1U) != 0;
    Missing missing = findOffset(facts, misc->at(kInjectionOffset), tables, connection, geometry);
    if (missing.empty()) {
        missing = findLoad(facts, tables.addresses, connection);
    }
    return missing.empty() ? FactsFound{facts, {}} : FactsFound{{}, std::move(missing)};
}

steady::Grid gridOf(const maps::MapGeometry& geometry) {
    return {.columns = geometry.columns, .rows = std::min(geometry.rows, kCellNames / geometry.columns)};
}

steady::Frame frameOf(const core::LiveTable& live, const LoadRule& rule, const maps::MapGeometry& geometry,
                      double seconds) {
    const auto channel = [&](LiveChannel which) -> const core::LiveValue& {
        return live.liveValues[core::indexOf(which)];
    };
    const int rows = gridOf(geometry).rows;
    const double throttle = channel(LiveChannel::Throttle).value;
    const double pressure = channel(LiveChannel::Pressure).value;
    const double load = rule.fromThrottle ? throttle : std::max(pressure - rule.start, 0.0) * rule.perBar;
    const bool beyond = rows < geometry.rows && load > 10.0 * rows - 5.0;
    const double flags = channel(LiveChannel::Flags).raw;
    return {.seconds = seconds,
            .rpm = channel(LiveChannel::Rpm).value,
            .load = beyond ? kOutside : load,
            .throttle = throttle,
            .lambda = lambdaOf(channel(LiveChannel::Lambda)),
            .duty = channel(LiveChannel::InjectionDuty).raw,
            .waterC = channel(LiveChannel::WaterTemperature).value,
            .cell = static_cast<std::size_t>(std::clamp(channel(LiveChannel::MapPlace).raw, 0.0, 255.0)),
            .lamps = static_cast<unsigned>(std::clamp(flags, 0.0, 65535.0))};
}

}  // namespace korvane::analysis
