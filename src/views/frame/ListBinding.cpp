// Continues Binder: list views.
#include "controls/ListView.h"
#include "views/frame/Binder.h"
#include "views/widgets/ListTable.h"

namespace korvane::views {

namespace {

class ListBinding : public Binding {
public:
    ListBinding(Binder& binder, controls::ListView& list, ListTable& widget)
        : Binding(binder, list, widget), list_(list), table_(widget) {
        table_.onRow([this](int row) { chosen(row + 1); });
        table_.onHead([this](int column) { act([&] { headClicked(column + 1); }); });
    }

    void detach(const ControlSet& alive) override {
        table_.onRow({});
        table_.onHead({});
        Binding::detach(alive);
    }

protected:
    void showContent() override {
        table_.setHeads(heads());
        table_.setRows(rows());
        table_.showOrder(list_.Sorted ? list_.SortKey : -1,
                         list_.SortOrder == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        table_.select(list_.SelectedItem - 1);
    }

    [[nodiscard]] Roles roles() const override {
        return {QPalette::Base, QPalette::Text, controls::kButtonFace, controls::kButtonText};
    }

private:
    [[nodiscard]] QStringList heads() const {
        QStringList heads;
        for (int column = 1; column <= list_.columnCount(); ++column) {
            heads += QString::fromStdString(list_.column(column).heading);
        }
        return heads;
    }
    [[nodiscard]] std::vector<QStringList> rows() const {
        std::vector<QStringList> rows(static_cast<std::size_t>(list_.rowCount()));
        for (int row = 1; row <= list_.rowCount(); ++row) {
            for (int column = 1; column <= list_.columnCount(); ++column) {
                rows[static_cast<std::size_t>(row) - 1] += QString::fromStdString(list_.Cell(row, column));
            }
        }
        return rows;
    }

    // The toolkit has moved the highlight already; the control's selection is what counts.
    void chosen(int row) {
        act([&] {
            if (list_.usable() && row <= list_.rowCount()) {
                list_.clickRow(row);
            }
        });
        if (binder().isAttached()) {
            table_.select(list_.SelectedItem - 1);
        }
    }
    void headClicked(int column) {
        if (list_.usable() && column <= list_.columnCount()) {
            list_.clickColumn(column);
        }
    }

    controls::ListView& list_;
    ListTable& table_;
};

}  // namespace

void Binder::bind(controls::ListView& list, ListTable& widget) {
    add(std::make_unique<ListBinding>(*this, list, widget));
}

}  // namespace korvane::views
