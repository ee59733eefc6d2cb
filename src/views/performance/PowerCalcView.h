// How the tuning helper looks: the car at the left, speed and timer above the log of pulls.
#pragma once

#include "performance/FrmPowerCalc.h"
#include "views/frame/FittedView.h"

class QGridLayout;

namespace korvane::views {

class Card;

class PowerCalcView : public FittedView {
public:
    PowerCalcView(performance::FrmPowerCalc& window, FrameClock& clock);

private:
    // A box beside its name; `meaning` is for who does not read the name's language.
    struct Line {
        QString name;
        controls::TextBox& box;
        QString unit;
        QString meaning;
    };

    void addLine(Card& card, QGridLayout& grid, int row, const Line& line);
    Card& makeCar();
    Card& makePull();
    void addSpeed(Card& card, QGridLayout& grid);
    void addTimer(Card& card, QGridLayout& grid);
    Card& makeLog();

    performance::FrmPowerCalc& window_;
};

}  // namespace korvane::views
