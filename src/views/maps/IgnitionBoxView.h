// How the window of the ignition-only box looks: the map and the three groups at the left, the rest at the right.
#pragma once

#include <QVBoxLayout>

#include "maps/FrmMaps_QV_ign.h"
#include "maps/notes/UnsentQuestion.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class IgnitionBoxView : public FittedView {
public:
    IgnitionBoxView(maps::FrmMaps_QV_ign& window, FrameClock& clock);

protected:
    [[nodiscard]] bool mayClose() override { return maps::mayLeaveUnsent({&maps_}); }

private:
    [[nodiscard]] QLayout& makeLeft();
    [[nodiscard]] QLayout& makeGroups();
    [[nodiscard]] QLayout& makeRight();
    void orderTabs();

    maps::FrmMaps_QV_ign& maps_;
};

}  // namespace korvane::views
