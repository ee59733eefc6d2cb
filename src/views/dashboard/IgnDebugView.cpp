#include "views/dashboard/IgnDebugView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/Readout.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsualSize(36, 27);  // of the text's
constexpr int kLineGap = 6;
constexpr int kColumnGap = 20;
constexpr int kDigits = 5;
constexpr double kWordScale = 1.55;
constexpr double kErrorScale = 1.2;
constexpr int kErrorColumn = 2;

}  // namespace

IgnDebugView::IgnDebugView(live::FrmIGNDebug& window, FrameClock& clock)
    : FittedView(window, clock, kUsualSize), window_(window) {
    auto& rows = child<QVBoxLayout>(&content());
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeWords(), 1);
    rows.addWidget(&makeSparks());
    binder().setTabOrder({&window_.Command1, &window_.Command2, &window_.txtSparks, &window_.btnCleanSparkPlugs});
}

Card& IgnDebugView::makeWords() {
    auto& card = child<Card>(&content());
    auto& grid = child<QGridLayout>(&card);
    grid.setHorizontalSpacing(kColumnGap);
    grid.setVerticalSpacing(kLineGap);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(kErrorColumn, 1);
    grid.addWidget(&child<QLabel>(&card, QStringLiteral("Errors")), 0, kErrorColumn, Qt::AlignRight);
    addWord(card, grid, QStringLiteral("IgnDebug"), window_.lblIgnDeb, &window_.lblIgnErr);
    addWord(card, grid, QStringLiteral("SparkDebug"), window_.lblSparkDeb, &window_.lblSparkErr);
    addWord(card, grid, QStringLiteral("rpm_t"), window_.lblRPMticks, nullptr);
    addWord(card, grid, QStringLiteral("ennakko_t"), window_.lblEnnakkoTicks, nullptr);
    auto& buttons = child<QHBoxLayout>(kNobody);
    buttons.setSpacing(kSpacing);
    for (const auto& [button, mnemonic] : {std::pair{&window_.Command1, 's'}, std::pair{&window_.Command2, 't'}}) {
        auto& push = child<QPushButton>(&card);
        binder().bind(*button, push, mnemonic);
        buttons.addWidget(&push);
    }
    buttons.addStretch(1);
    grid.addLayout(&buttons, grid.rowCount(), 0, 1, kErrorColumn + 1);
    card.fitMargins();
    return card;
}

void IgnDebugView::addWord(Card& card, QGridLayout& grid, const QString& name, controls::Label& word,
                           controls::Label* errors) {
    const int row = grid.rowCount();
    auto& value = child<Readout>(&card, Readout::Look{.scale = kWordScale, .bold = true, .alignment = Qt::AlignRight});
    value.setReserve(QStringLiteral("65535"));
    value.setAccessibleName(name);
    binder().bind(word, value);
    grid.addWidget(&child<QLabel>(&card, name), row, 0);
    grid.addWidget(&value, row, 1);
    grid.setRowStretch(row, 1);
    if (errors != nullptr) {
        auto& count = child<Readout>(&card, Readout::Look{.scale = kErrorScale, .alignment = Qt::AlignRight});
        count.setReserve(QStringLiteral("1000000"));
        count.setAccessibleName(QStringLiteral("Errors ") + name);
        binder().bind(*errors, count);
        grid.addWidget(&count, row, kErrorColumn);
    }
}

Card& IgnDebugView::makeSparks() {
    auto& card = child<Card>(&content());
    auto& row = child<QHBoxLayout>(&card);
    row.setSpacing(kSpacing);
    binder().bind(window_.FrameSparks, card);
    auto& count = child<ValueBox>(&card, kDigits);
    count.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    count.setAccessibleName(QStringLiteral("Hundreds of sparks"));
    binder().bind(window_.txtSparks, count);
    auto& clean = child<QPushButton>(&card);
    binder().bind(window_.btnCleanSparkPlugs, clean, 'c');
    row.addWidget(&count);
    row.addWidget(&clean);
    row.addStretch(1);
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
