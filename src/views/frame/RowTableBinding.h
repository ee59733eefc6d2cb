// Joins a table that asks its list for the rows in sight to that list.
#pragma once

#include "views/frame/Binder.h"

namespace korvane::views {

// `List` has rowCount(), usable() and choose(); `Table` has onPick(), leaveList() and showRows().
template <class List, class Table>
class RowTableBinding : public Binding {
public:
    RowTableBinding(Binder& binder, List& list, Table& table)
        : Binding(binder, list, table), list_(list), table_(table) {
        table_.onPick([this](int row) { picked(row); });
    }

    void detach(const ControlSet& alive) override {
        table_.onPick({});
        table_.leaveList();
        Binding::detach(alive);
    }

protected:
    void showContent() override { table_.showRows(); }

    [[nodiscard]] Roles roles() const override {
        return {QPalette::Base, QPalette::Text, controls::kButtonFace, controls::kButtonText};
    }

private:
    void picked(int row) {
        act([&] {
            if (list_.usable() && row < static_cast<int>(list_.rowCount())) {
                list_.choose(row);
            }
        });
    }

    List& list_;
    Table& table_;
};

}  // namespace korvane::views
