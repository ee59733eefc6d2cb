#include "live/readout/BigTextShape.h"

#include <algorithm>

#include "core/Numbers.h"

namespace korvane::live {

namespace {

constexpr int kRatio = 3;
constexpr int kWidthPerPoint = 60;  // twips of the figures' width for each point of the font
constexpr int kHeightPerPoint = 20;
constexpr int kLargest = 10'000'000;  // twips, more than any display has

}  // namespace

BigTextShape shapeAround(int width, int height) {
    BigTextShape shape;
    shape.width = std::clamp(width, kBesideFigures + kWidthPerPoint, kLargest);
    shape.height = std::clamp(height, kAboveAndBelowFigures + kHeightPerPoint, kLargest);
    if (shape.figuresHeight() * kRatio < shape.width) {
        shape.width = shape.figuresHeight() * kRatio + kBesideFigures;
    } else {
        shape.height = core::toInt32(static_cast<double>(shape.figuresWidth()) / kRatio) + kAboveAndBelowFigures;
    }
    shape.fontSize = std::min(shape.figuresWidth() / kWidthPerPoint, shape.figuresHeight() / kHeightPerPoint);
    return shape;
}

}  // namespace korvane::live
