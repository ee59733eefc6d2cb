// How a big readout looks: the channel and the alarm box above, and figures that fill the rest.
#pragma once

#include <memory>

#include "live/readout/FrmBigText.h"
#include "platform/EventPump.h"
#include "views/frame/WindowView.h"

namespace korvane::views {

class BigFigures;

// While the user drags an edge, the figures follow the size that the display gives the window, and the window is left
// alone. When the drag rests, the window learns of the size, and takes on the shape that its rule gives it. A display
// that refuses that shape is not asked again for the same size.
class BigTextView : public WindowView {
public:
    BigTextView(live::FrmBigText& window, FrameClock& clock);

    static constexpr int kRest = 250;  // ms without a new size

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeBar();
    void layOut();
    void rested();

    live::FrmBigText& window_;
    QWidget& bar_;
    BigFigures& figures_;
    QSize refused_;
    std::unique_ptr<platform::Alarm> rest_;
};

}  // namespace korvane::views
