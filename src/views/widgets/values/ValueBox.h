// A narrow box for a number. A locked one shows that it is changed by keys only: a sign before the number, no white
// ground, no cursor, and a ring around the box that has the focus.
#pragma once

#include <QLineEdit>

#include "views/widgets/values/BoxMark.h"

namespace korvane::views {

class ValueBox : public QLineEdit {
public:
    // `digits` is the longest number that it shows whole.
    ValueBox(int digits, QWidget* parent);

    // A corner for a text that is not what it should be, an underline for one that counts as 0, and what both mean: the
    // tool-tip, and the description for screen readers.
    void setMark(BoxMark mark, bool isZero, const QString& note);
    [[nodiscard]] BoxMark mark() const { return mark_; }
    [[nodiscard]] bool isZero() const { return isZero_; }
    [[nodiscard]] const QString& note() const { return note_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QFont markFont() const;
    [[nodiscard]] int markWidth() const;
    void fitMark();
    void keepGround();
    void describe();
    void paintSteps();

    int digits_;
    BoxMark mark_ = BoxMark::None;
    bool isZero_ = false;
    QString note_;
};

}  // namespace korvane::views
