// The settings window on a virtual machine, with a line that notes what is handed to it and when.
#pragma once

#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "core/EepromAccess.h"
#include "core/tables/Module1.h"
#include "link/Dispatcher.h"
#include "live/FrmSarn2.h"
#include "settings/FrmMisc.h"
#include "support/NotingLine.h"
#include "support/VirtualProgram.h"

namespace korvane::settings {

// The values that a text of a property takes one after the other.
class TextObserver : public controls::Observer {
public:
    TextObserver(controls::Object& object, controls::Property<std::string>& text) : object_(object), text_(text) {
        object_.addObserver(*this);
    }
    TextObserver(const TextObserver&) = delete;
    TextObserver& operator=(const TextObserver&) = delete;
    ~TextObserver() override { object_.removeObserver(*this); }

    void propertyChanged(controls::Object&, const void* property) override {
        if (property == &text_) {
            texts.push_back(text_);
        }
    }

    std::vector<std::string> texts;

private:
    controls::Object& object_;
    controls::Property<std::string>& text_;
};

using Lines = std::vector<std::string>;

// The clock stands at 0 and the port is closed; frmMisc is not loaded yet. Addresses are those of the general layout.
class MiscBench : public testing::Test {
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

    void at(int milliseconds, std::function<void()> action) { virtual_.at(milliseconds, std::move(action)); }
    [[nodiscard]] std::int64_t now() const { return virtual_.pump.milliseconds(); }
    controls::Timer& poll() { return main_.TimerRequestData; }

    // As NotingLine::sent().
    Lines sent() { return line_.sent(); }

    support::VirtualMachine virtual_;
    support::NotingLine line_{virtual_.pump, virtual_.recorder};
    platform::Machine machine_{virtual_.pump,          line_,        virtual_.dialogs,
                               virtual_.preferences,   virtual_.log, virtual_.windows,
                               virtual_.folder.path(), '.',          {}};
    core::SharedTables tables_;
    live::FrmSarn2 main_{machine_};
    core::EepromAccess eeprom_{main_.MSComm1, virtual_.pump, tables_};
    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_, main_, tables_, windows_};
    FrmMisc frmMisc_{machine_, tables_, main_, eeprom_};
};

}  // namespace korvane::settings
