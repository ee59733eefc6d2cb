// Opens the right map window, and owns the map windows.
#pragma once

#include <memory>

#include "controls/WindowShelf.h"
#include "link/Windows.h"
#include "maps/MapForm.h"
#include "maps/transfer/MapContext.h"
#include "platform/Machine.h"

namespace korvane::program {

// Each opening makes a window anew, so that it starts as designed; there is one frmMaps at a time. The dispatcher, the
// live update and the analyser use the newest.
class MapWindows {
public:
    MapWindows(platform::Machine& machine, const maps::MapContext& context, link::Windows& windows);

    // The window for the firmware type that the ECU has named.
    void open();
    void openLarge();
    void unloadAll() { shelf_.unloadAll(); }

    // Redraws frmMaps' edited fuel map, if frmMaps is open.
    void populateFuelOUT();

private:
    void openOrdinary();
    void show(std::unique_ptr<maps::MapForm> window);
    void closed(maps::MapForm& window);

    platform::Machine& machine_;
    const maps::MapContext& context_;
    link::Windows& windows_;
    controls::WindowShelf shelf_;
    maps::MapForm* frmMaps_ = nullptr;
};

}  // namespace korvane::program
