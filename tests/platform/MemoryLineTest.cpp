#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/VirtualPump.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Bytes = std::vector<std::uint8_t>;

class Listening : public LineListener {
public:
    void lineReceived(std::span<const std::uint8_t> bytes) override {
        received.insert(received.end(), bytes.begin(), bytes.end());
    }
    void lineLost(const std::string& reason) override { losses.push_back(reason); }

    Bytes received;
    std::vector<std::string> losses;
};

// Answers each byte with the byte plus one, due a fixed time later.
class Echo : public LineDevice {
public:
    void setBaud(int baud) override { bauds.push_back(baud); }
    void receive(std::uint8_t byte, Micros at) override {
        arrivals.push_back(at);
        pending_.push_back({static_cast<std::uint8_t>(byte + 1), at + 2000});
    }
    [[nodiscard]] std::optional<Micros> nextDue() const override {
        return pending_.empty() ? std::nullopt : std::optional(pending_.front().second);
    }
    void take(Micros at, std::vector<std::uint8_t>& out) override {
        while (!pending_.empty() && pending_.front().second <= at) {
            out.push_back(pending_.front().first);
            pending_.erase(pending_.begin());
        }
    }

    std::vector<int> bauds;
    std::vector<Micros> arrivals;

private:
    std::vector<std::pair<std::uint8_t, Micros>> pending_;
};

class MemoryLineTest : public testing::Test {
protected:
    void write(const Bytes& bytes) { line_.write(bytes); }

    VirtualPump pump_;
    Echo device_;
    MemoryLine line_{pump_, &device_};
    Listening listener_;
};

TEST_F(MemoryLineTest, AByteTakesTenBitTimes) {
    for (const int baud : {9600, 57600, 230400}) {
        line_.open(1, baud, listener_);
        device_.arrivals.clear();
        const Micros start = pump_.now();
        write({1, 2, 3});
        pump_.wait(100);
        ASSERT_EQ(device_.arrivals.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            const auto bytes = static_cast<double>(i + 1);
            EXPECT_NEAR(static_cast<double>(device_.arrivals[i] - start), bytes * 1e7 / baud, bytes) << baud;
        }
    }
}

TEST_F(MemoryLineTest, ASecondWriteQueuesBehindTheFirst) {
    line_.open(1, 10000, listener_);  // 1 ms a byte
    write({1, 2});
    pump_.wait(1);
    write({3});
    EXPECT_EQ(line_.pendingOutput(), 2U);
    pump_.wait(100);
    EXPECT_THAT(device_.arrivals, ElementsAre(1000, 2000, 3000));
    EXPECT_EQ(line_.pendingOutput(), 0U);
}

TEST_F(MemoryLineTest, AnIdleLineSendsAtOnce) {
    line_.open(1, 10000, listener_);
    write({1});
    pump_.wait(50);
    write({2});
    pump_.wait(50);
    EXPECT_THAT(device_.arrivals, ElementsAre(1000, 51000));
}

TEST_F(MemoryLineTest, AnswersArriveWhenTheDeviceSaysSo) {
    line_.open(1, 10000, listener_);
    write({7});
    pump_.runUntil(2999);
    EXPECT_THAT(listener_.received, IsEmpty());
    pump_.runUntil(3000);
    EXPECT_THAT(listener_.received, ElementsAre(8));
}

TEST_F(MemoryLineTest, TheDeviceLivesOnWhileTheProgramBlocks) {
    line_.open(1, 10000, listener_);
    write({7});
    pump_.sleep(100);
    EXPECT_THAT(device_.arrivals, ElementsAre(1000));
}

TEST_F(MemoryLineTest, AClosedLineHearsNothingAndTheDeviceStillTalks) {
    line_.open(1, 10000, listener_);
    write({7});
    line_.close();
    pump_.wait(100);
    EXPECT_THAT(device_.arrivals, ElementsAre(1000));
    EXPECT_THAT(listener_.received, IsEmpty());
    line_.open(1, 10000, listener_);
    pump_.wait(100);
    EXPECT_THAT(listener_.received, IsEmpty()) << "what came while it was closed is lost";
}

TEST_F(MemoryLineTest, TheRateIsToldToTheDevice) {
    line_.open(2, 57600, listener_);
    EXPECT_EQ(line_.baud(), 57600);
    EXPECT_TRUE(line_.setBaud(230400));
    EXPECT_EQ(line_.baud(), 230400);
    EXPECT_FALSE(line_.setBaud(0));
    EXPECT_FALSE(line_.setBaud(-1));
    EXPECT_EQ(line_.baud(), 230400);
    EXPECT_THAT(device_.bauds, ElementsAre(57600, 230400));
}

TEST_F(MemoryLineTest, InjectedBytesArriveAtOnce) {
    line_.open(1, 9600, listener_);
    line_.inject(Bytes{1, 2});
    EXPECT_THAT(listener_.received, ElementsAre(1, 2));
    line_.close();
    line_.inject(Bytes{3});
    EXPECT_THAT(listener_.received, ElementsAre(1, 2));
}

TEST_F(MemoryLineTest, PulledOutItTellsOnceAndIsClosed) {
    line_.open(1, 9600, listener_);
    line_.pullOut();
    line_.pullOut();
    EXPECT_EQ(listener_.losses.size(), 1U);
    line_.inject(Bytes{3});
    EXPECT_THAT(listener_.received, IsEmpty());
}

TEST_F(MemoryLineTest, ClosedItCantBePulledOut) {
    line_.pullOut();
    EXPECT_THAT(listener_.losses, IsEmpty());
}

TEST_F(MemoryLineTest, WithNobodyAtItsEndBytesTravelAndVanish) {
    MemoryLine lonely(pump_, nullptr);
    lonely.open(1, 10000, listener_);
    lonely.write(Bytes{1, 2});
    EXPECT_EQ(lonely.pendingOutput(), 2U);
    pump_.wait(100);
    EXPECT_EQ(lonely.pendingOutput(), 0U);
    EXPECT_THAT(listener_.received, IsEmpty());
    EXPECT_FALSE(lonely.deviceOf(3).empty());
}

}  // namespace
}  // namespace korvane::platform
