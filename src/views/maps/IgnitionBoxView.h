// How the window of the ignition-only box looks: the map and the three groups at the left, in a low window on two
// pages; the rest at the right.
#pragma once

#include <QGridLayout>
#include <QVBoxLayout>

#include "maps/FrmMaps_QV_ign.h"
#include "maps/notes/UnsentQuestion.h"
#include "views/frame/FittedView.h"
#include "views/maps/MapPages.h"
#include "views/widgets/Card.h"
#include "views/widgets/ScrollColumn.h"

namespace korvane::views {

class IgnitionBoxView : public FittedView {
public:
    IgnitionBoxView(maps::FrmMaps_QV_ign& window, FrameClock& clock);

protected:
    [[nodiscard]] bool mayClose() override { return maps::mayLeaveUnsent({&maps_}); }
    void resizeEvent(QResizeEvent* event) override;
    void focusMoved(QWidget& widget) override { pages_.reveal(widget); }

private:
    [[nodiscard]] QLayout& makeLeft();
    void makeGroups();
    void placeGroups();
    void fillRight();
    void orderTabs();

    maps::FrmMaps_QV_ign& maps_;
    MapPages& pages_;
    ScrollColumn& column_;
    QGridLayout& groups_;
    Card* idle_ = nullptr;
    Card* launch_ = nullptr;
    Card* setup_ = nullptr;
};

}  // namespace korvane::views
