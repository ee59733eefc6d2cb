#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "platform/qt/SerialHandle.h"
#include "qt/PseudoTerminal.h"
#include "qt/Until.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kPort = 3;
constexpr std::array kSpeeds{9600, 19200, 38400, 57600, 76800, 115200, 230400};

// COM3 leads through a link, as it does with links of udev and of korvane-ecu.
class QtSerialLineTest : public testing::Test, protected LineListener {
protected:
    QtSerialLineTest()
        : folder_(std::filesystem::temp_directory_path() / ("korvane-line-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder_);
        plugIn();
    }
    ~QtSerialLineTest() override {
        line.close();
        std::filesystem::remove_all(folder_);
    }

    [[nodiscard]] std::string link() const { return folder_ / "com3"; }

    void plugIn() {
        cable = std::make_unique<PseudoTerminal>();
        std::filesystem::remove(link());
        std::filesystem::create_symlink(cable->path(), link());
    }

    [[nodiscard]] std::unique_ptr<QtSerialLine> makeLine(const std::string& path) {
        return std::make_unique<QtSerialLine>(pump,
                                              PortMap(pump, {{kPort, path}}, [] { return std::vector<FoundPort>(); }));
    }

    // The failure of opening COM3 at `path`.
    [[nodiscard]] RuntimeError failureOf(const std::string& path) {
        try {
            makeLine(path)->open(kPort, 57600, *this);
        } catch (const RuntimeError& error) {
            return error;
        }
        return {0, "opened"};
    }

    static std::vector<std::uint8_t> bytesOf(std::string_view text) { return {text.begin(), text.end()}; }

    void lineReceived(std::span<const std::uint8_t> bytes) override { received.append(bytes.begin(), bytes.end()); }
    void lineLost(const std::string& reason) override {
        losses.push_back(reason);
        whenLost();
    }

    std::filesystem::path folder_;
    std::unique_ptr<PseudoTerminal> cable;
    QtPump pump;
    std::unique_ptr<QtSerialLine> line_ = makeLine(link());
    QtSerialLine& line = *line_;
    std::string received;
    std::vector<std::string> losses;
    std::function<void()> whenLost = [] {};
};

TEST_F(QtSerialLineTest, BytesOfEveryValueTravelBothWays) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
    }
    line.open(kPort, 57600, *this);
    cable->send(all);
    EXPECT_TRUE(until(pump, [&] { return received.size() == all.size(); }));
    EXPECT_EQ(received, all);
    line.write(bytesOf(all));
    EXPECT_EQ(cable->received(all.size()), all);
}

TEST_F(QtSerialLineTest, WrittenBytesLeaveAtOnceWithoutTheLoop) {
    line.open(kPort, 57600, *this);
    line.write(bytesOf("W"));
    line.write(bytesOf("RX"));
    EXPECT_EQ(cable->received(3), "WRX");
    EXPECT_EQ(line.pendingOutput(), 0U);
}

TEST_F(QtSerialLineTest, NothingIsReceivedInsideWrite) {
    line.open(kPort, 57600, *this);
    cable->send("R");
    line.write(bytesOf("x"));
    EXPECT_THAT(received, IsEmpty());
    EXPECT_TRUE(until(pump, [&] { return received == "R"; }));
}

