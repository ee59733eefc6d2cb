// The view of the 3D map: choice of table and presentation, the cell under the mouse, and the map below.
#pragma once

#include "maps/Frm3Dmap.h"
#include "views/frame/WindowView.h"

class QHBoxLayout;
class QLabel;

namespace korvane::views {

class ChartWidget;

// Presentation, turn and size of the map belong to the view: the window knows nothing of them.
class Map3DView : public WindowView {
public:
    Map3DView(maps::Frm3Dmap& window, FrameClock& clock);

private:
    [[nodiscard]] QHBoxLayout& makeBar();
    void addPresentations(QHBoxLayout& bar);
    void showNames();
    void showUnread();

    maps::Frm3Dmap& window_;
    ChartWidget& chart_;
    QLabel& table_;
    QLabel& scale_;
    QLabel& unread_;
    QLabel& cell_;
};

}  // namespace korvane::views
