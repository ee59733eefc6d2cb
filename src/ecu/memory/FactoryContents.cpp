#include "ecu/memory/FactoryContents.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "core/ParameterNames.h"
#include "ecu/engine/InjectionScale.h"
#include "ecu/memory/EepromFile.h"
#include "ecu/memory/MapStore.h"

namespace korvane::ecu {

namespace {

// One parameter, or a row of equal cells that begins at it.
struct Content {
    std::string_view name;
    int value;
    int cells = 1;
};

constexpr Content kContents[] = {
    {"MISC2_OFF", 0x14},  // idle map, intake air temperature correction
    {"RPM_LIMIT_LOW_OFF", 7200},
    {"RPM_SHIFT_LOW_OFF", 6800},
    {"MISC_LOW_OFF", 0x0D3F},  // PWM to ignition, voltage, engine brake, launch; shift light and limit are on when 0
    {"IGN_karkea_OFF", 128},   // no ignition offset
    {"INJ_jakaja_OFF", 6},     // 4.4 ms
    {"START_HELP_OFF", 60},
    {"RYYPPY_OFF", 45},
    {"CHARGE_TIME_OFF", 175},  // 3.5 ms
    {"ACCEL_DELAY_OFF", 4},
    {"INJ_MODE_OFFSET", 2},
    {"IGN_EDGE_OFFSET", 1},
    {"MINTHR_OFF", 20},
    {"MAXTHR_OFF", 230},
    {"RYYPPY_END", 65},
    {"LAMBDAPID_STEP", 2},
    {"LAMBDAPID_SPEED", 10},
    {"LAMBDATAV_OFF", 64, 10},
    {"LAMBDAVAIK_OFF", 10, 10},
    {"IDLE_ADV0", 90},
    {"IDLE_ADV1", 85},
    {"IDLE_ADV2", 75},
    {"IDLE_ADV3", 65},
    {"IDLE_ADV4", 55},
    {"PWM_MODE", 0x11},  // idle valve and boost valve
    {"MAPGAIN_OFF", 10},
    {"IDLEPID_SPEED", 8},
    {"IDLEPID_STEP", 2},
    {"IDLEPID_MIN", 20},
    {"IDLEPID_MAX", 70},
    {"IDLEPID_SETPOINT_LO", 900},
    {"MOTORBRAKE_LOW", 1500},
    {"MOTORBRAKE_HIGH", 1800},
    {"LAUNCHCONTROL_LO", 4500},
    {" IGNORDER_OFF", 1},
    {"IGNDERIVGAIN_OFF", 4},
    {"BOOST_IGNCUT_OFF", 230},
    {"NTC1_OFF", 22},
    {"NTC2_OFF", 22},
    {"WBO2_MODE_OFF", 1},
    {"BOOSTPID_SPEED", 6},
    {"BOOSTPID_STEP", 3},
    {"BOOSTPID_MAX", 90},
    {"BOOSTPID_SETPOINT", 140, 16},  // 1.4 bar absolute
    {"IDLEMAP_OFF", 128, 16},
    {"ALS_ADV_OFF", 4},
    {"ALS_FUEL_OFF", 3},
    {"NTC3_OFF", 22},
    {"NTC4_OFF", 22},
    {"LAUNCH_MODE_OFF", 2},
    {"LAUNCH_DELAY_OFF", 30},
    {"ACCEL_LIMITER_MODE_OFF", 1},
    {"ACCEL_LIMITER_VALUE_OFF", 50},
    {"FLATSHIFT_STARTDELAY_OFF", 5},
    {"FLATSHIFT_STOPDELAY_OFF", 20},
    {"NTC_MULTIPLIER_OFF", 10},
    {"WATER_WARNING_OFF", 110},
    {"AIR_WARNING_OFF", 70},
    {"OIL_WARNING_OFF", 135},
    {"VTC_RPM_LO_OFF", 4800},
    {"VTC_MAP_OFF", 60},
    {"RPMLIMIT_COLD_LOW_OFF", 4500},
    {"INJ_MULTIPLIER_OFF", 2},
    {"STARTHELP_LEN_OFF_8", 5},
    {"DEG_COUNT_FOR_RPM_OFF", 180},
    {"LAUNCH_LIMIT_OFF", 4500},
    {"LAUNCH_LIMIT_PRE_OFF", 300},
    {"RPM_LIMIT_OFF", 7200},
    {"RPM_LIMIT_PRE_OFF", 200},
    {"INPUT1_LIMIT_OFF", 150},
    {"INPUT1_LIMIT_FUNC_OFF", 1},
    {"INPUT2_LIMIT_OFF", 125},
    {"INPUT3_LIMIT_OFF", 200},
    {"INPUT5_LIMIT_FUNC_OFF", 4},
    {"INPUT6_LIMIT_FUNC_OFF", 4},
    {"INPUT7_LIMIT_FUNC_OFF", 5},
    {"INPUT8_LIMIT_FUNC_OFF", 5},
    {"CYL_COUNT_OFF", 4},
};

using Cells = std::vector<std::uint8_t>;

std::uint8_t& cellAt(Cells& cells, int address) {
    return cells.at(static_cast<std::size_t>(address));
}

std::uint8_t countOf(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

bool isWord(std::string_view name) {
    const auto names = core::parameterNames();
    return std::ranges::find(names, name, &core::ParameterName::name)->is16bit;
}

void put(Cells& cells, const Content& content) {
    const int address = core::addressOf(content.name);
    for (int i = 0; i < content.cells; ++i) {
        cellAt(cells, address + i) = static_cast<std::uint8_t>(content.value % 256);
    }
    if (isWord(content.name)) {
        cellAt(cells, address + 1) = static_cast<std::uint8_t>(content.value / 256);
    }
}

void putRow(Cells& cells, std::string_view name, std::initializer_list<std::uint8_t> values) {
    std::ranges::copy(values, cells.begin() + core::addressOf(name));
}

// Large maps reach further up in load and pulse.
void putLargeScale(Cells& cells) {
    put(cells, {"MAPGAIN_OFF", 8});
    put(cells, {"INJ_MULTIPLIER_OFF", 3});
}

void putMaps(Cells& cells, const FirmwareType& type, MapFault fault) {
    const double barPerPercent = type.large ? 0.0125 : 0.01;
    const double tick = msPerCount(2, type.large ? 3 : 2, type.large);
    for (int i = 0; i < type.cells(); ++i) {
        const double rpm = type.cellRpm(i);
        const double load = type.cellLoad(i);
        const double pulse = neededPulse(rpm + 250.0, load * barPerPercent) * (1.0 + storedMapError(fault, rpm, load));
        if (type.injects) {
            cellAt(cells, mapAddress(MapKind::Fuel, i)) = countOf(pulse / tick);
        }
        if (type.ignitionMap) {
            cellAt(cells, mapAddress(MapKind::Ignition, i)) = countOf(storedAdvance(rpm, load) * 5.0);
        }
    }
}

void putPwmTable(Cells& cells) {
    for (int i = 0; i < kHalfCells; ++i) {
        if (const int address = mapAddress(MapKind::Pwm, i); address >= 0) {
            cellAt(cells, address) = static_cast<std::uint8_t>(6 * (i / 16 - 3) + 2 * (i % 16));
        }
    }
}

void putEconomyMaps(Cells& cells) {
    const int fuel = core::addressOf("INJ_ECON_OFFSET");
    const int ignition = core::addressOf("IGN_ECON_OFFSET");
    for (int i = 0; i < kHalfCells; ++i) {
        cellAt(cells, fuel + i) = countOf(cellAt(cells, mapAddress(MapKind::Fuel, i)) * 0.94);
        const int advance = cellAt(cells, mapAddress(MapKind::Ignition, i));
        cellAt(cells, ignition + i) = countOf(advance == 0 ? 0 : advance + 10);
    }
}

}  // namespace

std::vector<std::uint8_t> factoryContents(const FirmwareType& type, MapFault mapFault) {
    Cells cells(kEepromCells, 0);
    std::ranges::for_each(kContents, [&cells](const Content& content) { put(cells, content); });
    putRow(cells, "ACCEL_OFF", {72, 64, 54, 44, 36, 28, 22, 16, 12, 8});
    putRow(cells, "VOLT_OFF", {4, 6, 10, 18});
    putRow(cells, "INJADV_OFF0", {40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 95, 100, 105, 110, 115});
    if (type.large) {
        putLargeScale(cells);
    }
    putMaps(cells, type, mapFault);
    putPwmTable(cells);
    putEconomyMaps(cells);
    if (!type.idleRegulator) {
        cellAt(cells, 500) = 4500 % 256;
        cellAt(cells, 501) = 4500 / 256;
    }
    return cells;
}

}  // namespace korvane::ecu
