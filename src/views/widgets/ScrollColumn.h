// A column of widgets beside something that needs the height of the window more: as wide as they are, and scrolled
// where the window is too low for it.
#pragma once

#include <QScrollArea>

namespace korvane::views {

class ScrollColumn : public QScrollArea {
public:
    explicit ScrollColumn(QWidget* parent);

    // What the widgets stand in.
    [[nodiscard]] QWidget& inside() { return inside_; }

    [[nodiscard]] QSize minimumSizeHint() const override { return {width(), 0}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QWidget& inside_;
};

}  // namespace korvane::views
