// Paints a picture box: its drawing scaled from twips to the pixels of the widget. The cost of a line of very many
// points depends on its pixels, and its extreme points are always painted.
#pragma once

#include <QColor>
#include <QPolygon>

#include <cstdint>
#include <functional>
#include <vector>

#include "controls/PictureBox.h"
#include "views/widgets/PaintedWidget.h"
#include "views/widgets/charts/LineRaster.h"

namespace korvane::views {

class PictureView : public PaintedWidget {
public:
    explicit PictureView(QWidget* parent);

    // Takes over the drawing as it is now. `width` is the surface's in twips and stands for the widget's whole width.
    void setDrawing(const controls::Drawing& drawing, int width, const QColor& ground);

    // Called with the surface's new size in twips after the widget's size or font has changed.
    void onResized(std::function<void(QSize)> resized) { resized_ = std::move(resized); }
    // 15 twips are a logical pixel, or fewer where the texts of the drawing, whose distances are in twips, need more
    // room or a side would exceed what a drawing can hold.
    [[nodiscard]] QSize surfaceSize() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] QColor ground() const override { return ground_; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Points are in device pixels, so that a line is as sharp as the screen can show it.
    struct Line {
        QColor color;
        QPolygon points;
    };
    struct Words {
        QColor color;
        QPointF at;          // logical pixels
        double squeeze = 1;  // of the width, where the picture ends
        QString text;
    };

    [[nodiscard]] QFont smallFont() const;
    [[nodiscard]] double twipsPerPixelOfText() const;
    [[nodiscard]] double twipsPerPixel() const;
    void addLine(const controls::Drawing& drawing, const controls::Drawing::Shape& shape, double scale);
    void addText(const controls::Drawing::Text& text, const QColor& color, double scale);
    void paintLines(QPainter& painter) const;
    // The same, much faster for lines that cover the picture many times over.
    void paintLongLines(QPainter& painter);
    void paintTexts(QPainter& painter) const;

    std::vector<Line> lines_;
    std::size_t lineCount_ = 0;
    std::int64_t lineLength_ = 0;  // of all together, pixels
    LineRaster raster_;
    QImage image_;
    std::vector<Words> words_;
    std::size_t wordCount_ = 0;
    QColor ground_{Qt::black};
    std::function<void(QSize)> resized_;
};

}  // namespace korvane::views
