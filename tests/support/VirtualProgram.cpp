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

VirtualProgram::VirtualProgram(platform::LineDevice* device) : VirtualMachine(device), program(machine) {
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
    return recorder.takeBytes();
}

}  // namespace korvane::support
