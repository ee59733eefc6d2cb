// What the system knows of a serial device, in folders like its own.
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "platform/qt/PortProbe.h"
#include "support/TempFolder.h"

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

// A terminal stands for the adapter; processes, adapter and notes are files that the test writes.
class PortProbeTest : public testing::Test {
protected:
    PortProbeTest() : terminal_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        EXPECT_EQ(::grantpt(terminal_), 0);
        EXPECT_EQ(::unlockpt(terminal_), 0);
        device_ = ::ptsname(terminal_);
    }
    ~PortProbeTest() override { ::close(terminal_); }
    PortProbeTest(const PortProbeTest&) = delete;
    PortProbeTest& operator=(const PortProbeTest&) = delete;

    void write(const fs::path& file, const std::string& text) const {
        fs::create_directories((folder_ / file).parent_path());
        std::ofstream(folder_ / file) << text;
    }
    void addProcess(int number, const std::string& name, const std::string& opens = {}) const {
        const auto folder = "proc/" + std::to_string(number);
        write(folder + "/comm", name + "\n");
        fs::create_directories(folder_ / folder / "fd");
        if (!opens.empty()) {
            fs::create_symlink(opens, folder_ / folder / "fd" / "3");
        }
    }
    // What the device manager keeps of the device.
    void note(const std::string& lines) const {
        struct stat state {};
        ASSERT_EQ(::stat(device_.c_str(), &state), 0);
        write("notes/c" + std::to_string(major(state.st_rdev)) + ":" + std::to_string(minor(state.st_rdev)), lines);
    }
    // As the system shows an adapter: the serial device some folders below what has the numbers.
    void addAdapter() const {
        write("sys/usb/1-2/idVendor", "0403\n");
        write("sys/usb/1-2/idProduct", "6001\n");
        write("sys/usb/1-2/product", "FT232R USB UART\n");
        write("sys/usb/1-2/1-2:1.0/ttyUSB0/latency_timer", "16\n");
        fs::create_directories(folder_ / "sys/drivers/ftdi_sio");
        fs::create_symlink(folder_ / "sys/drivers/ftdi_sio", folder_ / "sys/usb/1-2/1-2:1.0/ttyUSB0/driver");
        const auto place = folder_ / "sys/class/tty" / fs::path(device_).filename();
        fs::create_directories(place);
        fs::create_symlink(folder_ / "sys/usb/1-2/1-2:1.0/ttyUSB0", place / "device");
    }
    [[nodiscard]] PortFacts probe() const { return probe(device_); }
    [[nodiscard]] PortFacts probe(const std::string& device) const {
        return probePort(device, {folder_ / "proc", folder_ / "sys", folder_ / "notes"});
    }

    support::TempFolder temporary_;
    fs::path folder_ = temporary_.path();
    std::string device_;

private:
    int terminal_;
};

TEST_F(PortProbeTest, ATerminalOfThisUserMayBeOpened) {
    const auto facts = probe();
    EXPECT_EQ(facts.kind, PortFacts::Kind::Serial);
    EXPECT_EQ(facts.access, PortFacts::Access::Allowed);
    EXPECT_FALSE(facts.owner.empty());
    EXPECT_FALSE(facts.group.empty());
    EXPECT_THAT(facts.users, IsEmpty());
    EXPECT_FALSE(facts.modemManager.has_value());
    EXPECT_FALSE(facts.adapter.has_value());
}

TEST_F(PortProbeTest, WhatIsNotThereIsMissing) {
    EXPECT_EQ(probe((folder_ / "ttyUSB9").string()).kind, PortFacts::Kind::Missing);
    EXPECT_EQ(probe("").kind, PortFacts::Kind::Missing);
}

TEST_F(PortProbeTest, AFileIsNoSerialDevice) {
    write("file", "x");
    EXPECT_EQ(probe((folder_ / "file").string()).kind, PortFacts::Kind::NotSerial);
}

