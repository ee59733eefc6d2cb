#include "views/widgets/values/SquareWidget.h"

#include <algorithm>
#include <cmath>

namespace korvane::views {

namespace {
constexpr int kSmallestFont = 8;  // pixels
}

QRect SquareWidget::square() const {
    const int side = std::min(width(), height());
    return {(width() - side) / 2, (height() - side) / 2, side, side};
}

QFont SquareWidget::fontOf(double share) const {
    QFont sized = font();
    sized.setPixelSize(std::max(kSmallestFont, static_cast<int>(std::lround(square().width() * share))));
    return sized;
}

}  // namespace korvane::views
