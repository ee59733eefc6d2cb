// The whole program with its real windows on the offscreen display and the real event loop, and a device behind one of
// its ports.
#pragma once

#include <string>

#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"

namespace korvane::app {

struct RealProgram {
    RealProgram(int port, const std::string& path)
        : line(pump, platform::PortMap(pump, {{port, path}}, [] { return std::vector<platform::FoundPort>(); })) {
        views::addViews(views);
        // Without the read that follows a load: it takes twenty seconds, here by the real clock.
        program.connection().loadSettings = [this] {
            program.frmMisc().load();
            program.frmMisc().TimerInitialGetData.Enabled = false;
        };
        program.start();
    }

    support::VirtualMachine below;
    platform::QtPump pump;
    platform::QtSerialLine line;
    platform::Machine machine = below.with(pump, line);
    program::Program program{machine};
    views::ViewHost views{below.windows};
};

}  // namespace korvane::app
