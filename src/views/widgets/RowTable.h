// What tables of whole rows have in common.
#pragma once

#include <QAbstractTableModel>

#include <span>

class QTreeView;

namespace korvane::views {

// Rows of one height and of alternating grounds, without a tree, which nobody edits; the last column takes the rest.
void setUpRowTable(QTreeView& table);

// The rows of such a table: texts below heads that stay. What rows there are, the derived class tells.
class RowModel : public QAbstractTableModel {
public:
    // `heads` are literals.
    RowModel(std::span<const char* const> heads, QObject* parent) : QAbstractTableModel(parent), heads_(heads) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : shown_; }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(heads_.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation direction, int role) const override;

    // What the rows are about is gone: there are none any more.
    void leave();

    int rowHeight = 0;

protected:
    // Asked only while it is attached.
    [[nodiscard]] virtual QString text(int row, int column) const = 0;

    int shown_ = 0;  // rows

private:
    std::span<const char* const> heads_;
    bool attached_ = true;
};

}  // namespace korvane::views
