// A part of MainParts: dials, gauge and the twelve values.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <vector>

#include "views/dashboard/MainParts.h"
#include "views/frame/ObjectPart.h"
#include "views/widgets/Caption.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/values/Dial.h"
#include "views/widgets/values/Gauge.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kDialStretch = 4;
constexpr int kGaugeStretch = 3;
constexpr int kValueColumns = 6;
constexpr int kTileGap = 6;
constexpr double kNameScale = 0.88;
constexpr double kValueScale = 1.55;

QLayout& makeAccel(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& row = child<QHBoxLayout>(kNobody);
    auto& accel = child<Readout>(parent, Readout::Look{.scale = 1.2, .bold = true});
    accel.setReserve(QStringLiteral("255"));
    accel.setFromEcu();
    binder.bind(window.lblAccel, accel);
    row.addStretch(1);
    row.addWidget(&child<Caption>(parent, QStringLiteral("Accel"), &accel));
    row.addWidget(&accel);
    row.addStretch(1);
    return row;
}

// The unit is at the end of the name's line, so that the number keeps the width of the tile.
Tile& makeValue(controls::Label& name, controls::Label& value, std::vector<Readout*>& units, Binder& binder,
                QWidget* parent) {
    auto& tile = child<Tile>(parent);
    auto& rows = child<QVBoxLayout>(&tile);
    rows.setContentsMargins(9, 4, 6, 4);
    rows.setSpacing(0);
    auto& nameText = child<Readout>(&tile, Readout::Look{.scale = kNameScale, .muted = true, .ground = Ground::Tile});
    auto& valueText = child<Readout>(
        &tile, Readout::Look{.scale = kValueScale, .bold = true, .growing = true, .ground = Ground::Tile});
    valueText.setReserve(QStringLiteral("14.7266"));
    valueText.setFromEcu();
    nameText.setReserve(QStringLiteral("Throttle"));
    binder.bind(value, valueText);
    binder.bind(name, nameText, &valueText);
    auto& unit = child<Readout>(
        &tile, Readout::Look{.scale = kNameScale, .muted = true, .alignment = Qt::AlignRight, .ground = Ground::Tile});
    unit.setObjectName(QStringLiteral("unit(%1)").arg(units.size()));
    unit.setReserve(QStringLiteral("of 256"));
    units.push_back(&unit);
    auto& head = child<QHBoxLayout>(kNobody);
    head.setSpacing(0);
    head.addWidget(&nameText, 1);
    head.addWidget(&unit);
    rows.addLayout(&head);
    rows.addWidget(&valueText, 1);
    return tile;
}

}  // namespace

QWidget& makeInstruments(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& row = child<QHBoxLayout>(&card);
    auto& rpm = child<Dial>(&card);
    auto& boost = child<Dial>(&card);
    auto& throttle = child<Gauge>(&card);
    for (Dimmable* const instrument :
         {static_cast<Dimmable*>(&rpm), static_cast<Dimmable*>(&boost), static_cast<Dimmable*>(&throttle)}) {
        instrument->setFromEcu();
    }
    binder.bind(window.SarnMeterRpm, rpm);
    binder.bind(window.SarnMeterboost, boost);
    binder.bind(window.SarnGauge3, throttle);
    row.addWidget(&rpm, kDialStretch);
    row.addWidget(&boost, kDialStretch);
    auto& side = child<QVBoxLayout>(kNobody);
    side.addWidget(&throttle, 1);
    side.addLayout(&makeAccel(window, binder, &card));
    row.addLayout(&side, kGaugeStretch);
    card.fitMargins();
    return card;
}

QWidget& makeValues(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& grid = child<QGridLayout>(&card);
    grid.setSpacing(kTileGap);
    binder.bind(window.FrameValues, card);
    std::vector<Readout*> units;
    for (int i = 0; i < window.lblValue.count(); ++i) {
        grid.addWidget(&makeValue(window.lblValueName(i), window.lblValue(i), units, binder, &card), i / kValueColumns,
                       i % kValueColumns);
    }
    ObjectPart::bind(binder, {&window.valueUnits}, [&shown = window.valueUnits, units] {
        for (std::size_t i = 0; i < units.size(); ++i) {
            units[i]->setText(QString::fromStdString(shown.of(i)));
        }
    });
    for (int column = 0; column < kValueColumns; ++column) {
        grid.setColumnStretch(column, 1);
    }
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
