// The settings window with its view, on a virtual machine without a port.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "core/EepromAccess.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "live/FrmSarn2.h"
#include "settings/FrmMisc.h"
#include "support/VirtualMachine.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/frame/ViewHost.h"
#include "views/settings/MiscView.h"

namespace korvane::views {

// Every optional feature is there; the read that follows a load has not begun.
struct MiscViewBench : support::VirtualMachine {
    MiscViewBench() {
        core::InitModule(tables, preferences);
        core::InitTimeUnits(tables);
        tables.Features = 0xFFFF;
        host.add<MiscView, settings::FrmMisc>("frmMisc");
        window.show();
        window.TimerInitialGetData.Enabled = false;
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(window); }
    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(const std::string& name) const {
        return findIn<Widget>(view(), name);
    }

    // In logical pixels.
    void resize(int width, int height) {
        window.resize(width * 15, height * 15);
        settle();
    }
    void showTab(int tab) {
        window.tbsOptions.choose(tab);
        frame();
    }
    // Runs the next frame of the clock, and what the toolkit has delayed.
    void frame() {
        host.clock().tick();
        settle();
    }

    core::SharedTables tables;
    live::FrmSarn2 frmSarn2{machine};
    core::EepromAccess eeprom{frmSarn2.MSComm1, pump, tables};
    settings::FrmMisc window{machine, tables, frmSarn2, eeprom};
    ViewHost host{windows};
};

}  // namespace korvane::views