TEST_F(QtSerialLineTest, MoreThanTheDriverTakesWaitsAndArrivesWhole) {
    std::string much;
    for (int i = 0; i < 50'000; ++i) {
        much.push_back(static_cast<char>(i % 251));
    }
    line.open(kPort, 230400, *this);
    line.write(bytesOf(much));
    line.write(bytesOf("end"));
    EXPECT_GT(line.pendingOutput(), 0U);
    std::string arrived;
    EXPECT_TRUE(until(pump, [&] {
        arrived += cable->received();
        return arrived.size() == much.size() + 3;
    }));
    EXPECT_EQ(arrived, much + "end");
    EXPECT_EQ(line.pendingOutput(), 0U);
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(QtSerialLineTest, BytesFromBeforeTheOpeningAreLost) {
    cable->send("old\n");
    cable->waitUntilSent();
    line.open(kPort, 57600, *this);
    cable->send("new");
    EXPECT_TRUE(until(pump, [&] { return received.size() >= 3; }));
    EXPECT_EQ(received, "new");
}

TEST_F(QtSerialLineTest, OpensAtEachSpeed) {
    for (const int speed : kSpeeds) {
        line.open(kPort, speed, *this);
        EXPECT_EQ(cable->rate(), speed);
        EXPECT_EQ(line.baud(), speed);
        line.close();
    }
}

TEST_F(QtSerialLineTest, SetsEachSpeedOnTheOpenLine) {
    line.open(kPort, 57600, *this);
    for (const int speed : kSpeeds) {
        EXPECT_TRUE(line.setBaud(speed));
        EXPECT_EQ(cable->rate(), speed);
        EXPECT_EQ(line.baud(), speed);
    }
}

TEST_F(QtSerialLineTest, RefusesWhatIsNoSpeedAndStaysAtItsOwn) {
    line.open(kPort, 57600, *this);
    EXPECT_FALSE(line.setBaud(0));
    EXPECT_FALSE(line.setBaud(-9600));
    EXPECT_EQ(line.baud(), 57600);
    line.write(bytesOf("x"));
    EXPECT_EQ(cable->received(1), "x");
}

TEST_F(QtSerialLineTest, ClosedLineHasNoSpeedAndSendsNothing) {
    EXPECT_EQ(line.baud(), 0);
    EXPECT_FALSE(line.setBaud(57600));
    line.write(bytesOf("x"));
    EXPECT_EQ(line.pendingOutput(), 0U);
    EXPECT_THAT(cable->received(), IsEmpty());
}

TEST_F(QtSerialLineTest, ClosedLineReceivesNothing) {
    line.open(kPort, 57600, *this);
    cable->send("R");
    line.close();
    pump.wait(2);
    EXPECT_THAT(received, IsEmpty());
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(QtSerialLineTest, OpensAgainAfterClosing) {
    line.open(kPort, 57600, *this);
    line.close();
    line.open(kPort, 9600, *this);
    cable->send("R");
    EXPECT_TRUE(until(pump, [&] { return received == "R"; }));
}

TEST_F(QtSerialLineTest, SecondOpeningOfTheDeviceFailsAsInUse) {
    line.open(kPort, 57600, *this);
    for (const auto& path : {link(), cable->path()}) {
        const auto error = failureOf(path);
        EXPECT_EQ(error.number(), 8005);
        EXPECT_THAT(error.what(), HasSubstr("COM3 (" + path + "): in use by another program"));
    }
    line.close();
    EXPECT_NO_THROW(makeLine(cable->path())->open(kPort, 57600, *this));
}

TEST_F(QtSerialLineTest, DeviceThatAnotherProgramLockedIsInUse) {
    ASSERT_TRUE(lockDevice(cable->otherHandle()));
    EXPECT_EQ(failureOf(link()).number(), 8005);
    ASSERT_EQ(::flock(cable->otherHandle(), LOCK_UN), 0);
    EXPECT_NO_THROW(line.open(kPort, 57600, *this));
}

TEST_F(QtSerialLineTest, MissingDeviceIsNamed) {
    const auto error = failureOf(folder_ / "nothing");
    EXPECT_EQ(error.number(), 8002);
    EXPECT_THAT(error.what(), HasSubstr("COM3 (" + (folder_ / "nothing").string() + "): no such device"));
}

TEST_F(QtSerialLineTest, LinkToAnUnpluggedDeviceIsMissing) {
    std::filesystem::create_symlink("/dev/korvane-unplugged", folder_ / "com4");
    EXPECT_EQ(failureOf(folder_ / "com4").number(), 8002);
}

TEST_F(QtSerialLineTest, WhatIsNoSerialPortTellsTheReason) {
    std::ofstream(folder_ / "file") << "text";
    const auto error = failureOf(folder_ / "file");
    EXPECT_EQ(error.number(), 8012);
    EXPECT_THAT(error.what(), HasSubstr("can't be opened: Inappropriate ioctl for device"));
}

TEST_F(QtSerialLineTest, DeviceWithoutPermissionSaysHowToGetIt) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root may open everything";
    }
    std::filesystem::permissions(cable->path(), std::filesystem::perms::none);
    const auto error = failureOf(link());
    EXPECT_EQ(error.number(), 8010);
    EXPECT_THAT(error.what(), HasSubstr("dialout"));
}

TEST_F(QtSerialLineTest, PortWithoutADeviceNamesThoseThatHaveOne) {
    try {
        line.open(5, 57600, *this);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 8002);
        EXPECT_THAT(error.what(), HasSubstr("No device stands for COM5. Found: COM3 (" + link() + ")."));
    }
}

TEST_F(QtSerialLineTest, FailedOpeningLeavesTheLineUsable) {
    EXPECT_THROW(line.open(5, 57600, *this), RuntimeError);
    line.open(kPort, 57600, *this);
    line.write(bytesOf("x"));
    EXPECT_EQ(cable->received(1), "x");
}

TEST_F(QtSerialLineTest, PulledCableIsToldOnce) {
    line.open(kPort, 57600, *this);
    cable->hangUp();
    EXPECT_TRUE(until(pump, [&] { return !losses.empty(); }));
    pump.wait(5);
    EXPECT_THAT(losses, ElementsAre("COM3 (" + link() +
                                    "): the device is gone. Was its cable pulled out? Plug it in and connect again."));
    EXPECT_EQ(line.baud(), 0);
}

