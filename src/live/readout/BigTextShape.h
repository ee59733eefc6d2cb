// The shape of a big readout: figures three times as wide as high, and a window that fits around them.
#pragma once

namespace korvane::live {

// What a window has beside the figures and above and below them, in twips.
inline constexpr int kBesideFigures = 350;
inline constexpr int kAboveAndBelowFigures = 1250;

struct BigTextShape {
    int width = 0;  // of the window, twips
    int height = 0;
    int fontSize = 0;  // of the figures, points

    [[nodiscard]] int figuresWidth() const { return width - kBesideFigures; }
    [[nodiscard]] int figuresHeight() const { return height - kAboveAndBelowFigures; }

    friend bool operator==(const BigTextShape&, const BigTextShape&) = default;
};

// The shape of a window that has been dragged to `width` and `height` twips: the side that leaves less room for the
// figures rules, and the other follows. A window too small for any figures gets the smallest ones.
[[nodiscard]] BigTextShape shapeAround(int width, int height);

}  // namespace korvane::live
