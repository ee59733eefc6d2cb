#include "views/widgets/charts/Surface.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane::views {

namespace {

// The box's sides, the width being 2.
constexpr double kWidth = 2;
constexpr double kDepth = 1.5;
constexpr double kHeight = 0.85;

constexpr double kFullTurn = 360;
constexpr double kBarShare = 0.72;  // of a cell's side
// The light comes from the upper left, from behind the viewer.
constexpr Turned kLight{-0.43, -0.50, 0.75};

double radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

Turned operator-(const Turned& one, const Turned& other) {
    return {one.right - other.right, one.away - other.away, one.up - other.up};
}

// How much a face with these diagonals turns to the light.
double lightOf(const Turned& one, const Turned& other) {
    const Turned normal{one.away * other.up - one.up * other.away, one.up * other.right - one.right * other.up,
                        one.right * other.away - one.away * other.right};
    const double size = std::hypot(normal.right, normal.away, normal.up);
    const double along = normal.right * kLight.right + normal.away * kLight.away + normal.up * kLight.up;
    return size > 0 ? std::clamp(along / size, 0.0, 1.0) : 0;
}

// Corners are in anticlockwise order seen from the lit side.
Face faceOf(const Projection& projection, const std::array<Place, 4>& places, int cell, double height) {
    Face face;
    std::transform(places.begin(), places.end(), face.corners.begin(),
                   [&](const Place& place) { return projection.at(place); });
    face.cell = cell;
    face.height = height;
    face.light = lightOf(projection.turned(places[2]) - projection.turned(places[0]),
                         projection.turned(places[3]) - projection.turned(places[1]));
    return face;
}

// Calls `action` with each row and column of a grid, the furthest ones first.
template <class Action>
void backToFront(const Projection& projection, int rows, int columns, Action action) {
    for (int i = 0; i < rows; ++i) {
        const int row = projection.nearY() == 0 ? rows - 1 - i : i;
        for (int j = 0; j < columns; ++j) {
            action(row, projection.nearX() == 0 ? columns - 1 - j : j);
        }
    }
}

struct Range {
    double from, to;
};

Range barOf(int place, int count) {
    const double middle = (place + 0.5) / count;
    return {middle - kBarShare / 2 / count, middle + kBarShare / 2 / count};
}

std::array<Place, 4> sideAcrossColumns(double near, double x, Range y, double top) {
    const Range along = near == 0 ? Range{y.to, y.from} : y;
    return {{{x, along.from, 0}, {x, along.to, 0}, {x, along.to, top}, {x, along.from, top}}};
}

std::array<Place, 4> sideAcrossRows(double near, Range x, double y, double top) {
    const Range along = near == 0 ? x : Range{x.to, x.from};
    return {{{along.from, y, 0}, {along.to, y, 0}, {along.to, y, top}, {along.from, y, top}}};
}

void addBar(std::vector<Face>& faces, const Heights& heights, const Projection& projection, int row, int column) {
    const int cell = row * heights.columns + column;
    const double top = heights.at(row, column);
    const Range x = barOf(column, heights.columns);
    const Range y = barOf(row, heights.rows);
    const double nearX = projection.nearX() == 0 ? x.from : x.to;
    const double nearY = projection.nearY() == 0 ? y.from : y.to;
    const auto add = [&](const std::array<Place, 4>& places) {
        faces.push_back(faceOf(projection, places, cell, top));
        faces.back().lines.fill(true);
    };
    add(sideAcrossColumns(projection.nearX(), nearX, y, top));
    add(sideAcrossRows(projection.nearY(), x, nearY, top));
    add({{{x.from, y.from, top}, {x.to, y.from, top}, {x.to, y.to, top}, {x.from, y.to, top}}});
}

// The sheet goes through the middles of the cells and is divided halfway between them, so that each piece has a cell.
class Sheet {
public:
    explicit Sheet(const Heights& heights) : heights_(heights) {}

    [[nodiscard]] int rows() const { return 2 * (heights_.rows - 1); }
    [[nodiscard]] int columns() const { return 2 * (heights_.columns - 1); }

