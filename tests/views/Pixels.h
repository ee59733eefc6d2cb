// Counts pixels of a picture.
#pragma once

#include <QColor>
#include <QImage>

namespace korvane::views {

[[nodiscard]] inline int countOf(const QImage& image, const QColor& color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixelColor(x, y) == color ? 1 : 0;
        }
    }
    return count;
}

}  // namespace korvane::views
