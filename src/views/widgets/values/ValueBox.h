// A narrow box for a number. A locked one shows that it is changed by keys only: a sign before the number, no white
// ground, no cursor, and a ring around the box that has the focus.
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
