// Reads the PWM table from the ECU and sends it, cell by cell.
#pragma once

#include "maps/grid/MapGrid.h"
#include "maps/transfer/MapLine.h"

namespace korvane::maps {

class PaneWindow;

class PwmTransfer {
public:
    // `grid` shows the bytes as they go out, as tool-tips.
    PwmTransfer(PaneWindow& window, MapGrid& grid);

    // The caption speaks of the end at once; the cells come later, at the dispatcher's pace. With the port closed
    // nothing else happens.
    void read();
    void save();

private:
    void ask();
    void send();
    void sendCell(int cell);

    PaneWindow& window_;
    MapGrid& grid_;
    MapLine& line_;
};

}  // namespace korvane::maps
