// A window on a virtual machine, for tests of single controls.
#pragma once

#include <gtest/gtest.h>

#include "platform/Machine.h"
#include "platform/Window.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "platform/virtual/QueuedDialogs.h"
#include "platform/virtual/VirtualPump.h"

namespace korvane::platform {

class Bench : public testing::Test {
protected:
    VirtualPump pump;
    MemoryLine line{pump, nullptr};
    QueuedDialogs dialogs;
    MemoryPreferences preferences;
    MemoryLog log;
    WindowList windows;
    Machine machine{pump, line, dialogs, preferences, log, windows, {}, '.', {}};
    Window window{machine, "frmTest"};
};

}  // namespace korvane::platform
