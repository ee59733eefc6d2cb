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
    [[nodiscard]] QWidget& content() const { return content_; }

protected:
    void fitTexts();
    // On real screens large enough that nothing is scrolled.
    [[nodiscard]] QSize wantedSize() const override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitWindow();

    QSizeF usual_;
    QWidget& content_;
};

}  // namespace korvane::views
