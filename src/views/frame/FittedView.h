// A view that fits its window: texts grow with a window that is larger than they need; one that is too small scrolls,
// once its texts are as small as they may be.
#pragma once

#include <QSizeF>

#include "views/frame/WindowView.h"

namespace korvane::views {

class FittedView : public WindowView {
public:
    // A window of `usual` text sizes has all its parts at their usual size.
    // In one narrower than `narrow` of that, texts are smaller, down to `smallest` of their usual size.
    FittedView(controls::Window& window, FrameClock& clock, QSizeF usual, double smallest = 1, double narrow = 0.85);

    // The widget that contains the parts.
    [[nodiscard]] QWidget& content() const { return content_; }
    // The height of what stands below these, where it is not scrolled.
    [[nodiscard]] int heightBelow() const;

protected:
    void fitTexts();
    // On real screens large enough that nothing is scrolled, or not sideways if the screen is too low.
    [[nodiscard]] QSize wantedSize() const override;
    // Wider by a scroll bar where the screen is too low for it.
    [[nodiscard]] QSize withScrollBar(QSize contentSize) const;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitWindow();

    [[nodiscard]] double textScale(double size) const;

    QSizeF usual_;
    double smallest_;
    double narrow_;
    QWidget& content_;
};

}  // namespace korvane::views
