#include "views/keep/CompareView.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/frame/BoundWidgets.h"
#include "views/frame/GroupCard.h"
#include "views/keep/DiffTable.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/ListTable.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/TabRow.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{100, 50};  // text sizes
constexpr double kSmallestText = 0.8;
constexpr int kListLetters = 24;
constexpr int kAddressColumn = 5;

DropDown& makeList(controls::ComboBox& list, const QString& name, Binder& binder, QWidget* parent) {
    auto& widget = child<DropDown>(parent);
    widget.setMinimumContentsLength(kListLetters);
    widget.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    widget.setAccessibleName(name);
    binder.bind(list, widget);
    return widget;
}

}  // namespace

CompareView::CompareView(keep::FrmCompare& window, FrameClock& clock)
    : FittedView(window, clock, kUsual, kSmallestText), window_(window) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    auto& sides = child<QHBoxLayout>(kNobody);
    sides.setSpacing(kSpacing);
    sides.addWidget(&makeSide(QStringLiteral("Left"), window.left, 'o'), 1);
    sides.addWidget(&makeSide(QStringLiteral("Right"), window.right, 'f'), 1);
    rows.addLayout(&sides);
    rows.addWidget(&makePages(), 1);
    rows.addWidget(&makeCommands());
    fitTexts();
}

QWidget& CompareView::makeSide(const QString& title, keep::SourcePanel& side, char mnemonic) {
    auto& card = child<Card>(&content(), title);
    QWidget* const inside = &card;
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kSpacing);
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    auto& list = makeList(side.list, title, binder(), inside);
    list.setPicksInList();  // some of its items open a dialog
    row.addWidget(&list, 1);
    row.addWidget(&makeList(side.points, QStringLiteral("%1: restore point").arg(title), binder(), inside), 1);
    row.addWidget(&makeCommand(side.file, mnemonic, binder(), inside));
    rows.addLayout(&row);
    rows.addWidget(&makeWords(side.words, binder(), inside, title));
    rows.addStretch(1);
    card.fitMargins();
    return card;
}

QWidget& CompareView::makePages() {
    auto& card = child<Card>(&content());
    QWidget* const inside = &card;
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kSpacing);
    auto& head = child<QHBoxLayout>(kNobody);
    head.setSpacing(kSpacing);
    auto& tabs = child<TabRow>(inside);
    tabs.setAccessibleName(QStringLiteral("Differences of"));
    binder().bind(window_.tabWhat, tabs);
    head.addWidget(&tabs, 1);
    head.addWidget(&makeBox(window_.chkAll, 'a', binder(), inside));
    head.addWidget(&makeBox(window_.chkCounts, 'c', binder(), inside));
    rows.addLayout(&head);
    rows.addWidget(&makeWords(window_.lblSummary, binder(), inside, QStringLiteral("Summary")));
    auto& table = child<DiffTable>(inside);
    table.setAccessibleName(QStringLiteral("Differences of the map"));
    DiffTable::bind(binder(), window_.grdCells, table);
    rows.addWidget(&table, 1);
    auto& list = child<ListTable>(inside);
    list.setAccessibleName(QStringLiteral("Differences of the settings"));
    list.setNarrow(kAddressColumn);
    binder().bind(window_.lstSettings, list);
    rows.addWidget(&list, 1);
    card.fitMargins();
    return card;
}

QWidget& CompareView::makeCommands() {
    auto& card = child<Card>(&content());
    QWidget* const inside = &card;
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(inside);
    row.setSpacing(kSpacing);
    row.addWidget(&makeWords(window_.lblOne, binder(), inside, QStringLiteral("Chosen")), 1);
    row.addWidget(&makeCommand(window_.btnCopyOne, 'y', binder(), inside));
    row.addWidget(&makeCommand(window_.btnCopyMap, 'm', binder(), inside));
    row.addWidget(&makeCommand(window_.btnExport, 'x', binder(), inside));
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
