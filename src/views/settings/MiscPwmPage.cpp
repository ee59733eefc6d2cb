// A part of MiscPages: the page "PWM, Boost, idle".
#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

Card& makeOutput(controls::Frame& frame, controls::ControlArray<controls::OptionButton>& options, Binder& binder,
                 QWidget* parent) {
    GroupCard group(frame, binder, parent);
    group.addOptions(options, Qt::Vertical);
    return group.card();
}

// Both outputs are saved together.
Card& makeOutputs(settings::MiscControls& window, Binder& binder, QWidget* page) {
    auto& card = child<Card>(page, QStringLiteral("PWM outputs"));
    QWidget* const inside = &card;
    auto& grid = child<QGridLayout>(inside);
    grid.setSpacing(kSpacing);
    grid.addWidget(&makeOutput(window.FramePWM1, window.OptionPWM1, binder, inside), 0, 0);
    grid.addWidget(&makeOutput(window.FramePWM2, window.OptionPWM2, binder, inside), 0, 1);
    grid.addWidget(&makeCommand(window.btnPWMmode, 's', binder, inside), 1, 1, Qt::AlignRight);
    card.fitMargins();
    return card;
}

Card& makeIdleValve(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameIdleValve, binder, page);
    group.addHeads({}, {"rpm Setpoint", "% min", "% max"});
    group.addCells({}, QStringLiteral("Idle valve"),
                   {&window.txtIdleValveSetpoint, &window.txtIdleValveMin, &window.txtIdleValveMax}, kWordDigits);
    group.addButton(window.btnSaveIdleValve, 'a');
    return group.card();
}

Card& makeBoost(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameBoost, binder, page);
    group.addTable(QStringLiteral("RPM"), thousands(1000, 500, window.txtBoostTav.count()), QStringLiteral("Boost"),
                   window.txtBoostTav, kByteDigits);
    group.addNote(QStringLiteral("MPX sensor: value in 10mbars --> 1bar boost = 200, 1.25bar=225"));
    group.addNote(QStringLiteral("Other sensors:  max boost = 250, smaller value = lowerboost"));
    group.addButton(window.btnSaveBoost, 'v');
    return group.card();
}

}  // namespace

void fillPwmPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    PageRows rows(page);
    rows.add({{makeOutputs(window, binder, page), 1}, {makeIdleValve(window, binder, page), 1}});
    rows.add({{makeBoost(window, binder, page), 1}});
    rows.close();
}

}  // namespace korvane::views
