// A text that changes many times a second: painted by itself, never laid out anew.
#pragma once

#include "views/widgets/PaintedWidget.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

// The ground of a widget.
enum class Ground { Surface, Tile };

class Readout : public PaintedWidget {
public:
    struct Look {
        double scale = 1;  // of the inherited font
        bool bold = false;
        bool muted = false;    // the shade of names
        bool growing = false;  // the text grows with the widget
        bool elided = false;   // what does not fit is cut and never drawn smaller; the tool-tip has it whole
        Qt::Alignment alignment = Qt::AlignLeft;
        Ground ground = Ground::Surface;
    };

    explicit Readout(QWidget* parent) : Readout(Look(), parent) {}
    Readout(const Look& look, QWidget* parent);

    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return text_; }
    // The longest usual text: space for it is reserved, whatever is shown. A longer one is drawn smaller, down to a
    // limit, and then cut; see Look::elided.
    void setReserve(const QString& longest);
    // Where there is too little room, it may be given this share of the reserved width.
    void setNarrowest(double share) {
        narrowest_ = share;
        updateGeometry();
    }

    // Whether the whole text fits the widget, and its size relative to the usual one (1: as usual).
    [[nodiscard]] bool isCut() const { return cut_; }
    [[nodiscard]] double shrink() const { return shrink_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] QColor ground() const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QFont fontOf(int pixels) const;
    [[nodiscard]] int usualPixels() const;
    void refit();
    void fit();

    Look look_;
    QString text_;
    QString shown_;
    QString reserve_;
    double narrowest_;  // of the usual width
    TabularText digits_;
    int pixels_ = 0;
    double shrink_ = 1;
    bool cut_ = false;
};

}  // namespace korvane::views
