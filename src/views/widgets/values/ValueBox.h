// A narrow box for a number. One that is locked says that only keys step it: a sign before the number, never a white
// ground, no cursor but a ring around the box that has the focus.
#pragma once

#include <QLineEdit>

namespace korvane::views {

class ValueBox : public QLineEdit {
public:
    // `digits` is the longest number that it shows whole.
    ValueBox(int digits, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QFont markFont() const;
    [[nodiscard]] int markWidth() const;
    void fitMark();
    void keepGround();

    int digits_;
};

}  // namespace korvane::views
