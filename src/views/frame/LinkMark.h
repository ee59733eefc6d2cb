// What every window shows of the line: the badge, a way out of a transfer, and values dimmed that are not live.
#pragma once

#include <QPushButton>

#include <functional>
#include <memory>

#include "controls/Object.h"
#include "link/LinkState.h"
#include "platform/EventPump.h"
#include "views/frame/WindowView.h"
#include "views/widgets/values/LinkBadge.h"

namespace korvane::views {

// Stands in the view's layout named kPlace, there without the way out; in a view without one below its layout at the
// right; in a view without a layout in the lower right corner.
class LinkMark : public QWidget, private controls::Observer {
public:
    static constexpr const char* kPlace = "linkPlace";

    // `closePort` closes the port as the main window's button does.
    LinkMark(link::LinkState& link, std::function<void()> closePort, platform::EventPump& pump, WindowView* view);
    LinkMark(const LinkMark&) = delete;
    LinkMark& operator=(const LinkMark&) = delete;
    ~LinkMark() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;
    void makeStop();
    void place();
    void takeMarginBelow();
    void moveToCorner();
    void showState();
    void showAge();
    void dimValues();
    void endBars();

    link::LinkState* link_;  // null when it is destroyed
    std::function<void()> closePort_;
    platform::EventPump& pump_;
    WindowView& view_;
    LinkBadge& badge_;
    QPushButton& stop_;
    std::unique_ptr<platform::Alarm> nextSecond_;
    bool hasStop_ = false;
    bool inCorner_ = false;
};

}  // namespace korvane::views
