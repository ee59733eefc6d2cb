#include "views/widgets/PictureView.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kTwipsPerPixel = 15;
constexpr double kLongestSide = 32000;  // twips
constexpr double kTextPitch = 150;      // twips between two lines of text that belong together
constexpr double kTextScale = 0.80;     // of the widget's font
constexpr int kSmallestText = 9;        // pixels
constexpr int kSmallestWidth = 280;
constexpr double kSmallestHeight = 2250;  // twips
constexpr double kNearEdge = 0.35;        // of the width: a text further left has room enough
constexpr double kNarrowest = 0.5;
constexpr double kThickLine = 1.5;  // from this pixel ratio on a line is two pixels thick

QPoint pixelAt(controls::Point point, double scale) {
    return {static_cast<int>(std::floor(point.x * scale)), static_cast<int>(std::floor(point.y * scale))};
}

}  // namespace

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

// A smaller picture would have its texts one upon the other.
QSize PictureView::sizeHint() const {
    return {kSmallestWidth, static_cast<int>(std::ceil(kSmallestHeight / twipsPerPixelOfText()))};
}

QFont PictureView::smallFont() const {
    QFont small = font();
    small.setPixelSize(
        std::max(kSmallestText, static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * kTextScale))));
    return small;
}

double PictureView::twipsPerPixelOfText() const {
    return std::min(kTwipsPerPixel, kTextPitch / QFontMetricsF(smallFont()).ascent());
}

double PictureView::twipsPerPixel() const {
    return std::min(twipsPerPixelOfText(), kLongestSide / std::max({width(), height(), 1}));
}

QSize PictureView::surfaceSize() const {
    const double twips = twipsPerPixel();
    return {static_cast<int>(std::lround(width() * twips)), static_cast<int>(std::lround(height() * twips))};
}

void PictureView::setDrawing(const controls::Drawing& drawing, int width, const QColor& ground) {
    const double logical = static_cast<double>(this->width()) / std::max(width, 1);
    ground_ = ground;
    lineCount_ = 0;
    wordCount_ = 0;
    for (const auto& shape : drawing.shapes()) {
        if (shape.kind == controls::Drawing::Kind::Text) {
            addText(drawing.textOf(shape), colorOf(shape.color, QPalette()), logical);
        } else {
            addLine(drawing, shape, logical * devicePixelRatioF());
        }
    }
    update();
}

// A text that would run out of the picture is drawn narrower.
void PictureView::addText(const controls::Drawing::Text& text, const QColor& color, double scale) {
    if (wordCount_ == words_.size()) {
        words_.emplace_back();
    }
    auto& words = words_[wordCount_++];
    words.color = color;
    words.at = QPointF(text.at.x, text.at.y) * scale;
    words.text = QString::fromStdString(text.words);
    words.squeeze = 1;
    const double room = width() - 1 - words.at.x();
    if (room < width() * kNearEdge) {
        const double wanted = QFontMetricsF(smallFont()).horizontalAdvance(words.text);
        words.squeeze = std::clamp(room / std::max(wanted, 1.0), kNarrowest, 1.0);
    }
}

// What falls on the pixel before it is left out.
void PictureView::addLine(const controls::Drawing& drawing, const controls::Drawing::Shape& shape, double scale) {
    if (lineCount_ == lines_.size()) {
        lines_.emplace_back();
    }
    auto& line = lines_[lineCount_++];
    line.color = colorOf(shape.color, QPalette());
    line.points.clear();
    const auto points = drawing.pointsOf(shape);
    if (shape.kind == controls::Drawing::Kind::Box) {
        const QPoint corner = pixelAt(points.front(), scale);
        const QPoint opposite = pixelAt(points.back(), scale);
        line.points << corner << QPoint(opposite.x(), corner.y()) << opposite << QPoint(corner.x(), opposite.y())
                    << corner;
        return;
    }
    for (const auto& point : points) {
        const QPoint pixel = pixelAt(point, scale);
        if (line.points.isEmpty() || line.points.last() != pixel) {
            line.points << pixel;
        }
    }
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ground_);
    paintLines(painter);
    paintTexts(painter);
}

void PictureView::paintTexts(QPainter& painter) const {
    painter.setFont(smallFont());
    const double ascent = QFontMetricsF(painter.font()).ascent();
    for (std::size_t i = 0; i < wordCount_; ++i) {
        const auto& words = words_[i];
        painter.setPen(words.color);
        if (words.squeeze < 1) {
            painter.save();
            painter.translate(words.at + QPointF(0, ascent));
            painter.scale(words.squeeze, 1);
            painter.drawText(QPointF(), words.text);
            painter.restore();
        } else {
            painter.drawText(words.at + QPointF(0, ascent), words.text);
        }
    }
}

// A line one pixel thick is drawn much faster than a thicker one, even twice.
void PictureView::paintLines(QPainter& painter) const {
    const double ratio = devicePixelRatioF();
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    for (std::size_t i = 0; i < lineCount_; ++i) {
        QPen pen(lines_[i].color, 1);
        pen.setCosmetic(true);
        painter.setPen(pen);
        painter.drawPolyline(lines_[i].points);
        if (ratio >= kThickLine) {
            painter.drawPolyline(lines_[i].points.translated(1, 1));
        }
    }
    painter.restore();
}

void PictureView::resizeEvent(QResizeEvent*) {
    if (resized_) {
        resized_(surfaceSize());
    }
}

void PictureView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        if (resized_) {
            resized_(surfaceSize());
        }
    }
    QWidget::changeEvent(event);
}

}  // namespace korvane::views
