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
constexpr int kGap = 6;
constexpr int kBadge = 6;  // text heights that the mark of the line takes at the right
}  // namespace

MeterView::MeterView(live::FrmMeter& window, FrameClock& clock)
    : WindowView(window, clock),
      dial_(child<Dial>(this)),
      type_(child<DropDown>(this)),
      note_(child<QLabel>(this, QStringLiteral("moves by itself"))) {
    type_.setAccessibleName(QStringLiteral("Type"));
    type_.setMinimumContentsLength(kLongestType);
    note_.setObjectName(QStringLiteral("meterNote"));
    for (QWidget* widget : {static_cast<QWidget*>(&dial_), static_cast<QWidget*>(&note_)}) {
        widget->setToolTip(
            QStringLiteral("The needle moves by itself, to show the dial: it is no value of the engine"));
    }
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
    const QRect place(left, height() - (below + list.height()) / 2, list.width(), list.height());
    type_.setGeometry(place);
    const QSize words = note_.sizeHint();
    note_.setGeometry(place.right() + kGap, place.center().y() - words.height() / 2, words.width(), words.height());
    note_.setVisible(note_.geometry().right() + kBadge * words.height() < width());
}

}  // namespace korvane::views
