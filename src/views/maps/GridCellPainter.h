// Paints the cells of a map grid.
#pragma once

#include <QPainter>
#include <QPalette>
#include <QString>

#include "controls/Color.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

struct GridCell {
    QString text;
    controls::Color back = controls::kWhite;
    controls::Color fore = controls::kBlack;
    bool bold = false;
    bool enabled = true;

    friend bool operator==(const GridCell&, const GridCell&) = default;
};

class GridCellPainter {
public:
    // The texts' usual pixel size, and that of numbers that are as large as their cells allow.
    void setFont(QFont font, int pixels);
    // Numbers are written with their points below each other: this wide before the point, and with and behind it.
    // Without both each is in the middle of its cell. True when that is new.
    bool align(int wholeDigits, int decimals);
    [[nodiscard]] bool isAligned() const { return wholeDigits_ + decimals_ > 0; }

    // `level` is of maps::heatLevels(), less than 0 for no bar; `engine` the ring of the cell in which the engine is.
    void paint(QPainter& painter, const QRect& place, const GridCell& cell, const QPalette& palette, int level,
               bool engine) const;

    // Of the bar along the lower edge, pixels.
    static constexpr int kBar = 4;

private:
    struct Colors {
        QColor back, fore;
    };
    [[nodiscard]] static Colors colorsOf(const GridCell& cell, const QPalette& palette);
    void paintText(QPainter& painter, const QRect& place, const GridCell& cell, const QColor& color) const;
    // How wide the text's place is, and where in it the text begins.
    struct Place {
        qreal width;
        qreal indent;
    };
    [[nodiscard]] Place placeOf(const TabularText& font, const QString& text) const;

    TabularText plain_, bold_;
    int wholeDigits_ = 0;
    int decimals_ = 0;
};

}  // namespace korvane::views
