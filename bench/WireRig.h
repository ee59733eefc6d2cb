// The program on the real event loop, connected to a pseudo-terminal on which the live frames arrive that the benchmark
// sends, and only these.
#pragma once

#include "PtyFrames.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "program/Program.h"
#include "support/VirtualMachine.h"

namespace korvane {

// Who starts it also ends it: program.quit().
struct WireRig {
    // Views have to be there before.
    void start() {
        program.start();
        program.connectTo(1);
        program.frmSarn2().TimerRequestData.Enabled = false;
        program.frmSarn2().TimerGetSettings.Enabled = false;
    }

    PtyFrames device;
    support::VirtualMachine below;
    platform::QtPump pump;
    platform::QtSerialLine line{pump, platform::PortMap(pump, {{1, device.device()}})};
    platform::Machine machine = below.with(pump, line);
    program::Program program{machine};
};

}  // namespace korvane
