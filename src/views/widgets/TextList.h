// Rows of text of which one is selected: a log that grows at its end.
#pragma once

#include <QListView>
#include <QStringList>

#include <functional>

namespace korvane::views {

// Rows count from 0. A list that stands at its end stays there when it grows.
class TextList : public QListView {
public:
    explicit TextList(QWidget* parent);

    void removeFirst(int count);
    void append(const QStringList& texts);
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] QString text(int row) const;

    // A row outside the list selects none.
    void select(int row);
    // The user has selected a row.
    void onRow(std::function<void(int row)> handler) { rowChosen_ = std::move(handler); }

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    class Rows;

    Rows& rows_;
    std::function<void(int row)> rowChosen_;
    bool quiet_ = false;
};

}  // namespace korvane::views
