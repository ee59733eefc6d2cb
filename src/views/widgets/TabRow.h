// Tabs in a row, the chosen one underlined so that it stands out on dark grounds too.
#pragma once

#include <QTabBar>

namespace korvane::views {

class TabRow : public QTabBar {
public:
    explicit TabRow(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace korvane::views
