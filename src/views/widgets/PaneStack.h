// Panes of which one is shown at a time, in one place.
#pragma once

#include <QWidget>

#include <vector>

class QStackedLayout;

namespace korvane::views {

// Shows the page of the first of its visible panes; a pane covers those that were added after it.
class PaneStack : public QWidget {
public:
    explicit PaneStack(QWidget* parent);

    // A new page at the bottom. `pane`, which is somewhere in it, must be given to watch() before the next one.
    [[nodiscard]] QWidget& addPage();
    // The page added last is shown as long as `pane` is not hidden.
    void watch(QWidget& pane);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showFirst();

    QStackedLayout& pages_;
    std::vector<QWidget*> panes_;
};

}  // namespace korvane::views
