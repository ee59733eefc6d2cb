// A part of MiscPages: the page "Injection".
#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"
#include "views/widgets/Child.h"
#include "views/widgets/values/GapLabel.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {

namespace {

Card& makeMode(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameInjMode, binder, page);
    group.addValue(labelOf(window.txtInjMode), window.txtInjMode, kByteDigits);
    group.addValue(labelOf(window.txtInjMultiplier), window.txtInjMultiplier, kByteDigits);
    group.addButton(window.btnInjMode, 's');
    return group.card();
}

Card& makeLongestTime(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameInj8ms, binder, page);
    group.addOptions(window.optInj8ms, Qt::Vertical);
    group.addNote(QStringLiteral("Information only."));
    return group.card();
}

Card& makeStartHelp(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameStartHelp, binder, page);
    group.addValue(labelOf(window.txtStart), window.txtStart, kScaledDigits, QStringLiteral("ms"));
    group.addValue(labelOf(window.txtStartHelpLen), window.txtStartHelpLen, kByteDigits);
    group.addValue(labelOf(window.txtRyyppy), window.txtRyyppy, kScaledDigits, QStringLiteral("ms"));
    group.addValue(labelOf(window.txtChokeEnd), window.txtChokeEnd, kByteDigits);
    group.addButton(window.btnStartHelp, 'a');
    return group.card();
}

Card& makeVoltage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameVolt, binder, page);
    group.addTable(QStringLiteral("V"), {"<13.5", "<13", "<12", "<10"}, QStringLiteral("Voltage correction"),
                   window.txtVolt, kScaledDigits);
    group.addButton(window.btnSaveVolt, 'v');
    return group.card();
}

Card& makeAdvance(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameInjAdv, binder, page);
    group.addTable(QStringLiteral("RPM"), thousands(1000, 500, window.txtInjAdv.count()),
                   QStringLiteral("Injection advance"), window.txtInjAdv, kByteDigits);
    group.addButton(window.btnSaveInjAdv, 'e');
    return group.card();
}

Card& makePump(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameAccel, binder, page);
    group.addTable({}, {"0", "10", "20", "30", "40", "50", "60", "70", "80", "90"}, QStringLiteral("Acceleration pump"),
                   window.txtAccel, kScaledDigits);
    auto& delay = child<GapLabel>(&group.card(), QStringLiteral("delay                               engine rounds"));
    auto& box = child<ValueBox>(&delay, kByteDigits);
    box.setAccessibleName(QStringLiteral("delay, engine rounds"));
    binder.bind(window.txtAccelDelay, box);
    delay.setBox(box);
    group.add(delay);
    group.addButton(window.btnAccel, 0);
    return group.card();
}

}  // namespace

void fillInjectionPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    PageRows rows(page);
    rows.add({{makeMode(window, binder, page), 3},
              {makeLongestTime(window, binder, page), 3},
              {makeStartHelp(window, binder, page), 4},
              {makeVoltage(window, binder, page), 6}});
    rows.add({{makeAdvance(window, binder, page), 1}});
    rows.add({{makePump(window, binder, page), 1}});
    rows.addNote(steppedLegend());
    rows.close();
}

}  // namespace korvane::views
