// The geometry of a 3D map: the screen position of each of its places, its faces and their order.
#pragma once

#include <QPointF>
#include <QSizeF>

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace korvane::views {

// How the map is turned, in degrees. Azimuth 0 has the columns run to the right and the rows away from the viewer, and
// a larger one moves the near side to the right. Elevation 90 looks straight down, 0 along the floor.
struct Turn {
    static constexpr double kLowest = 12;
    static constexpr double kHighest = 90;

    double azimuth = -32;
    double elevation = 30;

    // Turned further; the azimuth stays from -180 to below 180, the elevation between the lowest and the highest.
    [[nodiscard]] Turn by(double degreesRound, double degreesUp) const;
};

// A place in the box around the map: x along the columns, y along the rows, z up, each from 0 to 1.
struct Place {
    double x = 0;
    double y = 0;
    double z = 0;
};

// The same turned towards the viewer: to the right, away, up; the box's width is 2, its middle 0.
struct Turned {
    double right = 0;
    double away = 0;
    double up = 0;
};

// Parallel, so that rows and columns keep their order in depth all over the map.
class Projection {
public:
    // `centre` is the middle of the box on the screen, `scale` half the box's width in pixels.
    Projection(const Turn& turn, QPointF centre, double scale);

    // The largest scale at which a box fits into an area of this size at every azimuth.
    [[nodiscard]] static double scaleFor(double elevation, QSizeF room);

    [[nodiscard]] QPointF at(Place place) const;
    [[nodiscard]] Turned turned(Place place) const;

    // The x of the nearer one of the two sides across the columns, and the y of the nearer one across the rows: 0 or 1.
    [[nodiscard]] double nearX() const { return sine_ > 0 ? 0 : 1; }
    [[nodiscard]] double nearY() const { return cosine_ > 0 ? 0 : 1; }

private:
    double sine_, cosine_;  // of the azimuth
    double sineUp_, cosineUp_;
    QPointF centre_;
    double scale_;
};

// Heights row by row, each from 0 to 1.
struct Heights {
    int rows = 0;
    int columns = 0;
    std::vector<double> values;
    std::vector<bool> missing = {};  // cells without a height, which have no faces; empty if all have one

    [[nodiscard]] bool has(int row, int column) const {
        const auto cell = static_cast<std::size_t>(row * columns + column);
        return cell >= missing.size() || !missing[cell];
    }
    [[nodiscard]] double at(int row, int column) const {
        return values.at(static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                         static_cast<std::size_t>(column));
    }
    // The middle of a cell, counted row by row, at its height.
    [[nodiscard]] Place topOf(int cell) const;
};

// A piece of the map on the screen.
struct Face {
    std::array<QPointF, 4> corners;
    std::array<bool, 4> lines{};  // whether the edge from a corner to the next is drawn
    int cell = 0;                 // counted row by row
    double height = 0;            // 0 to 1
    double light = 0;             // 0 in the dark to 1 towards the light
};

// Back to front: a face covers those before it. Cells are four-sided columns, or corners of a sheet; a map of a single
// row or column has no sheet.
[[nodiscard]] std::vector<Face> barsOf(const Heights& heights, const Projection& projection);
[[nodiscard]] std::vector<Face> sheetOf(const Heights& heights, const Projection& projection);

// The cell of the foremost face under a point.
[[nodiscard]] std::optional<int> cellAt(std::span<const Face> faces, QPointF point);

}  // namespace korvane::views
