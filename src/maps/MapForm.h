// A map window at work: the body that frmMaps and frmMaps_Large share.
#pragma once

#include "controls/PictureBox.h"
#include "link/Windows.h"
#include "maps/AnalyserPane.h"
#include "maps/GridEditing.h"
#include "maps/MapContext.h"
#include "maps/MapControls.h"
#include "maps/MapDisplay.h"
#include "maps/MapFiles.h"
#include "maps/MapTransfer.h"

namespace korvane::maps {

// What differs between the two as data.
struct MapVariant {
    std::string_view name;
    const char* caption;
    MapGeometry geometry;
    InjectionScale scale;
    Halves halves;
    GridEditing::IgnitionMouse ignitionMouse;
    const char* traceCaption;
};

class MapForm : public MapControls, public link::MapWindow, public TunedMap {
public:
    MapForm(platform::Machine& machine, const MapContext& context, const MapVariant& variant);

    // For the dispatcher and the live update.
    void setCaption(std::string_view caption) override { Caption = caption; }
    void populateFuel() override;
    void populateIGN() override;
    void populatePWMOUT() override;
    void LoadMisc(bool skipTimer) override;
    // The 16-bit limits of the EEPROM onto txtMisc.
    void UpdateReadEE(std::int32_t value, int addr, bool is16) override;
    // Marks the cell that the ECU runs in. A MapPlace outside the grid marks none.
    void updateMapPlace() override;

    // For the analyser and its agent.
    void setSetpointToolTip(int cell, std::string_view text) override;
    void setOnlineChanges(bool ticked) override { chkOnlineChanges.Value = ticked ? 1 : 0; }
    void setAgentLamp(controls::Picture lamp) override { imgAgentLed.Shown = lamp; }
    void pressFuelKey(int cell, int keyCode, int shift) override;
    void populateFuelOUT() override;

    // Called when the window goes.
    std::function<void()> Closed;

protected:
    void Form_Load() override;
    bool Form_Unload() override;

    // Which frames or pages are in view after the load, and while the analyser shows.
    virtual void arrangePanes() = 0;
    virtual void showAnalyserPane(bool shown) = 0;
    // Moves the focus to the cell that the ECU runs in, where the window's boxes ask for it.
    virtual void followEngine() = 0;
    // Before the 3D view opens. The ordinary window leaves the view's sizes as they are, also those of a large one.
    virtual void prepare3D() {}

    void focusOn(MapGrid& grid);
    [[nodiscard]] const MapContext& context() const { return context_; }

private:
    void markCell(int cell, controls::Color color);
    void clearTrace();
    void showHelp();

    const MapContext& context_;
    MapDisplay display_;
    GridEditing editing_;
    MapTransfer transfer_;
    MapFiles files_;
    AnalyserPane analyserPane_;
};

// The window of the 160-cell maps: ignition, PWM and analyser take turns in one place.
class FrmMaps : public MapForm {
public:
    FrmMaps(platform::Machine& machine, const MapContext& context);

    controls::CheckBox chkFocusOnFuel, chkFocusOnIGN, chkShowPwm;

protected:
    void arrangePanes() override;
    void showAnalyserPane(bool shown) override;
    void followEngine() override;

private:
    void chkShowPwm_Click();
};

// The window of the 320-cell maps: one page of a tab strip for each grid.
class FrmMaps_Large : public MapForm {  // NOLINT(readability-identifier-naming)
public:
    FrmMaps_Large(platform::Machine& machine, const MapContext& context);

    controls::TabStrip TabStrip1;
    controls::ControlArray<controls::PictureBox> picOptions;  // the page of tab i + 1
    controls::CheckBox chkFocusOnMAP;

protected:
    void arrangePanes() override;
    void showAnalyserPane(bool) override {}
    void followEngine() override;
    void prepare3D() override;

private:
    void showPage();
};

}  // namespace korvane::maps
