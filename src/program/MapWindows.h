// Which map window opens, and how long each lives.
#pragma once

#include <memory>
#include <vector>

#include "link/Windows.h"
#include "maps/MapContext.h"
#include "maps/MapForm.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::program {

// Each opening makes a window anew, so that it starts as designed; frmMaps is one at a time. The newest is the one that
// the dispatcher, the live update and the analyser know. A closed window stays alive until no handler of it runs.
class MapWindows {
public:
    MapWindows(platform::Machine& machine, const maps::MapContext& context, link::Windows& windows);

    // The window for the firmware type that the ECU has named.
    void open();
    void openLarge();
    void unloadAll();

    // Redraws frmMaps' edited fuel map, if frmMaps is open.
    void populateFuelOUT();

private:
    void openOrdinary();
    void show(std::unique_ptr<maps::MapForm> window);
    void closed(maps::MapForm& window);
    void sweep();

    platform::Machine& machine_;
    const maps::MapContext& context_;
    link::Windows& windows_;
    std::vector<std::unique_ptr<maps::MapForm>> open_;  // the newest last
    std::vector<std::unique_ptr<maps::MapForm>> closed_;
    maps::MapForm* frmMaps_ = nullptr;
    std::unique_ptr<platform::Alarm> sweep_;
};

}  // namespace korvane::program
