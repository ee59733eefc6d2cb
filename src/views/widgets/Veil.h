// Dims a widget of the toolkit, which is no Dimmable itself: lies on it and paints nothing until it is dimmed.
#pragma once

#include "views/widgets/Dimmable.h"

namespace korvane::views {

class Veil : public Dimmable {
public:
    // Covers `widget`, whose ground is that of a text box.
    explicit Veil(QWidget* widget);

protected:
    [[nodiscard]] QColor ground() const override { return palette().color(QPalette::Base); }
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace korvane::views
