// The buttons of the tune file.
#pragma once

#include <string>

#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

// A file that was loaded counts as freshly read: no cell is an edited one, and nothing goes to the ECU.
class FilePane : public MapPane {
public:
    explicit FilePane(PaneWindow& window);

    controls::CommandButton btnSave, btnLoad;

private:
    struct Operation;
    static const Operation kSaving;
    static const Operation kLoading;

    // Asks for the file and does it; a failure is told.
    void run(const Operation& operation);
    void saveTune(const std::string& path);
    void loadTune(const std::string& path);
    // The tune goes through all panes of the window, and into the maps for which it has none.
    void handOver(bool withPwm);
    void acceptMaps(bool withPwm);
};

}  // namespace korvane::maps
