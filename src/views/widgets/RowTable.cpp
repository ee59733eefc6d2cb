#include "views/widgets/RowTable.h"

#include <QHeaderView>
#include <QTreeView>

namespace korvane::views {

void setUpRowTable(QTreeView& table) {
    table.setRootIsDecorated(false);
    table.setItemsExpandable(false);
    table.setUniformRowHeights(true);
    table.setAllColumnsShowFocus(true);
    table.setAlternatingRowColors(true);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.header()->setSectionsMovable(false);
    table.header()->setStretchLastSection(true);
}

}  // namespace korvane::views
