// Reads the PWM table from the ECU and sends it, cell by cell.
#pragma once

#include "maps/grid/MapGrid.h"
#include "maps/transfer/MapLine.h"
#include "maps/transfer/MapVerification.h"

namespace korvane::maps {

class PaneWindow;

class PwmTransfer {
public:
    // The tool-tips of `grid` show the bytes as they are sent.
    PwmTransfer(PaneWindow& window, MapGrid& grid);

    // The caption says at once that the read has ended; the cells arrive later through the dispatcher. With the port
    // closed only the caption changes.
    void read();
    void save();

private:
    void ask();
    void send(SentCells& sent);
    void sendCell(int cell, SentCells& sent);

    PaneWindow& window_;
    MapGrid& grid_;
    MapLine& line_;
};

}  // namespace korvane::maps
