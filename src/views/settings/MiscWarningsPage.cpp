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
    group.addValue(labelOf(window.txtBoostIgnCut), window.txtBoostIgnCut, kWordDigits);
    group.addValue(labelOf(window.txtColdRPMlimit), window.txtColdRPMlimit, kWordDigits);
    group.addValue(labelOf(window.txtWaterWarning), window.txtWaterWarning, kWordDigits);
    group.addValue(labelOf(window.txtOilWarning), window.txtOilWarning, kWordDigits);
    group.addValue(labelOf(window.txtAirWarning), window.txtAirWarning, kWordDigits);
    group.addValue(labelOf(window.txtTemp4Warning), window.txtTemp4Warning, kWordDigits);
    group.startColumn();
    group.addValue(labelOf(window.txtVolt1Warning), window.txtVolt1Warning, kWordDigits, measured);
    group.addValue(labelOf(window.txtVolt2Warning), window.txtVolt2Warning, kWordDigits, measured);
    group.addValue(labelOf(window.txtVolt3Warning), window.txtVolt3Warning, kWordDigits, measured);
    group.addValue(labelOf(window.txtVolt4Warning), window.txtVolt4Warning, kWordDigits, measured);
    group.addButton(window.btnSaveWarnings, 's');
    PageRows rows(page);
    rows.add({{group.card(), 1}});
    rows.close();
}

void fillLaunchPage(settings::MiscControls& window, Binder& binder, QWidget* page) {
    GroupCard group(window.FrameLaunch, binder, page);
    group.addValue(labelOf(window.txtLaunchcontrol), window.txtLaunchcontrol, kWordDigits, QStringLiteral("rpm"));
    group.addChoice(labelOf(window.Combolaunchmode), window.Combolaunchmode);
    group.addValue(labelOf(window.txtlaunchdelay), window.txtlaunchdelay, kWordDigits);
    group.addValue(labelOf(window.txtflatshiftstartdelay), window.txtflatshiftstartdelay, kWordDigits);
    group.addValue(labelOf(window.txtflatshiftstopdelay), window.txtflatshiftstopdelay, kWordDigits);
    group.startColumn();
    group.addValue(labelOf(window.txtALS_fuel), window.txtALS_fuel, kAlsDigits);
    group.addValue(labelOf(window.txtALS_ign_retard), window.txtALS_ign_retard, kAlsDigits);
    group.addValue(labelOf(window.txtAccelLimiterMode), window.txtAccelLimiterMode, kWordDigits);
    group.addValue(labelOf(window.txtAccelLimiterValue), window.txtAccelLimiterValue, kWordDigits);
    group.addButton(window.btnLaunchHelp, 'p');
    group.addButton(window.btnSaveALSsettings, 's');
    PageRows rows(page);
    rows.add({{group.card(), 1}});
    rows.addNote(steppedLegend());
    rows.close();
}

}  // namespace korvane::views
