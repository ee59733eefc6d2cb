// The fuel map: its grid, its editing, and its transfer to the ECU.
#pragma once

#include "link/Windows.h"
#include "maps/grid/FuelDisplay.h"
#include "maps/panes/WholeMapPane.h"

namespace korvane::maps {

class FuelPane : public WholeMapPane, public link::FuelMapPart {
public:
    // `injectionOffset` is the misc box that shifts every pulse.
    FuelPane(PaneWindow& window, InjectionScale scale, Halves halves, const controls::TextBox& injectionOffset);

    controls::Frame& FrameFuel = mapFrame();
    MapGrid& fuel = mapGrid();  // txtFuel, lblRpmF, lblMapF
    controls::CommandButton& btnReadFuel = readButton();
    controls::CommandButton& btnWriteFuel = sendButton();
    controls::CommandButton btnInjScale;

    // Milliseconds for one fuel count, rounded to single precision.
    float InjTimeScale = 0.0F;
    // Takes InjTimeScale from the parameters.
    void updateScale() { display_.updateScale(); }

    void tickPane() override;

    // Show the image as received, or (OUT) as edited.
    void populateFuel() override { showReceived(); }
    void populateFuelOUT() { showEdited(); }
    // The key-down handler, and the same for the agent. RuntimeError 9 for a cell outside the grid; nothing is changed
    // then.
    void fuelKeyDown(int index, int keyCode, int shift) { editCell(index, keyCode, shift); }
    void agentKeyDown(int index, int keyCode, int shift) { editCell(index, keyCode, shift, Hand::Agent); }

    // InjTimeScale, for the window's list of properties.
    [[nodiscard]] static std::span<const controls::PropertyInfo> fuelProperties();

private:
    [[nodiscard]] const MapDisplay& mapDisplay() const override { return display_; }
    [[nodiscard]] MapDisplay& mapDisplay() override { return display_; }

    FuelDisplay display_;
};

}  // namespace korvane::maps
