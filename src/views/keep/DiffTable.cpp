#include "views/keep/DiffTable.h"

#include <QAbstractTableModel>
#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <memory>
#include <utility>

#include "keep/compare/DiffWords.h"
#include "views/widgets/Child.h"
#include "views/widgets/EdgeStyle.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kSmallShare = 0.85;  // of the lower line's text
constexpr double kMargin = 0.15;      // of a line, on each side
constexpr double kTintShare = 0.28;
// Eyes that don't tell red from green tell these two.
constexpr QColor kUp{0, 114, 178};
constexpr QColor kDown{213, 94, 0};
constexpr int kLoadStep = 10;  // percent, of one row

QFont smallOf(const QFont& font) {
    QFont small = font;
    if (font.pixelSize() > 0) {
        small.setPixelSize(std::max(static_cast<int>(font.pixelSize() * kSmallShare), 1));
    } else {
        small.setPointSizeF(font.pointSizeF() * kSmallShare);
    }
    return small;
}

}  // namespace

class DiffTable::Cells : public QAbstractTableModel {
public:
    explicit Cells(QObject* parent) : QAbstractTableModel(parent) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || cells.empty() ? 0 : shape.rows;
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || cells.empty() ? 0 : shape.columns;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        switch (role) {
            case Qt::DisplayRole:
                return at(index).top;
            case Qt::ToolTipRole:
            case Qt::AccessibleTextRole:
                return at(index).words;
            default:
                return {};
        }
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation direction, int role) const override {
        if (role != Qt::DisplayRole) {
            return {};
        }
        if (direction == Qt::Horizontal) {
            return QString::number(shape.rpmOf(section));
        }
        return QStringLiteral("%1-%2").arg(section * kLoadStep).arg((section + 1) * kLoadStep);
    }

    [[nodiscard]] int cellOf(const QModelIndex& index) const {
        return index.isValid() ? index.row() * shape.columns + index.column() : -1;
    }
    [[nodiscard]] const Cell& at(const QModelIndex& index) const {
        return cells.at(static_cast<std::size_t>(cellOf(index)));
    }

    void set(maps::MapGeometry newShape, std::vector<Cell> newCells) {
        const bool same = newCells.size() == cells.size() && newShape.columns == shape.columns;
        if (!same) {
            beginResetModel();
        }
        shape = newShape;
        cells = std::move(newCells);
        if (!same) {
            endResetModel();
        } else if (!cells.empty()) {
            emit dataChanged(index(0, 0), index(shape.rows - 1, shape.columns - 1));
        }
    }

    maps::MapGeometry shape = maps::kOrdinaryMaps;
    std::vector<Cell> cells;
};

class DiffTable::Painter : public QStyledItemDelegate {
public:
    Painter(const Cells& cells, QObject* parent) : QStyledItemDelegate(parent), cells_(cells) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const Cell& cell = cells_.at(index);
        const bool chosen = option.state.testFlag(QStyle::State_Selected);
        const auto ground = chosen ? option.palette.color(QPalette::Highlight) : groundOf(cell, option.palette);
        const auto text = chosen ? option.palette.color(QPalette::HighlightedText)
                                 : visibleOn(ground, option.palette.color(QPalette::Text), 7);
        painter->save();
        painter->fillRect(option.rect, ground);
        painter->setPen(text);
        paintLines(*painter, option, cell);
        painter->restore();
    }

private:
    static QColor groundOf(const Cell& cell, const QPalette& palette) {
        const auto base = palette.color(QPalette::Base);
        return cell.sign == keep::Sign::None ? base
                                             : mixed(base, cell.sign == keep::Sign::Up ? kUp : kDown, kTintShare);
    }
    static void paintLines(QPainter& painter, const QStyleOptionViewItem& option, const Cell& cell) {
        const QRect upper(option.rect.left(), option.rect.top(), option.rect.width(), option.rect.height() / 2);
        const bool two = !cell.top.isEmpty();
        QFont bold = option.font;
        bold.setBold(true);
        painter.setFont(bold);
        painter.drawText(upper, Qt::AlignHCenter | Qt::AlignBottom, cell.top);
        painter.setFont(smallOf(option.font));
        painter.drawText(two ? upper.translated(0, upper.height()) : option.rect, Qt::AlignCenter, cell.bottom);
    }

    const Cells& cells_;
};

