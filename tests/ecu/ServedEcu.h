// A virtual ECU on a pseudo-terminal, served in a thread that a byte in a pipe ends.
#pragma once

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "ecu/VirtualEcu.h"
#include "ecu/server/EcuServer.h"
#include "ecu/server/Pty.h"

namespace korvane::ecu {

class ServedEcu : public testing::Test {
protected:
    ServedEcu() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        end_ = Descriptor(ends[0]);
        stop_ = Descriptor(ends[1]);
        thread_ = std::thread([this] { server_.run(end_); });
    }
    ~ServedEcu() override {
        EXPECT_EQ(::write(stop_.number(), "x", 1), 1);
        thread_.join();
    }

    VirtualEcu ecu_;
    Pty pty_;
    EcuServer server_{ecu_, pty_};
    Descriptor end_;
    Descriptor stop_;
    std::thread thread_;
};

}  // namespace korvane::ecu
