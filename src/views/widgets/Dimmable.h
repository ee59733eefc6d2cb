// A widget that can be dimmed: what it shows is no longer, or not yet, true.
#pragma once

#include <QColor>
#include <QWidget>

namespace korvane::views {

class Dimmable : public QWidget {
public:
    // Its value comes from the live data, without which it is dimmed.
    void setFromEcu() { fromEcu_ = true; }
    [[nodiscard]] bool isFromEcu() const { return fromEcu_; }

    void setDimmed(bool dimmed);
    [[nodiscard]] bool isDimmed() const { return dimmed_; }

protected:
    explicit Dimmable(QWidget* parent) : QWidget(parent) {}

    // What the widget paints is mixed with this colour: its ground, which thereby stays as it is.
    [[nodiscard]] virtual QColor ground() const = 0;
    bool event(QEvent* event) override;

private:
    bool fromEcu_ = false;
    bool dimmed_ = false;
};

}  // namespace korvane::views
