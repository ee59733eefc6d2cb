// Continues Binder: drop-down lists.
#include <QComboBox>

#include "views/frame/Binder.h"
#include "views/widgets/DropDown.h"

namespace korvane::views {

namespace {

class ComboBinding : public Binding {
public:
    ComboBinding(Binder& binder, controls::ComboBox& box, DropDown& widget)
        : Binding(binder, box, widget), box_(box), list_(widget) {
        connect(&list_, &QComboBox::activated, this, [this](int row) { act([&] { choose(row); }); });
        list_.onOpening([this] { act([this] { opening(); }); });
    }

protected:
    void showContent() override {
        showRows();
        list_.setCurrentIndex(box_.ListIndex);
        list_.setToolTip(toolTip());
        list_.setAccessibleDescription(list_.toolTip());
    }
    // A list without a note of its own shows the one on the chosen row.
    [[nodiscard]] QString toolTip() const override {
        return box_.ToolTipText.get().empty()
                   ? joined(list_.currentData(Qt::ToolTipRole).toString(), binder().hintOf(box_))
                   : Binding::toolTip();
    }
    [[nodiscard]] Roles roles() const override { return {.back = QPalette::Button, .fore = QPalette::ButtonText}; }

private:
    void showRows() {
        while (list_.count() > box_.ListCount()) {
            list_.removeItem(list_.count() - 1);
        }
        while (list_.count() < box_.ListCount()) {
            list_.addItem(QString());
        }
        for (int row = 0; row < box_.ListCount(); ++row) {
            list_.setItemText(row, QString::fromStdString(box_.List(row)));
            const QString note = QString::fromStdString(box_.itemToolTip(row));
            list_.setItemData(row, note, Qt::ToolTipRole);
            list_.setItemData(row, note.isEmpty() ? list_.itemText(row) : list_.itemText(row) + ", " + note,
                              Qt::AccessibleTextRole);
        }
    }

    void choose(int row) {
        if (box_.usable() && row >= 0 && row < box_.ListCount()) {
            box_.choose(row);
        }
    }

    // Opening the list counts as entering it, also when it had the focus before.
    void opening() {
        if (box_.window().activeControl() == &box_) {
            box_.window().enter(box_.name(), [this] { box_.GotFocus(); });
        } else {
            box_.window().setFocus(&box_);
        }
    }

    controls::ComboBox& box_;
    DropDown& list_;
};

}  // namespace

void Binder::bind(controls::ComboBox& box, DropDown& widget) {
    add(std::make_unique<ComboBinding>(*this, box, widget));
}

}  // namespace korvane::views
