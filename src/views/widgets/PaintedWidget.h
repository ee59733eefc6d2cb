// A widget that paints all of its place by itself.
#pragma once

#include "views/widgets/Dimmable.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

class PaintedWidget : public Dimmable {
protected:
    PaintedWidget(QSizePolicy::Policy across, QSizePolicy::Policy down, QWidget* parent) : Dimmable(parent) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setSizePolicy(across, down);
    }

    [[nodiscard]] QColor ground() const override { return shades::surface(palette()); }
};

}  // namespace korvane::views
