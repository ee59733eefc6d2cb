#include "views/keep/PointTable.h"

#include <QEvent>
#include <QHeaderView>

#include <memory>
#include <utility>

#include "views/frame/RowTableBinding.h"
#include "views/widgets/Child.h"
#include "views/widgets/RowTable.h"

namespace korvane::views {

namespace {

enum Column { kTime, kReason, kEcu, kDiffers, kNote, kDamage, kColumns };

constexpr const char* kHeads[] = {"Time", "Reason", "ECU", "Differs", "Note", "What is wrong"};
// As wide as these, in text sizes of padding more.
constexpr const char* kWidest[] = {"0000-00-00 00:00:00", "before: EEPROM address 0000", "type 000, version 0.000",
                                   "other ECU",           "On the road, Sunday",         ""};
constexpr double kRowOfText = 1.35;
constexpr double kColumnPadding = 1.4;  // text sizes

}  // namespace

class PointTable::Rows : public RowModel {
public:
    Rows(keep::PointList& list, QObject* parent) : RowModel(kHeads, parent), list_(list) {}

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return RowModel::data(index, role == Qt::ToolTipRole ? int{Qt::DisplayRole} : role);
    }

    void follow() {
        const int count = list_.rowCount();
        if (count != shown_) {
            beginResetModel();
            shown_ = count;
            endResetModel();
        } else if (count > 0) {
            emit dataChanged(index(0, 0), index(count - 1, kColumns - 1));
        }
    }
    [[nodiscard]] QModelIndex chosen() const { return index(list_.ListIndex, kTime); }

private:
    [[nodiscard]] QString text(int row, int column) const override {
        return row < list_.rowCount() ? QString::fromStdString(textOf(row, column)) : QString();
    }
    [[nodiscard]] std::string textOf(int row, int column) const {
        const auto& entry = list_.entry(row);
        switch (column) {
            case kTime:
                return keep::timeTextOf(entry);
            case kReason:
                return entry.reason;
            case kEcu:
                return keep::ecuTextOf(entry);
            case kDiffers:
                return list_.differsText(row);
            case kNote:
                return entry.note;
            default:
                return entry.damage;
        }
    }

    keep::PointList& list_;
};

PointTable::PointTable(keep::PointList& list, QWidget* parent)
    : QTreeView(parent), rows_(child<Rows>(static_cast<QObject*>(this), list)) {
    fitColumns();
    setModel(&rows_);
    setUpRowTable(*this);
    fitColumns();
}

void PointTable::bind(Binder& binder, keep::PointList& list, PointTable& table) {
    binder.bind(std::make_unique<RowTableBinding<keep::PointList, PointTable>>(binder, list, table), {&list}, table);
}

void PointTable::leaveList() {
    const bool before = std::exchange(showing_, true);
    rows_.leave();
    showing_ = before;
}

void PointTable::showRows() {
    const bool before = std::exchange(showing_, true);
    rows_.follow();
    if (currentIndex().row() != rows_.chosen().row()) {
        setCurrentIndex(rows_.chosen());
    }
    showing_ = before;
}

void PointTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!showing_ && current.isValid() && picked_) {
        picked_(current.row());
    }
}

void PointTable::fitColumns() {
    rows_.rowHeight = static_cast<int>(fontMetrics().height() * kRowOfText);
    if (header()->count() != kColumns) {
        return;
    }
    for (int column = kTime; column < kDamage; ++column) {
        const auto width = fontMetrics().horizontalAdvance(QLatin1String(kWidest[column]));
        header()->resizeSection(column, static_cast<int>(width + kColumnPadding * fontMetrics().height()));
    }
}

void PointTable::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitColumns();
    }
}

}  // namespace korvane::views
