// The files of a map window: the tune and the lambda setpoints.
#pragma once

#include <functional>
#include <string>

#include "maps/MapContext.h"
#include "maps/MapControls.h"
#include "maps/MapDisplay.h"
#include "maps/MapTransfer.h"

namespace korvane::maps {

// Sets the clicks of btnSave, btnLoad, btnSaveLambdaSetpoint and btnloadLambdaSetpoint. A file that was loaded counts
// as freshly read: no cell is an edited one, and nothing goes to the ECU.
class MapFiles {
public:
    MapFiles(MapControls& window, const MapContext& context, MapDisplay& display, MapTransfer& transfer);

private:
    void save();
    void load();
    void saveSetpoints();
    void loadSetpoints();

    // Runs a file operation; its failure shows this text and the description.
    void trapped(const std::string& failureText, const std::function<void()>& operation);
    void tell(const std::string& text);

    // Onto the controls and into the Out tables.
    void accept(bool withPwm);
    // The maps as received, before they become the edited ones too.
    void showReceived();
    void acceptPwm();

    MapControls& window_;
    const MapContext& context_;
    MapDisplay& display_;
    MapTransfer& transfer_;
};

}  // namespace korvane::maps
