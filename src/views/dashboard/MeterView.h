// How the window to try the dial looks.
#pragma once

#include <QLabel>

#include "live/readout/FrmMeter.h"
#include "views/frame/WindowView.h"

namespace korvane::views {

class Dial;
class DropDown;

// The dial has the size that the window's rule gives it, and stands in the middle of a window that is wider.
class MeterView : public WindowView {
public:
    MeterView(live::FrmMeter& window, FrameClock& clock);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    Dial& dial_;
    DropDown& type_;
    QLabel& note_;  // that the needle shows nothing of the engine
    int top_ = 0;   // of the dial, logical pixels
};

}  // namespace korvane::views
