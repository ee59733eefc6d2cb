#include "views/widgets/TextList.h"

#include <QAbstractListModel>
#include <QScrollBar>

#include <deque>

#include "views/widgets/Child.h"

namespace korvane::views {

class TextList::Rows : public QAbstractListModel {
public:
    explicit Rows(QObject* parent) : QAbstractListModel(parent) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(texts_.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(texts_.at(static_cast<std::size_t>(index.row()))) : QVariant();
    }

    void removeFirst(int count) {
        beginRemoveRows({}, 0, count - 1);
        texts_.erase(texts_.begin(), texts_.begin() + count);
        endRemoveRows();
    }
    void append(const QStringList& texts) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(texts.size()) - 1);
        texts_.insert(texts_.end(), texts.begin(), texts.end());
        endInsertRows();
    }

private:
    std::deque<QString> texts_;
};

TextList::TextList(QWidget* parent) : QListView(parent), rows_(child<Rows>(static_cast<QObject*>(this))) {
    setModel(&rows_);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
}

void TextList::removeFirst(int count) {
    quiet_ = true;
    rows_.removeFirst(count);
    quiet_ = false;
}

void TextList::append(const QStringList& texts) {
    const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    rows_.append(texts);
    if (atEnd) {
        scrollToBottom();
    }
}

int TextList::rowCount() const {
    return rows_.rowCount();
}

QString TextList::text(int row) const {
    return rows_.data(rows_.index(row), Qt::DisplayRole).toString();
}

void TextList::select(int row) {
    quiet_ = true;
    const auto index = rows_.index(row);
    if (!index.isValid()) {
        clearSelection();
    } else if (!selectionModel()->isSelected(index)) {
        setCurrentIndex(index);
    }
    quiet_ = false;
}

// The toolkit moves the cursor also by itself, as when the focus arrives; only a selection is the user's.
void TextList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (!quiet_ && rowChosen_ && !selected.isEmpty()) {
        rowChosen_(selected.front().top());
    }
}

}  // namespace korvane::views
