#include "views/widgets/values/TabularText.h"

#include <QFontMetricsF>
#include <QGlyphRun>

#include <algorithm>
#include <string_view>

namespace korvane::views {

namespace {
constexpr std::string_view kNumberCharacters = "0123456789.,-+E%: ";
constexpr std::string_view kDigits = "0123456789";
}  // namespace

void TabularText::setFont(const QFont& font) {
    font_ = font;
    raw_ = QRawFont::fromFont(font);
    const QFontMetricsF metrics(font);
    ascent_ = metrics.ascent();
    descent_ = metrics.descent();
    digitHeight_ = metrics.tightBoundingRect(QStringLiteral("0")).height();
    measure();
}

void TabularText::measure() {
    for (const char character : kNumberCharacters) {
        const auto found = raw_.glyphIndexesForString(QString(QLatin1Char(character)));
        const auto index = found.isEmpty() ? 0U : found.front();
        const auto advances = raw_.advancesForGlyphIndexes({index});
        glyphs_.at(static_cast<std::size_t>(character)) = {index, advances.isEmpty() ? 0 : advances.front().x(), 0};
    }
    qreal widest = 0;
    for (const char digit : kDigits) {
        widest = std::max(widest, glyphs_.at(static_cast<std::size_t>(digit)).advance);
    }
    for (const char digit : kDigits) {
        auto& glyph = glyphs_.at(static_cast<std::size_t>(digit));
        glyph.shift = (widest - glyph.advance) / 2;
        glyph.advance = widest;
    }
}

bool TabularText::isNumber(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return kNumberCharacters.find(character.toLatin1()) != std::string_view::npos &&
               character.unicode() < kCharacters;
    });
}

qreal TabularText::width(const QString& text) const {
    if (!raw_.isValid() || !isNumber(text)) {
        return QFontMetricsF(font_).horizontalAdvance(text);
    }
    qreal width = 0;
    for (const QChar character : text) {
        width += glyphs_.at(character.unicode()).advance;
    }
    return width;
}

void TabularText::draw(QPainter& painter, QPointF baseline, const QString& text) const {
    if (!raw_.isValid() || !isNumber(text)) {
        painter.setFont(font_);
        painter.drawText(baseline, text);
        return;
    }
    indexes_.clear();
    places_.clear();
    qreal x = 0;
    for (const QChar character : text) {
        const auto& glyph = glyphs_.at(character.unicode());
        indexes_.push_back(glyph.index);
        places_.emplace_back(x + glyph.shift, 0);
        x += glyph.advance;
    }
    QGlyphRun run;
    run.setRawFont(raw_);
    run.setRawData(indexes_.data(), places_.data(), static_cast<int>(indexes_.size()));
    painter.drawGlyphRun(baseline, run);
}

}  // namespace korvane::views
