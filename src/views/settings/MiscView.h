// The view of the settings window: tabs above, the page of the chosen one, and below it the state of the full read.
#pragma once

#include "settings/FrmMisc.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class MiscView : public FittedView {
public:
    MiscView(settings::FrmMisc& window, FrameClock& clock);

protected:
    [[nodiscard]] QSize wantedSize() const override;

private:
    [[nodiscard]] QWidget& makeTabs(settings::FrmMisc& window);
    [[nodiscard]] QWidget& makePages(settings::FrmMisc& window);
    [[nodiscard]] QWidget& makeFoot(settings::FrmMisc& window);
    [[nodiscard]] QLayout& makeState(settings::FrmMisc& window, QWidget* parent);
    [[nodiscard]] QWidget& makeSaveLine(settings::FrmMisc& window, QWidget* parent);
};

}  // namespace korvane::views
