// A surface for drawing, and the list of what has been drawn on it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Color.h"
#include "controls/Control.h"

namespace korvane::controls {

struct Point {
    std::int16_t x = 0;
    std::int16_t y = 0;
    bool operator==(const Point&) const = default;
};

// What has been drawn since the last clearing, in twips. Shapes keep their order. A run of joined segments is one
// polyline. Clearing keeps the memory, so that a plot redrawn many times a second allocates nothing.
class Drawing {
public:
    enum class Kind : std::uint8_t { Polyline, Box, Text };
    struct Shape {
        Kind kind;
        Color color;
        std::uint32_t first;  // of points() or of texts()
        std::uint32_t count;  // points; 1 for a text
    };
    struct Text {
        Point at;  // its left edge and top
        std::string words;
    };

    void clear();
    void line(Point from, Point to, Color color);
    void box(Point corner, Point opposite, Color color);
    void text(Point at, std::string_view words, Color color);
    // A polyline of `count` points, to be filled in by the caller before anything else is drawn.
    std::span<Point> polyline(std::size_t count, Color color);

    [[nodiscard]] std::span<const Shape> shapes() const { return shapes_; }
    [[nodiscard]] std::span<const Point> pointsOf(const Shape& shape) const;
    [[nodiscard]] const Text& textOf(const Shape& shape) const { return texts_[shape.first]; }

private:
    std::vector<Shape> shapes_;
    std::vector<Point> points_;
    std::vector<Text> texts_;
    std::uint32_t textCount_ = 0;
};

class PictureBox : public Control {
public:
    using Control::Control;

    Event<> Resize;  // its width or height changed

    [[nodiscard]] const Drawing& drawing() const;
    // Draw here, then say so with drawn().
    [[nodiscard]] Drawing& surface();
    // Has `draw` called when somebody asks for the drawing or the surface next, in the place of one that still waits.
    // Say so with drawn() as well.
    void drawLater(std::function<void()> draw);
    // Makes a draw that waits.
    void settle() const;
    void drawn() { changed(drawingProperty()); }
    [[nodiscard]] const void* drawingProperty() const { return &drawing_; }

    [[nodiscard]] std::string_view kind() const override { return "picture box"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Drawing"; }

protected:
    void afterChange(const void* property) override {
        if (property == &Width || property == &Height) {
            raise(Resize);
        }
    }

private:
    Drawing drawing_;
    mutable std::function<void()> waiting_;
};

}  // namespace korvane::controls
