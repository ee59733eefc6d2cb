// How the ignition debug window looks: the four words with their errors and the two buttons of the poll, and below them
// the cleaning of the plugs.
#pragma once

#include "live/FrmIGNDebug.h"
#include "views/frame/FittedView.h"

class QGridLayout;

namespace korvane::views {

class Card;
class Readout;

class IgnDebugView : public FittedView {
public:
    IgnDebugView(live::FrmIGNDebug& window, FrameClock& clock);

private:
    Card& makeWords();
    // A name and, below it, the label; the next place of the grid.
    void addWord(Card& card, QGridLayout& grid, const QString& name, controls::Label& label);
    Readout& addTile(Card& card, QGridLayout& grid, const QString& name, controls::Label& label);
    Card& makeSparks();

    live::FrmIGNDebug& window_;
};

}  // namespace korvane::views
