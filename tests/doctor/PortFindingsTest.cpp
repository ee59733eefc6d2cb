// What the facts about a device mean.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "doctor/PortFindings.h"

namespace korvane::doctor::test {
namespace {

using platform::PortFacts;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using Weight = Finding::Weight;

PortFacts adapter() {
    PortFacts facts;
    facts.kind = PortFacts::Kind::Serial;
    facts.device = "/dev/ttyUSB0";
    facts.owner = "root";
    facts.group = "dialout";
    facts.adapter = {"FT232R USB UART", "0403:6001", "ftdi_sio", 1, "/sys/latency_timer"};
    return facts;
}

MATCHER_P3(IsFinding, topic, weight, text, "") {
    return arg == Finding{topic, weight, text};
}

TEST(PortFindings, AGoodAdapterHasNoFault) {
    const auto findings = findingsOf(adapter());
    EXPECT_THAT(
        findings,
        ElementsAre(
            IsFinding("device", Weight::Good, "/dev/ttyUSB0 is there; it belongs to root and the group dialout."),
            IsFinding("permission", Weight::Good, "You may open /dev/ttyUSB0, as its owner."),
            IsFinding("in-use", Weight::Good, "No other program that you can see has it open."),
            IsFinding("modem-manager", Weight::Good, "No modem manager will send anything to it."),
            IsFinding("adapter", Weight::Good, "The adapter is FT232R USB UART (0403:6001, driver ftdi_sio)."),
            IsFinding("latency", Weight::Good, "The adapter holds bytes back for 1 ms at most.")));
    EXPECT_TRUE(mayWork(findings));
}

// A finding of this topic, weight and text is among those of the facts.
void expectFinding(const PortFacts& facts, const Finding& finding) {
    const auto findings = findingsOf(facts);
    EXPECT_THAT(findings, Contains(finding));
    EXPECT_EQ(mayWork(findings), finding.weight != Weight::Fault);
}

TEST(PortFindings, AMissingDeviceHidesTheRest) {
    auto facts = adapter();
    facts.kind = PortFacts::Kind::Missing;
    EXPECT_EQ(findingsOf(facts).size(), 1U);
    expectFinding(facts,
                  {"device", Weight::Fault, "There is no device /dev/ttyUSB0: plug the adapter in and test again."});
}

TEST(PortFindings, AMissingDeviceNamesThoseThatAreThere) {
    PortFacts facts;
    facts.kind = PortFacts::Kind::NoDevice;
    facts.others = {"COM1 (/dev/ttyS0)", "COM2 (/dev/ttyS1)"};
    expectFinding(facts, {"device", Weight::Fault,
                          "No serial device stands for this port: plug the adapter in, or choose one of COM1 "
                          "(/dev/ttyS0), COM2 (/dev/ttyS1)."});
}

TEST(PortFindings, AFileIsNoSerialDevice) {
    PortFacts facts;
    facts.kind = PortFacts::Kind::NotSerial;
    facts.device = "/etc/hostname";
    expectFinding(
        facts, {"device", Weight::Fault, "/etc/hostname is no serial device: name one such as /dev/ttyUSB0 instead."});
}

TEST(PortFindings, ALineInMemoryNeedsNoDevice) {
    PortFacts facts;
    facts.device = "the built-in virtual ECU";
    EXPECT_THAT(findingsOf(facts), ElementsAre(IsFinding("device", Weight::Good,
                                                         "The port leads to the built-in virtual ECU and to no "
                                                         "device.")));
}

TEST(PortFindings, WhoIsNotInTheGroupJoinsIt) {
    auto facts = adapter();
    facts.access = PortFacts::Access::ByGroup;
    expectFinding(facts, {"permission", Weight::Fault,
                          "You may not open /dev/ttyUSB0: join its group with \"sudo usermod -aG dialout $USER\", then "
                          "log out and in again."});
}

TEST(PortFindings, WhoHasJustJoinedLogsInAgain) {
    auto facts = adapter();
    facts.access = PortFacts::Access::AtNextLogin;
    expectFinding(facts, {"permission", Weight::Fault,
                          "You may not open /dev/ttyUSB0: you have joined the group dialout since you logged in, so "
                          "log out and in again."});
}

TEST(PortFindings, ADeviceThatItsGroupMayNotOpenIsGivenToTheUser) {
    auto facts = adapter();
    facts.access = PortFacts::Access::Nobody;
    expectFinding(facts, {"permission", Weight::Fault,
                          "You may not open /dev/ttyUSB0: its group dialout may not either, so make it yours until "
                          "it is plugged in again with \"sudo chown $USER /dev/ttyUSB0\"."});
}

TEST(PortFindings, ProgramsThatHaveItOpenAreNamed) {
    auto facts = adapter();
    facts.users = {{"minicom", 1234}, {"picocom", 77}};
    expectFinding(facts,
                  {"in-use", Weight::Fault,
                   "It is open in minicom (process 1234), picocom (process 77): close these programs, or end them "
                   "with \"kill 1234 77\"."});
    facts.users.pop_back();
    expectFinding(facts, {"in-use", Weight::Fault,
                          "It is open in minicom (process 1234): close that program, or end it with \"kill 1234\"."});
}

TEST(PortFindings, TheRightByWhichItMayBeOpenedIsTold) {
    auto facts = adapter();
    for (const auto& [right, words] :
         {std::pair(PortFacts::Right::Root, "as root"), std::pair(PortFacts::Right::Owner, "as its owner"),
          std::pair(PortFacts::Right::Group, "as a member of its group dialout"),
          std::pair(PortFacts::Right::Everyone, "as everybody may"),
          std::pair(PortFacts::Right::List, "because its access list names you")}) {
        facts.right = right;
        expectFinding(facts, {"permission", Weight::Good, "You may open /dev/ttyUSB0, " + std::string(words) + "."});
    }
    facts.isForSeat = true;
    expectFinding(facts,
                  {"permission", Weight::Good, "You may open /dev/ttyUSB0, because you sit at the screen (uaccess)."});
}

TEST(PortFindings, WhoDoesNotSitAtTheScreenJoinsTheGroup) {
    auto facts = adapter();
    facts.access = PortFacts::Access::ByGroup;
    facts.isForSeat = true;
    expectFinding(facts, {"permission", Weight::Fault,
                          "You may not open /dev/ttyUSB0: only who sits at the screen may (uaccess), so log in there, "
                          "or join its group with \"sudo usermod -aG dialout $USER\", then log out and in again."});
}

TEST(PortFindings, TheOnlyOtherPortIsNamedAlone) {
    PortFacts facts;
    facts.kind = PortFacts::Kind::NoDevice;
    facts.others = {"COM1 (/dev/ttyS0)"};
    expectFinding(facts, {"device", Weight::Fault,
                          "No serial device stands for this port: plug the adapter in, or choose COM1 (/dev/ttyS0)."});
}

TEST(PortFindings, NamesOfAnyBytesStayOnOneLineOfText) {
    auto facts = adapter();
    facts.users = {{"a\n\xff", 7}};
    expectFinding(facts, {"in-use", Weight::Fault,
                          "It is open in a?? (process 7): close that program, or end it with \"kill 7\"."});
}

TEST(PortFindings, AModemManagerIsAHint) {
    auto facts = adapter();
    facts.modemManager = {"ModemManager", 812};
    expectFinding(facts, {"modem-manager", Weight::Hint,
                          "ModemManager (process 812) runs and sends to adapters that are plugged in: wait half a "
                          "minute before you connect, or stop it with \"sudo systemctl stop ModemManager\"."});
}

TEST(PortFindings, ALongLatencyIsAHint) {
    auto facts = adapter();
    facts.adapter->latency = 16;
    expectFinding(facts, {"latency", Weight::Hint,
                          "The adapter holds bytes back for up to 16 ms, which makes each poll slower: set 1 ms with "
                          "\"echo 1 | sudo tee /sys/latency_timer\"."});
}

TEST(PortFindings, TwoMillisecondsAreNotTheBest) {
    auto facts = adapter();
    facts.adapter->latency = 2;
    EXPECT_THAT(findingsOf(facts),
                Contains(testing::AllOf(Field(&Finding::topic, "latency"), Field(&Finding::weight, Weight::Hint))));
}

TEST(PortFindings, AnAdapterThatTellsNoLatencyHasNoFindingOfIt) {
    auto facts = adapter();
    facts.adapter->latency.reset();
    EXPECT_THAT(findingsOf(facts), testing::Not(Contains(Field(&Finding::topic, "latency"))));
}

TEST(PortFindings, APortOfTheComputerIsNoAdapter) {
    auto facts = adapter();
    facts.adapter.reset();
    expectFinding(facts,
                  {"adapter", Weight::Good, "It is no USB adapter, but a port of the computer or of a program."});
}

}  // namespace
}  // namespace korvane::doctor::test
