// The views of the map windows: state above, the grids at the left, commands and the misc block at the right.
#pragma once

#include <QVBoxLayout>

#include <vector>

#include "maps/MapForm.h"
#include "maps/notes/UnsentQuestion.h"
#include "views/frame/FittedView.h"
#include "views/maps/MapParts.h"

namespace korvane::views {

class MapPages;
class ScrollColumn;

// The common part of both views.
class MapsView : public FittedView {
protected:
    MapsView(maps::MapForm& window, FrameClock& clock);

    [[nodiscard]] bool mayClose() override { return maps::mayLeaveUnsent({&maps_}); }

    // A window too low for all its parts, and wide enough for one map beside its buttons.
    [[nodiscard]] bool isLow() const { return low_; }
    void resizeEvent(QResizeEvent* event) override;

    [[nodiscard]] QVBoxLayout& left() { return left_; }
    [[nodiscard]] QVBoxLayout& right() { return right_; }
    // Below the maps; in a low window, where it would be too narrow there, across the window.
    void addStatusLine();
    // What both windows have in their cards at the top of the right column.
    void addTransfers(PairCard& card);
    void addLive(PairCard& card);
    // The cards of the right column from the analyser's on.
    void addLowerCards();
    // Tab goes through these and then through what both windows have at the right.
    void orderTabs(std::vector<controls::Control*> first);

private:
    maps::MapForm& maps_;
    QVBoxLayout& rows_;
    ScrollColumn& column_;
    QVBoxLayout& left_;
    QVBoxLayout& right_;
    QWidget* status_ = nullptr;
    bool low_ = false;
};

// The fuel map above; below it ignition, PWM or analyser, whichever is on top. In a low window they are on two pages.
class FrmMapsView : public MapsView {
public:
    FrmMapsView(maps::FrmMaps& window, FrameClock& clock);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void focusMoved(QWidget& widget) override;

private:
    void addPanes(maps::FrmMaps& window);
    // As soon as the frame can be seen.
    void showPageOf(controls::Frame& frame);
    void addCommands(maps::FrmMaps& window);

    MapPages& pages_;
};

// A tab for each map.
class FrmMapsLargeView : public MapsView {
public:
    FrmMapsLargeView(maps::FrmMaps_Large& window, FrameClock& clock);

private:
    void addTabs(maps::FrmMaps_Large& window);
    void addPages(maps::FrmMaps_Large& window);
    void addCommands(maps::FrmMaps_Large& window);
};

}  // namespace korvane::views
