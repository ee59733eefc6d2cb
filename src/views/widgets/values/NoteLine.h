// A warning over several lines, as high as its text needs in the width that it has.
#pragma once

#include <QLabel>

namespace korvane::views {

// A label that wraps its text would make the area around it scroll although its other parts could be made lower: Qt
// asks such an area for its usual height. This one asks for its own height alone.
class NoteLine : public QLabel {
public:
    explicit NoteLine(QWidget* parent);

    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
    [[nodiscard]] QSize sizeHint() const override { return {0, heightForWidth(width())}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace korvane::views
