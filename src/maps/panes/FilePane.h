// The buttons of the tune file.
#pragma once

#include <functional>
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
    void saveTune();
    void loadTune();
    // Runs a file operation; its failure shows this text and the description.
    void trapped(const std::string& failureText, const std::function<void()>& operation);
    // The tune goes through all panes of the window.
    void handOver(bool withPwm);
};

}  // namespace korvane::maps
