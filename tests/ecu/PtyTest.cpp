#include <array>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "ServedEcu.h"
#include "Wire.h"
#include "ecu/server/EcuServer.h"
#include "ecu/server/Pty.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

using test::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

// The PC's end of the terminal.
class PcEnd {
public:
    explicit PcEnd(const std::string& path) : descriptor_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}

    [[nodiscard]] bool isOpen() const { return descriptor_.number() >= 0; }
    void write(const Bytes& bytes) const {
        ASSERT_EQ(::write(descriptor_.number(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    // Waits until `count` bytes are there, five seconds at most.
    [[nodiscard]] Bytes read(std::size_t count) const {
        Bytes bytes;
        pollfd watched = {.fd = descriptor_.number(), .events = POLLIN, .revents = 0};
        while (bytes.size() < count && ::poll(&watched, 1, 5000) == 1) {
            std::array<std::uint8_t, 256> chunk{};
            const ssize_t got = ::read(descriptor_.number(), chunk.data(), chunk.size());
            bytes.insert(bytes.end(), chunk.begin(), chunk.begin() + std::max<ssize_t>(got, 0));
        }
        return bytes;
    }

private:
    Descriptor descriptor_;
};

Bytes allOf(const Pty& pty, std::size_t count) {
    Bytes bytes;
    pollfd watched = {.fd = pty.descriptor(), .events = POLLIN, .revents = 0};
    while (bytes.size() < count && ::poll(&watched, 1, 5000) == 1) {
        pty.read(bytes, 1000);
    }
    return bytes;
}

TEST(DeviceLink, ThatCannotBeMadeIsToldInPlainWords) {
    const support::TempFolder folder;
    const auto path = folder.nowhere() / "ecu";
    try {
        const DeviceLink link(path, "/dev/null");
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), "the link " + path.string() + " can't be made: No such file or directory");
    }
}

TEST(Pty, CarriesEveryByteUnchangedBothWays) {
    const Pty pty;
    const PcEnd pc(pty.slavePath());
    ASSERT_TRUE(pc.isOpen());
    Bytes every;
    for (int i = 0; i < 256; ++i) {
        every.push_back(static_cast<std::uint8_t>(i));
    }
    pc.write(every);
    EXPECT_EQ(allOf(pty, 256), every);
    pty.write(every);
    EXPECT_EQ(pc.read(256), every);
}

TEST(Pty, ThePcMayComeAndGo) {
    const Pty pty;
    {
        const PcEnd first(pty.slavePath());
        first.write({1});
    }
    EXPECT_THAT(allOf(pty, 1), ElementsAre(1));
    const PcEnd second(pty.slavePath());
    second.write({2});
    EXPECT_THAT(allOf(pty, 1), ElementsAre(2));
}

TEST(Pty, NeverWaits) {
    const Pty pty;
    pty.write(Bytes(1'000'000, 7));
    Bytes none;
    pty.read(none, 100);
    EXPECT_THAT(none, IsEmpty());
}

class PtyLink : public testing::Test {
protected:
    support::TempFolder folder_;
    const std::filesystem::path path_ = folder_ / "ecu";
};

TEST_F(PtyLink, LeadsToTheDeviceAndGoesWithTheProgram) {
    {
        const DeviceLink link(path_, "/dev/null");
        EXPECT_EQ(std::filesystem::read_symlink(path_), "/dev/null");
    }
    EXPECT_FALSE(std::filesystem::is_symlink(std::filesystem::symlink_status(path_)));
}

TEST_F(PtyLink, ReplacesAnOldLink) {
    std::filesystem::create_symlink(folder_ / "gone", path_);
    const DeviceLink link(path_, "/dev/null");
    EXPECT_EQ(std::filesystem::read_symlink(path_), "/dev/null");
}

TEST_F(PtyLink, LeavesAFileAlone) {
    std::ofstream(path_) << "precious";
    EXPECT_THROW(DeviceLink(path_, "/dev/null"), std::system_error);
    EXPECT_EQ(std::filesystem::file_size(path_), 8U);
}

TEST_F(PtyLink, LeavesTheLinkOfAnotherAlone) {
    {
        const DeviceLink mine(path_, "/dev/null");
        std::filesystem::remove(path_);
        std::filesystem::create_symlink("/dev/zero", path_);
    }
    EXPECT_EQ(std::filesystem::read_symlink(path_), "/dev/zero");
}

using Server = ServedEcu;

TEST_F(Server, AnswersOnTheTerminal) {
    const PcEnd pc(pty_.slavePath());
    pc.write({'y', 0, 0x86});
    EXPECT_THAT(pc.read(8), ElementsAre('y', 5, 255, 255, 0x0D, 0x3A, 11, 0x86));
    pc.write({'x', 'm'});
    const Bytes frames = pc.read(22 + 12);
    ASSERT_EQ(frames.size(), 34U);
    EXPECT_EQ(frames[0], 'R');
    EXPECT_EQ(frames[22], 'm');
}

TEST_F(Server, TakesTheTimeOfARealLine) {
    const PcEnd pc(pty_.slavePath());
    const auto start = std::chrono::steady_clock::now();
    pc.write({'f'});
    EXPECT_EQ(pc.read(163).size(), 163U);
    // One byte there and 163 back, 10 bits each at 57600 baud.
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::microseconds(28'470));
}

}  // namespace
}  // namespace korvane::ecu
