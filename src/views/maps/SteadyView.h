// The view of the steady agent's window.
#pragma once

#include "maps/steady/FrmSteady.h"
#include "views/frame/FittedView.h"
#include "views/widgets/Card.h"

namespace korvane::views {

class SteadyView : public FittedView {
public:
    SteadyView(maps::FrmSteady& window, FrameClock& clock);

protected:
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QWidget& makeState();
    [[nodiscard]] QWidget& makeAuthority();
    [[nodiscard]] QWidget& makeDelays();
    [[nodiscard]] QWidget& makeSamples();
    [[nodiscard]] QWidget& makeErrors();
    [[nodiscard]] QLayout& makeButtons();

    maps::FrmSteady& window_;
};

}  // namespace korvane::views
