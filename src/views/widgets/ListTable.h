// A table of texts with clickable heads, of which one row is selected.
#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <QTreeView>

#include <functional>
#include <vector>

namespace korvane::views {

// Rows and columns count from 0. Letters typed in quick succession select the next row in which a text begins with
// them.
class ListTable : public QTreeView {
public:
    explicit ListTable(QWidget* parent);

    // A column as wide as its texts, these at the right; the first of the others takes what is left.
    void setNarrow(int column);

    void setHeads(const QStringList& heads);
    void setRows(std::vector<QStringList> rows);
    // A row outside the table selects none.
    void select(int row);
    // The mark of the order; a column outside the table has none.
    void showOrder(int column, Qt::SortOrder order);

    // The user has selected a row, or has clicked on it once more.
    void onRow(std::function<void(int row)> handler) { rowChosen_ = std::move(handler); }
    void onHead(std::function<void(int column)> handler) { headClicked_ = std::move(handler); }

    void keyboardSearch(const QString& search) override;

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Rows;

    void tell(int row);
    void fitRows();
    void fitNarrow();
    [[nodiscard]] int find(const QString& start, int from) const;

    Rows& rows_;
    std::function<void(int row)> rowChosen_;
    std::function<void(int column)> headClicked_;
    QElapsedTimer sinceTyped_;
    QString typed_;
    bool quiet_ = false;
    bool told_ = false;
};

}  // namespace korvane::views