TEST_F(QtSerialLineTest, CablePulledWhileWritingIsToldLaterAndOnce) {
    line.open(kPort, 57600, *this);
    cable->hangUp();
    line.write(bytesOf("x"));
    line.write(bytesOf("x"));
    EXPECT_THAT(losses, IsEmpty());
    EXPECT_TRUE(until(pump, [&] { return !losses.empty(); }));
    line.write(bytesOf("x"));
    pump.wait(5);
    EXPECT_THAT(losses, SizeIs(1));
}

TEST_F(QtSerialLineTest, BytesBeforeThePullingStillArrive) {
    line.open(kPort, 57600, *this);
    cable->send("R");
    EXPECT_TRUE(until(pump, [&] { return received == "R"; }));
    cable->hangUp();
    EXPECT_TRUE(until(pump, [&] { return !losses.empty(); }));
    EXPECT_EQ(received, "R");
}

TEST_F(QtSerialLineTest, PulledCableIsToldAfterAHoldButTheDeviceIsLetGoAtOnce) {
    line.open(kPort, 57600, *this);
    {
        const QtPump::Hold hold(pump);
        cable->hangUp();
        EXPECT_TRUE(until(pump, [&] { return cable->isFree(); }));
        EXPECT_THAT(losses, IsEmpty());
        line.write(bytesOf("x"));
    }
    EXPECT_TRUE(until(pump, [&] { return !losses.empty(); }));
    EXPECT_THAT(losses, SizeIs(1));
}

TEST_F(QtSerialLineTest, LossIsNotToldOfALineThatWasClosedAndOpenedMeanwhile) {
    line.open(kPort, 57600, *this);
    {
        const QtPump::Hold hold(pump);
        cable->hangUp();
        EXPECT_TRUE(until(pump, [&] { return cable->isFree(); }));
        line.close();
        plugIn();
        line.open(kPort, 57600, *this);
    }
    pump.wait(5);
    EXPECT_THAT(losses, IsEmpty());
    cable->send("R");
    EXPECT_TRUE(until(pump, [&] { return received == "R"; }));
}

TEST_F(QtSerialLineTest, OpensAgainAfterTheCableCameBack) {
    line.open(kPort, 57600, *this);
    cable->hangUp();
    EXPECT_TRUE(until(pump, [&] { return !losses.empty(); }));
    EXPECT_EQ(failureOf(link()).number(), 8002);
    plugIn();
    line.open(kPort, 115200, *this);
    EXPECT_EQ(cable->rate(), 115200);
    cable->send("R");
    EXPECT_TRUE(until(pump, [&] { return received == "R"; }));
}

TEST_F(QtSerialLineTest, ListenerMayOpenTheLineAgainWhenItIsLost) {
    whenLost = [this] {
        plugIn();
        line.open(kPort, 9600, *this);
    };
    line.open(kPort, 57600, *this);
    cable->hangUp();
    EXPECT_TRUE(until(pump, [&] { return line.baud() == 9600; }));
}

// A nested loop may have read the bytes that the outer one was notified of: the read finds nothing, which is no loss.
TEST_F(QtSerialLineTest, ReadThatFindsNothingIsNoLoss) {
    QSocketNotifier thief(cable->otherHandle(), QSocketNotifier::Read);
    std::string stolen;
    QObject::connect(&thief, &QSocketNotifier::activated, &thief, [&] {
        std::array<char, 64> bytes{};
        const auto count = ::read(cable->otherHandle(), bytes.data(), bytes.size());
        stolen.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    });
    line.open(kPort, 57600, *this);
    cable->send("R");
    EXPECT_TRUE(until(pump, [&] { return stolen == "R"; }));
    thief.setEnabled(false);
    EXPECT_THAT(received, IsEmpty());
    cable->send("S");
    EXPECT_TRUE(until(pump, [&] { return received == "S"; }));
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(QtSerialLineTest, DeviceOfNamesThePath) {
    EXPECT_EQ(line.deviceOf(kPort), link());
    EXPECT_EQ(line.deviceOf(1), "");
}

TEST(SerialHandle, RateWithinThreePercentIsTheSame) {
    EXPECT_TRUE(isSameRate(57600, 57600));
    EXPECT_TRUE(isSameRate(76800, 76923));  // what a divider of 3 MHz makes of it
    EXPECT_TRUE(isSameRate(10000, 10300));
    EXPECT_FALSE(isSameRate(10000, 10301));
    EXPECT_TRUE(isSameRate(10000, 9700));
    EXPECT_FALSE(isSameRate(10000, 9699));
    EXPECT_FALSE(isSameRate(76800, 57600));
    EXPECT_FALSE(isSameRate(9600, 0));
}

}  // namespace
}  // namespace korvane::platform
