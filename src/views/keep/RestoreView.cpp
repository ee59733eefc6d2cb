#include "views/keep/RestoreView.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "views/frame/BoundWidgets.h"
#include "views/frame/TransferBar.h"
#include "views/keep/PointTable.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{86, 44};  // text sizes
constexpr double kSmallestText = 0.8;

QLineEdit& makeLine(controls::TextBox& box, const char* name, const char* hint, Binder& binder, QWidget* parent) {
    auto& line = child<QLineEdit>(parent);
    line.setAccessibleName(QLatin1String(name));
    line.setPlaceholderText(QLatin1String(hint));
    binder.bind(box, line);
    return line;
}

}  // namespace

RestoreView::RestoreView(keep::FrmRestore& window, FrameClock& clock)
    : FittedView(window, clock, kUsual, kSmallestText), window_(window) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeList(), 1);
    rows.addWidget(&makeChosen());
    rows.addWidget(&makeRestore());
    guard(window_.btnDelete, &keep::FrmRestore::deleteQuestion, "Delete");
    guard(window_.btnForget, &keep::FrmRestore::forgetQuestion, "Leave it so");
    fitTexts();
}

QLayout& RestoreView::makeHead() {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(
        &makeLine(window_.txtFilter, "Filter", "Filter: words, all of which must be there", binder(), &content()), 1);
    auto& count = child<QLabel>(&content());
    binder().bind(window_.lblCount, count);
    row.addWidget(&count);
    row.addWidget(&makeButton(window_.btnMake, 'm', binder(), &content()));
    return row;
}

QWidget& RestoreView::makeList() {
    auto& card = child<Card>(&content());
    auto& rows = child<QVBoxLayout>(static_cast<QWidget*>(&card));
    rows.setSpacing(kSpacing);
    rows.addLayout(&makeHead());
    auto& table = child<PointTable>(static_cast<QWidget*>(&card), window_.lstPoints);
    table.setAccessibleName(QString::fromStdString(window_.lstPoints.label()));
    PointTable::bind(binder(), window_.lstPoints, table);
    rows.addWidget(&table, 1);
    card.fitMargins();
    return card;
}

QWidget& RestoreView::makeChosen() {
    auto& card = child<Card>(&content(), QStringLiteral("Picked point"));
    QWidget* const inside = &card;
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kSpacing);
    auto& point = makeWords(window_.lblPoint, binder(), inside);
    point.setWordWrap(false);  // one line in the windows' usual sizes, which a card of fixed height has room for
    point.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    rows.addWidget(&point);
    rows.addWidget(&makeWords(window_.lblOther, binder(), inside));
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(&makeLine(window_.txtNote, "Note", "Note", binder(), inside), 1);
    row.addWidget(&makeButton(window_.btnNote, 'k', binder(), inside));
    row.addWidget(&makeButton(window_.btnCompare, 'c', binder(), inside));
    row.addWidget(&makeButton(window_.btnExportTune, 't', binder(), inside));
    row.addWidget(&makeButton(window_.btnExportImage, 'x', binder(), inside));
    row.addWidget(&makeButton(window_.btnDelete, 'd', binder(), inside));
    rows.addLayout(&row);
    card.fitMargins();
    return card;
}

QWidget& RestoreView::makeRestore() {
    auto& card = child<Card>(&content(), QStringLiteral("Restore"));
    QWidget* const inside = &card;
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& rows = child<QVBoxLayout>(inside);
    rows.setSpacing(kSpacing);
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(&makeBox(window_.chkFuel, 'f', binder(), inside));
    row.addWidget(&makeBox(window_.chkIgnition, 'i', binder(), inside));
    row.addWidget(&makeBox(window_.chkPwm, 'p', binder(), inside));
    row.addWidget(&makeBox(window_.chkSettings, 's', binder(), inside));
    row.addWidget(&makeBox(window_.chkDesk, 'e', binder(), inside));
    row.addStretch(1);
    row.addWidget(
        &makeWorkBar(window_.prgRestore, binder(), inside, QStringLiteral("Restoring"), QStringLiteral("%p%")));
    row.addWidget(&makeButton(window_.btnStop, 'o', binder(), inside));
    row.addWidget(&makeButton(window_.btnRestore, 'r', binder(), inside));
    rows.addLayout(&row);
    rows.addWidget(&makeWords(window_.lblState, binder(), inside));
    rows.addLayout(&makeOffer(inside));
    card.fitMargins();
    return card;
}

QLayout& RestoreView::makeOffer(QWidget* inside) {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(&makeWords(window_.lblOffer, binder(), inside), 1);
    row.addWidget(&makeButton(window_.btnGoOn, 'g', binder(), inside));
    row.addWidget(&makeButton(window_.btnGoBack, 'b', binder(), inside));
    row.addWidget(&makeButton(window_.btnForget, 'l', binder(), inside));
    return row;
}

void RestoreView::guard(const controls::Control& button, std::string (keep::FrmRestore::*question)() const,
                        const char* yes) {
    binder().setGuard(button, [this, question, yes] {
        const auto text = (window_.*question)();
        return text.empty() ||
               window_.machine()
                   .dialogs.ask({.title = "Restore points", .text = text, .yes = yes, .no = "Cancel", .stop = {}})
                   .yes;
    });
}

}  // namespace korvane::views
