// A number that fills its widget, to be read from afar.
#pragma once

#include <array>

#include "views/widgets/Dimmable.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

// Painted by glyph outlines at the size at which they are shown, so that they are sharp on any display. The figures
// keep their size while a value gains and loses decimals: the widest of the texts shown lately rules.
class BigFigures : public Dimmable {
public:
    explicit BigFigures(QWidget* parent);

    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return text_; }
    // The next text is of another kind: those before no longer count.
    void forget();

    // Where the figures stand, without the room that their font keeps around them.
    [[nodiscard]] QRectF inkPlace() const;
    [[nodiscard]] int fontPixels() const { return pixels_; }

protected:
    [[nodiscard]] QColor ground() const override { return palette().color(QPalette::Window); }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void measure();
    void refit();

    static constexpr std::size_t kRemembered = 25;  // texts; at least five seconds of a window's ticks

    QString text_;
    TabularText unit_;    // at the size in which widths are compared
    TabularText digits_;  // at the size shown
    std::array<qreal, kRemembered> widths_{};
    std::size_t next_ = 0;
    int pixels_ = 0;
};

}  // namespace korvane::views