DiffTable::DiffTable(QWidget* parent) : QTableView(parent), cells_(child<Cells>(static_cast<QObject*>(this))) {
    EdgeStyle::giveTo(*this);
    setModel(&cells_);
    setItemDelegate(&child<Painter>(static_cast<QObject*>(this), cells_));
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    for (auto* header : {horizontalHeader(), verticalHeader()}) {
        header->setSectionsClickable(false);
        header->setHighlightSections(false);
        header->setSectionResizeMode(QHeaderView::Stretch);
        header->setDefaultAlignment(Qt::AlignCenter);
    }
    fitCells();
}

void DiffTable::setCells(maps::MapGeometry shape, std::vector<Cell> cells) {
    if (cells != cells_.cells || shape.columns != cells_.shape.columns) {
        quiet_ = true;
        cells_.set(shape, std::move(cells));
        quiet_ = false;
        fitCells();
    }
}

// As wide as the longest line, at least.
void DiffTable::fitCells() {
    const QFontMetrics upper(font());
    const QFontMetrics lower(smallOf(font()));
    const int margin = static_cast<int>(upper.height() * kMargin);
    int width = upper.horizontalAdvance(QStringLiteral("00000"));
    for (const Cell& cell : cells_.cells) {
        width = std::max({width, upper.horizontalAdvance(cell.top + u' '), lower.horizontalAdvance(cell.bottom)});
    }
    horizontalHeader()->setMinimumSectionSize(width + 2 * margin);
    verticalHeader()->setMinimumSectionSize(upper.height() + lower.height() + 2 * margin);
}

void DiffTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitCells();
    }
}

void DiffTable::select(int cell) {
    quiet_ = true;
    if (cell < 0 || cell >= static_cast<int>(cells_.cells.size())) {
        selectionModel()->clear();
    } else {
        setCurrentIndex(cells_.index(cell / cells_.shape.columns, cell % cells_.shape.columns));
    }
    quiet_ = false;
}

void DiffTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!quiet_ && cellChosen_ && current.isValid()) {
        cellChosen_(cells_.cellOf(current));
    }
}

namespace {

DiffTable::Cell shownCell(const keep::DiffCell& cell, bool showsEqual) {
    const auto left = QString::fromStdString(cell.left);
    const auto right = QString::fromStdString(cell.right);
    DiffTable::Cell shown;
    shown.words = QString::fromStdString(cell.words);
    shown.sign = cell.sign;
    if (!cell.delta.empty()) {
        const auto mark = keep::markOf(cell.sign);
        shown.top = QString::fromUtf8(mark.data(), static_cast<qsizetype>(mark.size())) + u' ' +
                    QString::fromStdString(cell.delta);
    }
    if (left != right) {
        shown.bottom = left + QStringLiteral("\u2192") + right;
    } else if (showsEqual) {
        shown.bottom = right;
    }
    return shown;
}

class DiffBinding : public Binding {
public:
    DiffBinding(Binder& binder, keep::DiffGrid& grid, DiffTable& table)
        : Binding(binder, grid, table), grid_(grid), table_(table) {
        table_.onCell([this](int cell) { chosen(cell); });
    }

    void detach(const ControlSet& alive) override {
        table_.onCell({});
        Binding::detach(alive);
    }

protected:
    void showContent() override {
        std::vector<DiffTable::Cell> cells;
        for (const auto& cell : grid_.cells()) {
            cells.push_back(shownCell(cell, grid_.ShowEqual));
        }
        table_.setCells(grid_.shape(), std::move(cells));
        table_.select(grid_.SelectedItem);
    }
    [[nodiscard]] Roles roles() const override {
        return {QPalette::Base, QPalette::Text, controls::kButtonFace, controls::kButtonText};
    }

private:
    void chosen(int cell) {
        act([&] {
            if (grid_.usable()) {
                grid_.clickCell(cell);
            }
        });
    }

    keep::DiffGrid& grid_;
    DiffTable& table_;
};

}  // namespace

void DiffTable::bind(Binder& binder, keep::DiffGrid& grid, DiffTable& table) {
    binder.bind(std::make_unique<DiffBinding>(binder, grid, table), {&grid}, table);
}

}  // namespace korvane::views
