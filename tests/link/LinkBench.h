// A dispatcher with a panel, a line in memory and windows around it that note everything in one journal.
#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "link/Dispatcher.h"
#include "link/Windows.h"
#include "support/MachineBench.h"

namespace korvane::link {

using Journal = std::vector<std::string>;
using support::Bytes;

// Notes when bytes are written to it, before any of them is sent.
class JournalLine : public platform::MemoryLine {
public:
    JournalLine(platform::EventPump& pump, Journal& journal) : MemoryLine(pump, nullptr), journal_(journal) {}

    void write(std::span<const std::uint8_t> bytes) override {
        for (const int byte : bytes) {
            journal_.push_back("send " + std::to_string(byte));
        }
        MemoryLine::write(bytes);
    }

private:
    Journal& journal_;
};

class NotingMapWindow : public MapWindow,
                        public FuelMapPart,
                        public IgnitionMapPart,
                        public PwmMapPart,
                        public MiscPart,
                        public EepromPart,
                        public EnginePlacePart {
public:
    NotingMapWindow(Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}

    void setCaption(std::string_view caption) override { note("caption " + std::string(caption)); }
    void populateFuel() override { note("populateFuel"); }
    void populateIGN() override { note("populateIGN"); }
    void populatePWMOUT() override { note("populatePWMOUT"); }
    void LoadMisc(bool skipTimer) override { note(skipTimer ? "LoadMisc true" : "LoadMisc false"); }
    void UpdateReadEE(std::int32_t value, int addr, bool is16) override {
        note("UpdateReadEE " + std::to_string(value) + " " + std::to_string(addr) + (is16 ? " word" : " byte"));
    }
    void updateMapPlace() override { note("updateMapPlace"); }

private:
    void note(const std::string& what) { journal_.push_back(name_ + "." + what); }

    Journal& journal_;
    std::string name_;
};

class NotingSettingsWindow : public SettingsWindow {
public:
    explicit NotingSettingsWindow(Journal& journal) : journal_(journal) {}

    void LoadMisc2(std::span<const std::uint8_t> payload, bool& handled) override {
        note(handled ? "LoadMisc2 handled" : "LoadMisc2");
        block.assign(payload.begin(), payload.end());
        handled = true;
    }
    void UpdateReadEE(std::int32_t value, int addr, bool is16) override {
        note("UpdateReadEE " + std::to_string(value) + " " + std::to_string(addr) + (is16 ? " word" : " byte"));
    }
    void setTextArvo(std::string_view text) override { note("TextArvo " + std::string(text)); }
    void setLambdaSetpoint(int row, std::uint8_t value) override {
        note("setpoint " + std::to_string(row) + " " + std::to_string(value));
    }
    void setLambdaAuthority(int row, std::uint8_t value) override {
        note("authority " + std::to_string(row) + " " + std::to_string(value));
    }
    void MarkAccelCell(int index) override { note("MarkAccelCell " + std::to_string(index)); }

    Bytes block;

private:
    void note(const std::string& what) { journal_.push_back("misc." + what); }

    Journal& journal_;
};

class NotingDebugWindow : public IgnitionDebugWindow {
public:
    void showDebugFrame(std::span<const std::uint8_t> payload) override {
        frames.emplace_back(payload.begin(), payload.end());
    }

    std::vector<Bytes> frames;
};

class NotingDecoder : public LiveDecoder {
public:
    void decodeLivePacket(std::span<std::uint8_t> payload) override {
        frames.emplace_back(payload.begin(), payload.end());
    }

    std::vector<Bytes> frames;
};

// What the log says of a frame that ends in a failure.
inline constexpr const char* kTooShort = "err docommand Subscript out of range";
inline constexpr const char* kNoWindow = "err docommand Object variable not set";

// No window is open at first; the clock starts at noon.
class LinkBench : public support::MachineBench {
protected:
    LinkBench() {
        core::InitModule(tables_, preferences_);
        dispatcher_.setLiveDecoder(decoder_);
        panel_.MSComm1.setPortOpen(true);
    }

    void openMapWindow() { windows_.curMapWindow = &map_; }
    void openIgnitionWindow() {
        windows_.frmMaps_QV_ign = &ignition_;
        tables_.ignWindowOpen = true;
    }
    void openSettings() { windows_.frmMisc = &misc_; }

    void command(int code, Bytes payload) { dispatcher_.DoCommand(static_cast<std::uint8_t>(code), payload); }

    // 160 bytes: first, first + 1, ...
    static Bytes half(int first) {
        Bytes bytes;
        for (int i = 0; i < 160; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(first + i));
        }
        return bytes;
    }

    Journal journal_;
    JournalLine line_{pump_, journal_};
    platform::Machine machine_ = virtual_.with(line_);
    controls::Window window_{machine_, "frmSarn2"};
    ConnectionPanel panel_{window_};
    core::SharedTables tables_;
    Windows windows_;
    Dispatcher dispatcher_{machine_, panel_, tables_, windows_};
    NotingDecoder decoder_;
    NotingMapWindow map_{journal_, "map"};
    NotingMapWindow ignition_{journal_, "ign"};
    NotingSettingsWindow misc_{journal_};
    NotingDebugWindow debug_;
};

}  // namespace korvane::link
