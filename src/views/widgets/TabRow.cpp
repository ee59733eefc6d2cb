#include "views/widgets/TabRow.h"

#include <QPainter>

namespace korvane::views {

namespace {
constexpr int kLine = 3;
constexpr int kInset = 1;
}  // namespace

TabRow::TabRow(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setElideMode(Qt::ElideNone);
}

void TabRow::paintEvent(QPaintEvent* event) {
    QTabBar::paintEvent(event);
    const QRect chosen = tabRect(currentIndex());
    if (chosen.isValid()) {
        QPainter painter(this);
        painter.fillRect(chosen.left() + kInset, chosen.bottom() - kLine + 1, chosen.width() - 2 * kInset, kLine,
                         palette().color(QPalette::Highlight));
    }
}

}  // namespace korvane::views
