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
#include "core/Module1.h"
#include "link/Dispatcher.h"
#include "live/FrmSarn2.h"
#include "settings/FrmMisc.h"
#include "support/VirtualProgram.h"

namespace korvane::settings {

class NotingLine : public platform::MemoryLine {
public:
    struct Note {
        std::int64_t ms;
        std::uint8_t byte;
    };

    NotingLine(platform::EventPump& pump, platform::LineDevice& device) : MemoryLine(pump, &device), pump_(pump) {}

    void write(std::span<const std::uint8_t> bytes) override {
        for (const auto byte : bytes) {
            notes.push_back({pump_.milliseconds(), byte});
        }
        MemoryLine::write(bytes);
    }

    std::vector<Note> notes;

private:
    platform::EventPump& pump_;
};

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

    // What has gone out since the last call, each command behind its moment: "50 392=7" writes 7 to 392, "R 507" and
    // "U 1005" ask for a byte and a word, anything else stands in decimal.
    Lines sent() {
        Lines lines;
        for (std::size_t i = 0; i < line_.notes.size();) {
            const std::size_t size = std::min(sizeOf(line_.notes[i].byte), line_.notes.size() - i);
            lines.push_back(std::to_string(line_.notes[i].ms) + " " + textOf(std::span(line_.notes).subspan(i, size)));
            i += size;
        }
        line_.notes.clear();
        return lines;
    }

    support::VirtualMachine virtual_;
    NotingLine line_{virtual_.pump, virtual_.recorder};
    platform::Machine machine_{virtual_.pump,          line_,        virtual_.dialogs,
                               virtual_.preferences,   virtual_.log, virtual_.windows,
                               virtual_.folder.path(), '.',          {}};
    core::SharedTables tables_;
    live::FrmSarn2 main_{machine_};
    core::EepromAccess eeprom_{main_.MSComm1, virtual_.pump, tables_};
    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_, main_, tables_, windows_};
    FrmMisc frmMisc_{machine_, tables_, main_, eeprom_};

private:
    using Notes = std::span<const NotingLine::Note>;

    static std::size_t sizeOf(std::uint8_t command) {
        return command == 'W' ? 6 : command == 'R' || command == 'U' ? 4 : 1;
    }

    static std::string textOf(Notes bytes) {
        const int command = bytes[0].byte;
        if (bytes.size() == 1) {
            return std::to_string(command);
        }
        const bool whole = bytes.size() == sizeOf(bytes[0].byte) && bytes.back().byte == 255 - command;
        const bool equal = command != 'W' || (whole && bytes[3].byte == bytes[4].byte);
        if (!whole || !equal) {
            return "broken";
        }
        const std::string addr = std::to_string(bytes[1].byte + 256 * bytes[2].byte);
        return command == 'W' ? addr + "=" + std::to_string(bytes[3].byte) : static_cast<char>(command) + (" " + addr);
    }
};

}  // namespace korvane::settings
