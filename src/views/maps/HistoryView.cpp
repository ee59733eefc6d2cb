#include "views/maps/HistoryView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>
#include <vector>

#include "views/frame/RowTableBinding.h"
#include "views/maps/StepTable.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

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
    binder().bind(std::make_unique<RowTableBinding<maps::StepList, StepTable>>(binder(), window.lstSteps, table),
                  {&window.lstSteps}, table);
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
