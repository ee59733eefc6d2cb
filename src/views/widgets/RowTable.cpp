#include "views/widgets/RowTable.h"

#include <QHeaderView>
#include <QSize>
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

QVariant RowModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::SizeHintRole) {
        return QSize(0, rowHeight);
    }
    return attached_ && role == Qt::DisplayRole ? QVariant(text(index.row(), index.column())) : QVariant();
}

QVariant RowModel::headerData(int section, Qt::Orientation direction, int role) const {
    return direction == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < columnCount()
               ? QVariant(QLatin1String(heads_[static_cast<std::size_t>(section)]))
               : QVariant();
}

void RowModel::leave() {
    beginResetModel();
    attached_ = false;
    shown_ = 0;
    endResetModel();
}

}  // namespace korvane::views
