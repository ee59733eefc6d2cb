// The buttons of the tune file.
#pragma once

#include <string>

#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"
#include "platform/RuntimeError.h"

namespace korvane::maps {

// A loaded file counts as read from the ECU: no cell is an edited one, and nothing is sent.
class FilePane : public MapPane {
public:
    explicit FilePane(PaneWindow& window);

    controls::CommandButton btnSave, btnLoad;

    // As btnLoad with this path for an answer.
    void openTune(const std::string& path);

private:
    struct Operation;
    static const Operation kSaving;
    static const Operation kLoading;

    // Asks for the file and reads or writes it; a failure is shown.
    void run(const Operation& operation);
    void act(const Operation& operation, const std::string& path);
    void tellFailure(const Operation& operation, const platform::RuntimeError& failure);
    void saveTune(const std::string& path);
    void loadTune(const std::string& path);
    // Gives the loaded tune to all panes of the window, and to the maps for which it has none.
    void handOver(bool withPwm);
    void acceptMaps(bool withPwm);
};

}  // namespace korvane::maps
