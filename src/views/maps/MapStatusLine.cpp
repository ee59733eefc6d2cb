#include "views/maps/MapStatusLine.h"

#include <QCheckBox>
#include <QHBoxLayout>

#include <vector>

#include "maps/panes/MapStatus.h"
#include "views/frame/ObjectPart.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kGap = 14;
constexpr int kMargin = 1;       // above and below; the grids need the height
constexpr double kScale = 0.92;  // of the usual text
constexpr const char* kLongestUnsent = "Not sent: 160 fuel, 160 ignition";

// What the line tells of may have changed with a cell, the focus, the caption or what the ECU has.
std::vector<controls::Object*> toldOf(maps::PaneWindow& window) {
    auto& ecu = window.context().connection.ecuMaps;
    std::vector<controls::Object*> objects{&window, &ecu.fuel, &ecu.ignition, &ecu.pwm};
    for (auto* const pane : window.panes()) {
        if (auto* const grid = pane->paneGrid()) {
            objects.push_back(grid);
            for (auto& cell : grid->cells) {
                objects.push_back(&cell);
            }
        }
    }
    return objects;
}

void bindStatus(maps::PaneWindow& window, Binder& binder, Readout& cell, Readout& unsent) {
    ObjectPart::bind(binder, toldOf(window), [&window, &cell, &unsent] {
        const auto status = maps::statusOf(window);
        const bool both = !status.cell.empty() && !status.block.empty();
        cell.setText(QString::fromStdString(status.cell + (both ? "; " : "") + status.block));
        unsent.setReserve(status.unsent.empty() ? QString() : QString::fromLatin1(kLongestUnsent));
        unsent.setText(QString::fromStdString(status.unsent));
    });
}

struct LookWords {
    const char* name;
    const char* caption;
    const char* toolTip;
};
constexpr LookWords kHeatWords{"heatTint", "Heat",
                               "A bar in each cell shows how high its number is: dark blue is the lowest, yellow the "
                               "highest of the map"};
constexpr LookWords kAlignWords{"alignNumbers", "Align", "Writes the decimal points of a column below each other"};

// A choice of the look.
QCheckBox& makeBox(maps::GridLook& look, controls::Property<bool>& choice, const LookWords& words, Binder& binder,
                   QWidget* parent) {
    auto& box = child<QCheckBox>(parent);
    box.setObjectName(QLatin1String(words.name));
    box.setText(QLatin1String(words.caption));
    box.setToolTip(QLatin1String(words.toolTip));
    QObject::connect(&box, &QCheckBox::clicked, &box,
                     [&choice, &binder](bool on) { binder.act([&choice, on] { choice = on; }); });
    ObjectPart::bind(binder, {&look}, [&choice, &box] { box.setChecked(choice); });
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
    // However long it is, it does not make the window wider.
    cell.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    row.addWidget(&cell, 1);
    row.addWidget(&unsent);
    row.addWidget(&makeBox(window.look, window.look.HeatTint, kHeatWords, binder, &line));
    row.addWidget(&makeBox(window.look, window.look.AlignNumbers, kAlignWords, binder, &line));
    bindStatus(window, binder, cell, unsent);
    row.setContentsMargins(Card::kPadding, kMargin, Card::kPadding, kMargin);
    return line;
}

}  // namespace korvane::views
