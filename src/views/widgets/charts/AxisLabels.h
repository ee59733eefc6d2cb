// The places of the texts at the edges of a 3D map, so that none covers another.
#pragma once

#include <QSizeF>

#include <array>
#include <vector>

#include "views/widgets/charts/Surface.h"

namespace korvane::views {

enum class Axis { Columns, Rows };

// Texts along the near edge of the floor, each written along the other axis, away from the edge.
struct AxisLabels {
    double degrees = 0;        // of the line they are written on, clockwise, from -90 to 90
    bool endsAtPlace = false;  // the text's end, or else its start, is at its place
    std::vector<int> numbers;  // of the columns or rows that have room for one, from 0
    std::vector<QPointF> places;

    // The corners of a text of this size.
    [[nodiscard]] std::array<QPointF, 4> outline(std::size_t label, QSizeF size) const;
};

// `largest` is the size of the largest of the texts.
[[nodiscard]] AxisLabels labelsOf(Axis axis, const Projection& projection, int count, QSizeF largest);

// The lines and numbers of the height axis.
struct HeightScale {
    int step = 1;
    int top = 1;
};
// For bytes up to `largest`: at most six lines with round numbers.
[[nodiscard]] HeightScale heightScaleFor(double largest);

}  // namespace korvane::views
