// A picture of 9000 by 3600 twips, and verbs that read what has been drawn on it.
//
// A plot then stands at left 500, right 7200, top 100, bottom 3300: 6700 wide, 3200 high.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "controls/PictureBox.h"
#include "controls/Window.h"
#include "support/MachineBench.h"

namespace korvane::controls {

inline std::ostream& operator<<(std::ostream& out, const Point& point) {
    return out << "(" << point.x << "," << point.y << ")";
}

}  // namespace korvane::controls

namespace korvane::trend {

using controls::Color;
using controls::Drawing;
using controls::Point;

// One text as drawn.
struct Words {
    Point at;
    std::string words;
    Color color;
    bool operator==(const Words&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Words& words) {
    return out << words.at << " \"" << words.words << "\" " << words.color;
}

// One line or polyline as drawn.
struct Line {
    std::vector<Point> points;
    Color color;
    bool operator==(const Line&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Line& line) {
    for (const auto& point : line.points) {
        out << point;
    }
    return out << " " << line.color;
}

class DrawingBench : public support::MachineBench {
protected:
    DrawingBench() {
        picture_.Width = 9000;
        picture_.Height = 3600;
    }

    [[nodiscard]] std::vector<Words> texts() const {
        std::vector<Words> all;
        for (const auto& shape : picture_.drawing().shapes()) {
            if (shape.kind == Drawing::Kind::Text) {
                const auto& text = picture_.drawing().textOf(shape);
                all.push_back({text.at, text.words, shape.color});
            }
        }
        return all;
    }
    [[nodiscard]] std::vector<Line> shapesOf(Drawing::Kind kind) const {
        std::vector<Line> all;
        for (const auto& shape : picture_.drawing().shapes()) {
            if (shape.kind == kind) {
                const auto points = picture_.drawing().pointsOf(shape);
                all.push_back({{points.begin(), points.end()}, shape.color});
            }
        }
        return all;
    }
    // The straight lines of the grid.
    [[nodiscard]] std::vector<Line> grid() const {
        auto all = shapesOf(Drawing::Kind::Polyline);
        std::erase_if(all, [](const Line& line) { return line.color != controls::kDarkGrey; });
        return all;
    }
    [[nodiscard]] std::vector<Line> horizontal() const {
        auto all = grid();
        std::erase_if(all, [](const Line& line) { return line.points[0].y != line.points[1].y; });
        return all;
    }
    [[nodiscard]] std::vector<Line> vertical() const {
        auto all = grid();
        std::erase_if(all, [](const Line& line) { return line.points[0].x != line.points[1].x; });
        return all;
    }
    // The lines of the series, in order.
    [[nodiscard]] std::vector<Line> series() const {
        auto all = shapesOf(Drawing::Kind::Polyline);
        std::erase_if(all, [](const Line& line) { return line.color == controls::kDarkGrey; });
        return all;
    }

    controls::Window window_{virtual_.machine, "frmSarn2"};
    controls::PictureBox picture_{window_, "picTrend"};
};

}  // namespace korvane::trend
