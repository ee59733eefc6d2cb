// Numbers in digits of one width, drawn without laying them out each time.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRawFont>
#include <QString>

#include <array>
#include <vector>

namespace korvane::views {

class TabularText {
public:
    void setFont(const QFont& font);

    // Whether the text is made of the characters of numbers alone; other text is drawn by the toolkit.
    [[nodiscard]] static bool isNumber(const QString& text);

    [[nodiscard]] qreal width(const QString& text) const;
    [[nodiscard]] qreal ascent() const { return ascent_; }
    [[nodiscard]] qreal descent() const { return descent_; }
    // Height of a digit above the baseline.
    [[nodiscard]] qreal digitHeight() const { return digitHeight_; }
    void draw(QPainter& painter, QPointF baseline, const QString& text) const;

private:
    struct Glyph {
        quint32 index = 0;
        qreal advance = 0;
        qreal shift = 0;  // of a narrow digit inside its cell
    };
    static constexpr std::size_t kCharacters = 128;

    void measure();

    QFont font_;
    QRawFont raw_;
    std::array<Glyph, kCharacters> glyphs_{};
    qreal ascent_ = 0;
    qreal descent_ = 0;
    qreal digitHeight_ = 0;
    mutable std::vector<quint32> indexes_;
    mutable std::vector<QPointF> places_;
};

}  // namespace korvane::views
