// The restore points as a table.
#pragma once

#include <QTreeView>

#include <functional>

#include "keep/restore/PointList.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Asks the list only for the rows that can be seen. The row with the focus is the picked one.
class PointTable : public QTreeView {
public:
    PointTable(keep::PointList& list, QWidget* parent);

    static void bind(Binder& binder, keep::PointList& list, PointTable& table);

    // The list is gone.
    void leaveList();
    // Rows have come or gone, or another one is picked.
    void showRows();
    void onPick(std::function<void(int row)> handler) { picked_ = std::move(handler); }

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void changeEvent(QEvent* event) override;

private:
    class Rows;

    void fitColumns();

    Rows& rows_;
    bool showing_ = false;
    std::function<void(int row)> picked_;
};

}  // namespace korvane::views
