// A whole program on a virtual machine.
#pragma once

#include <cstdint>

#include "program/Program.h"
#include "support/VirtualMachine.h"

namespace korvane::support {

// Started, with a "Settings_par.ini" of defaults in its folder so that no message box is shown. A connect does
// not load the settings window: its read would mix with what a test looks at.
struct VirtualProgram : VirtualMachine {
    explicit VirtualProgram(platform::LineDevice* device = nullptr);

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
