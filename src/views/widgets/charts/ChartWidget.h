// Shows a chart as a 3D map that the user turns, and names the cell under the mouse.
#pragma once

#include <QPixmap>
#include <QWidget>

#include <functional>
#include <optional>
#include <span>

#include "views/widgets/charts/ChartPainter.h"

namespace korvane::views {

// Dragging and the arrow keys turn the map; the wheel, + and - make it larger and smaller; Home and a double click
// restore the usual view.
class ChartWidget : public QWidget {
public:
    explicit ChartWidget(QWidget* parent);

    struct Content {
        std::vector<QString> rowLabels, columnLabels;
        std::vector<QString> data;  // row by row; a text that is no number has height 0
    };
    void setContent(Content content);

    // Cells that have no value: the map has a hole there. For each cell, row by row; empty if all have one.
    void setMissing(const std::vector<bool>& missing);

    // Cells that stand out whatever the mouse does. A new mark is painted onto the map as it is.
    struct Marks {
        std::optional<int> engine, focus;

        friend bool operator==(const Marks&, const Marks&) = default;
    };
    void setMarks(const Marks& marks);
    [[nodiscard]] const Marks& marks() const { return marks_; }
    // What stands beside a mark.
    [[nodiscard]] QString markName(int cell, bool engine) const;

    enum class Presentation { Surface, Bars };
    void setPresentation(Presentation presentation);

    // Called when the cell under the mouse, or what is in it, has changed.
    void onNamed(std::function<void()> named) { named_ = std::move(named); }
    // Row label, column label and data of the cell under the mouse; empty when there is none.
    [[nodiscard]] QString cellName() const;
    [[nodiscard]] std::optional<int> cell() const { return scene_.marked; }

    [[nodiscard]] const Turn& turn() const { return turn_; }
    [[nodiscard]] double zoom() const { return zoom_; }
    [[nodiscard]] std::span<const Face> faces() const { return scene_.faces; }
    // Where the middle of a cell is, at its height.
    [[nodiscard]] QPointF placeOf(int cell) const { return projection().at(scene_.heights.topOf(cell)); }
    void resetSight();

    [[nodiscard]] QSize sizeHint() const override { return {640, 420}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {320, 220}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] QFont labelFont() const;
    [[nodiscard]] QPointF middle() const;
    [[nodiscard]] Projection projection() const;
    void turnBy(double degreesRound, double degreesUp);
    void zoomAt(QPointF point, double factor);
    // The turn, the size or the content has changed.
    void arrange();
    void mark(std::optional<int> cell);
    void paintMap();
    void paintMarks(QPainter& painter) const;
    void paintMark(QPainter& painter, int cell, bool round) const;
    void findMarked();

    // What the painted map depends on besides the scene.
    struct Look {
        QSize size;
        double ratio = 0;  // of the screen's pixels to the logical ones
        bool focus = false;
        qint64 palette = 0;

        friend bool operator==(const Look&, const Look&) = default;
    };
    [[nodiscard]] Look look() const { return {size(), devicePixelRatioF(), hasFocus(), palette().cacheKey()}; }
    void repaintMap();

    ChartScene scene_;
    Marks marks_;
    QPixmap map_;  // without the marks, which move with the engine
    std::optional<Look> painted_;
    std::vector<QString> data_;
    QSizeF margin_;  // for the texts around the map
    Presentation presentation_ = Presentation::Surface;
    Turn turn_;
    double zoom_ = 1;
    QPointF shift_;  // of the map's middle, where it has been zoomed away
    std::optional<QPointF> dragged_;
    std::optional<QPointF> mouse_;
    std::function<void()> named_;
};

}  // namespace korvane::views
