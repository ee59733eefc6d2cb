// --doctor: the test of a port on the command line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "console/text/Json.h"
#include "qt/PseudoTerminal.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

Outcome doctor(std::vector<std::string> arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), "--doctor");
    return runProgram("korvane-tuner", arguments, input);
}

Outcome onEcu(const std::string& keys, std::vector<std::string> arguments = {"--send"}) {
    arguments.insert(arguments.end(), {"--virtual-time", "--ecu", keys});
    return doctor(arguments);
}

const console::Json& member(const console::Json& object, std::string_view name) {
    for (const auto& each : *object.asObject()) {
        if (each.name == name) {
            return each.value;
        }
    }
    throw std::out_of_range(std::string(name));
}

TEST(DoctorRunTest, AnEcuThatAnswersEndsItWithStatus0) {
    const auto run = onEcu("speed=38400,type=14");
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, IsEmpty());
    EXPECT_THAT(linesOf(run.output),
                AllOf(Contains("38400 baud: answer, firmware 3.386, type 14"),
                      Contains("Good: An ECU answers at 38400 baud (firmware 3.386, type 14): choose that speed and "
                               "press Connect.")));
}

TEST(DoctorRunTest, EachFaultOfTheLineEndsItWithStatus1AndItsName) {
    struct Case {
        std::string keys;
        std::string words;
    };
    for (const auto& [keys, words] :
         {Case{"silent=1", "Fault: Nothing answers at any speed"},
          Case{"power=0", "Fault: Nothing answers at any speed"},
          Case{"echo=1", "Fault: The request itself comes back"}, Case{"flip=1", "Fault: Something answers at 9600"},
          Case{"silent=1,stray=100", "Fault: Bytes arrive that nobody asked for"}}) {
        const auto run = onEcu(keys);
        EXPECT_EQ(run.status, 1) << keys;
        EXPECT_THAT(linesOf(run.output).back(), StartsWith(words)) << keys;
    }
}

TEST(DoctorRunTest, WithoutLeaveAndWithoutATerminalNothingIsSent) {
    const auto run = onEcu("type=11", {});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(linesOf(run.output).back(), "Start it with --send to ask the ECU.");
    EXPECT_THAT(run.output, Not(HasSubstr("baud:")));
}

TEST(DoctorRunTest, ForToolsItWritesOneJsonObject) {
    const auto run = onEcu("speed=9600", {"--send", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(linesOf(run.output), testing::SizeIs(1));
    const auto report = console::readJson(run.output).value;
    EXPECT_EQ(member(report, "port"), console::Json("COM1"));
    EXPECT_EQ(member(report, "works"), console::Json(true));
    const auto& first = member(report, "asked").asArray()->front();
    EXPECT_EQ(member(first, "fate"), console::Json("answer"));
    EXPECT_EQ(member(first, "version"), console::Json(3.386));
    EXPECT_EQ(member(first, "type"), console::Json(11));
    EXPECT_EQ(member(member(report, "verdict"), "weight"), console::Json("good"));
}

TEST(DoctorRunTest, TheReportOnADeviceHasItsPathOfAnyBytes) {
    const auto run = doctor({"/dev/no\xff\n", "--json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(member(console::readJson(run.output).value, "port"), console::Json("/dev/no??"));
}

TEST(DoctorRunTest, ADeviceThatIsNoSerialPortIsSaidToBeNone) {
    const auto run = doctor({"/dev/null", "--send"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "Fault: /dev/null is no serial device: name one such as /dev/ttyUSB0 instead.\n");
}

TEST(DoctorRunTest, WithoutAskingTheReportHasNoVerdict) {
    const auto report = console::readJson(onEcu("type=11", {"--json"}).output).value;
    EXPECT_TRUE(member(report, "verdict").isNull());
    EXPECT_EQ(member(report, "works"), console::Json(false));
}

TEST(DoctorRunTest, AMissingDeviceIsNamed) {
    const support::TempFolder folder;
    const auto device = folder.nowhere().string();
    const auto run = doctor({device, "--send", "--preferences", (folder / "none.ini").string()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, StartsWith("Fault: There is no device " + device + ": plug the adapter in"));
    // Their numbers would be those of another start of the program.
    EXPECT_THAT(run.output, Not(HasSubstr("COM")));
}

TEST(DoctorRunTest, ATerminalOfTheVirtualEcuIsOpenedAndAnswers) {
    const support::TempFolder folder;
    const auto device = (folder / "ecu").string();
    const Conversation ecu("korvane-ecu", {"--pty", device, "--with-parent"});
    static_cast<void>(ecu.ask(""));  // its first line comes when the terminal is there
    const auto run = doctor({device, "--send", "--preferences", (folder / "none.ini").string()});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(linesOf(run.output), Contains("57600 baud: answer, firmware 3.386, type 11"));
}

// Each at its speed.
std::string sevenRequests() {
    std::string bytes;
    for (int speed = 0; speed < 7; ++speed) {
        bytes += std::string("y\0\x86", 3);
    }
    return bytes;
}

TEST(DoctorRunTest, BeforeItMaySendNotAByteReachesTheDevice) {
    const platform::PseudoTerminal device;
    const auto run = doctor({device.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, HasSubstr("Good: Nothing arrives while nothing is asked"));
    EXPECT_EQ(device.received(), "");
}

TEST(DoctorRunTest, ATerminalThatNobodyAnswersGetsSevenRequests) {
    const platform::PseudoTerminal device;
    const auto run = doctor({device.path(), "--send"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(linesOf(run.output).back(), StartsWith("Fault: Nothing answers at any speed"));
    EXPECT_EQ(device.received(), sevenRequests());
}

TEST(DoctorRunTest, ADeviceThatIsInUseIsSaidToBe) {
    const support::TempFolder folder;
    const auto device = (folder / "ecu").string();
    const Conversation ecu("korvane-ecu", {"--pty", device, "--with-parent"});
    static_cast<void>(ecu.ask(""));
    const Conversation other("korvane-tuner", {"--headless", "--port", "COM1=" + device, "--connect", "COM1",
                                               "--folder", folder.path().string()});
    static_cast<void>(other.ask("get frmSarn2.Caption"));
    const auto run = doctor({device, "--send", "--preferences", (folder / "none.ini").string()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, HasSubstr("Fault: It is open in korvane-tuner (process "));
}

TEST(DoctorRunTest, ItsOptionsWorkTogetherAlone) {
    const auto run = runProgram("korvane-tuner", {"--headless", "--send"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.errors, HasSubstr("--send and --json work with --doctor only"));
    EXPECT_EQ(doctor({"COM16"}).status, 2);
}

}  // namespace
}  // namespace korvane::app
