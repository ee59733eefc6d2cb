// The view of the window of the line's quality.
#pragma once

#include "doctor/FrmLink.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class LinkView : public FittedView {
public:
    LinkView(doctor::FrmLink& window, FrameClock& clock);

private:
    [[nodiscard]] QWidget& makeLine(controls::Label& label, QWidget& parent);
    [[nodiscard]] QWidget& makePlot(const char* title, controls::Label& label, controls::PictureBox& picture);
};

}  // namespace korvane::views
