// A column of widgets in a window whose other parts need its height more: scrolled where the window is too low for it.
#pragma once

#include <QScrollArea>

namespace korvane::views {

class ScrollColumn : public QScrollArea {
public:
    // As wide as the widgets are, or at least so wide.
    enum class Width { Needed, AtLeast };

    explicit ScrollColumn(QWidget* parent) : ScrollColumn(Width::Needed, parent) {}
    ScrollColumn(Width width, QWidget* parent);

    // What the widgets stand in.
    [[nodiscard]] QWidget& inside() { return inside_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    Width width_;
    QWidget& inside_;
};

}  // namespace korvane::views
