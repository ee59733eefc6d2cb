// A text with a wide gap that contains a box: "delay [12] engine rounds".
#pragma once

#include <QLabel>

namespace korvane::views {

// The box is a child of the label and has its preferred size; the text is not changed.
class GapLabel : public QLabel {
public:
    // The gap is the longest run of blanks of `text`.
    GapLabel(const QString& text, QWidget* parent);

    // Must be called once. `box` is the label's child.
    void setBox(QWidget& box);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] int space() const;
    [[nodiscard]] int boxLeft() const;
    void place();

    QString before_;
    QString behind_;
    QWidget* box_ = nullptr;
};

}  // namespace korvane::views
