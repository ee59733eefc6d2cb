// The round trip that is shown, against the time that a live frame takes on the line, with the virtual ECU.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "maps/MapForm.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

constexpr double kLiveFrame = 22;  // bytes, with code, length and complement
constexpr double kBitsOfByte = 10;

// Drops the next live polls.
class LossyEcu : public support::EcuDevice {
public:
    using EcuDevice::EcuDevice;
    void receive(std::uint8_t byte, platform::Micros at) override {
        if (byte == 'x' && dropped > 0) {
            --dropped;
            return;
        }
        EcuDevice::receive(byte, at);
    }
    int dropped = 0;
};

struct Drive {
    int type;
    int speed;    // row of ComboBaud
    int refresh;  // row of ComboRefresh
};

ecu::EcuSettings ofType(int type) {
    ecu::EcuSettings settings;
    settings.type = type;
    return settings;
}

class RoundTripTest : public testing::TestWithParam<Drive> {
protected:
    RoundTripTest() {
        program_.program.connection().loadSettings = [this] { program_.window.btnAsetukset.press(); };
        program_.window.ComboBaud.choose(GetParam().speed);
        program_.window.ComboRefresh.choose(GetParam().refresh);
    }
    void connect() {
        program_.connect();
        wait(20'000);
    }
    void wait(int milliseconds) { program_.pump.wait(milliseconds); }

    void readMaps() {
        program_.window.btnKartat.press();
        wait(15'000);
        for (auto* window : program_.windows.loaded()) {
            if (auto* form = dynamic_cast<maps::MapForm*>(window)) {
                form->btnReadFuel.press();
                form->btnReadIgn.press();
                wait(3'000);
            }
        }
    }

    [[nodiscard]] double expected() const {
        return (1 + kLiveFrame) * kBitsOfByte * 1000 / std::stod(program_.window.ComboBaud.Text());
    }
    // A second behind what was done, over two seconds.
    void expectTruth(const char* behind) {
        wait(1'000);
        const auto from = program_.pump.now();
        wait(2'000);
        const auto trip = program_.window.linkState.roundTripSince(from);
        ASSERT_TRUE(trip) << behind;
        // The line can't carry the answers to all: which polls are dropped, nobody tells the program.
        const int interval = program_.window.TimerRequestData.Interval;
        const double slack = interval < expected() ? interval : 2;
        EXPECT_NEAR(static_cast<double>(trip->median) / platform::kMicrosPerMilli, expected(), slack) << behind;
    }

    LossyEcu ecu_{ofType(GetParam().type)};
    support::VirtualProgram program_{&ecu_};
};

TEST_P(RoundTripTest, IsThatOfTheLineBehindAConnect) {
    connect();
    expectTruth("connect");
    program_.connect();
    wait(300);
    connect();
    expectTruth("another connect");
}

TEST_P(RoundTripTest, IsThatOfTheLineBehindMaps) {
    connect();
    readMaps();
    expectTruth("maps");
}

TEST_P(RoundTripTest, IsThatOfTheLineBehindLostPolls) {
    connect();
    for (int lost = 1; lost < 5; ++lost) {
        ecu_.dropped = lost;
        expectTruth("lost polls");
    }
}

TEST_P(RoundTripTest, IsThatOfTheLineBehindARestart) {
    connect();
    program_.window.Command2.press();
    expectTruth("restart");
}

TEST_P(RoundTripTest, IsThatOfTheLineBehindAPauseWhoseFirstPollIsLost) {
    connect();
    program_.window.TimerRequestData.Enabled = false;
    wait(2'000);
    ecu_.dropped = 1;
    program_.window.TimerRequestData.Enabled = true;
    expectTruth("pause");
}

std::vector<Drive> drives() {
    std::vector<Drive> all;
    for (const int type : {11, 15}) {
        for (int speed = 0; speed < 7; ++speed) {
            for (const int refresh : {0, 1, 2, 4, 11}) {
                all.push_back({type, speed, refresh});
            }
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Lines, RoundTripTest, testing::ValuesIn(drives()), [](const auto& tested) {
    const Drive& drive = tested.param;
    return "Type" + std::to_string(drive.type) + "Speed" + std::to_string(drive.speed) + "Refresh" +
           std::to_string(drive.refresh);
});

}  // namespace
}  // namespace korvane::link
