// A part of MainParts: lamps and inputs.
#include <QGridLayout>
#include <QVBoxLayout>

#include "views/dashboard/MainParts.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kRowGap = 2;
constexpr int kColumnGap = 8;
constexpr double kNameScale = 0.92;

// Rows of two; the column `wide` takes what is left.
QGridLayout& makePairs(Card& card, int wide) {
    auto& grid = child<QGridLayout>(&card);
    grid.setVerticalSpacing(kRowGap);
    grid.setHorizontalSpacing(kColumnGap);
    grid.setColumnStretch(wide, 1);
    return grid;
}

void addPair(QGridLayout& grid, QWidget& left, QWidget& right) {
    const int row = grid.count() / 2;
    grid.addWidget(&left, row, 0);
    grid.addWidget(&right, row, 1);
}

Card& makeLamps(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent, QStringLiteral("Status"));
    auto& grid = makePairs(card, 1);
    binder.bind(window.FrameLeds, card);
    for (int n = 0; n < window.imgLed.count(); ++n) {
        auto& lamp = child<Lamp>(&card);
        auto& name = child<Readout>(&card);
        name.setReserve(QStringLiteral("IgnChargeError"));
        lamp.setFromEcu();
        binder.bind(window.imgLed(n), lamp);
        binder.bind(window.lblLED(n), name, &lamp);
        addPair(grid, lamp, name);
    }
    card.fitMargins();
    return card;
}

Card& makeInputs(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& grid = makePairs(card, 0);
    binder.bind(window.FrameMux, card);
    for (int i = 0; i < window.lblValueMux.count(); ++i) {
        auto& name = child<Readout>(&card, Readout::Look{.scale = kNameScale, .muted = true});
        auto& value = child<Readout>(&card, Readout::Look{.bold = true, .alignment = Qt::AlignRight});
        name.setReserve(QStringLiteral("Oil pressure"));
        value.setReserve(QStringLiteral("4095"));
        value.setFromEcu();
        binder.bind(window.lblValueMux(i), value);
        binder.bind(window.lblValueMuxName(i), name, &value);
        addPair(grid, name, value);
    }
    card.fitMargins();
    return card;
}

}  // namespace

QWidget& makeStatusColumn(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& column = child<QWidget>(parent);
    column.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto& rows = child<QVBoxLayout>(&column);
    rows.setContentsMargins(0, 0, 0, 0);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeLamps(window, binder, &column), window.imgLed.count());
    rows.addWidget(&makeInputs(window, binder, &column), window.lblValueMux.count());
    return column;
}

}  // namespace korvane::views
