// A part of MiscPages: the pages "Warnings" and "Launch/ALS".
#include "views/frame/GroupCard.h"
#include "views/settings/MiscPages.h"

namespace korvane::views {

namespace {
constexpr int kAlsDigits = 4;  // "67.5"
}

// The names of the air and the fourth temperature are exchanged on purpose: users know the boxes that way.
void fillWarningsPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    const QString measured = QStringLiteral("meas");
    GroupCard group(window.FrameWarnings, binder, page);
    group.addNote(QStringLiteral("HUOM arvo 0 poistaa hälytyksen käytöstä."));
    group.addValue(QStringLiteral("Boost Ignition CUT"), window.txtBoostIgnCut, kWordDigits);
    group.addValue(QStringLiteral("cold RPM limit, active while choke is ON"), window.txtColdRPMlimit, kWordDigits);
    group.addValue(QStringLiteral("Water temperature, forced RPM-limiter (2500)"), window.txtWaterWarning, kWordDigits);
    group.addValue(QStringLiteral("Oil temperature, forced RPM-limiter (2500)"), window.txtOilWarning, kWordDigits);
    group.addValue(QStringLiteral("Temperature4 Warning"), window.txtAirWarning, kWordDigits);
    group.addValue(QStringLiteral("Air temperatureWarning"), window.txtTemp4Warning, kWordDigits);
    group.startColumn();
    group.addValue(QStringLiteral("Volt1 Warning"), window.txtVolt1Warning, kWordDigits, measured);
    group.addValue(QStringLiteral("Volt2 Warning"), window.txtVolt2Warning, kWordDigits, measured);
    group.addValue(QStringLiteral("Volt3 Warning"), window.txtVolt3Warning, kWordDigits, measured);
    group.addValue(QStringLiteral("Volt4 Warning"), window.txtVolt4Warning, kWordDigits, measured);
    group.addButton(window.btnSaveWarnings, 's');
    PageRows rows(page);
    rows.add({{group.card(), 1}});
    rows.close();
}

void fillLaunchPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameLaunch, binder, page);
    group.addValue(QStringLiteral("Launch control rpm limit"), window.txtLaunchcontrol, kWordDigits,
                   QStringLiteral("rpm"));
    group.addChoice(QStringLiteral("Mode"), window.Combolaunchmode);
    group.addValue(QStringLiteral("Launch stop delay"), window.txtlaunchdelay, kWordDigits);
    group.addValue(QStringLiteral("Flat shift start delay"), window.txtflatshiftstartdelay, kWordDigits);
    group.addValue(QStringLiteral("Flat shift stop delay"), window.txtflatshiftstopdelay, kWordDigits);
    group.startColumn();
    group.addValue(QStringLiteral("ALS, Fuel enrichment (%)"), window.txtALS_fuel, kAlsDigits);
    group.addValue(QStringLiteral("ALS, ignition advance  (degrees) after TDC"), window.txtALS_ign_retard, kAlsDigits);
    group.addValue(QStringLiteral("Acceleration limiter mode"), window.txtAccelLimiterMode, kWordDigits);
    group.addValue(QStringLiteral("Acceleration limiter value"), window.txtAccelLimiterValue, kWordDigits);
    group.addButton(window.btnLaunchHelp, 'p');
    group.addButton(window.btnSaveALSsettings, 's');
    PageRows rows(page);
    rows.add({{group.card(), 1}});
    rows.addNote(steppedLegend());
    rows.close();
}

}  // namespace korvane::views
