#include "views/maps/GridCellPainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "views/maps/GridDigits.h"
#include "views/maps/GridMarks.h"
#include "views/widgets/HeatColors.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kNarrowest = 0.5;  // of its width, for a text that is too long
constexpr double kDimGround = 0.62;
constexpr double kDimText = 0.3;
constexpr double kLowContrast = 3;
constexpr int kPlateMargin = 4;

// `count` digits, the last of which may be a point.
qreal digitsWidth(const TabularText& font, int count, bool point) {
    const QString digits(point ? count - 1 : count, u'0');
    return font.width(point ? u'.' + digits : digits);
}

}  // namespace

void GridCellPainter::setFont(QFont font, int pixels) {
    font.setPixelSize(pixels);
    font.setBold(true);
    bold_.setFont(font);
    font.setBold(false);
    plain_.setFont(font);
}

bool GridCellPainter::align(int wholeDigits, int decimals) {
    const bool whole = std::exchange(wholeDigits_, wholeDigits) != wholeDigits;
    return std::exchange(decimals_, decimals) != decimals || whole;
}

GridCellPainter::Colors GridCellPainter::colorsOf(const GridCell& cell, const QPalette& palette) {
    // The program sets black, blue and red texts on white: a cell without own colours is black on white too, in every
    // palette.
    const auto shown = [&palette](controls::Color color, controls::Color usual) {
        return controls::isSystemColor(color) ? colorOf(usual, palette) : colorOf(color, palette);
    };
    Colors colors{shown(cell.back, controls::kWhite), shown(cell.fore, controls::kBlack)};
    if (!cell.enabled || palette.currentColorGroup() == QPalette::Disabled) {
        colors.back = mixed(colors.back, shades::tile(palette), kDimGround);
        colors.fore = mixed(palette.color(QPalette::WindowText), colors.back, kDimText);
    }
    return colors;
}

void GridCellPainter::paint(QPainter& painter, const QRect& place, const GridCell& cell, const QPalette& palette,
                            int level, bool engine) const {
    const Colors colors = colorsOf(cell, palette);
    painter.fillRect(place, colors.back);
    if (level >= 0 && cell.enabled && !cell.text.isEmpty()) {
        painter.fillRect(QRect(place.left(), place.bottom() - kBar + 1, place.width(), kBar), heatColor(level));
    }
    // Blue or red on the red of the running cell can't be read: the number gets a ground of its own then.
    if (!cell.text.isEmpty() && cell.enabled && contrast(colors.fore, colors.back) < kLowContrast) {
        painter.fillRect(place.adjusted(kPlateMargin, kPlateMargin, -kPlateMargin, -kPlateMargin),
                         colorOf(controls::kWhite, palette));
    }
    if (engine) {
        paintEngineRing(painter, place);
    }
    if (!cell.text.isEmpty()) {
        paintText(painter, place, cell, colors.fore);
    }
}

GridCellPainter::Place GridCellPainter::placeOf(const TabularText& font, const QString& text) const {
    if (!isAligned()) {
        return {font.width(text), 0};
    }
    const qreal whole = digitsWidth(font, wholeDigits_, false);
    return {whole + (decimals_ > 0 ? digitsWidth(font, decimals_, true) : 0),
            whole - font.width(text.left(pointOf(text)))};
}

void GridCellPainter::paintText(QPainter& painter, const QRect& place, const GridCell& cell,
                                const QColor& color) const {
    const auto& font = cell.bold ? bold_ : plain_;
    const auto [width, indent] = placeOf(font, cell.text);
    const qreal squeeze = std::clamp((place.width() - 2.0) / std::max(width, 1.0), kNarrowest, 1.0);
    const qreal baseline = place.y() + (place.height() + font.digitHeight()) / 2;
    const qreal left = place.x() + (place.width() - width * squeeze) / 2 + indent * squeeze;
    const QPointF at(left, std::round(baseline));
    painter.setPen(color);
    if (squeeze < 1) {
        painter.save();
        painter.setClipRect(place, Qt::IntersectClip);
        painter.translate(at);
        painter.scale(squeeze, 1);
        font.draw(painter, {}, cell.text);
        painter.restore();
    } else {
        font.draw(painter, at, cell.text);
    }
}

}  // namespace korvane::views
