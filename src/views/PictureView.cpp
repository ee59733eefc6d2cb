#include "views/PictureView.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "views/Palette.h"

namespace korvane::views {

namespace {

constexpr double kTwipsPerPixel = 15;
constexpr double kLongestSide = 32000;  // twips
constexpr double kTextPitch = 150;      // twips between two lines of text that belong together
constexpr double kTextScale = 0.80;     // of the widget's font
constexpr int kSmallestText = 9;        // pixels
constexpr int kSmallestWidth = 300;
constexpr int kSmallestHeight = 140;
constexpr double kThickLine = 1.5;  // from this pixel ratio on a line is two pixels thick

QPoint pixelAt(platform::Point point, double scale) {
    return {static_cast<int>(std::floor(point.x * scale)), static_cast<int>(std::floor(point.y * scale))};
}

}  // namespace

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize PictureView::sizeHint() const {
    return {kSmallestWidth, kSmallestHeight};
}

QFont PictureView::smallFont() const {
    QFont small = font();
    small.setPixelSize(
        std::max(kSmallestText, static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * kTextScale))));
    return small;
}

double PictureView::twipsPerPixel() const {
    const double byText = kTextPitch / QFontMetricsF(smallFont()).ascent();
    const double bySize = kLongestSide / std::max({width(), height(), 1});
    return std::min({kTwipsPerPixel, byText, bySize});
}

QSize PictureView::surfaceSize() const {
    const double twips = twipsPerPixel();
    return {static_cast<int>(std::lround(width() * twips)), static_cast<int>(std::lround(height() * twips))};
}

void PictureView::setDrawing(const platform::Drawing& drawing, int width, const QColor& ground) {
    const double logical = static_cast<double>(this->width()) / std::max(width, 1);
    ground_ = ground;
    lineCount_ = 0;
    wordCount_ = 0;
    for (const auto& shape : drawing.shapes()) {
        if (shape.kind != platform::Drawing::Kind::Text) {
            addLine(drawing, shape, logical * devicePixelRatioF());
            continue;
        }
        if (wordCount_ == words_.size()) {
            words_.emplace_back();
        }
        const auto& text = drawing.textOf(shape);
        auto& words = words_[wordCount_++];
        words.color = colorOf(shape.color, QPalette());
        words.at = QPointF(text.at.x, text.at.y) * logical;
        words.text = QString::fromStdString(text.words);
    }
    update();
}

// What falls on the pixel before it is left out.
void PictureView::addLine(const platform::Drawing& drawing, const platform::Drawing::Shape& shape, double scale) {
    if (lineCount_ == lines_.size()) {
        lines_.emplace_back();
    }
    auto& line = lines_[lineCount_++];
    line.color = colorOf(shape.color, QPalette());
    line.points.clear();
    const auto points = drawing.pointsOf(shape);
    if (shape.kind == platform::Drawing::Kind::Box) {
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
    painter.setFont(smallFont());
    const double ascent = QFontMetricsF(painter.font()).ascent();
    for (std::size_t i = 0; i < wordCount_; ++i) {
        painter.setPen(words_[i].color);
        painter.drawText(words_[i].at + QPointF(0, ascent), words_[i].text);
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
    if (event->type() == QEvent::FontChange && resized_) {
        resized_(surfaceSize());
    }
    QWidget::changeEvent(event);
}

}  // namespace korvane::views
