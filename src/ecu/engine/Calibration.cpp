#include "ecu/engine/Calibration.h"

#include <algorithm>
#include <cmath>

#include "core/ParameterNames.h"
#include "ecu/engine/EngineNeed.h"
#include "ecu/engine/InjectionScale.h"

namespace korvane::ecu {

namespace {

// Places in the nine bytes of the misc block.
enum MiscPlace : std::size_t { kLimit = 0, kShift = 2, kEnable = 4, kInjectionOffset = 6, kIgnitionOffset = 7 };

int wordAt(const MiscBytes& misc, MiscPlace place) {
    return misc.at(place) + 256 * misc.at(place + 1);
}

double countMs(const FirmwareMemory& memory) {
    return msPerCount(memory.byteOf("INJ_MODE_OFFSET"), memory.byteOf("INJ_MULTIPLIER_OFF"), memory.type().large);
}

double offsetMs(const FirmwareMemory& memory) {
    return msPerOffsetCount() * memory.misc().at(kInjectionOffset);
}

void takeSettings(Calibration& to, const FirmwareMemory& memory) {
    const int mode = memory.byteOf("INJ_MODE_OFFSET");
    to.injectionsPerCycle = mode == 1 || mode == 4 ? mode : 2;
    to.idleRpm = std::clamp(memory.wordOf("IDLEPID_SETPOINT_LO"), 500, 2500);
    to.idleValveMin = memory.byteOf("IDLEPID_MIN");
    to.idleValveMax = std::max(memory.byteOf("IDLEPID_MAX"), to.idleValveMin);
    to.brakeBelow = memory.wordOf("MOTORBRAKE_LOW");
    to.brakeAbove = memory.wordOf("MOTORBRAKE_HIGH");
    to.chokeEnd = memory.byteOf("RYYPPY_END");
    to.startHelpSeconds = memory.byteOf("STARTHELP_LEN_OFF_8");
    to.throttleMin = memory.byteOf("MINTHR_OFF");
    to.throttleMax = memory.byteOf("MAXTHR_OFF");
    to.loadFromThrottle = memory.byteOf("LOAD_MODE") != 0;
    to.loadPerBar = 10.0 * std::max(memory.byteOf("MAPGAIN_OFF"), 1);
    to.loadStart = 0.01 * memory.byteOf("MAPOFFSET_OFF");
    const int setpoints = core::addressOf("BOOSTPID_SETPOINT");
    for (std::size_t i = 0; i < to.boostLimit.size(); ++i) {
        to.boostLimit.at(i) = 0.01 * memory.read(setpoints + static_cast<int>(i));
    }
}

void takeMisc(Calibration& to, const MiscBytes& misc) {
    to.rpmLimit = wordAt(misc, kLimit);
    to.rpmShift = wordAt(misc, kShift);
    to.enable = static_cast<std::uint16_t>(wordAt(misc, kEnable));
}

void takeMaps(Calibration& to, const FirmwareMemory& memory) {
    const double perCount = countMs(memory);
    const double offset = offsetMs(memory);
    const double advanceOffset = (memory.misc().at(kIgnitionOffset) - 128) / 10.0;
    const MapCells& fuel = memory.working(MapKind::Fuel);
    const MapCells& ignition = memory.working(MapKind::Ignition);
    for (int i = 0; i < to.type.cells(); ++i) {
        const auto cell = static_cast<std::size_t>(i);
        to.pulse.at(cell) = fuel.at(cell) * perCount + offset;
        to.need.at(cell) = neededPulse(to.type.cellRpm(i) + 250.0, to.manifoldOf(to.type.cellLoad(i)));
        to.advance.at(cell) = ignition.at(cell) * 0.2 + advanceOffset;
    }
}

// The two neighbours whose centres a place lies between.
struct Between {
    Between(double place, int cells) {
        const double fromCentre = std::clamp(place - 0.5, 0.0, cells - 1.0);
        first = std::min(static_cast<int>(fromCentre), cells - 2);
        share = fromCentre - first;
    }

    int first;
    double share;  // of the second one
};

}  // namespace

bool Calibration::enabled(Function function) const {
    const auto bit = static_cast<unsigned>(function);
    const bool set = ((enable >> bit) & 1U) != 0;
    return bit >= 14 ? !set : set;
}

double Calibration::throttleOf(int sensor) const {
    return std::clamp((sensor - throttleMin) / std::max(throttleMax - throttleMin, 1.0), 0.0, 1.0);
}

double Calibration::loadOf(double manifoldBar, double throttle) const {
    return loadFromThrottle ? 100.0 * throttle : std::max(manifoldBar - loadStart, 0.0) * loadPerBar;
}

double Calibration::manifoldOf(double loadPercent) const {
    // With the load taken from the throttle a row has no exact pressure; this is a typical one.
    return loadFromThrottle ? 0.35 + 0.0065 * loadPercent : loadStart + loadPercent / loadPerBar;
}

int Calibration::cellOf(double rpm, double loadPercent) const {
    const int column = static_cast<int>(std::clamp(columnAt(rpm), 0.0, type.columns() - 1.0));
    const int row = static_cast<int>(std::clamp(rowAt(loadPercent), 0.0, type.rows() - 1.0));
    return row * type.columns() + column;
}

double Calibration::pulseAt(double rpm, double loadPercent) const {
    const Between column(columnAt(rpm), type.columns());
    const Between row(rowAt(loadPercent), type.rows());
    const auto inRow = [&](int index) {
        const auto rowStart = static_cast<std::size_t>(index) * static_cast<std::size_t>(type.columns());
        const auto cell = rowStart + static_cast<std::size_t>(column.first);
        return std::lerp(pulse.at(cell), pulse.at(cell + 1), column.share);
    };
    return std::lerp(inRow(row.first), inRow(row.first + 1), row.share);
}

Calibration calibrationOf(const FirmwareMemory& memory) {
    Calibration calibration;
    calibration.type = memory.type();
    takeSettings(calibration, memory);
    takeMisc(calibration, memory.misc());
    if (memory.type().limiter) {
        calibration.rpmLimit = memory.limiterRpm();
    }
    takeMaps(calibration, memory);
    return calibration;
}

std::array<double, kMapCells> neededCounts(const FirmwareMemory& memory) {
    std::array<double, kMapCells> counts{};
    const Calibration calibration = calibrationOf(memory);
    for (std::size_t i = 0; i < static_cast<std::size_t>(memory.type().cells()); ++i) {
        counts.at(i) = (calibration.need.at(i) - offsetMs(memory)) / countMs(memory);
    }
    return counts;
}

}  // namespace korvane::ecu
