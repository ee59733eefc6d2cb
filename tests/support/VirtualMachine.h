// A machine in memory, with a line on which a test plays the ECU.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "controls/Window.h"
#include "platform/Machine.h"
#include "platform/QueuedDialogs.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/VirtualPump.h"
#include "support/MemoryLog.h"
#include "support/MemoryPreferences.h"
#include "support/TempFolder.h"

namespace korvane::support {

using Bytes = std::vector<std::uint8_t>;

// Takes what the program sends, with the moment at which each byte has arrived.
class RecordingDevice : public platform::LineDevice {
public:
    struct Arrival {
        std::uint8_t byte;
        platform::Micros at;
    };

    void setBaud(int baud) override { bauds.push_back(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override { arrivals.push_back({byte, at}); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return std::nullopt; }
    void take(platform::Micros, std::vector<std::uint8_t>&) override {}

    // The bytes that have arrived since the last call.
    [[nodiscard]] Bytes takeBytes() {
        Bytes bytes;
        for (const auto& arrival : arrivals) {
            bytes.push_back(arrival.byte);
        }
        arrivals.clear();
        return bytes;
    }

    std::vector<Arrival> arrivals;
    std::vector<int> bauds;
};

// A frame as the ECU sends it: command, length, payload, inverted command.
[[nodiscard]] inline Bytes frame(std::uint8_t command, const Bytes& payload) {
    Bytes bytes;
    bytes.reserve(payload.size() + 3);
    bytes.push_back(command);
    bytes.push_back(static_cast<std::uint8_t>(payload.size()));
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    bytes.push_back(static_cast<std::uint8_t>(0xFF - command));
    return bytes;
}

struct VirtualMachine {
    // The recorder is at the other end of the line if there is no device.
    explicit VirtualMachine(platform::LineDevice* device = nullptr)
        : line(pump, device != nullptr ? device : &recorder) {}

    // This machine with other parts.
    [[nodiscard]] platform::Machine with(platform::SerialLine& otherLine) { return with(pump, otherLine, dialogs); }
    [[nodiscard]] platform::Machine with(platform::EventPump& otherPump, platform::SerialLine& otherLine) {
        return with(otherPump, otherLine, dialogs);
    }
    [[nodiscard]] platform::Machine with(platform::EventPump& otherPump, platform::SerialLine& otherLine,
                                         platform::Dialogs& otherDialogs) {
        return {otherPump, otherLine, otherDialogs, preferences, log, windows, folder.path(), '.', {}};
    }

    // Runs `action` so many milliseconds behind the start. A device's alarm runs also while the program blocks.
    void at(int milliseconds, std::function<void()> action, platform::AlarmKind kind = platform::AlarmKind::Program) {
        alarms.push_back(pump.makeAlarm(std::move(action), kind));
        alarms.back()->callAt(milliseconds * platform::kMicrosPerMilli);
    }

    TempFolder folder;
    RecordingDevice recorder;
    platform::VirtualPump pump;
    platform::MemoryLine line;
    platform::QueuedDialogs dialogs;
    MemoryPreferences preferences;
    MemoryLog log;
    controls::WindowList windows;
    platform::Machine machine = with(line);
    std::vector<std::unique_ptr<platform::Alarm>> alarms;  // of at()
};

}  // namespace korvane::support
