// The common part of the map windows frmMaps and frmMaps_Large.
#pragma once

#include "controls/PictureBox.h"
#include "maps/panes/AnalyserPane.h"
#include "maps/panes/FilePane.h"
#include "maps/panes/FuelPane.h"
#include "maps/panes/IgnitionPane.h"
#include "maps/panes/MiscPane.h"
#include "maps/panes/PwmPane.h"
#include "maps/panes/ToolPane.h"
#include "maps/panes/TracePane.h"

namespace korvane::maps {

// What differs between the two as data.
struct MapVariant {
    PaneWindow::Title title;
    MapGeometry geometry;
    InjectionScale scale;
    Halves halves;
    Pointing ignitionPointing;
    std::string_view traceCaption;
};

// The left edge of a frame or page that is hidden, twips.
inline constexpr int kAway = -20000;

// The order of the panes is that of the first reads: misc, fuel, ignition, PWM.
class MapForm : public PaneWindow,
                public MiscPane,
                public FuelPane,
                public IgnitionPane,
                public PwmPane,
                public AnalyserPane,
                public FilePane,
                public TracePane,
                public ToolPane,
                public TunedMap {
public:
    MapForm(platform::Machine& machine, const MapContext& context, const MapVariant& variant);

    controls::Timer TimerInitialGetData;  // from the load to the first reads

    // For the analyser and its agent.
    void setSetpointToolTip(int cell, std::string_view text) override;
    void setOnlineChanges(bool ticked) override { chkOnlineChanges.Value = ticked ? 1 : 0; }
    void setAgentLamp(controls::Picture lamp) override { imgAgentLed.Shown = lamp; }
    void pressFuelKey(int cell, int keyCode, int shift) override;
    void populateFuelOUT() override { FuelPane::populateFuelOUT(); }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

protected:
    void Form_Load() override;
    bool Form_Unload() override;
    [[nodiscard]] LiveStrip::Cell fuelOf(int cell) override;
    // F8 puts the fuel map back to the steady agent's baseline.
    [[nodiscard]] bool takesKey(int keyCode, int shift) override;
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
