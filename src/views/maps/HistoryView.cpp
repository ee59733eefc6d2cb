#include "views/maps/HistoryView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>
#include <vector>

#include "views/maps/StepTable.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

class StepListBinding : public Binding {
public:
    StepListBinding(Binder& binder, maps::StepList& list, StepTable& table)
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
            if (list_.usable() && static_cast<std::size_t>(row) < list_.rowCount()) {
                list_.choose(row);
            }
        });
    }

    maps::StepList& list_;
    StepTable& table_;
};

}  // namespace

HistoryView::HistoryView(maps::FrmHistory& window, FrameClock& clock) : WindowView(window, clock) {
    auto& rows = child<QVBoxLayout>(this);
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeTable(window), 1);
    rows.addLayout(&makeButtons(window));
    binder().setTabOrder({&window.lstSteps, &window.btnUndo, &window.btnRedo});
}

QWidget& HistoryView::makeTable(maps::FrmHistory& window) {
    auto& table = child<StepTable>(static_cast<QWidget*>(this), window.lstSteps);
    table.setAccessibleName(QString::fromStdString(window.lstSteps.label()));
    binder().bind(std::make_unique<StepListBinding>(binder(), window.lstSteps, table), {&window.lstSteps}, table);
    return table;
}

QLayout& HistoryView::makeButtons(maps::FrmHistory& window) {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    auto& note = child<QLabel>(static_cast<QWidget*>(this));
    note.setWordWrap(true);
    binder().bind(window.lblNote, note);
    row.addWidget(&note, 1);
    const auto add = [&](controls::CommandButton& button, char mnemonic) {
        auto& widget = child<QPushButton>(static_cast<QWidget*>(this));
        binder().bind(button, widget, mnemonic);
        row.addWidget(&widget);
    };
    add(window.btnUndo, 'u');
    add(window.btnRedo, 'r');
    return row;
}

}  // namespace korvane::views
