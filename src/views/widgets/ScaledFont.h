// Fonts somewhat smaller or larger than the one that a widget has.
#pragma once

#include <QFont>
#include <QFontInfo>

#include <algorithm>
#include <cmath>

namespace korvane::views {

// The font's size times `scale`, in pixels, and never less than `smallest`.
[[nodiscard]] inline int scaledPixels(const QFont& font, double scale, int smallest = 1) {
    return std::max(smallest, static_cast<int>(std::lround(QFontInfo(font).pixelSize() * scale)));
}

[[nodiscard]] inline QFont scaledFont(const QFont& font, double scale, int smallest = 1) {
    QFont scaled = font;
    scaled.setPixelSize(scaledPixels(font, scale, smallest));
    return scaled;
}

}  // namespace korvane::views
