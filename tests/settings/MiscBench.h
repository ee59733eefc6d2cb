// The settings window on a virtual machine, with a line that notes what is handed to it and when.
#pragma once

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "core/EepromAccess.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "link/Dispatcher.h"
#include "live/FrmSarn2.h"
#include "settings/FrmMisc.h"
#include "support/MachineBench.h"

namespace korvane::settings {

using support::Lines;

// The clock is at 0 and the port is closed; frmMisc is not loaded yet. Addresses are those of the general layout.
class MiscBench : public support::NotingBench {
protected:
    MiscBench() {
        core::InitModule(tables_, virtual_.preferences);
        core::InitTimeUnits(tables_);
        windows_.frmMisc = &frmMisc_;
        main_.load();
        main_.Visible = true;
    }

    void openPort() {
        main_.MSComm1.Settings = "57600,N,8,1";
        main_.MSComm1.setPortOpen(true);
    }

    // Loads and shows the window, without the read that follows a load.
    void show() {
        frmMisc_.show();
        frmMisc_.TimerInitialGetData.Enabled = false;
        line_.notes.clear();
    }
    void showOnOpenPort() {
        openPort();
        show();
    }

    // A reply of the ECU.
    void byteReply(int addr, int value) { reply('T', {value, addr % 256, addr / 256}); }
    void wordReply(int addr, int value) { reply('U', {value % 256, value / 256, addr % 256, addr / 256}); }
    void reply(char command, const std::vector<int>& payload) {
        support::Bytes bytes;
        for (const int byte : payload) {
            bytes.push_back(static_cast<std::uint8_t>(byte));
        }
        dispatcher_.DoCommand(static_cast<std::uint8_t>(command), bytes);
    }

    controls::Timer& poll() { return main_.TimerRequestData; }

    core::SharedTables tables_;
    live::FrmSarn2 main_{machine_};
    core::EepromAccess eeprom_{main_.MSComm1, pump_, tables_};
    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_, main_, tables_, windows_};
    FrmMisc frmMisc_{machine_, tables_, main_, eeprom_};
};

}  // namespace korvane::settings
