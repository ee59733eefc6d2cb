#include "maps/panes/ToolPane.h"

#include "maps/Frm3Dmap.h"
#include "maps/MapHelp.h"
#include "platform/Machine.h"

namespace korvane::maps {

ToolPane::ToolPane(PaneWindow& window) : MapPane(window), btnShow3D(window, "btnShow3D"), btnHelp(window, "btnHelp") {
    btnShow3D.Caption = "3D map";
    btnShow3D.Click = [this] {
        prepare3D();
        paneWindow().context().frm3Dmap.open();
    };
    btnHelp.Caption = "Ohje";
    btnHelp.Click = [this] { showMapHelp(paneWindow().machine().dialogs); };
}

}  // namespace korvane::maps
