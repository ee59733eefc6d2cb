// The analyser on a virtual machine with a map window that notes what is asked of it.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/clsInjAnalyser.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "live/FrmSarn2.h"
#include "support/ErrorOf.h"
#include "support/VirtualMachine.h"

namespace korvane::analysis {

// A key changes the map as that of a grid does. What lies beyond the window's cells is passed over.
class NotingMap : public maps::TunedMap {
public:
    explicit NotingMap(core::SharedTables& tables) : tables_(tables) {}

    void setSetpointToolTip(int cell, std::string_view text) override {
        journal.push_back("tip " + std::to_string(cell) + " " + std::string(text));
    }
    void setOnlineChanges(bool ticked) override { journal.emplace_back(ticked ? "online" : "offline"); }
    void setAgentLamp(controls::Picture lamp) override { lamps.emplace_back(controls::nameOf(lamp)); }
    void pressFuelKey(int cell, int keyCode, int shift) override {
        if (cell >= cells) {
            return;
        }
        journal.push_back("key " + std::to_string(cell) + " " + std::to_string(keyCode) + " " + std::to_string(shift));
        auto& byte = tables_.FuelMapOut.at(static_cast<std::size_t>(cell));
        byte = static_cast<std::uint8_t>(keyCode == controls::kKeyPlus ? byte + 1 : byte - 1);
    }
    void populateFuelOUT() override { journal.emplace_back("draw"); }

    int cells = 320;
    std::vector<std::string> journal;
    std::vector<std::string> lamps;

private:
    core::SharedTables& tables_;
};

using support::errorOf;

class AnalysisBench : public testing::Test {
protected:
    AnalysisBench() {
        core::InitModule(tables_, machine_.preferences);
        main_.load();
    }

    support::VirtualMachine machine_;
    core::SharedTables tables_;
    live::FrmSarn2 main_{machine_.machine};
    NotingMap window_{tables_};
    clsInjAnalyser analyser_{machine_.machine, tables_, main_.MSComm1};
};

}  // namespace korvane::analysis
