// A part of MiscPages: the pages "Misc" and "Misc2".
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"
#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

constexpr int kGap = 6;

Card& makeMapSensor(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameMapSensor, binder, page);
    group.addChoice(QStringLiteral("Sensor"), window.ComboMapSensorType);
    return group.card();
}

// A button for each end, and the value that the ECU has stored for it.
void addEnd(GroupCard& group, QGridLayout& grid, controls::CommandButton& button, char mnemonic, controls::Label& value,
            Binder& binder) {
    QWidget* const parent = &group.card();
    auto& shown = child<QLabel>(parent);
    binder.bind(value, shown);
    const int row = grid.rowCount();
    grid.addWidget(&makeCommand(button, mnemonic, binder, parent), row, 0);
    grid.addWidget(&shown, row, 1);
}

Card& makeThrottle(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameThrottle, binder, page);
    auto& grid = child<QGridLayout>(kNobody);
    grid.setSpacing(kGap);
    grid.setColumnStretch(1, 1);
    addEnd(group, grid, window.btn0thr, '0', window.lblMINTHR, binder);
    addEnd(group, grid, window.btn100thr, 'f', window.lblMAXTHR, binder);
    group.add(grid);
    return group.card();
}

Card& makeTemperature(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameNTC, binder, page);
    group.addHeads({}, {"NTC1, water", "NTC2, air", "NTC3, oil", "NTC4", "Multiplier"});
    group.addCells({}, {},
                   {&window.txtNTC1, &window.txtNTC2, &window.txtNTC3, &window.txtNTC4, &window.txtNTCMultiplier},
                   kWordDigits);
    group.addNote(QStringLiteral("Measure the sensor at 25 C and enter ten times the value:"));
    group.addNote(QStringLiteral("2.2 kOhm is entered as 22"));
    group.addButton(window.btnSaveNTCCal, 's');
    return group.card();
}

Card& makeLoad(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameLoadCalc, binder, page);
    group.addValue(labelOf(window.txtLoadOffset), window.txtLoadOffset, kByteDigits);
    group.addValue(labelOf(window.txtLoadGain), window.txtLoadGain, kByteDigits, QStringLiteral("10 = factor 1"));
    group.addOptions(window.optLoadMode, Qt::Horizontal);
    group.addButton(window.btnLoadCalc, 'a');
    return group.card();
}

}  // namespace

void fillMiscPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    PageRows rows(page);
    rows.add({{makeMapSensor(window, binder, page), 1}, {makeThrottle(window, binder, page), 1}});
    rows.add({{makeTemperature(window, binder, page), 1}, {makeLoad(window, binder, page), 1}});
    rows.close();
}

void fillFlagsPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameFlags, binder, page);
    for (auto& flag : window.chkMisc2) {
        auto& check = child<QCheckBox>(&group.card());
        binder.bind(flag, check);
        group.add(check);
    }
    group.addButton(window.btnSaveMisc3, 's');
    PageRows rows(page);
    rows.add({{group.card(), 1}, {child<QWidget>(page), 1}});
    rows.close();
}

}  // namespace korvane::views
