// What a map window opens beside itself: the 3D view and the help.
#pragma once

#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

class ToolPane : public MapPane {
public:
    explicit ToolPane(PaneWindow& window);

    controls::CommandButton btnShow3D, btnHelp;

protected:
    // Before the 3D view opens. A window of ordinary maps leaves the view's sizes as they are, also those of a large
    // one.
    virtual void prepare3D() {}
};

}  // namespace korvane::maps
