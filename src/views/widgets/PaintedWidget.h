// A widget that paints all of its place by itself.
#pragma once

#include <QWidget>

namespace korvane::views {

class PaintedWidget : public QWidget {
protected:
    PaintedWidget(QSizePolicy::Policy across, QSizePolicy::Policy down, QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setSizePolicy(across, down);
    }
};

}  // namespace korvane::views
