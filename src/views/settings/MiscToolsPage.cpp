// A part of MiscPages: the page "Settings".
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "settings/RawWriteQuestion.h"
#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"
#include "views/widgets/Child.h"
#include "views/widgets/ListTable.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/GapLabel.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

constexpr int kGap = 6;
constexpr int kNumberDigits = 7;
constexpr int kListShare = 1;
constexpr int kToolShare = 1;

// A text with one box in its gap and another one behind it.
QLayout& makePair(const QString& text, controls::TextBox& inGap, const QString& gapName, controls::TextBox& behind,
                  const QString& behindName, Binder& binder, QWidget* parent) {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kGap);
    auto& label = child<GapLabel>(parent, text);
    auto& first = child<ValueBox>(&label, kNumberDigits);
    auto& second = child<ValueBox>(parent, kNumberDigits);
    second.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    first.setAccessibleName(gapName);
    second.setAccessibleName(behindName);
    binder.bind(inGap, first);
    binder.bind(behind, second);
    label.setBox(first);
    row.addWidget(&label);
    row.addWidget(&second);
    row.addStretch(1);
    return row;
}

Card& makeChannels(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameParams, binder, page);
    group.addChoice(QStringLiteral("Channel"), window.Combo1);
    group.addText(QStringLiteral("Nimi"), window.txtParName);
    group.addText(QStringLiteral("Selite"), window.txtParDesc);
    group.add(makePair(QStringLiteral("Math:(val +                         ) *"), window.txtParOffset,
                       QStringLiteral("Offset"), window.txtParScale, QStringLiteral("Scale"), binder, &group.card()));
    group.startLines();
    group.addValue(labelOf(window.txtParWarning), window.txtParWarning, kNumberDigits);
    group.addButton(window.btnSaveParam, 'p');
    return group.card();
}

// Whoever presses the button is asked first if the address is hardly meant.
void askBefore(const controls::CommandButton& button, int bytes, settings::MiscControls& window, Binder& binder) {
    binder.setGuard(button, [&window, bytes] {
        const auto question = settings::rawWriteQuestion(window.TextOs.Text.get(), bytes);
        return !question || window.machine().dialogs.ask(*question).yes;
    });
}

Card& makeRawTools(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameMisc2, binder, page);
    QWidget* const inside = &group.card();
    group.add(makePair(QStringLiteral("Osote                 arvo"), window.TextOs, QStringLiteral("Osote"),
                       window.TextArvo, QStringLiteral("arvo"), binder, inside));
    auto& grid = child<QGridLayout>(kNobody);
    grid.setSpacing(kGap);
    grid.setColumnStretch(2, 1);
    grid.addWidget(&makeCommand(window.Command2, 'r', binder, inside), 0, 0);
    grid.addWidget(&makeCommand(window.Command1, 'w', binder, inside), 0, 1);
    grid.addWidget(&makeCommand(window.btnEEread16bit, '1', binder, inside), 1, 0);
    grid.addWidget(&makeCommand(window.btnWriteEE16bit, '6', binder, inside), 1, 1);
    group.add(grid);
    askBefore(window.Command1, 1, window, binder);
    askBefore(window.btnWriteEE16bit, 2, window, binder);
    return group.card();
}

Card& makeProgramSettings(settings::MiscControls& window, Binder& binder, QWidget* page) {
    auto& card = child<Card>(page, QStringLiteral("Program"));
    QWidget* const inside = &card;
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kGap);
    GroupCard offset(window.Frame13, binder, inside);
    offset.addOptions(window.opt_injofftype, Qt::Horizontal);
    rows.addWidget(&offset.card());
    rows.addStretch(1);
    rows.addWidget(&makeCommand(window.Command3, 'g', binder, inside), 0, Qt::AlignRight);
    card.fitMargins();
    return card;
}

ListTable& makeList(settings::MiscControls& window, Binder& binder, QWidget* page) {
    auto& list = child<ListTable>(page);
    list.setAccessibleName(QStringLiteral("Parameters"));
    list.setNarrow(1);
    binder.bind(window.ListView1, list);
    return list;
}

}  // namespace

void fillToolsPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    auto& columns = child<QHBoxLayout>(page);
    columns.setContentsMargins(0, 0, 0, 0);
    columns.setSpacing(kSpacing);
    auto& tools = child<QVBoxLayout>(kNobody);
    tools.setSpacing(kSpacing);
    tools.addWidget(&makeChannels(window, binder, page));
    tools.addWidget(&makeRawTools(window, binder, page));
    tools.addWidget(&makeProgramSettings(window, binder, page));
    tools.addStretch(1);
    columns.addLayout(&tools, kToolShare);
    columns.addWidget(&makeList(window, binder, page), kListShare);
}

}  // namespace korvane::views
