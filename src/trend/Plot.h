// What every plot over rows is made of, in twips on a drawing: frame, grids with their labels, legend, series, and the
// rule by which a scale follows the values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "controls/PictureBox.h"

namespace korvane::trend {

inline constexpr int kPlotSeries = 5;

// What a plot's owner leaves at 0.
inline constexpr std::int16_t kUsualMaxY = 100;
inline constexpr std::int16_t kUsualResolution = 10;
inline constexpr std::int16_t kUsualMaxX = 600;

// The largest of the values, at least 0.
[[nodiscard]] double peakOf(std::span<const double> values);
// The value at the top for a peak: grows at once, and shrinks only past a margin, so that the scale does not flicker.
[[nodiscard]] int scaleFor(int peak, int maxY);

struct PlotScale {
    int maxY;              // value at the top, not 0
    int minY;              // negative: a tenth of the plot's height is kept free below zero
    int Resolution;        // steps of the value grid, not 0
    int maxX;              // rows across the plot, not 0
    bool ShowLimits;       // other colours
    bool ToRight = false;  // rows run from the left edge rightwards
};

// The place of the plot on its surface, twips.
struct PlotFrame {
    int left, right, top, bottom;
    int zeroLift;  // how far zero lies from the bottom, downwards
    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
    [[nodiscard]] double zero() const { return bottom + zeroLift; }
};

// The values of one series, of any length, which must exist during the draw. The first is `firstRow` rows from the edge
// at which rows begin, the right one by default; the others follow.
struct PlotColumn {
    std::span<const double> values;
    std::size_t firstRow = 0;
};

// Draws in the order in which its members are called. Coordinates have 16 bits: one that needs more ends the draw with
// RuntimeError 6. Keeps its memory from draw to draw.
class Plot {
public:
    // Finds the plot's place on the surface as large as it is now. `rightScale` says whether the legend makes room for
    // one. A failure leaves the place before.
    void place(const controls::PictureBox& picture, const PlotScale& scale, bool rightScale);
    // Clears the surface, on which the plot has its place.
    void begin(controls::PictureBox& picture);
    void begin(controls::PictureBox& picture, const PlotScale& scale, bool rightScale);

    // Lines and labels from zero up, or from a step below zero where room is kept for that.
    void drawValueGrid();
    // Labels from 0 to 100 right of the frame.
    void drawRightScale();
    // A line across all values, so many rows from the edge at which rows begin, with a label under it that may be
    // empty.
    void drawRowLine(double rows, std::string_view label);
    void drawFrame();
    // A line of text beside the plot, so far above its lower edge.
    void drawNote(int height, std::string_view words);
    // The next name of the legend and the line below it, which may be empty.
    void drawLegend(std::string_view name, std::string_view below, int series);
    // Values outside the plot are drawn at its edges; rows beyond the other edge are left out.
    void drawSeries(const PlotColumn& column, int series);

    [[nodiscard]] const PlotFrame& frame() const { return frame_; }
    [[nodiscard]] int legendLeft() const { return legendLeft_; }
    [[nodiscard]] controls::Color colorOf(int series) const;

private:
    [[nodiscard]] double placeOf(double rows) const;
    // The x of each row, the same for all series; made when a series first needs it.
    [[nodiscard]] std::span<const std::int16_t> placesOf(std::size_t rows);
    void levelsOf(std::span<const double> values, std::span<std::int16_t> levels) const;

    controls::Drawing* surface_ = nullptr;
    PlotFrame frame_{};
    PlotScale scale_{};
    int legendLeft_ = 0;
    double legendTop_ = 0;
    std::vector<std::int16_t> places_;
    std::size_t placed_ = 0;
};

}  // namespace korvane::trend
