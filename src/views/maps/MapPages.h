// Two maps, one above the other, or on two pages where a window is too low for both.
#pragma once

#include <QWidget>

#include "views/widgets/TabRow.h"

namespace korvane::views {

class MapPages : public QWidget {
public:
    // Whether a window is too low for two maps, one above the other, and wide enough for one beside its buttons.
    [[nodiscard]] static bool neededIn(const QWidget& window);

    MapPages(const QString& upper, const QString& lower, QWidget* parent);

    // What the maps stand in; each has a layout.
    [[nodiscard]] QWidget& upper() { return upper_; }
    [[nodiscard]] QWidget& lower() { return lower_; }

    // Both have the same share of the height, unless the lower one is to be no higher than it needs.
    void keepLowerLow();
    [[nodiscard]] QWidget& tabs() { return tabs_; }

    void setPaged(bool paged);
    [[nodiscard]] bool isPaged() const { return paged_; }
    // Shows the page on which `inside` is; nothing else changes if it is on none.
    void reveal(const QWidget& inside);

private:
    void showPages();

    TabRow& tabs_;
    QWidget& upper_;
    QWidget& lower_;
    bool paged_ = false;
};

}  // namespace korvane::views