TEST_F(PortProbeTest, ADeviceOfAnotherIsToldFromTheGroupThatMayOpenIt) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root may open everything";
    }
    ASSERT_EQ(::chmod(device_.c_str(), 0), 0);
    EXPECT_EQ(probe().access, PortFacts::Access::Nobody);
    // The owner is refused by his own bits, whatever those of the group are.
    ASSERT_EQ(::chmod(device_.c_str(), 0060), 0);
    EXPECT_NE(probe().access, PortFacts::Access::Allowed);
    EXPECT_NE(probe().access, PortFacts::Access::Nobody);
}

TEST_F(PortProbeTest, ProgramsThatHaveItOpenAreFound) {
    addProcess(71, "minicom", device_);
    addProcess(72, "other", "/dev/null");
    addProcess(::getpid(), "self", device_);
    EXPECT_THAT(probe().users, ElementsAre(RunningProgram{"minicom", 71}));
}

TEST_F(PortProbeTest, WhoHasMadeTheTerminalIsNoUserOfIt) {
    addProcess(71, "korvane-ecu", device_);
    fs::create_symlink("/dev/ptmx", folder_ / "proc/71/fd/4");
    EXPECT_THAT(probe().users, IsEmpty());
}

TEST_F(PortProbeTest, ALinkToTheDeviceIsFollowed) {
    addProcess(71, "minicom", device_);
    fs::create_symlink(device_, folder_ / "ecu");
    const auto facts = probe((folder_ / "ecu").string());
    EXPECT_EQ(facts.kind, PortFacts::Kind::Serial);
    EXPECT_THAT(facts.users, ElementsAre(RunningProgram{"minicom", 71}));
}

TEST_F(PortProbeTest, AModemManagerIsFoundUnlessItIsKeptFromTheDevice) {
    addProcess(812, "ModemManager");
    EXPECT_EQ(probe().modemManager, (RunningProgram{"ModemManager", 812}));
    note("S:serial/by-id/x\nE:ID_MM_DEVICE_IGNORE=1\n");
    EXPECT_FALSE(probe().modemManager.has_value());
    note("E:ID_MM_PORT_IGNORE=1\n");
    EXPECT_FALSE(probe().modemManager.has_value());
    note("E:ID_MM_PORT_IGNORE=0\n");
    EXPECT_TRUE(probe().modemManager.has_value());
}

TEST_F(PortProbeTest, ADeviceForWhoSitsAtTheScreenHasItsTag) {
    EXPECT_FALSE(probe().isForSeat);
    note("E:ID_BUS=usb\nG:uaccess\n");
    EXPECT_TRUE(probe().isForSeat);
}

TEST_F(PortProbeTest, TheRightToOpenItIsThatOfItsMaker) {
    EXPECT_EQ(probe().right, ::getuid() == 0 ? PortFacts::Right::Root : PortFacts::Right::Owner);
}

TEST_F(PortProbeTest, ADeviceOfNoSerialDriverIsNoSerialDevice) {
    EXPECT_EQ(probe().kind, PortFacts::Kind::Serial);
    write("proc/tty/drivers",
          "/dev/tty   /dev/tty   5 0          system:/dev/tty\n"
          "pty_slave  /dev/pts   136 0-1048575 pty:slave\n");
    EXPECT_EQ(probe().kind, PortFacts::Kind::Serial);
    EXPECT_EQ(probe("/dev/null").kind, PortFacts::Kind::NotSerial);
    EXPECT_EQ(probe("/dev/tty").kind, PortFacts::Kind::NotSerial);
}

TEST_F(PortProbeTest, AnAdapterIsNamedWithItsLatency) {
    addAdapter();
    const auto facts = probe();
    ASSERT_TRUE(facts.adapter.has_value());
    EXPECT_EQ(facts.adapter->name, "FT232R USB UART");
    EXPECT_EQ(facts.adapter->numbers, "0403:6001");
    EXPECT_EQ(facts.adapter->driver, "ftdi_sio");
    EXPECT_EQ(facts.adapter->latency, 16);
}

TEST_F(PortProbeTest, ALatencyThatIsNoNumberIsNotKnown) {
    addAdapter();
    write("sys/usb/1-2/1-2:1.0/ttyUSB0/latency_timer", "much\n");
    EXPECT_FALSE(probe().adapter->latency.has_value());
}

}  // namespace
}  // namespace korvane::platform
