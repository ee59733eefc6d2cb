#include "views/Views.h"

#include <QApplication>

#include "views/Accessibility.h"
#include "views/dashboard/BigTextView.h"
#include "views/dashboard/DoctorView.h"
#include "views/dashboard/IgnDebugView.h"
#include "views/dashboard/LinkView.h"
#include "views/dashboard/MainView.h"
#include "views/dashboard/MeterView.h"
#include "views/keep/CompareView.h"
#include "views/keep/RestoreView.h"
#include "views/maps/HistoryView.h"
#include "views/maps/IgnitionBoxView.h"
#include "views/maps/InjScaleView.h"
#include "views/maps/LimiterView.h"
#include "views/maps/Map3DView.h"
#include "views/maps/MapsView.h"
#include "views/maps/SteadyView.h"
#include "views/performance/PowerCalcView.h"
#include "views/settings/MiscView.h"
#include "views/trend/TrendView.h"

namespace korvane::views {

void addViews(ViewHost& host) {
    installAccessibility();
    host.add<MainView, live::FrmSarn2>("frmSarn2");
    host.add<DoctorView, doctor::FrmDoctor>("frmDoctor");
    host.add<LinkView, doctor::FrmLink>("frmLink");
    host.add<IgnDebugView, live::FrmIGNDebug>("frmIGNDebug");
    host.add<FrmMapsView, maps::FrmMaps>("frmMaps");
    host.add<FrmMapsLargeView, maps::FrmMaps_Large>("frmMaps_Large");
    host.add<IgnitionBoxView, maps::FrmMaps_QV_ign>("frmMaps_QV_ign");
    host.add<LimiterView, maps::FrmMaps_ign_limiter>("frmMaps_ign_limiter");
    host.add<Map3DView, maps::Frm3Dmap>("frm3Dmap");
    host.add<HistoryView, maps::FrmHistory>("frmHistory");
    host.add<SteadyView, maps::FrmSteady>("frmSteady");
    host.add<InjScaleView, maps::FrmInjScale>("frmInjScale");
    host.add<PowerCalcView, performance::FrmPowerCalc>("frmPowerCalc");
    host.add<MiscView, settings::FrmMisc>("frmMisc");
    host.add<BigTextView, live::FrmBigText>("frmBigText");
    host.add<MeterView, live::FrmMeter>("frmMeter");
    host.add<RestoreView, keep::FrmRestore>("frmRestore");
    host.add<CompareView, keep::FrmCompare>("frmCompare");
    host.add<TrendView, trend::FrmTrend_txt>("frmTrend_txt");
}

}  // namespace korvane::views
