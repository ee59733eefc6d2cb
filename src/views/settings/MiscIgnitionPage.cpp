// A part of MiscPages: the page "Ignition".
#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"

namespace korvane::views {

namespace {

Card& makeIdleIgnition(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameIdleAdv, binder, page);
    group.addTable(QStringLiteral("RPM"), {"500", "600", "700", "800", "900"}, QStringLiteral("Idle Ignition"),
                   window.txtIdleAdv, kByteDigits);
    group.addButton(window.btnSaveIdleAdv, 's');
    return group.card();
}

Card& makeChargeTime(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameChargeTime, binder, page);
    group.addValue(labelOf(window.txtchargetime), window.txtchargetime, kScaledDigits, QStringLiteral("ms"));
    group.addButton(window.btnSaveChargeTime, 'a');
    return group.card();
}

Card& makeSensorType(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameIgnEdge, binder, page);
    group.addValue(labelOf(window.txtIgnEdge), window.txtIgnEdge, kByteDigits);
    group.addNote(QStringLiteral("1 = Rising edge (hamlin), others = falling edge "));
    group.addButton(window.btnIgnEdge, 'v');
    return group.card();
}

Card& makeMotorbrake(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameMotorbrake, binder, page);
    group.addValue(labelOf(window.txtMotorBrakeLow), window.txtMotorBrakeLow, kWordDigits);
    group.addValue(labelOf(window.txtMotorBrakeHigh), window.txtMotorBrakeHigh, kWordDigits);
    group.addButton(window.btnSaveMotorbrake, 'e');
    return group.card();
}

}  // namespace

void fillIgnitionPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    PageRows rows(page);
    rows.add({{makeIdleIgnition(window, binder, page), 1}, {makeSensorType(window, binder, page), 1}});
    rows.add({{makeChargeTime(window, binder, page), 1}, {makeMotorbrake(window, binder, page), 1}});
    rows.addNote(steppedLegend());
    rows.close();
}

}  // namespace korvane::views
