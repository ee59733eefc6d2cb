// A widget that paints a centred square, as large as fits.
#pragma once

#include <QFont>

#include "views/widgets/PaintedWidget.h"

namespace korvane::views {

class SquareWidget : public PaintedWidget {
public:
    [[nodiscard]] QRect square() const;

    [[nodiscard]] QSize sizeHint() const override { return {smallest_, smallest_}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    // `smallest` is the least side, in logical pixels.
    SquareWidget(int smallest, QWidget* parent)
        : PaintedWidget(QSizePolicy::Expanding, QSizePolicy::Expanding, parent), smallest_(smallest) {}

    // The widget's font with a size that is this share of the square's side.
    [[nodiscard]] QFont fontOf(double share) const;

private:
    int smallest_;
};

}  // namespace korvane::views
