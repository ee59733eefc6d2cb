// The trial of a line with the virtual ECU at its other end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "doctor/PortTrial.h"
#include "doctor/TrialFindings.h"
#include "platform/RuntimeError.h"
#include "support/EcuDevice.h"
#include "support/VirtualMachine.h"

namespace korvane::doctor::test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::SizeIs;
using Weight = Finding::Weight;

ecu::EcuSettings keys(std::string_view list) {
    ecu::EcuSettings settings;
    EXPECT_EQ(parseKeyList(settings, list), "");
    return settings;
}

// Seven requests, each after a tenth of a second and with four tenths for the answer.
constexpr int kSevenSpeeds = 7 * 500;

struct Trial {
    explicit Trial(std::string_view list) : device(keys(list)), machine(&device), trial(machine.pump, machine.line) {
        trial.changed = [this] { ++changes; };
    }

    const std::vector<PortTrial::Asked>& ask() {
        trial.ask(1);
        machine.pump.wait(kSevenSpeeds);
        EXPECT_FALSE(trial.runs());
        return trial.asked();
    }
    Finding verdict() { return verdictOf(ask()); }

    support::EcuDevice device;
    support::VirtualMachine machine;
    PortTrial trial;
    int changes = 0;
};

auto fateIs(Fate fate) {
    return Field(&PortTrial::Asked::fate, fate);
}

TEST(PortTrialTest, AnEcuThatFollowsThePcAnswersAtEachSpeed) {
    Trial bench("type=14");
    EXPECT_THAT(bench.ask(), AllOf(SizeIs(7), Each(fateIs(Fate::Answer))));
    EXPECT_EQ(bench.trial.asked().front().baud, 9600);
    EXPECT_EQ(bench.trial.asked().back().baud, 230400);
    EXPECT_EQ(lineOf(bench.trial.asked().front()), "9600 baud: answer, firmware 3.386, type 14");
}

TEST(PortTrialTest, AnEcuOfOneSpeedAnswersThere) {
    Trial bench("speed=38400");
    const auto verdict = bench.verdict();
    EXPECT_EQ(verdict.weight, Weight::Good);
    EXPECT_THAT(verdict.text, HasSubstr("An ECU answers at 38400 baud (firmware 3.386, type 11): choose that speed"));
}

TEST(PortTrialTest, ASilentEcuHasNothingToSay) {
    Trial bench("silent=1");
    EXPECT_THAT(bench.ask(), AllOf(SizeIs(7), Each(fateIs(Fate::Nothing))));
    EXPECT_EQ(verdictOf(bench.trial.asked()),
              (Finding{"answer", Weight::Fault,
                       "Nothing answers at any speed: switch the ignition on, and check that transmit leads to receive "
                       "and that the grounds are joined."}));
}

TEST(PortTrialTest, JoinedWiresAreAnEcho) {
    Trial bench("echo=1");
    EXPECT_THAT(bench.ask(), AllOf(SizeIs(7), Each(fateIs(Fate::Echo))));
    EXPECT_THAT(verdictOf(bench.trial.asked()).text, HasSubstr("transmit and receive touch or are crossed"));
    EXPECT_EQ(verdictOf(bench.trial.asked()).weight, Weight::Fault);
}

TEST(PortTrialTest, ALineThatNobodyKeepsQuietIsNoise) {
    Trial bench("silent=1,stray=50");
    EXPECT_EQ(bench.ask().back().fate, Fate::Noise);
    EXPECT_THAT(bench.verdict().text, HasSubstr("Bytes arrive that nobody asked for, and no answer"));
}

TEST(PortTrialTest, AnAnswerThatCannotBeReadIsOfAnotherSpeed) {
    const std::vector<PortTrial::Asked> asked{{9600, Fate::Nothing, {}}, {19200, Fate::WrongSpeed, {}}};
    EXPECT_EQ(verdictOf(asked),
              (Finding{"answer", Weight::Fault,
                       "Something answers at 19200 baud, and no answer can be read: use an adapter with the levels of "
                       "the ECU (TTL or RS-232), or give the ECU one of the seven speeds."}));
}

