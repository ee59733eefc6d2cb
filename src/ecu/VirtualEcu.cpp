#include "ecu/VirtualEcu.h"

#include <algorithm>
#include <array>

#include "ecu/memory/EepromFile.h"

namespace korvane::ecu {

namespace {

constexpr Micros kBootTime = 250'000;
constexpr Micros kEngineStep = 5'000;
constexpr Micros kLongestCatchUp = 600'000'000;
constexpr std::size_t kFrameOverhead = 3;  // command, length, complement
// The size of the firmware's send buffer. An answer that finds more than this before it is dropped.
constexpr std::size_t kSendBuffer = 2048;

constexpr std::uint64_t kLineSeed = 0x4C696E65;
constexpr std::uint64_t kSensorSeed = 0x53656E73;
constexpr std::uint64_t kIgnitionBoxSeed = 0x49676E42;
constexpr std::uint64_t kPowerSeed = 0x506F7772;
constexpr std::uint64_t kWiringSeed = 0x57697265;

}  // namespace

VirtualEcu::VirtualEcu(const EcuSettings& settings)
    : settings_(settings),
      memory_(firmwareType(settings.type), settings.eeprom, settings.mapFault),
      engine_(settings.seed),
      queue_(settings.seed ^ kLineSeed),
      wiring_(settings.seed ^ kWiringSeed),
      sensors_(settings.seed ^ kSensorSeed),
      ignitionBox_(settings.seed ^ kIgnitionBoxSeed),
      power_(settings.seed ^ kPowerSeed),
      on_(settings.powered) {
    startEngine();
    changeFaults(0);
    changeWiring(0);
}

void VirtualEcu::setBaud(int baud) {
    queue_.setBaud(baud);
    wiring_.setBaud(baud);
}

void VirtualEcu::receive(std::uint8_t byte, Micros at) {
    awake(at);
    if (wiring_.isEcho()) {
        queue_.send(std::array{byte}, at);
        return;
    }
    if (!on_) {
        return;
    }
    if (at >= bootEnd_) {
        parser_.feed(wiring_.read(byte), at, *this);
        countTowardsRestart(at);
    }
    countTowardsCut(at);
}

std::optional<Micros> VirtualEcu::nextDue() const {
    auto first = queue_.nextDue();
    const auto orAt = [&first](std::optional<Micros> due) {
        if (due && (!first || *due < *first)) {
            first = due;
        }
    };
    if (const auto decision = parser_.shortFormEnd()) {
        orAt(*decision + queue_.duration(1));
    }
    orAt(wiring_.nextStray());
    return first;
}

void VirtualEcu::take(Micros at, std::vector<std::uint8_t>& out) {
    awake(at);
    parser_.settle(at, *this);
    const auto before = out.size();
    queue_.take(at, out);
    wiring_.readAll(std::span(out).subspan(before));
    while (const auto stray = wiring_.takeStray(at)) {
        out.push_back(*stray);
    }
}

std::string VirtualEcu::finish() const {
    std::string error;
    if (!settings_.saveFile.empty()) {
        error = writeEepromFile(settings_.saveFile, memory_.eeprom());
    }
    if (!settings_.wearFile.empty() && error.empty()) {
        error = writeWearFile(settings_.wearFile, memory_.writes());
    }
    return error;
}

void VirtualEcu::awake(Micros at) {
    if (engineTime_) {
        return;
    }
    engineTime_ = at;
    changeAlarm(at);
}

void VirtualEcu::startEngine() {
    engine_.drive(settings_.drive);
    engine_.setConditions(settings_.conditions);
}

void VirtualEcu::advanceEngine(Micros at) {
    if (calibrated_ != memory_.revision()) {
        calibration_ = calibrationOf(memory_);
        calibrated_ = memory_.revision();
    }
    engineTime_ = std::max(*engineTime_, at - kLongestCatchUp);
    while (at - *engineTime_ >= kEngineStep) {
        engine_.step(calibration_);
        *engineTime_ += kEngineStep;
    }
}

void VirtualEcu::answer(std::uint8_t code, Body payload, Micros at) {
    const Micros earliest = at + 1000L * settings_.lateMs;
    if (!on_ || settings_.silent || queue_.backlog(earliest) > queue_.duration(kSendBuffer)) {
        return;
    }
    std::array<std::uint8_t, 255 + kFrameOverhead> frame{};
    frame[0] = code;
    frame[1] = static_cast<std::uint8_t>(payload.size());
    auto* end = std::ranges::copy(payload, frame.begin() + 2).out;
    *end++ = static_cast<std::uint8_t>(0xFF - code);
    const auto length = static_cast<std::size_t>(end - frame.begin());
    queue_.send(std::span(frame).first(length), earliest);
}

bool VirtualEcu::busy(Micros at) const {
    const auto liveFrame = static_cast<std::size_t>(settings_.payloadLength) + kFrameOverhead;
    return queue_.backlog(at + 1000L * settings_.lateMs) > queue_.duration(liveFrame);
}

void VirtualEcu::restart(Micros at) {
    constexpr std::uint8_t kStarted = 170;
    queue_.cut(at);
    parser_.reset();
    memory_.reload();
    bootEnd_ = at + kBootTime;
    answer(kStarted, {}, bootEnd_);
}

void VirtualEcu::countTowardsRestart(Micros at) {
    if (settings_.restartAfter && --*settings_.restartAfter == 0) {
        settings_.restartAfter.reset();
        restart(at);
    }
}

void VirtualEcu::countTowardsCut(Micros at) {
    if (settings_.cutAfter && --*settings_.cutAfter == 0) {
        settings_.cutAfter.reset();
        settings_.powered = false;
        losePower(at);
    }
}

void VirtualEcu::losePower(Micros at) {
    on_ = false;
    queue_.cut(at);
    parser_.reset();
    memory_.powerFails(at, power_);
}

// The engine has stalled meanwhile, and starts again.
void VirtualEcu::getPower(Micros at) {
    on_ = true;
    engine_ = EngineModel(settings_.seed);
    startEngine();
    engineTime_ = at;
    restart(at);
}

const VirtualEcu::ChangeRow VirtualEcu::kChanges[] = {
    {"type", &VirtualEcu::changeType},         {"seed", &VirtualEcu::changeSeed},
    {"drive", &VirtualEcu::changeDrive},       {"lose", &VirtualEcu::changeFaults},
    {"flip", &VirtualEcu::changeFaults},       {"add", &VirtualEcu::changeFaults},
    {"power", &VirtualEcu::changePower},       {"alarm", &VirtualEcu::changeAlarm},
    {"mapfault", &VirtualEcu::changeMapFault}, {"speed", &VirtualEcu::changeWiring},
    {"echo", &VirtualEcu::changeWiring},       {"stray", &VirtualEcu::changeWiring},
};

std::string VirtualEcu::set(std::string_view key, std::string_view value, Micros at) {
    if (key == "eeprom") {
        return "eeprom can be given at the start only";
    }
    EcuSettings changed = settings_;
    if (std::string error = parseKey(changed, key, value); !error.empty()) {
        return error;
    }
    if (key == "save") {
        return writeEepromFile(changed.saveFile, memory_.eeprom());
    }
    if (key == "wear") {
        return writeWearFile(changed.wearFile, memory_.writes());
    }
    awake(at);
    parser_.settle(at, *this);
    advanceEngine(at);
    const bool otherType = changed.type != settings_.type;
    settings_ = std::move(changed);
    engine_.setConditions(settings_.conditions);
    for (const ChangeRow& row : kChanges) {
        if (row.key == key && (key != "type" || otherType)) {
            (this->*row.change)(at);
        }
    }
    return {};
}

void VirtualEcu::changeType(Micros) {
    memory_ = FirmwareMemory(firmwareType(settings_.type), settings_.eeprom, settings_.mapFault);
    calibrated_.reset();
}

void VirtualEcu::changeSeed(Micros) {
    engine_.reseed(settings_.seed);
    queue_.reseed(settings_.seed ^ kLineSeed);
    sensors_ = Noise(settings_.seed ^ kSensorSeed);
    ignitionBox_ = Noise(settings_.seed ^ kIgnitionBoxSeed);
    power_ = Noise(settings_.seed ^ kPowerSeed);
    wiring_.reseed(settings_.seed ^ kWiringSeed);
}

void VirtualEcu::changeFaults(Micros) {
    queue_.setFaults({.lose = settings_.lose, .flip = settings_.flip, .add = settings_.add});
}

void VirtualEcu::changeWiring(Micros at) {
    wiring_.setFaults(settings_.wiring, at);
}

void VirtualEcu::changePower(Micros at) {
    if (settings_.powered && !on_) {
        getPower(at);
    } else if (!settings_.powered && on_) {
        losePower(at);
    }
}

void VirtualEcu::changeAlarm(Micros at) {
    if (settings_.alarm) {
        answer('!', {}, at);
    }
}

}  // namespace korvane::ecu
