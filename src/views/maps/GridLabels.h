// The labels at the edges of a map grid: engine speeds above, loads at the left.
#pragma once

#include <QPainter>
#include <QPalette>
#include <QString>

#include <optional>
#include <vector>

#include "views/maps/MapGridLayout.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

struct GridLabel {
    QString text;
    bool bold = false;

    friend bool operator==(const GridLabel&, const GridLabel&) = default;
};

class GridLabels {
public:
    explicit GridLabels(const maps::MapGeometry& geometry);

    // Of the cells' usual text.
    void setFont(QFont font, int usualPixels);
    // The width of the row labels and the height of the column labels.
    [[nodiscard]] QSize room() const;

    [[nodiscard]] GridLabel& column(int column) { return columns_.at(static_cast<std::size_t>(column)); }
    [[nodiscard]] GridLabel& row(int row) { return rows_.at(static_cast<std::size_t>(row)); }
    [[nodiscard]] const GridLabel& column(int column) const { return columns_.at(static_cast<std::size_t>(column)); }
    [[nodiscard]] const GridLabel& row(int row) const { return rows_.at(static_cast<std::size_t>(row)); }

    // Those that the region touches; those of the marked cell stand out.
    void paint(QPainter& painter, const QRegion& region, const MapGridLayout& layout, const QPalette& palette,
               std::optional<int> markedCell) const;

private:
    struct Place {
        QRect rect;
        Qt::Alignment alignment;
        bool marked;
    };
    void paintOne(QPainter& painter, const Place& place, const GridLabel& label, const QPalette& palette) const;

    std::vector<GridLabel> columns_;
    std::vector<GridLabel> rows_;
    TabularText plain_, bold_;
};

}  // namespace korvane::views