TEST(PortTrialTest, AnAnswerOutweighsAnEchoAtOtherSpeeds) {
    EXPECT_EQ(verdictOf({{9600, Fate::Echo, {}}, {19200, Fate::Answer, Identity{1140, {}}}}),
              (Finding{"answer", Weight::Good,
                       "An ECU answers at 19200 baud (firmware 1.140): choose that speed and press Connect."}));
}

TEST(PortTrialTest, ListeningSendsNothing) {
    support::VirtualMachine machine;
    PortTrial trial(machine.pump, machine.line);
    trial.listen(1, 57600);
    machine.pump.wait(1000);
    EXPECT_TRUE(machine.recorder.takeBytes().empty());
    ASSERT_TRUE(trial.heard().has_value());
    EXPECT_EQ(findingOf(*trial.heard()),
              (Finding{"arrives", Weight::Good, "Nothing arrives while nothing is asked, as it should be."}));
}

TEST(PortTrialTest, NoiseIsHeardWhileListening) {
    Trial bench("stray=50");
    bench.trial.listen(1, 57600);
    bench.machine.pump.wait(1000);
    ASSERT_TRUE(bench.trial.heard().has_value());
    EXPECT_EQ(findingOf(*bench.trial.heard()).weight, Weight::Hint);
}

TEST(PortTrialTest, FramesThatNobodyAskedForAreToldFromNoise) {
    EXPECT_THAT(findingOf({220, 10}).text, HasSubstr("220 bytes with 10 frames arrive in a second"));
    EXPECT_THAT(findingOf({220, 0}).text, HasSubstr("220 bytes that are no frame arrive in a second"));
}

TEST(PortTrialTest, TheRequestIsThreeBytesAtEachOfSevenSpeeds) {
    support::VirtualMachine machine;
    PortTrial trial(machine.pump, machine.line);
    trial.ask(1);
    machine.pump.wait(kSevenSpeeds);
    support::Bytes seven;
    for (int speed = 0; speed < 7; ++speed) {
        seven.insert(seven.end(), {'y', 0, 0x86});
    }
    EXPECT_EQ(machine.recorder.takeBytes(), seven);
    EXPECT_THAT(machine.recorder.bauds, ElementsAre(9600, 19200, 38400, 57600, 76800, 115200, 230400));
}

TEST(PortTrialTest, EachStepIsTold) {
    Trial bench("");
    bench.trial.ask(1);
    bench.machine.pump.wait(499);
    EXPECT_EQ(bench.changes, 0);
    bench.machine.pump.wait(1);
    EXPECT_EQ(bench.changes, 1);
    EXPECT_THAT(bench.trial.asked(), SizeIs(1));
    bench.machine.pump.wait(3000);
    EXPECT_EQ(bench.changes, 7);
}

TEST(PortTrialTest, AStoppedTrialSendsNothingMore) {
    support::VirtualMachine machine;
    PortTrial trial(machine.pump, machine.line);
    trial.ask(1);
    machine.pump.wait(50);
    trial.stop();
    machine.pump.wait(kSevenSpeeds);
    EXPECT_FALSE(trial.runs());
    EXPECT_TRUE(machine.recorder.takeBytes().empty());
}

TEST(PortTrialTest, ACableThatIsPulledOutEndsTheTrialWithItsReason) {
    Trial bench("");
    bench.trial.ask(1);
    bench.machine.pump.wait(700);
    bench.machine.line.pullOut();
    EXPECT_FALSE(bench.trial.runs());
    EXPECT_EQ(bench.trial.failure(), "The device is gone. Was its cable pulled out?");
    EXPECT_THAT(bench.trial.asked(), SizeIs(1));
    EXPECT_EQ(bench.changes, 2);
}

// A line whose device refuses to run at one speed, and one that can't be opened.
class RefusingLine : public platform::MemoryLine {
public:
    RefusingLine(platform::EventPump& pump, int number, int baud)
        : MemoryLine(pump, nullptr), number_(number), baud_(baud) {}

