#include "views/maps/StepTable.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "views/widgets/Child.h"
#include "views/widgets/RowTable.h"

namespace korvane::views {

namespace {

enum Column { kState, kTime, kWords, kColumns };

constexpr const char* kHeads[] = {"", "Time", "Step"};

constexpr double kRowOfText = 1.35;
constexpr double kColumnPadding = 1.4;  // text sizes

}  // namespace

class StepTable::Rows : public RowModel {
public:
    Rows(const maps::StepList& list, QObject* parent) : RowModel(kHeads, parent), list_(list) {}

    // As many rows as the list has; what they say is asked for when they are painted.
    void follow() {
        const int count = static_cast<int>(list_.rowCount());
        if (count < shown_) {
            beginRemoveRows({}, count, shown_ - 1);
            shown_ = count;
            endRemoveRows();
        } else if (count > shown_) {
            beginInsertRows({}, shown_, count - 1);
            shown_ = count;
            endInsertRows();
        }
        emit dataChanged(index(0, 0), index(shown_ - 1, kColumns - 1));
    }
    [[nodiscard]] QModelIndex here() const { return index(static_cast<int>(list_.here()), kWords); }

private:
    // The history may have changed since follow().
    [[nodiscard]] QString text(int shownRow, int column) const override {
        const auto row = static_cast<std::size_t>(shownRow);
        if (row >= list_.rowCount()) {
            return {};
        }
        switch (column) {
            case kState:
                return row == list_.here() ? QStringLiteral("now")
                                           : (row > list_.here() ? QStringLiteral("undone") : QString());
            case kTime:
                return QString::fromStdString(list_.timeOf(row));
            default:
                return QString::fromStdString(list_.wordsOf(row));
        }
    }

    const maps::StepList& list_;
};

StepTable::StepTable(const maps::StepList& list, QWidget* parent)
    : QTreeView(parent), rows_(child<Rows>(static_cast<QObject*>(this), list)) {
    fitColumns();
    setModel(&rows_);
    setUpRowTable(*this);
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) { pick(index.row()); });
    fitColumns();
}

void StepTable::leaveList() {
    rows_.leave();
}

void StepTable::showRows() {
    rows_.follow();
    setCurrentIndex(rows_.here());
    scrollTo(rows_.here());
}

void StepTable::pick(int row) {
    if (picked_ && row >= 0) {
        picked_(row);
    }
}

void StepTable::keyPressEvent(QKeyEvent* event) {
    const bool picks = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    picks ? pick(currentIndex().row()) : QTreeView::keyPressEvent(event);
}

void StepTable::fitColumns() {
    const auto widthOf = [this](const QString& text) {
        return static_cast<int>(fontMetrics().horizontalAdvance(text) + kColumnPadding * fontMetrics().height());
    };
    rows_.rowHeight = static_cast<int>(fontMetrics().height() * kRowOfText);
    if (header()->count() == kColumns) {
        header()->resizeSection(kState, widthOf(QStringLiteral("undone")));
        header()->resizeSection(kTime, widthOf(QStringLiteral("00:00:00")));
    }
}

void StepTable::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitColumns();
    }
}

}  // namespace korvane::views
