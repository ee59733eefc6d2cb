// A part of MiscPages: the page "Lambda".
#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"
#include "views/widgets/Caption.h"
#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

Card& makeType(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameLambdaType, binder, page);
    group.addOptions(window.optLambdaType, Qt::Vertical);
    group.addButton(window.btnSaveLambdaType, 's');
    return group.card();
}

Card& makeCorrection(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameLambda, binder, page);
    QStringList heads;
    for (int i = 1; i <= window.txtLambdaTav.count(); ++i) {
        heads += QString::number(i);
    }
    group.addHeads({}, heads);
    group.addCells(QStringLiteral("Setpoint"), QStringLiteral("Lambda setpoint"), window.txtLambdaTav, kByteDigits);
    group.addCells(QStringLiteral("Authority"), QStringLiteral("Lambda authority"), window.txtLambdaVaik, kByteDigits);
    auto& line = child<Caption>(
        &group.card(), QStringLiteral("Not filled: the ECU has not sent these values. Save sends an empty box as 0."),
        kNobody);
    line.setObjectName(QStringLiteral("lambdaLine"));
    group.add(line);
    group.addButton(window.btnSaveLambda, 'a');
    return group.card();
}

Card& makeIdleFuel(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameIdlemap, binder, page);
    group.addTable(QStringLiteral("RPM"), thousands(500, 100, window.txtInjIdleMap.count()),
                   QStringLiteral("Idle Fuel"), window.txtInjIdleMap, kByteDigits);
    group.addButton(window.btnSaveIdlemap, 'v');
    return group.card();
}

}  // namespace

void fillLambdaPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    PageRows rows(page);
    rows.add({{makeType(window, binder, page), 2}, {makeCorrection(window, binder, page), 7}});
    rows.add({{makeIdleFuel(window, binder, page), 1}});
    rows.close();
}

}  // namespace korvane::views
