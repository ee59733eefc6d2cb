#include "views/trend/LogPlot.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

constexpr int kNotch = 120;  // of a wheel
constexpr QColor kMark{255, 255, 255, 170};
constexpr QColor kFocus{90, 160, 255};  // the plot is black in light and dark

}  // namespace

MarkLine::MarkLine(QWidget* plot) : QWidget(plot) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void MarkLine::standAt(int x) {
    setGeometry(x, 0, 1, parentWidget()->height());
}

void MarkLine::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), kMark);
}

LogPlot::LogPlot(QWidget* parent) : PictureView(parent), mark_(child<MarkLine>(static_cast<QWidget*>(this))) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    mark_.hide();
}

void LogPlot::paintEvent(QPaintEvent* event) {
    PictureView::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        painter.setPen(kFocus);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void LogPlot::mouseMoveEvent(QMouseEvent* event) {
    if (pointed) {
        pointed(event->position().x() / std::max(width(), 1));
    }
}

void LogPlot::mousePressEvent(QMouseEvent* event) {
    mouseMoveEvent(event);
}

void LogPlot::leaveEvent(QEvent*) {
    if (left) {
        left();
    }
}

// A wheel without notches turns in small steps.
void LogPlot::wheelEvent(QWheelEvent* event) {
    event->accept();
    turn_ -= event->angleDelta().y();
    const int notches = turn_ / kNotch;
    turn_ -= notches * kNotch;
    if (notches != 0 && turned) {
        turned(notches);
    }
}

// The window has had these keys; nothing around the plot scrolls by them.
void LogPlot::keyPressEvent(QKeyEvent* event) {
    const auto key = event->key();
    event->setAccepted(key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_PageUp || key == Qt::Key_PageDown);
}

}  // namespace korvane::views
