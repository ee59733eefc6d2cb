#include "views/widgets/ListTable.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

#include "views/widgets/Child.h"

namespace korvane::views {

namespace {
constexpr double kRowOfText = 1.25;
}

class ListTable::Rows : public QAbstractTableModel {
public:
    explicit Rows(QObject* parent) : QAbstractTableModel(parent) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(heads.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::TextAlignmentRole) {
            return alignment(index.column());
        }
        if (role == Qt::SizeHintRole) {
            return QSize(0, rowHeight);
        }
        return role == Qt::DisplayRole ? QVariant(text(index.row(), index.column())) : QVariant();
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation direction, int role) const override {
        if (direction == Qt::Horizontal && role == Qt::TextAlignmentRole) {
            return alignment(section);
        }
        return direction == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(heads.value(section)) : QVariant();
    }

    [[nodiscard]] QString text(int row, int column) const {
        return row >= 0 && row < rowCount() ? rows[static_cast<std::size_t>(row)].value(column) : QString();
    }

    template <class Change>
    void reset(Change change) {
        beginResetModel();
        change();
        endResetModel();
    }

    QStringList heads;
    std::vector<QStringList> rows;
    int narrow = -1;
    int rowHeight = 0;

private:
    [[nodiscard]] QVariant alignment(int column) const {
        return static_cast<int>((column == narrow ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
};

ListTable::ListTable(QWidget* parent) : QTreeView(parent), rows_(child<Rows>(static_cast<QObject*>(this))) {
    fitRows();
    setModel(&rows_);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    connect(header(), &QHeaderView::sectionClicked, this, [this](int column) {
        if (headClicked_) {
            headClicked_(column);
        }
    });
}

void ListTable::setNarrow(int column) {
    rows_.narrow = column;
    fitNarrow();
}

void ListTable::setHeads(const QStringList& heads) {
    if (heads != rows_.heads) {
        rows_.reset([&] { rows_.heads = heads; });
        fitNarrow();
    }
}

void ListTable::setRows(std::vector<QStringList> rows) {
    if (rows != rows_.rows) {
        rows_.reset([&] { rows_.rows = std::move(rows); });
        fitNarrow();
    }
}

void ListTable::fitRows() {
    rows_.rowHeight = static_cast<int>(fontMetrics().height() * kRowOfText);
}

void ListTable::fitNarrow() {
    const int columns = rows_.columnCount();
    if (rows_.narrow < 0 || rows_.narrow >= columns) {
        return;
    }
    for (int column = 0; column < columns; ++column) {
        header()->setSectionResizeMode(column, column == rows_.narrow ? QHeaderView::Fixed : QHeaderView::Stretch);
    }
    int texts = header()->sectionSizeHint(rows_.narrow);
    for (int row = 0; row < rows_.rowCount(); ++row) {
        texts =
            std::max(texts, fontMetrics().horizontalAdvance(rows_.text(row, rows_.narrow)) + fontMetrics().height());
    }
    header()->resizeSection(rows_.narrow, texts);
}

void ListTable::changeEvent(QEvent* event) {
    const bool sized = event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
    if (sized) {
        fitRows();
    }
    QTreeView::changeEvent(event);
    if (sized) {
        fitNarrow();
    }
}

void ListTable::select(int row) {
    quiet_ = true;
    const auto index = rows_.index(row, 0);
    if (!index.isValid()) {
        selectionModel()->clear();
    } else if (!selectionModel()->isRowSelected(row)) {
        setCurrentIndex(index);
    }
    quiet_ = false;
}

void ListTable::showOrder(int column, Qt::SortOrder order) {
    header()->setSortIndicatorShown(column >= 0);
    if (column >= 0) {
        header()->setSortIndicator(column, order);
    }
}

void ListTable::tell(int row) {
    told_ = true;
    if (rowChosen_ && row >= 0) {
        rowChosen_(row);
    }
}

void ListTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (!quiet_ && !selected.isEmpty()) {
        tell(selected.front().top());
    }
}

void ListTable::mousePressEvent(QMouseEvent* event) {
    told_ = false;
    QTreeView::mousePressEvent(event);
    if (!told_ && event->button() == Qt::LeftButton) {
        tell(indexAt(event->position().toPoint()).row());
    }
}

void ListTable::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        tell(currentIndex().row());
    } else {
        QTreeView::keyPressEvent(event);
    }
}

// The same letter typed again goes to the next row that begins with it.
void ListTable::keyboardSearch(const QString& search) {
    const bool goesOn = sinceTyped_.isValid() && sinceTyped_.elapsed() < QApplication::keyboardInputInterval();
    typed_ = goesOn ? typed_ + search : search;
    sinceTyped_.start();
    const int next = currentIndex().row() + 1;
    int found = find(typed_, typed_.size() > search.size() ? std::max(next - 1, 0) : next);
    if (found < 0 && typed_.count(typed_.front(), Qt::CaseInsensitive) == typed_.size()) {
        found = find(typed_.left(1), next);
    }
    if (found >= 0) {
        setCurrentIndex(rows_.index(found, 0));
    }
}

// The next row from `from` on, continuing at the first, in which a column begins with the text, leading blanks ignored;
// the first column is searched before the others.
int ListTable::find(const QString& start, int from) const {
    const int count = rows_.rowCount();
    for (int column = 0; column < rows_.columnCount(); ++column) {
        for (int step = 0; step < count; ++step) {
            const int row = (from + step) % count;
            if (rows_.text(row, column).trimmed().startsWith(start, Qt::CaseInsensitive)) {
                return row;
            }
        }
    }
    return -1;
}

}  // namespace korvane::views
