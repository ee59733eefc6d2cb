// A fixture on a machine in memory.
#pragma once

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "support/NotingLine.h"
#include "support/VirtualMachine.h"

namespace korvane::support {

class MachineBench : public testing::Test {
protected:
    VirtualMachine virtual_;
    platform::VirtualPump& pump_ = virtual_.pump;
    platform::QueuedDialogs& dialogs_ = virtual_.dialogs;
    MemoryPreferences& preferences_ = virtual_.preferences;
    MemoryLog& log_ = virtual_.log;
};

// With actions at moments, in milliseconds behind the start.
class TimedBench : public MachineBench {
protected:
    void at(int milliseconds, std::function<void()> action) { virtual_.at(milliseconds, std::move(action)); }
    [[nodiscard]] std::int64_t now() const { return virtual_.pump.milliseconds(); }
};

using Lines = std::vector<std::string>;

// With a line that notes what is handed to it and when.
class NotingBench : public TimedBench {
protected:
    // As NotingLine::sent().
    Lines sent() { return line_.sent(); }

    NotingLine line_{pump_, virtual_.recorder};
    platform::Machine machine_ = virtual_.with(line_);
};

}  // namespace korvane::support
