// A whole program on a virtual machine, with a line in memory on which a test plays the ECU.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Machine.h"
#include "platform/QueuedDialogs.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "platform/virtual/VirtualPump.h"
#include "program/Program.h"
#include "support/TempFolder.h"

namespace korvane::support {

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

    std::vector<Arrival> arrivals;
    std::vector<int> bauds;
};

using Bytes = std::vector<std::uint8_t>;

// A frame as the ECU sends it: command, length, payload, inverted command.
[[nodiscard]] Bytes frame(std::uint8_t command, const Bytes& payload);

struct VirtualMachine {
    explicit VirtualMachine(platform::LineDevice* lineDevice = nullptr);

    // Runs `action` so many milliseconds behind the start.
    void at(int milliseconds, std::function<void()> action);

    TempFolder folder;
    RecordingDevice recorder;
    platform::VirtualPump pump;
    platform::MemoryLine line;
    platform::QueuedDialogs dialogs;
    platform::MemoryPreferences preferences;
    platform::MemoryLog log;
    controls::WindowList windows;
    platform::Machine machine;
    std::vector<std::unique_ptr<platform::Alarm>> alarms;  // of at()
};

// Started, with a "Settings_par.ini" of defaults in its folder so that no message box stands in the way. A connect does
// not load the settings window: its read would mix with what a test looks at.
struct VirtualProgram : VirtualMachine {
    explicit VirtualProgram(platform::LineDevice* lineDevice = nullptr);

    // Opens the port by the button.
    void connect();
    // Bytes arrive; everything due by then has run afterwards.
    void receive(const Bytes& bytes);
    void receiveFrame(std::uint8_t command, const Bytes& payload) { receive(frame(command, payload)); }
    // What the program has sent since the last call.
    [[nodiscard]] Bytes sent();

    program::Program program;
    live::FrmSarn2& window = program.frmSarn2();
    core::SharedTables& tables = program.tables();
};

}  // namespace korvane::support
