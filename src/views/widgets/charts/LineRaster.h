// Lines one pixel thick, sorted by the columns of pixels that they cross, for pictures that lines cover many times
// over.
#pragma once

#include <QImage>
#include <QPolygon>

#include <vector>

namespace korvane::views {

// The cost depends on the pixels of the picture, not on the total length of the lines. Every point of a line is
// covered.
class LineRaster {
public:
    // Forgets all lines; what is added from now on is cut at this size.
    void clear(QSize size);
    // Covers what was added before.
    void add(const QPolygon& line, QRgb color);
    // Paints the ground and all lines into `image`, which has 32 bits for each pixel and the size given last.
    void paint(QImage& image, QRgb ground);

private:
    struct Run {
        int top;
        int bottom;  // the last row
        QRgb color;
    };

    void addSegment(QPoint from, QPoint to, QRgb color);
    void addFlat(QPoint left, QPoint right, QRgb color);
    void addSteep(QPoint top, QPoint bottom, QRgb color);
    void addRun(int column, Run run);
    void fillColumn(std::size_t column, QRgb* pixels, QRgb ground) const;

    int height_ = 0;
    std::vector<std::vector<Run>> columns_;
    std::vector<QRgb> band_;  // some columns one after the other
};

}  // namespace korvane::views