    void open(int port, int baud, platform::LineListener& listener) override {
        if (baud == baud_) {
            throw platform::RuntimeError(number_, "No.");
        }
        MemoryLine::open(port, baud, listener);
    }

private:
    int number_;
    int baud_;
};

TEST(PortTrialTest, ARefusedSpeedIsSkipped) {
    support::VirtualMachine machine;
    RefusingLine line(machine.pump, 8015, 76800);
    PortTrial trial(machine.pump, line);
    trial.ask(1);
    machine.pump.wait(kSevenSpeeds);
    ASSERT_THAT(trial.asked(), SizeIs(7));
    EXPECT_EQ(trial.asked()[4].fate, Fate::Refused);
    EXPECT_EQ(trial.asked()[5].fate, Fate::Nothing);
}

TEST(PortTrialTest, ADeviceThatCannotBeOpenedEndsTheTrial) {
    support::VirtualMachine machine;
    RefusingLine line(machine.pump, 8005, 9600);
    PortTrial trial(machine.pump, line);
    trial.ask(1);
    EXPECT_FALSE(trial.runs());
    EXPECT_EQ(findingOfFailure(trial, "/dev/ttyUSB0"),
              (Finding{"in-use", Weight::Fault,
                       "A program that you cannot see has it open: find out which with \"sudo korvane-tuner --doctor "
                       "/dev/ttyUSB0\", and close it."}));
}

TEST(PortTrialTest, AFailureOfAnotherKindIsTheFault) {
    support::VirtualMachine machine;
    RefusingLine line(machine.pump, 8012, 9600);
    PortTrial trial(machine.pump, line);
    trial.ask(1);
    EXPECT_EQ(findingOfFailure(trial, "/dev/ttyUSB0"), (Finding{"line", Weight::Fault, "No."}));
}

TEST(PortTrialTest, ASpeedThatIsRefusedWhileListeningLeavesTheOthers) {
    support::VirtualMachine machine;
    RefusingLine line(machine.pump, 8015, 76800);
    PortTrial trial(machine.pump, line);
    trial.listen(1, 76800);
    EXPECT_EQ(findingOfFailure(trial, "/dev/ttyUSB0"), (Finding{"line", Weight::Hint, "No."}));
}

TEST(PortTrialTest, TheVerdictNamesTheSpeedsThatTheDeviceRefuses) {
    EXPECT_EQ(verdictOf({{9600, Fate::Nothing, {}}, {76800, Fate::Refused, {}}}),
              (Finding{"answer", Weight::Fault,
                       "Nothing answers (the device itself does not run at 76800 baud): switch the ignition on, and "
                       "check that transmit leads to receive and that the grounds are joined."}));
    EXPECT_EQ(verdictOf({{9600, Fate::Refused, {}}, {76800, Fate::Refused, {}}}),
              (Finding{"answer", Weight::Fault, "The device runs at none of the seven speeds: use another adapter."}));
}

TEST(PortTrialTest, SeveralSpeedsThatAnswerAreOffered) {
    const Identity old{1140, {}};
    EXPECT_EQ(verdictOf({{9600, Fate::Answer, old}, {19200, Fate::Answer, old}}).text,
              "An ECU answers at 9600, 19200 baud (firmware 1.140): choose one of these speeds and press Connect.");
}

TEST(PortTrialTest, AnswersThatAreAllDamagedAreOfAnotherSpeed) {
    Trial bench("flip=1");
    EXPECT_THAT(bench.ask(), AllOf(SizeIs(7), Each(fateIs(Fate::WrongSpeed))));
}

TEST(PortTrialTest, ALineThatIsInOtherHandsIsNotClosed) {
    Trial bench("");
    bench.trial.ask(1);
    bench.machine.pump.wait(50);
    support::VirtualMachine other;
    PortTrial owner(bench.machine.pump, bench.machine.line);
    owner.listen(1, 57600);
    bench.trial.giveUpLine();
    bench.machine.line.inject(support::Bytes{1, 2});
    bench.machine.pump.wait(1000);
    EXPECT_EQ(owner.heard()->bytes, 2U);
}

}  // namespace
}  // namespace korvane::doctor::test
