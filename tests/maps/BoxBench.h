// What the windows of the ignition-only box and of the limiter box work on, with a line that notes what goes out when.
#pragma once

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "MapsBench.h"
#include "link/Dispatcher.h"
#include "maps/boxes/IgnitionBoxControls.h"
#include "support/MachineBench.h"
#include "support/PropertyWatch.h"

namespace korvane::maps {

using support::Lines;

// The port is closed until openPort(). The clock stands at 0, and the live poll rests.
class BoxBench : public support::NotingBench {
protected:
    BoxBench() {
        core::InitModule(tables_, virtual_.preferences);
        core::InitTimeUnits(tables_);
        main_.load();
        main_.Visible = true;
        frm3Dmap_.load();
    }

    void openPort() {
        main_.MSComm1.Settings = "57600,N,8,1";
        main_.MSComm1.setPortOpen(true);
        line_.notes.clear();
    }
    controls::Timer& poll() { return main_.TimerRequestData; }

    void deliver(std::uint8_t command, support::Bytes payload) { dispatcher_.DoCommand(command, payload); }
    void deliverByte(int address, std::uint8_t value) {
        deliver('T', {value, static_cast<std::uint8_t>(address % 256), static_cast<std::uint8_t>(address / 256)});
    }
    void deliverWord(int address, int value) {
        deliver('U', {static_cast<std::uint8_t>(value % 256), static_cast<std::uint8_t>(value / 256),
                      static_cast<std::uint8_t>(address % 256), static_cast<std::uint8_t>(address / 256)});
    }

    // The names of a window's controls, arrays once.
    static std::vector<std::string> namesOf(const controls::Window& window) {
        std::vector<std::string> names;
        for (const auto* control : window.controls()) {
            const std::string name(control->name());
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
            }
        }
        return names;
    }
    static Lines rowsOf(const controls::ComboBox& list) {
        Lines rows;
        for (int row = 0; row < list.ListCount(); ++row) {
            rows.push_back(list.List(row));
        }
        return rows;
    }
    // Of the lists that both windows have.
    static void expectRows(const IgnitionBoxControls& box) {
        EXPECT_THAT(rowsOf(box.Combolaunchmode),
                    testing::ElementsAre("Launch -normal", "Launch with delay (analog input)",
                                         "Launch with delay (fixed, stored)", "Accel limit (time analog input)",
                                         "Accel limit (time fixed, stored)", "Accel limit (all time)"));
        EXPECT_THAT(rowsOf(box.ComboAccellimiter),
                    testing::ElementsAre("retard ign 15deg 1/3", "retard ign 15deg 3/4", "retard ign 15deg all",
                                         "waste spark 1/3", "waste spark 3/4", "waste spark all"));
        EXPECT_THAT(rowsOf(box.Combosensortype), testing::ElementsAre("Falling edge", "Rising edge, Hamlin"));
    }

    core::SharedTables tables_;
    live::FrmSarn2 main_{machine_};
    core::EepromAccess eeprom_{main_.MSComm1, pump_, tables_};
    FakeAnalyser analyser_;
    Frm3Dmap frm3Dmap_{machine_, tables_};
    FrmInjScale frmInjScale_{machine_, tables_};
    MapContext context_{tables_, main_, analyser_, frm3Dmap_, frmInjScale_, eeprom_};
    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_, main_, tables_, windows_};
};

}  // namespace korvane::maps
