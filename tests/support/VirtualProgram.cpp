#include "support/VirtualProgram.h"

#include <string>

namespace korvane::support {

namespace {

std::string namelessChannels() {
    std::string text;
    for (int channel = 0; channel <= 30; ++channel) {
        const auto number = std::to_string(channel);
        text += "[Par" + number + "]\nname_" + number + "\ndescription\n1\n0\n10000\n";
    }
    return text;
}

}  // namespace

Bytes frame(std::uint8_t command, const Bytes& payload) {
    Bytes bytes;
    bytes.reserve(payload.size() + 3);
    bytes.push_back(command);
    bytes.push_back(static_cast<std::uint8_t>(payload.size()));
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    bytes.push_back(static_cast<std::uint8_t>(0xFF - command));
    return bytes;
}

VirtualMachine::VirtualMachine(platform::LineDevice* lineDevice)
    : line(pump, lineDevice != nullptr ? lineDevice : &recorder), machine{pump,          line, dialogs,
                                                                          preferences,   log,  windows,
                                                                          folder.path(), '.',  {}} {}

void VirtualMachine::at(int milliseconds, std::function<void()> action) {
    alarms.push_back(pump.makeAlarm(std::move(action)));
    alarms.back()->callAt(milliseconds * platform::kMicrosPerMilli);
}

VirtualProgram::VirtualProgram(platform::LineDevice* lineDevice) : VirtualMachine(lineDevice), program(machine) {
    folder.write("Settings_par.ini", namelessChannels());
    program.connection().loadSettings = nullptr;
    program.start();
}

void VirtualProgram::connect() {
    window.btnConnect.press();
}

void VirtualProgram::receive(const Bytes& bytes) {
    line.inject(bytes);
    pump.pump();
}

Bytes VirtualProgram::sent() {
    pump.runUntil(pump.now() + 5000);
    Bytes bytes;
    for (const auto& arrival : recorder.arrivals) {
        bytes.push_back(arrival.byte);
    }
    recorder.arrivals.clear();
    return bytes;
}

}  // namespace korvane::support
