#include "views/widgets/charts/PictureView.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "views/widgets/Palette.h"
#include "views/widgets/ScaledFont.h"

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
constexpr double kThickLine = 1.5;   // from this pixel ratio on a line is two pixels thick
constexpr int kLongLines = 500'000;  // pixels, covered more than once or not, that take the toolkit some 5 ms

// As std::floor, without a call for each of very many points.
int floorOf(double number) {
    const int whole = static_cast<int>(number);
    return whole > number ? whole - 1 : whole;
}

QPoint pixelAt(controls::Point point, double scale) {
    return {floorOf(point.x * scale), floorOf(point.y * scale)};
}

std::int64_t lengthOf(const QPolygon& line) {
    std::int64_t length = 0;
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPoint way = line[i] - line[i - 1];
        length += std::max(std::abs(way.x()), std::abs(way.y()));
    }
    return length;
}

// The points of a line that follow each other in one column of pixels. Together the first, the lowest, the highest and
// the last of them cover the same pixels as all.
class PixelColumn {
public:
    explicit PixelColumn(QPoint first)
        : x_(first.x()), first_(first.y()), last_(first_), top_(first_), bottom_(first_) {}

    // False for a point in another column, which is not taken.
    bool take(QPoint point) {
        if (point.x() != x_) {
            return false;
        }
        last_ = point.y();
        top_ = std::min(top_, last_);
        bottom_ = std::max(bottom_, last_);
        return true;
    }

    void addTo(QPolygon& line) const {
        line << QPoint(x_, first_);
        const bool endsOnTop = last_ == top_;
        for (const int y : {endsOnTop ? bottom_ : top_, endsOnTop ? top_ : bottom_, last_}) {
            if (line.last().y() != y) {
                line << QPoint(x_, y);
            }
        }
    }

private:
    int x_;
    int first_;
    int last_;
    int top_;
    int bottom_;
};

void addColumns(QPolygon& line, std::span<const controls::Point> points, double scale) {
    if (points.empty()) {
        return;
    }
    PixelColumn column(pixelAt(points.front(), scale));
    for (const auto& point : points.subspan(1)) {
        const QPoint pixel = pixelAt(point, scale);
        if (!column.take(pixel)) {
            column.addTo(line);
            column = PixelColumn(pixel);
        }
    }
    column.addTo(line);
}

}  // namespace

PictureView::PictureView(QWidget* parent) : PaintedWidget(QSizePolicy::Expanding, QSizePolicy::Expanding, parent) {}

// In a smaller picture the texts would overlap.
QSize PictureView::sizeHint() const {
    return {kSmallestWidth, static_cast<int>(std::ceil(kSmallestHeight / twipsPerPixelOfText()))};
}

QFont PictureView::smallFont() const {
    return scaledFont(font(), kTextScale, kSmallestText);
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
    lineLength_ = 0;
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

// A text that would not fit the picture is drawn narrower.
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
    addColumns(line.points, points, scale);
    lineLength_ += lengthOf(line.points);
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (lineLength_ > kLongLines) {
        paintLongLines(painter);
    } else {
        painter.fillRect(rect(), ground_);
        paintLines(painter);
    }
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

void PictureView::paintLongLines(QPainter& painter) {
    const double ratio = devicePixelRatioF();
    const QSize size(static_cast<int>(std::ceil(width() * ratio)), static_cast<int>(std::ceil(height() * ratio)));
    if (image_.size() != size) {
        image_ = QImage(size, QImage::Format_RGB32);
    }
    raster_.clear(size);
    for (std::size_t i = 0; i < lineCount_; ++i) {
        raster_.add(lines_[i].points, lines_[i].color.rgb());
        if (ratio >= kThickLine) {
            raster_.add(lines_[i].points.translated(1, 1), lines_[i].color.rgb());
        }
    }
    raster_.paint(image_, ground_.rgb());
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(0, 0, image_);
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
