// The view of the window that tests a port.
#pragma once

#include "doctor/FrmDoctor.h"
#include "views/frame/WindowView.h"

namespace korvane::views {

class DoctorView : public WindowView {
public:
    DoctorView(doctor::FrmDoctor& window, FrameClock& clock);

private:
    [[nodiscard]] QWidget& makeFindings();
    [[nodiscard]] QWidget& makeTrial();
    [[nodiscard]] QWidget& makeLine(controls::Label& label, QWidget& card, const char* spoken);
    [[nodiscard]] QLayout& makeButtons();

    doctor::FrmDoctor& window_;
};

}  // namespace korvane::views
