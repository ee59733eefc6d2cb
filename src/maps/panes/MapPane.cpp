#include "maps/panes/MapPane.h"

#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

MapPane::MapPane(PaneWindow& window) : window_(window) {
    window.addPane(*this);
}

}  // namespace korvane::maps
