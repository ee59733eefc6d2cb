// The program with its real windows on the real event loop, with no port open.
#pragma once

#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "program/Program.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"

namespace korvane {

struct WindowRig {
    WindowRig() {
        host.setLink(program.frmSarn2().linkState, [this] { program.disconnect(); });
        views::addViews(host);
        program.start();
    }
    WindowRig(const WindowRig&) = delete;
    WindowRig& operator=(const WindowRig&) = delete;
    ~WindowRig() { program.quit(); }

    support::VirtualMachine machineBelow;
    platform::QtPump pump;
    platform::QtSerialLine line{pump, platform::PortMap(pump, {})};
    platform::Machine machine = machineBelow.with(pump, line);
    program::Program program{machine};
    views::ViewHost host{machineBelow.windows};
};

}  // namespace korvane
