#include "views/dashboard/IgnDebugView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/frame/ObjectPart.h"
#include "views/widgets/Caption.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/Readout.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsualSize(36, 27);  // of the text's
constexpr int kColumns = 2;
constexpr int kTileGap = 6;
constexpr int kTileMargin = 9;
constexpr double kScale = 1.55;  // of the words
constexpr int kDigits = 5;
const QString kErrors = QStringLiteral("Errors");

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
    auto& rows = child<QVBoxLayout>(&card);
    rows.setSpacing(kSpacing);
    auto& grid = child<QGridLayout>(kNobody);
    grid.setSpacing(kTileGap);
    for (int column = 0; column < kColumns; ++column) {
        grid.setColumnStretch(column, 1);
    }
    addTile(card, grid, QStringLiteral("IgnDebug"), window_.lblIgnDeb);
    addTile(card, grid, kErrors, window_.lblIgnErr).setAccessibleName(kErrors + QStringLiteral(" IgnDebug"));
    addTile(card, grid, QStringLiteral("SparkDebug"), window_.lblSparkDeb);
    addTile(card, grid, kErrors, window_.lblSparkErr).setAccessibleName(kErrors + QStringLiteral(" SparkDebug"));
    addTile(card, grid, QStringLiteral("rpm_t"), window_.lblRPMticks);
    addTile(card, grid, QStringLiteral("ennakko_t"), window_.lblEnnakkoTicks);
    rows.addLayout(&grid, 1);
    auto& buttons = child<QHBoxLayout>(kNobody);
    buttons.setSpacing(kSpacing);
    for (const auto& [button, mnemonic] : {std::pair{&window_.Command1, 's'}, std::pair{&window_.Command2, 't'}}) {
        auto& push = child<QPushButton>(&card);
        binder().bind(*button, push, mnemonic);
        buttons.addWidget(&push);
    }
    buttons.addStretch(1);
    rows.addLayout(&buttons);
    card.fitMargins();
    return card;
}

Readout& IgnDebugView::addTile(Card& card, QGridLayout& grid, const QString& name, controls::Label& label) {
    auto& tile = child<Tile>(&card);
    auto& rows = child<QVBoxLayout>(&tile);
    rows.setContentsMargins(kTileMargin, kTileMargin / 2, kTileMargin, kTileMargin / 2);
    rows.setSpacing(0);
    auto& value =
        child<Readout>(&tile, Readout::Look{.scale = kScale, .bold = true, .growing = true, .ground = Ground::Tile});
    value.setReserve(QStringLiteral("1000000"));
    binder().bind(label, value);
    ObjectPart::bind(binder(), {&window_.wordsAge}, [&value, &age = window_.wordsAge] { value.setDimmed(!age.Fresh); });
    rows.addWidget(&child<Caption>(&tile, name, &value));
    rows.addWidget(&value, 1);
    const int place = grid.count();
    grid.addWidget(&tile, place / kColumns, place % kColumns);
    return value;
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
