// The steps of a history as a table: what is in force, when it was done, and what it was.
#pragma once

#include <QTreeView>

#include <functional>

#include "maps/history/StepList.h"

namespace korvane::views {

// Asks the list only for the rows that can be seen. A row is picked by a click, Return or the space bar; the arrow keys
// only move through the rows.
class StepTable : public QTreeView {
public:
    StepTable(const maps::StepList& list, QWidget* parent);

    // The list is gone.
    void leaveList();
    // Rows have come or gone, or another one is the present one, which is scrolled into view.
    void showRows();
    void onPick(std::function<void(int row)> handler) { picked_ = std::move(handler); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Rows;

    void pick(int row);
    void fitColumns();

    Rows& rows_;
    std::function<void(int row)> picked_;
};

}  // namespace korvane::views
