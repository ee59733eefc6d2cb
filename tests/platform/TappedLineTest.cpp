#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "WroteAt.h"
#include "platform/RuntimeError.h"
#include "platform/TappedLine.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/VirtualPump.h"
#include "support/TempFolder.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

struct Receiver : LineListener {
    void lineReceived(std::span<const std::uint8_t> bytes) override {
        received.insert(received.end(), bytes.begin(), bytes.end());
    }
    void lineLost(const std::string& reason) override { lost = reason; }
    Bytes received;
    std::string lost;
};

// A device that can't be opened.
class DeadLine : public MemoryLine {
public:
    using MemoryLine::MemoryLine;
    void open(int, int, LineListener&) override { throw RuntimeError(8002, "no such device"); }
};

class Tapped : public testing::Test {
protected:
    static std::string read(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    VirtualPump pump;
    MemoryLine line{pump, nullptr};
    TappedLine tap{line, pump, [this](auto bytes) { line.inject(bytes); }};
    Receiver receiver;
};

TEST_F(Tapped, PassesEverythingOn) {
    tap.open(3, 19200, receiver);
    EXPECT_EQ(line.baud(), 19200);
    EXPECT_TRUE(tap.setBaud(9600));
    EXPECT_EQ(tap.baud(), 9600);
    EXPECT_EQ(tap.deviceOf(1), line.deviceOf(1));
    tap.write(Bytes{1, 2, 3});
    EXPECT_EQ(tap.pendingOutput(), 3U);
    line.inject(Bytes{4, 5});
    EXPECT_THAT(receiver.received, ElementsAre(4, 5));
    tap.close();
    line.inject(Bytes{6});
    EXPECT_THAT(receiver.received, ElementsAre(4, 5));
}

TEST_F(Tapped, RecordsEachWriteWithItsTime) {
    tap.open(1, 9600, receiver);
    tap.write(Bytes{0x78});
    pump.runUntil(7999);
    tap.write(Bytes{});
    tap.write(Bytes{0x79, 0x00});
    EXPECT_THAT(tap.takeSent(), ElementsAre(WroteAt(0, Bytes{0x78}), WroteAt(7, Bytes{0x79, 0x00})));
    EXPECT_TRUE(tap.takeSent().empty());
    tap.write(Bytes{0x41});
    EXPECT_THAT(tap.takeSentBytes(), ElementsAre(0x41));
    EXPECT_TRUE(tap.takeSentBytes().empty());
}

TEST_F(Tapped, KeepsTheNewestMebibyteInWholeWrites) {
    Bytes block(1000);
    for (int i = 0; i < 1100; ++i) {
        block[0] = static_cast<std::uint8_t>(i);
        tap.write(block);
    }
    const auto writes = tap.takeSent();
    // A write takes its 1000 bytes, one for the time and two for the count: 1048576 bytes hold 1045 of them, and the
    // first 55 of the 1100 are gone.
    ASSERT_EQ(writes.size(), 1045U);
    EXPECT_EQ(writes.front().bytes.size(), 1000U);
    EXPECT_EQ(writes.front().bytes[0], 55);
}

TEST_F(Tapped, KeepsOneWriteHoweverLarge) {
    tap.write(Bytes(2 << 20));
    EXPECT_EQ(tap.takeSentBytes().size(), std::size_t{2} << 20U);
}

TEST_F(Tapped, InjectsBytesIntoALineInMemoryOnly) {
    tap.open(1, 9600, receiver);
    EXPECT_TRUE(tap.inject(Bytes{0x52, 0xAD}));
    EXPECT_THAT(receiver.received, ElementsAre(0x52, 0xAD));
    TappedLine real(line, pump);
    EXPECT_FALSE(real.inject(Bytes{0x52}));
}

TEST_F(Tapped, TellsTheListenerThatTheDeviceIsGone) {
    tap.open(1, 9600, receiver);
    line.pullOut();
    EXPECT_EQ(receiver.lost, "The device is gone. Was its cable pulled out?");
    tap.open(1, 9600, receiver);
    line.inject(Bytes{1});
    EXPECT_THAT(receiver.received, ElementsAre(1));
}

TEST_F(Tapped, AFailureToOpenPassesThrough) {
    DeadLine dead(pump, nullptr);
    TappedLine onDead(dead, pump);
    EXPECT_THROW(onDead.open(1, 9600, receiver), RuntimeError);
}

TEST_F(Tapped, TracesEachByteOfBothDirections) {
    const support::TempFolder folder;
    const auto file = folder.path() / "trace.txt";
    tap.write(Bytes{0x01});
    ASSERT_TRUE(tap.traceTo(file, [] {}));
    tap.open(1, 9600, receiver);
    pump.runUntil(123'999);
    tap.write(Bytes{0x78, 0xA8});
    pump.runUntil(124'000);
    line.inject(Bytes{0x52});
    EXPECT_EQ(read(file), "123 > 78\n123 > a8\n124 < 52\n");
}

TEST_F(Tapped, ATraceThatCannotBeWrittenIsTold) {
    const support::TempFolder folder;
    EXPECT_FALSE(tap.traceTo(folder.path(), [] {}));
    EXPECT_FALSE(tap.traceTo(folder.path() / "missing" / "trace.txt", [] {}));
}

// Every write to this device fails, as on a full disk.
TEST_F(Tapped, ATraceThatCannotGoOnSaysSoOnceAndTheLineWorks) {
    int told = 0;
    ASSERT_TRUE(tap.traceTo("/dev/full", [&] { ++told; }));
    tap.open(1, 9600, receiver);
    tap.write(Bytes{0x78});
    tap.write(Bytes{0x78});
    line.inject(Bytes{0x52});
    EXPECT_EQ(told, 1);
    EXPECT_EQ(tap.takeSentBytes().size(), 2U);
    EXPECT_THAT(receiver.received, ElementsAre(0x52));
}

}  // namespace
}  // namespace korvane::platform
