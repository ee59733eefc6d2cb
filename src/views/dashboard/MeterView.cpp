#include "views/dashboard/MeterView.h"

#include <QPainter>

#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/Palette.h"
#include "views/widgets/values/Dial.h"

namespace korvane::views {

namespace {
constexpr int kTwipsPerPixel = 15;
constexpr int kLongestType = 9;  // letters
}  // namespace

MeterView::MeterView(live::FrmMeter& window, FrameClock& clock)
    : WindowView(window, clock), dial_(child<Dial>(this)), type_(child<DropDown>(this)) {
    type_.setAccessibleName(QStringLiteral("Type"));
    type_.setMinimumContentsLength(kLongestType);
    dial_.setFromEcu();
    binder().bind(window.SarnMeter1, dial_);
    binder().bind(window.Combo1, type_);
    // The dial's size is the window's to say.
    dial_.onResized({});
    const int beside = 2 * window.SarnMeter1.Left / kTwipsPerPixel;
    const int aboveAndBelow = (window.Height - window.SarnMeter1.Height) / kTwipsPerPixel;
    setMinimumSize(dial_.minimumSizeHint() + QSize(beside, aboveAndBelow));
    top_ = window.SarnMeter1.Top / kTwipsPerPixel;
}

// The ground on which the dial stands.
void MeterView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), shades::surface(palette()));
}

// Below the dial is the list's place.
void MeterView::resizeEvent(QResizeEvent* event) {
    WindowView::resizeEvent(event);
    const int side = live::FrmMeter::dialSide(width() * kTwipsPerPixel, height() * kTwipsPerPixel) / kTwipsPerPixel;
    const int left = (width() - side) / 2;
    dial_.setGeometry(left, top_, side, side);
    const QSize list = type_.sizeHint();
    const int below = height() - top_ - side;
    type_.setGeometry(left, height() - (below + list.height()) / 2, list.width(), list.height());
}

}  // namespace korvane::views
