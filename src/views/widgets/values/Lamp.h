// A small round lamp: a ring while it is off, a filled disc while it is lit.
#pragma once

#include "controls/PropertyTable.h"
#include "views/widgets/PaintedWidget.h"

namespace korvane::views {

class Lamp : public PaintedWidget {
public:
    explicit Lamp(QWidget* parent);

    void setPicture(controls::Picture picture);
    [[nodiscard]] controls::Picture picture() const { return picture_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    controls::Picture picture_ = controls::Picture::None;
};

}  // namespace korvane::views
