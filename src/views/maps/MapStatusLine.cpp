#include "views/maps/MapStatusLine.h"

#include <QCheckBox>
#include <QHBoxLayout>

#include <initializer_list>
#include <memory>

#include "maps/panes/MapStatus.h"
#include "views/frame/PartWatch.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kGap = 14;
constexpr int kMargin = 1;       // above and below; the grids need the height
constexpr double kScale = 0.92;  // of the usual text
constexpr const char* kLongestUnsent = "Not sent: 160 fuel, 160 ignition";

struct StatusWidgets {
    Readout& cell;
    Readout& unsent;
};

// Anything that the line tells of may have changed with a cell, the focus, the caption or what the ECU has.
class MapStatusBinding : public BoundPart {
public:
    MapStatusBinding(maps::PaneWindow& window, Binder& binder, const StatusWidgets& widgets)
        : window_(window), widgets_(widgets), watch_(binder, *this) {
        auto& ecu = window.context().connection.ecuMaps;
        for (controls::Object* const object :
             std::initializer_list<controls::Object*>{&window, &ecu.fuel, &ecu.ignition, &ecu.pwm}) {
            watch_.add(*object);
        }
        for (auto* const pane : window.panes()) {
            if (auto* const grid = pane->paneGrid()) {
                watchGrid(*grid);
            }
        }
    }

    void show() override {
        watch_.shown();
        const auto status = maps::statusOf(window_);
        const bool both = !status.cell.empty() && !status.block.empty();
        widgets_.cell.setText(QString::fromStdString(status.cell + (both ? "; " : "") + status.block));
        widgets_.unsent.setText(QString::fromStdString(status.unsent));
    }
    void showColorsAgain() override {}
    void detach(const ControlSet&) override { watch_.stop(); }

private:
    void watchGrid(maps::MapGrid& grid) {
        watch_.add(grid);
        for (auto& cell : grid.cells) {
            watch_.add(cell);
        }
    }

    maps::PaneWindow& window_;
    StatusWidgets widgets_;
    PartWatch watch_;
};

// A choice of the look and its box.
class LookBinding : public BoundPart {
public:
    LookBinding(maps::GridLook& look, controls::Property<bool>& choice, Binder& binder, QCheckBox& box)
        : choice_(choice), box_(box), watch_(binder, *this) {
        watch_.add(look);
        QObject::connect(&box, &QCheckBox::clicked, &box,
                         [this, &binder](bool on) { binder.act([this, on] { choice_ = on; }); });
    }

    void show() override {
        watch_.shown();
        box_.setChecked(choice_);
    }
    void showColorsAgain() override {}
    void detach(const ControlSet&) override { watch_.stop(); }

private:
    controls::Property<bool>& choice_;
    QCheckBox& box_;
    PartWatch watch_;
};

struct LookWords {
    const char* name;
    const char* caption;
    const char* toolTip;
};
constexpr LookWords kHeatWords{"heatTint", "Heat",
                               "A bar in each cell shows how high its number is: dark blue is the lowest, yellow the "
                               "highest of the map"};
constexpr LookWords kAlignWords{"alignNumbers", "Align", "Writes the decimal points of a column below each other"};

QCheckBox& makeBox(maps::GridLook& look, controls::Property<bool>& choice, const LookWords& words, Binder& binder,
                   QWidget* parent) {
    auto& box = child<QCheckBox>(parent);
    box.setObjectName(QLatin1String(words.name));
    box.setText(QLatin1String(words.caption));
    box.setToolTip(QLatin1String(words.toolTip));
    binder.bind(std::make_unique<LookBinding>(look, choice, binder, box), {}, box);
    return box;
}

Readout& makeReadout(const char* name, const char* spoken, Qt::Alignment alignment, QWidget* parent) {
    auto& readout =
        child<Readout>(parent, Readout::Look{.scale = kScale, .alignment = alignment, .ground = Ground::Tile});
    readout.setObjectName(QLatin1String(name));
    readout.setAccessibleName(QLatin1String(spoken));
    return readout;
}

}  // namespace

QWidget& makeMapStatusLine(maps::PaneWindow& window, Binder& binder, QWidget* parent) {
    auto& line = child<Tile>(parent);
    line.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto& row = child<QHBoxLayout>(&line);
    row.setSpacing(kGap);
    auto& cell = makeReadout("cellStatus", "Cell", Qt::AlignLeft, &line);
    auto& unsent = makeReadout("unsentStatus", "Not in the ECU", Qt::AlignRight, &line);
    unsent.setReserve(QLatin1String(kLongestUnsent));
    row.addWidget(&cell, 1);
    row.addWidget(&unsent);
    row.addWidget(&makeBox(window.look, window.look.HeatTint, kHeatWords, binder, &line));
    row.addWidget(&makeBox(window.look, window.look.AlignNumbers, kAlignWords, binder, &line));
    binder.bind(std::make_unique<MapStatusBinding>(window, binder, StatusWidgets{cell, unsent}), {}, line);
    row.setContentsMargins(Card::kPadding, kMargin, Card::kPadding, kMargin);
    return line;
}

}  // namespace korvane::views
