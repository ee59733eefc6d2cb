// The fuel map: its grid, its editing, and its way to the ECU.
#pragma once

#include "link/Windows.h"
#include "maps/grid/FuelDisplay.h"
#include "maps/grid/GridEditor.h"
#include "maps/grid/RealtimeChanges.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"
#include "maps/transfer/MapWriter.h"

namespace korvane::maps {

class FuelPane : public MapPane, public link::FuelMapPart {
public:
    // `injectionOffset` is the misc box that shifts every pulse.
    FuelPane(PaneWindow& window, InjectionScale scale, Halves halves, const controls::TextBox& injectionOffset);

    controls::Frame FrameFuel;
    MapGrid fuel;  // txtFuel, lblRpmF, lblMapF
    controls::CommandButton btnReadFuel, btnWriteFuel, btnInjScale;

    // Milliseconds for one fuel count, rounded to single precision.
    float InjTimeScale = 0.0F;
    // Takes InjTimeScale from the parameters.
    void updateScale() { display_.updateScale(); }

    // Show the image as received, or (OUT) as edited.
    void populateFuel() override;
    void populateFuelOUT();
    // The key-down handler, also called by the agent. RuntimeError 9 for a cell that the grid has not got; nothing is
    // changed then.
    void fuelKeyDown(int index, int keyCode, int shift) { editor_.keyDown(index, keyCode, shift); }

    [[nodiscard]] MapGrid* paneGrid() override { return &fuel; }
    void loadPane(std::int32_t features) override;
    void readPane() override;
    void showLoadedTune() override;
    void acceptLoadedTune(bool withPwm) override;
    void showAcceptedTune() override { populateFuelOUT(); }

    // InjTimeScale, for the window's list of properties.
    [[nodiscard]] static std::span<const controls::PropertyInfo> fuelProperties();

private:
    [[nodiscard]] GridRules rules(const controls::TextBox& injectionOffset);

    FuelDisplay display_;
    RealtimeChanges realtime_;
    GridEditor editor_;
    MapWriter writer_;
};

}  // namespace korvane::maps
