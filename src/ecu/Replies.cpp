#include "ecu/Replies.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/ParameterNames.h"

namespace korvane::ecu {

namespace {

// Firmware from this version on sends temperatures with 50 added.
constexpr int kShiftedTemperatures = 1140;

int counts(double value, int most = 255) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, static_cast<double>(most))));
}

std::uint8_t byteOf(double value) {
    return static_cast<std::uint8_t>(counts(value));
}

std::uint8_t high(int word) {
    return static_cast<std::uint8_t>(word / 256 % 256);
}
std::uint8_t low(int word) {
    return static_cast<std::uint8_t>(word % 256);
}

double temperature(double celsius, int version) {
    return version >= kShiftedTemperatures ? celsius + 50.0 : celsius;
}

// The pressure sensor gives 0.02 V for each kPa, less 0.2 V; 5 V are read as 255.
double pressureCounts(double bar) {
    return (bar * 100.0 * 0.02 - 0.2) * 255.0 / 5.0;
}

// The wideband sensor's 0 to 5 V mean 10 to 20.
double mixtureCounts(double afr) {
    return (afr - 10.0) / 10.0 * 256.0;
}

double mixtureCounts(const EngineModel& engine, Noise& noise) {
    const double reading = engine.state().afr;
    const double disturbance = engine.state().running ? noise.bell() : 0.0;
    const EngineConditions& conditions = engine.conditions();
    switch (conditions.lambdaFault) {
        case LambdaFault::Absent:
            return std::abs(disturbance);
        case LambdaFault::Stuck:
        case LambdaFault::Lean:
        case LambdaFault::Rich:
            return mixtureCounts(reading);
        case LambdaFault::None:
        case LambdaFault::Slow:
            break;
    }
    const double deviation = conditions.lambdaNoise ? reading * *conditions.lambdaNoise / 100.0 : 0.06;
    return mixtureCounts(reading + deviation * disturbance);
}

int flagWord(const EngineState& state) {
    const std::pair<int, bool> flags[] = {
        {1, state.choke},    {2, state.startHelp},   {3, state.injecting},    {4, state.accelPump},
        {5, state.igniting}, {8, state.idling},      {10, state.engineBrake}, {12, state.rpm < 50.0},
        {13, state.running}, {14, state.shiftLight}, {15, state.limiter},
    };
    int word = 0;
    for (const auto& [bit, on] : flags) {
        word += on ? 1 << bit : 0;
    }
    return word;
}

double muxValue(MuxChannel channel, const EngineState& state, const Calibration& calibration) {
    switch (channel) {
        case MuxChannel::Pulse:
            return state.pulseMs * 100.0;
        case MuxChannel::Oil:
            return state.oilC + 50.0;
        case MuxChannel::Speed:
            return state.speedKmh;
        case MuxChannel::Load:
            return state.loadPercent;
        case MuxChannel::OilPressure:
            return 25.0 + std::min(state.rpm * 0.04, 170.0);
        case MuxChannel::FuelPressure:
            return state.running ? 148.0 + 20.0 * (state.manifoldBar - 1.0) : 25.0;
        case MuxChannel::Knock:
            return 12.0 + state.rpm * 0.006 * state.manifoldBar;
        case MuxChannel::BoostTarget:
        case MuxChannel::Count:
            break;
    }
    const double place = std::clamp((state.rpm - 1000.0) / 500.0, 0.0, 15.0);
    return 100.0 * calibration.boostLimit.at(static_cast<std::size_t>(place));
}

int debugWord(unsigned turn, double fault, Noise& noise) {
    constexpr int kGood[] = {0x5555, 0xAAAA};
    const int word = kGood[turn % 2];
    return noise.happens(fault) ? word ^ (1 << (noise.next() >> 60U)) : word;
}

}  // namespace

LivePayload livePayload(const EngineModel& engine, const Calibration& calibration, int version, MuxChannel channel,
                        Noise& noise) {
    const EngineState& state = engine.state();
    const int rpm = counts(state.rpm, 65535);
    const int flags = flagWord(state);
    const int mux = counts(muxValue(channel, state, calibration), 4095);
    const double mixture = mixtureCounts(engine, noise);
    return {high(rpm), low(rpm), byteOf(temperature(state.waterC, version)), byteOf(temperature(state.airC, version)),
            byteOf(state.volts * 10.0 + 0.3 * noise.bell()),
            byteOf(pressureCounts(state.manifoldBar) + 0.3 * noise.bell()), engine.throttleSensor(), byteOf(mixture),
            byteOf(state.duty * 256.0), byteOf(std::min(std::floor(state.throttle * 10.0), 9.0)),
            // One byte can't hold the last cells of a large map.
            byteOf(state.cell), high(flags), low(flags), byteOf(state.idleValve), byteOf(state.boostValve),
            byteOf(state.exhaustC / 5.0), byteOf(state.advance * 5.0),
            static_cast<std::uint8_t>(static_cast<int>(channel) * 16 + mux / 256), low(mux)};
}

IdentityPayload identityPayload(const EcuSettings& settings) {
    return {high(settings.features), low(settings.features), high(settings.version), low(settings.version),
            low(settings.type)};
}

SettingsBlock settingsBlock(const FirmwareMemory& memory) {
    SettingsBlock block{};
    auto* place = block.begin();
    const auto append = [&](std::string_view name, int cells) {
        for (int i = 0; i < cells; ++i) {
            *place++ = memory.read(core::addressOf(name) + i);
        }
    };
    append("ACCEL_OFF", 10);
    append("START_HELP_OFF", 1);
    append("RYYPPY_OFF", 1);
    append("VOLT_OFF", 4);
    append("CHARGE_TIME_OFF", 1);
    append("MINTHR_OFF", 1);
    append("MAXTHR_OFF", 1);
    return block;
}

DebugPayload debugPayload(const EngineState& state, unsigned turn, double fault, Noise& noise) {
    const int halfTurn = counts(72000.0 * 30.0 / std::max(state.rpm, 1.0), 65535);
    const int advance = counts(halfTurn / 180.0 * state.advance, 65535);
    const int ignition = debugWord(turn, fault, noise);
    const int spark = debugWord(turn, fault, noise);
    return {low(ignition), high(ignition), low(halfTurn), high(halfTurn),
            low(spark),    high(spark),    low(advance),  high(advance)};
}

}  // namespace korvane::ecu
