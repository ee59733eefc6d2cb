#include "views/InjScaleView.h"
#include "views/MainView.h"
#include "views/Map3DView.h"
#include "views/MapsView.h"
#include "views/MiscView.h"
#include "views/ViewHost.h"

namespace korvane::views {

void addViews(ViewHost& host) {
    host.add<MainView, live::FrmSarn2>("frmSarn2");
    host.add<FrmMapsView, maps::FrmMaps>("frmMaps");
    host.add<FrmMapsLargeView, maps::FrmMaps_Large>("frmMaps_Large");
    host.add<Map3DView, maps::Frm3Dmap>("frm3Dmap");
    host.add<InjScaleView, maps::FrmInjScale>("frmInjScale");
    host.add<MiscView, settings::FrmMisc>("frmMisc");
}

}  // namespace korvane::views
