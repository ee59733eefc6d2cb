#include <deque>
#include <gmock/gmock.h>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/VirtualPump.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Bytes = std::vector<std::uint8_t>;

constexpr Micros kByteAt9600 = 1041;  // ten bits of 1000000 / 9600 us each

// Notes what reaches it and says what a test has queued.
struct Device : LineDevice {
    void setBaud(int baud) override { bauds.push_back(baud); }
    void receive(std::uint8_t byte, Micros at) override { received.emplace_back(byte, at); }
    [[nodiscard]] std::optional<Micros> nextDue() const override {
        return queued.empty() ? std::nullopt : std::optional(queued.front().second);
    }
    void take(Micros at, Bytes& out) override {
        while (!queued.empty() && queued.front().second <= at) {
            out.push_back(queued.front().first);
            queued.pop_front();
        }
    }

    std::vector<int> bauds;
    std::vector<std::pair<int, Micros>> received;
    std::deque<std::pair<std::uint8_t, Micros>> queued;
};

class MemoryLineTest : public testing::Test, protected LineListener {
protected:
    void lineReceived(std::span<const std::uint8_t> bytes) override {
        arrived.emplace_back(pump.now(), Bytes(bytes.begin(), bytes.end()));
    }
    void lineLost(const std::string& reason) override { losses.push_back(reason); }

    VirtualPump pump;
    Device device;
    MemoryLine line{pump, &device};
    std::vector<std::pair<Micros, Bytes>> arrived;
    std::vector<std::string> losses;
};

TEST_F(MemoryLineTest, BytesTravelOneBehindTheOtherAtTheLinesRate) {
    line.open(1, 9600, *this);
    line.write(Bytes{1, 2});
    EXPECT_EQ(line.pendingOutput(), 2U);
    pump.runUntil(kByteAt9600);
    EXPECT_EQ(line.pendingOutput(), 1U);
    line.write(Bytes{3});
    pump.wait(100);
    EXPECT_THAT(device.received, ElementsAre(Pair(1, kByteAt9600), Pair(2, 2 * kByteAt9600), Pair(3, 3 * kByteAt9600)));
    EXPECT_EQ(line.pendingOutput(), 0U);
}

TEST_F(MemoryLineTest, TheRateIsToldToTheDeviceAndRefusedUnlessPositive) {
    line.open(1, 9600, *this);
    EXPECT_TRUE(line.setBaud(115200));
    EXPECT_FALSE(line.setBaud(0));
    EXPECT_FALSE(line.setBaud(-1));
    EXPECT_EQ(line.baud(), 115200);
    EXPECT_THAT(device.bauds, ElementsAre(9600, 115200));
}

TEST_F(MemoryLineTest, WhatTheDeviceSaysArrivesWhenItIsDue) {
    line.open(1, 9600, *this);
    device.queued = {{7, 500}, {8, 500}, {9, 2000}};
    line.deviceChanged();
    pump.wait(10);
    EXPECT_THAT(arrived, ElementsAre(Pair(500, Bytes{7, 8}), Pair(2000, Bytes{9})));
}

TEST_F(MemoryLineTest, BothDirectionsMoveWhileTheProgramSleeps) {
    line.open(1, 9600, *this);
    line.write(Bytes{1});
    device.queued = {{7, 500}};
    line.deviceChanged();
    pump.sleep(10);
    EXPECT_THAT(device.received, ElementsAre(Pair(1, kByteAt9600)));
    EXPECT_THAT(arrived, ElementsAre(Pair(500, Bytes{7})));
}

TEST_F(MemoryLineTest, AClosedLineLosesWhatComes) {
    line.inject(Bytes{1});
    line.open(1, 9600, *this);
    device.queued = {{7, 500}, {8, 5000}};
    line.deviceChanged();
    line.close();
    pump.wait(1);
    line.open(1, 9600, *this);
    pump.wait(10);
    EXPECT_THAT(arrived, ElementsAre(Pair(5000, Bytes{8})));
}

TEST_F(MemoryLineTest, APulledCableIsToldOnceAndTheLineIsSilentAfterwards) {
    line.open(1, 9600, *this);
    line.pullOut();
    line.pullOut();
    line.inject(Bytes{1});
    EXPECT_EQ(losses.size(), 1U);
    EXPECT_THAT(arrived, IsEmpty());
}

TEST_F(MemoryLineTest, WithoutADeviceNobodyAnswers) {
    MemoryLine silent(pump, nullptr);
    silent.open(1, 9600, *this);
    silent.write(Bytes{1, 2, 3});
    pump.wait(1000);
    EXPECT_EQ(silent.pendingOutput(), 0U);
    EXPECT_THAT(arrived, IsEmpty());
}

}  // namespace
}  // namespace korvane::platform
