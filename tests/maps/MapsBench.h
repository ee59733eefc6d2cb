// A map window's controls and all that they work on, on a virtual machine with a line in memory on which a test plays
// the ECU.
#pragma once

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "live/FrmSarn2.h"
#include "maps/Frm3Dmap.h"
#include "maps/FrmInjScale.h"
#include "maps/MapForm.h"
#include "maps/grid/MapConversions.h"
#include "maps/transfer/MapContext.h"
#include "support/VirtualMachine.h"

namespace korvane::maps {

// Notes the window's calls of the analyser and returns what a test has set.
class FakeAnalyser : public Analyser {
public:
    void setMapWindow(TunedMap* window) override { mapWindow = window; }
    void Setpoint(float value, std::int32_t index) override { setpoints.at(static_cast<std::size_t>(index)) = value; }
    [[nodiscard]] float Setpointget(std::int32_t index) const override {
        return setpoints.at(static_cast<std::size_t>(index));
    }
    [[nodiscard]] float Proposal(std::int32_t index) const override {
        return proposals.at(static_cast<std::size_t>(index));
    }
    [[nodiscard]] float LambdaAvg(std::int32_t index) const override {
        return averages.at(static_cast<std::size_t>(index));
    }
    void setSimpleMode(bool on) override { simpleMode = on; }
    void setLogData(bool on) override { logData = on; }
    void setAgentEnable(bool on) override { agentEnable = on; }
    void ClearTables() override { ++clears; }

    TunedMap* mapWindow = nullptr;
    std::array<float, 321> setpoints{};
    std::array<float, 321> proposals{};
    std::array<float, 321> averages{};
    bool simpleMode = false;
    bool logData = false;
    bool agentEnable = false;
    int clears = 0;
};

// Notes what the caption of a window becomes.
class CaptionObserver : public controls::Observer {
public:
    explicit CaptionObserver(controls::Window& window) : window_(window) { window_.addObserver(*this); }
    ~CaptionObserver() override { window_.removeObserver(*this); }
    void propertyChanged(controls::Object&, const void* property) override {
        if (property == &window_.Caption) {
            captions.push_back(window_.Caption);
        }
    }

    std::vector<std::string> captions;

private:
    controls::Window& window_;
};

// A window of all panes that does nothing of its own: it does not read at its load, and offers everything.
class BenchWindow : public MapForm {
public:
    BenchWindow(platform::Machine& machine, const MapContext& context, MapGeometry shape,
                InjectionScale scale = &ordinaryInjectionScale, Halves halves = Halves::One,
                Pointing pointing = Pointing::Keys)
        : MapForm(machine, context, {{"frmMaps", "Korvane Tuner, Maps "}, shape, scale, halves, pointing, "Trace"}) {}

    std::function<void(bool)> showFrames;

protected:
    void Form_Load() override {}
    void showAnalyserPane(bool shown) override {
        if (showFrames) {
            showFrames(shown);
        }
    }
};

// The main window provides the serial control and the poll timer; the port is closed until openPort().
class MapsBench : public testing::Test {
protected:
    MapsBench() {
        core::InitModule(tables_, machine_.preferences);
        core::InitTimeUnits(tables_);
        main_.load();
        main_.Visible = true;
        frm3Dmap_.load();
    }

    // 57600 baud, every received byte dropped: replies are a test's own business.
    void openPort() {
        main_.MSComm1.Settings = "57600,N,8,1";
        main_.MSComm1.setPortOpen(true);
    }

    // The bytes that have been sent since the last call, once they have arrived.
    support::Bytes sent() {
        machine_.pump.wait(500);
        return machine_.recorder.takeBytes();
    }

    void setParameter(int address, std::uint8_t value) {
        tables_.EEParams.at(static_cast<std::size_t>(address)).value = value;
    }

    support::VirtualMachine machine_;
    core::SharedTables tables_;
    live::FrmSarn2 main_{machine_.machine};
    FakeAnalyser analyser_;
    Frm3Dmap frm3Dmap_{machine_.machine, tables_};
    FrmInjScale frmInjScale_{machine_.machine, tables_};
    core::EepromAccess eeprom_{main_.MSComm1, machine_.pump, tables_};
    MapContext context_{tables_, main_, analyser_, frm3Dmap_, frmInjScale_, eeprom_};
};

}  // namespace korvane::maps
