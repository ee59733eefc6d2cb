// A view that fits its window: texts grow with a window that is larger than they need; one that is too small scrolls.
#pragma once

#include <QSizeF>

#include "views/frame/WindowView.h"

namespace korvane::views {

class FittedView : public WindowView {
public:
    // A window of `usual` text sizes has all its parts at their usual size.
    FittedView(controls::Window& window, FrameClock& clock, QSizeF usual);

    // The widget that contains the parts.
    [[nodiscard]] QWidget& content() { return content_; }
    // The height of what stands below these, where it is not scrolled.
    [[nodiscard]] int heightBelow();

protected:
    void fitTexts();
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QSizeF usual_;
    QWidget& content_;
};

}  // namespace korvane::views
