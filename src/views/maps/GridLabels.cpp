#include "views/maps/GridLabels.h"

#include <algorithm>
#include <cmath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kScale = 0.92;
constexpr int kSmallestPixels = 7;
constexpr int kGap = 6;
constexpr double kNarrowest = 0.5;  // of its width, for a text that is too long
constexpr double kMarkedShare = 0.22;
constexpr const char* kWidest = "150-160";

}  // namespace

GridLabels::GridLabels(const maps::MapGeometry& geometry)
    : columns_(static_cast<std::size_t>(geometry.columns)), rows_(static_cast<std::size_t>(geometry.rows)) {}

void GridLabels::setFont(QFont font, int usualPixels) {
    font.setPixelSize(std::max(kSmallestPixels, static_cast<int>(std::lround(usualPixels * kScale))));
    font.setBold(false);
    plain_.setFont(font);
    font.setBold(true);
    bold_.setFont(font);
}

QSize GridLabels::room() const {
    return {static_cast<int>(std::ceil(bold_.width(QLatin1String(kWidest)))) + kGap,
            static_cast<int>(std::ceil(bold_.ascent() + bold_.descent())) + 2};
}

void GridLabels::paint(QPainter& painter, const QRegion& region, const MapGridLayout& layout, const QPalette& palette,
                       std::optional<int> markedCell) const {
    const auto& shape = layout.geometry();
    for (int at = 0; at < shape.columns; ++at) {
        if (const QRect place = layout.columnLabelRect(at); region.intersects(place)) {
            const bool marked = markedCell && *markedCell % shape.columns == at;
            paintOne(painter, {place, Qt::AlignHCenter, marked}, column(at), palette);
        }
    }
    for (int at = 0; at < shape.rows; ++at) {
        if (const QRect place = layout.rowLabelRect(at); region.intersects(place)) {
            const bool marked = markedCell && *markedCell / shape.columns == at;
            paintOne(painter, {place, Qt::AlignRight, marked}, row(at), palette);
        }
    }
}

void GridLabels::paintOne(QPainter& painter, const Place& place, const GridLabel& label,
                          const QPalette& palette) const {
    const auto& [rect, alignment, marked] = place;
    const auto& text = label.bold || marked ? bold_ : plain_;
    if (marked) {
        painter.fillRect(rect, mixed(shades::surface(palette), palette.color(QPalette::Highlight), kMarkedShare));
    }
    const qreal width = text.width(label.text);
    const qreal squeeze = std::clamp(rect.width() / std::max(width, 1.0), kNarrowest, 1.0);
    const qreal free = rect.width() - width * squeeze;
    const qreal x = rect.x() + (alignment == Qt::AlignRight ? free - std::min(free, kGap - 1.0) : free / 2);
    const qreal baseline = rect.y() + (rect.height() + text.digitHeight()) / 2;
    const bool enabled = palette.currentColorGroup() != QPalette::Disabled;
    painter.setPen(marked && enabled ? palette.color(QPalette::WindowText) : shades::muted(palette));
    painter.save();
    painter.translate(x, std::round(baseline));
    painter.scale(squeeze, 1);
    text.draw(painter, {}, label.text);
    painter.restore();
}

}  // namespace korvane::views
