// The row of a log that the user looks at, on the page that the plot shows.
#pragma once

#include <cstdint>
#include <optional>

namespace korvane::trend {

// Rows run leftwards from the right edge of the plot, as the viewer draws them.
class LogCursor {
public:
    // What the plot shows, and where: `maxX` rows between `left` and `right` (twips), the first of the page at the
    // right edge. The lines of the series join the rows from firstShown() to lastShown().
    struct Page {
        std::int32_t firstRow = 0;
        std::int32_t lastRow = 0;
        std::int32_t maxX = 0;
        double left = 0;
        double right = 0;
        [[nodiscard]] double firstShown() const { return firstRow + 2.0; }
        [[nodiscard]] double lastShown() const { return lastRow - 1.0; }
        bool operator==(const Page&) const = default;
    };

    // A marked row keeps its distance from the page's first row, as far as the page goes.
    void setPage(const Page& page);
    // To the row nearest to this place of the surface; a place beside the plot means its edge.
    void moveTo(double x);
    // So many rows to the left, or to the right if negative. Without a mark it begins at the edge that it comes from.
    void moveLeft(std::int32_t rows);
    void clear() { row_.reset(); }

    [[nodiscard]] std::optional<std::int32_t> row() const { return row_; }
    // Where the marked row stands; 0 without one.
    [[nodiscard]] double x() const;

private:
    [[nodiscard]] bool showsRows() const;
    // To the row at this distance from the page's first one, as far as there is one.
    void mark(double distance);

    Page page_;
    std::optional<std::int32_t> row_;
};

}  // namespace korvane::trend