    [[nodiscard]] bool has(int row, int column) const { return heights_.has((row + 1) / 2, (column + 1) / 2); }
    [[nodiscard]] Face piece(const Projection& projection, int row, int column) const {
        const std::array places{point(row, column), point(row, column + 1), point(row + 1, column + 1),
                                point(row + 1, column)};
        const double height = (places[0].z + places[1].z + places[2].z + places[3].z) / 4;
        Face face = faceOf(projection, places, cellOf(row, column), height);
        face.lines = {row % 2 == 0, column % 2 == 1, row % 2 == 1, column % 2 == 0};
        return face;
    }

private:
    [[nodiscard]] int cellOf(int row, int column) const { return (row + 1) / 2 * heights_.columns + (column + 1) / 2; }
    [[nodiscard]] Place point(int row, int column) const {
        return {(column + 1) / 2.0 / heights_.columns, (row + 1) / 2.0 / heights_.rows, height(row, column)};
    }
    // Of the cells around that have a height: a piece's own cell is one of them.
    [[nodiscard]] double height(int row, int column) const {
        double sum = 0;
        int count = 0;
        for (const int y : {row / 2, (row + 1) / 2}) {
            for (const int x : {column / 2, (column + 1) / 2}) {
                if (heights_.has(y, x)) {
                    sum += heights_.at(y, x);
                    ++count;
                }
            }
        }
        return sum / count;
    }

    const Heights& heights_;
};

// Whether a line from the point to the right crosses the face's edge an odd number of times.
bool covers(const Face& face, QPointF point) {
    bool inside = false;
    for (std::size_t i = 0; i < face.corners.size(); ++i) {
        const QPointF from = face.corners.at(i);
        const QPointF to = face.corners.at((i + 1) % face.corners.size());
        if ((from.y() > point.y()) != (to.y() > point.y())) {
            const double crossing = from.x() + (point.y() - from.y()) / (to.y() - from.y()) * (to.x() - from.x());
            inside = inside != (point.x() < crossing);
        }
    }
    return inside;
}

}  // namespace

Turn Turn::by(double degreesRound, double degreesUp) const {
    const double half = kFullTurn / 2;
    const double round = azimuth + degreesRound + half;
    return {round - std::floor(round / kFullTurn) * kFullTurn - half,
            std::clamp(elevation + degreesUp, kLowest, kHighest)};
}

Projection::Projection(const Turn& turn, QPointF centre, double scale)
    : sine_(std::sin(radians(turn.azimuth))),
      cosine_(std::cos(radians(turn.azimuth))),
      sineUp_(std::sin(radians(turn.elevation))),
      cosineUp_(std::cos(radians(turn.elevation))),
      centre_(centre),
      scale_(scale) {}

double Projection::scaleFor(double elevation, QSizeF room) {
    const double around = std::hypot(kWidth, kDepth);
    const double high = around * std::sin(radians(elevation)) + kHeight * std::cos(radians(elevation));
    return std::max(1.0, std::min(room.width() / around, room.height() / high));
}

Turned Projection::turned(Place place) const {
    const double x = (place.x - 0.5) * kWidth;
    const double y = (place.y - 0.5) * kDepth;
    return {x * cosine_ - y * sine_, x * sine_ + y * cosine_, (place.z - 0.5) * kHeight};
}

QPointF Projection::at(Place place) const {
    const Turned where = turned(place);
    return centre_ + QPointF(where.right, -where.away * sineUp_ - where.up * cosineUp_) * scale_;
}

Place Heights::topOf(int cell) const {
    const int row = cell / columns;
    const int column = cell % columns;
    return {(column + 0.5) / columns, (row + 0.5) / rows, at(row, column)};
}

std::vector<Face> barsOf(const Heights& heights, const Projection& projection) {
    std::vector<Face> faces;
    faces.reserve(heights.values.size() * 3);
    backToFront(projection, heights.rows, heights.columns, [&](int row, int column) {
        if (heights.has(row, column)) {
            addBar(faces, heights, projection, row, column);
        }
    });
    return faces;
}

std::vector<Face> sheetOf(const Heights& heights, const Projection& projection) {
    const Sheet sheet(heights);
    std::vector<Face> faces;
    faces.reserve(heights.values.size() * 4);
    backToFront(projection, sheet.rows(), sheet.columns(), [&](int row, int column) {
        if (sheet.has(row, column)) {
            faces.push_back(sheet.piece(projection, row, column));
        }
    });
    return faces;
}

std::optional<int> cellAt(std::span<const Face> faces, QPointF point) {
    const auto found =
        std::find_if(faces.rbegin(), faces.rend(), [point](const Face& face) { return covers(face, point); });
    return found != faces.rend() ? std::optional(found->cell) : std::nullopt;
}

}  // namespace korvane::views
