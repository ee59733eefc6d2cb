#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "platform/qt/PortMap.h"
#include "platform/virtual/VirtualPump.h"
#include "support/MemoryPreferences.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

// None of these devices exists, so the tests see the same on every computer.
const FoundPort kBoard0{"/dev/ttyKorvaneS0", "", "", false};
const FoundPort kBoard4{"/dev/ttyKorvaneS4", "", "", false};
const FoundPort kUsb0{"/dev/ttyKorvaneUSB0", "/dev/serial/by-id/usb-Zeta-if00", "Zeta UART", true};
const FoundPort kUsb1{"/dev/ttyKorvaneUSB1", "/dev/serial/by-id/usb-Alpha-if00", "Alpha UART", true};
const FoundPort kUsb9{"/dev/ttyKorvaneUSB9", "", "Nameless", true};
const FoundPort kUsb10{"/dev/ttyKorvaneUSB10", "", "", true};

class PortMapTest : public testing::Test {
protected:
    PortMap map(FixedPorts fixed = {}) {
        return PortMap(pump, std::move(fixed), [this] {
            ++searches;
            return found;
        });
    }

    [[nodiscard]] std::vector<std::string> paths(FixedPorts fixed = {}) {
        auto ports = map(std::move(fixed));
        std::vector<std::string> all;
        for (int port = 1; port <= 6; ++port) {
            all.push_back(ports.pathOf(port));
        }
        return all;
    }

    VirtualPump pump;
    std::vector<FoundPort> found;
    int searches = 0;
};

TEST_F(PortMapTest, UsbComesFirstByLinkThenByPathThenTheOthers) {
    found = {kBoard4, kUsb10, kUsb0, kBoard0, kUsb9, kUsb1};
    EXPECT_THAT(paths(), ElementsAre(kUsb1.path, kUsb0.path, kUsb9.path, kUsb10.path, kBoard0.path, kBoard4.path));
}

TEST_F(PortMapTest, FixedDeviceStandsAtItsNumberAndTheOthersFlowAround) {
    found = {kUsb0, kUsb1, kBoard0};
    EXPECT_THAT(paths({{2, "/dev/korvane-pty"}}),
                ElementsAre(kUsb1.path, "/dev/korvane-pty", kUsb0.path, kBoard0.path, "", ""));
}

TEST_F(PortMapTest, FixedDeviceTakesNoSecondNumber) {
    found = {kUsb0, kUsb1};
    EXPECT_THAT(paths({{4, kUsb1.path}}), ElementsAre(kUsb0.path, "", "", kUsb1.path, "", ""));
}

TEST_F(PortMapTest, OneDeviceMayBeFixedAtTwoNumbers) {
    found = {kUsb0};
    auto ports = map({{2, kUsb0.path}, {3, kUsb0.path}});
    EXPECT_EQ(ports.pathOf(1), "");
    EXPECT_EQ(ports.pathOf(2), kUsb0.path);
    EXPECT_EQ(ports.pathOf(3), kUsb0.path);
}

TEST_F(PortMapTest, LaterDevicesThanTheLastNumberHaveNone) {
    for (int i = 0; i < 20; ++i) {
        found.push_back({"/dev/ttyKorvaneUSB" + std::to_string(i), "", "", true});
    }
    auto ports = map();
    EXPECT_EQ(ports.ports().size(), 15U);
    EXPECT_EQ(ports.pathOf(15), "/dev/ttyKorvaneUSB14");
    EXPECT_EQ(ports.pathOf(16), "");
}

TEST_F(PortMapTest, DescriptionNamesPathAndDevice) {
    found = {kUsb0, kUsb10};
    auto ports = map({{7, kUsb0.path}, {8, "/dev/korvane-pty"}});
    EXPECT_EQ(ports.describe(1), "/dev/ttyKorvaneUSB10");
    EXPECT_EQ(ports.describe(2), "");
    EXPECT_EQ(ports.describe(7), "/dev/ttyKorvaneUSB0, Zeta UART");
    EXPECT_EQ(ports.describe(8), "/dev/korvane-pty");
}

TEST_F(PortMapTest, DeviceThatIsPluggedInIsFoundWithinASecond) {
    auto ports = map();
    EXPECT_EQ(ports.pathOf(1), "");
    found = {kUsb0};
    pump.wait(1001);
    EXPECT_EQ(ports.pathOf(1), kUsb0.path);
}

TEST_F(PortMapTest, QuestionsOfOneSecondShareASearch) {
    auto ports = map();
    for (int port = 1; port <= kPortCount; ++port) {
        EXPECT_EQ(ports.describe(port), "");
    }
    pump.wait(1000);
    EXPECT_EQ(ports.pathOf(1), "");
    EXPECT_EQ(searches, 1);
}

TEST(FixedPorts, OptionsWinOverPreferences) {
    support::MemoryPreferences preferences;
    preferences.write("Ports", "COM1", "/dev/one");
    preferences.write("Ports", "COM3", "/dev/three");
    preferences.write("Ports", "COM4", "");
    preferences.write("Ports", "COM16", "/dev/sixteen");
    EXPECT_THAT(fixedPorts(preferences, {{2, "/dev/two"}, {3, "/dev/option"}}),
                ElementsAre(Pair(1, "/dev/one"), Pair(2, "/dev/two"), Pair(3, "/dev/option")));
}

class SerialLinks : public testing::Test {
protected:
    SerialLinks() : folder(std::filesystem::temp_directory_path() / ("korvane-links-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder);
        folder = std::filesystem::canonical(folder);
    }
    ~SerialLinks() override { std::filesystem::remove_all(folder); }

    // A stand-in for a device of this name.
    std::string device(const std::string& name) const {
        std::ofstream(folder / name) << "";
        return folder / name;
    }

    std::filesystem::path folder;
};

TEST_F(SerialLinks, AreFoundByTheDeviceThatTheyLeadTo) {
    const auto one = device("ttyUSB0");
    const auto two = device("ttyUSB1");
    const auto links = folder / "by-id";
    std::filesystem::create_directories(links);
    std::filesystem::create_symlink("../ttyUSB1", links / "usb-Alpha");
    std::filesystem::create_symlink("../ttyUSB0", links / "usb-Zeta");
    std::filesystem::create_symlink("../ttyUSB0", links / "usb-Beta");
    EXPECT_THAT(linksByDevice(links),
                UnorderedElementsAre(Pair(one, links / "usb-Beta"), Pair(two, links / "usb-Alpha")));
}

TEST_F(SerialLinks, FolderThatIsMissingHasNone) {
    EXPECT_THAT(linksByDevice(folder / "nothing"), IsEmpty());
}

TEST_F(SerialLinks, DeviceFixedByALinkTakesNoSecondNumber) {
    const auto path = device("ttyUSB0");
    std::filesystem::create_symlink("ttyUSB0", folder / "ecu");
    const VirtualPump pump;
    PortMap ports(pump, {{3, folder / "ecu"}}, [&] { return std::vector{FoundPort{path, "", "Alpha UART", true}}; });
    EXPECT_EQ(ports.pathOf(1), "");
    EXPECT_EQ(ports.describe(3), (folder / "ecu").string() + ", Alpha UART");
}

TEST(SerialPorts, OfThisComputerAreDeviceFiles) {
    const auto ports = findSerialPorts();
    if (ports.empty()) {
        GTEST_SKIP() << "this computer has no serial port";
    }
    for (const auto& port : ports) {
        EXPECT_TRUE(std::filesystem::is_character_file(port.path)) << port.path;
    }
}

}  // namespace
}  // namespace korvane::platform
