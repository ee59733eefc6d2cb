#include "views/MainView.h"
#include "views/ViewHost.h"

namespace korvane::views {

void addViews(ViewHost& host) {
    host.add<MainView, live::FrmSarn2>("frmSarn2");
}

}  // namespace korvane::views
