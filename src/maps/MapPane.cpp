#include "maps/MapPane.h"

#include "maps/PaneWindow.h"

namespace korvane::maps {

MapPane::MapPane(PaneWindow& window) : window_(window) {
    window.addPane(*this);
}

}  // namespace korvane::maps
