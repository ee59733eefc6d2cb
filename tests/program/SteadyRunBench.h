// The steady agent in the whole program, on the virtual ECU.
#pragma once

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

#include "ecu/VirtualEcu.h"
#include "maps/MapForm.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::program {

using steady::State;

inline constexpr int kSecond = 1000;
inline constexpr int kLong = 800 * kSecond;  // some rounds of the drive, the first ones cold
inline constexpr int kF8 = 119;

inline ecu::EcuSettings lap(const std::string& more = {}) {
    ecu::EcuSettings settings;
    EXPECT_EQ(ecu::parseKeyList(settings, "type=11,drive=lap" + more), "");
    return settings;
}

// "g", the cell twice, the byte twice and the complement: the byte in front of the last five is the command's.
class ListeningEcu : public support::EcuDevice {
public:
    using EcuDevice::EcuDevice;

    void receive(std::uint8_t byte, platform::Micros at) override {
        std::rotate(last_.begin(), last_.begin() + 1, last_.end());
        last_.back() = byte;
        const bool isCell = last_[0] == 'g' && last_[5] == 0x98 && last_[1] == last_[2] && last_[3] == last_[4];
        cells += isCell ? 1U : 0U;
        if (!dead) {
            EcuDevice::receive(byte, at);
        }
    }

    void take(platform::Micros at, std::vector<std::uint8_t>& out) override {
        const auto before = out.size();
        EcuDevice::take(at, out);
        if (garbles) {
            std::fill(out.begin() + static_cast<std::ptrdiff_t>(before), out.end(), std::uint8_t{0});
        }
    }

    std::size_t cells = 0;
    bool garbles = false;  // no frame arrives whole
    bool dead = false;     // it hears nothing, and so says nothing

private:
    std::array<std::uint8_t, 6> last_{};
};

class SteadyRunTest : public testing::Test {
protected:
    explicit SteadyRunTest(const std::string& keys = {}) : ecu_(lap(keys)) {
        program_.connect();
        wait(2 * kSecond);
        program_.window.btnKartat.press();
        wait(3 * kSecond);
        // What the read of all settings would tell.
        const auto& places = program_.tables.addresses;
        eeprom(places.LOAD_MODE, 0);
        eeprom(places.MAPGAIN_OFF, 10);
        eeprom(places.MAPOFFSET_OFF, 0);
        maps().chkInjAnal.press();
        start_ = map();
    }

    void wait(int milliseconds) { program_.pump.wait(milliseconds); }
    void eeprom(int address, std::uint8_t byte) { program_.window.ecuEeprom.told(address, byte); }
    maps::FrmMaps& maps() {
        for (auto* const window : program_.windows.loaded()) {
            if (auto* const found = dynamic_cast<maps::FrmMaps*>(window)) {
                return *found;
            }
        }
        throw std::runtime_error("no map window");
    }
    core::MapImage& map() { return program_.tables.FuelMapOut; }
    analysis::clsSteadyAgent& agent() { return program_.program.steadyAgent(); }
    State state() { return agent().agent().state(); }
    // Ticked, and driven until it has changed something.
    void work() {
        maps().chkSteadyAgent.press();
        ASSERT_EQ(agent().whyStopped(), "");
        wait(kLong);
        ASSERT_EQ(state(), State::Working);
        ASSERT_NE(map(), start_);
    }
    std::size_t unsent() {
        std::size_t cells = 0;
        for (std::size_t cell = 0; cell < 160; ++cell) {
            cells += program_.window.ecuMaps.fuel.working(cell) != map().at(cell) ? 1 : 0;
        }
        return cells;
    }

    // Commands for a cell that went out since the last call.
    std::size_t cellsSent() { return std::exchange(ecu_.cells, 0U); }

    ListeningEcu ecu_;
    support::VirtualProgram program_{&ecu_};
    core::MapImage start_{};
};

}  // namespace korvane::program
