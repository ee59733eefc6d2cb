// The plot of the log viewer, with the mark on it and what the pointer does to it.
#pragma once

#include <functional>

#include "views/widgets/charts/PictureView.h"

namespace korvane::views {

// The upright line that marks a row. Lies on the plot, so that a mark that moves leaves the plot as it is.
class MarkLine : public QWidget {
public:
    explicit MarkLine(QWidget* plot);
    // Over the whole height of the plot, around this pixel.
    void standAt(int x);

protected:
    void paintEvent(QPaintEvent* event) override;
};

class LogPlot : public PictureView {
public:
    explicit LogPlot(QWidget* parent);

    // Calls for the user's pointer: where it stands, in shares of the plot's width; that it has left; how many notches
    // the wheel has turned towards the user.
    std::function<void(double)> pointed;
    std::function<void()> left;
    std::function<void(int)> turned;

    [[nodiscard]] MarkLine& mark() { return mark_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    MarkLine& mark_;
    int turn_ = 0;  // of the wheel, less than a notch
};

}  // namespace korvane::views
