// A part of a map window: controls under their own names, and what they do.
#pragma once

#include <cstdint>

namespace korvane::maps {

class MapGrid;
class PaneWindow;

// A window inherits the panes that it is made of and has their controls for its own. It calls them in the order in
// which it names them, each where its rule asks for it.
class MapPane {
public:
    explicit MapPane(PaneWindow& window);
    MapPane(const MapPane&) = delete;
    MapPane& operator=(const MapPane&) = delete;
    virtual ~MapPane() = default;

    [[nodiscard]] virtual MapGrid* paneGrid() { return nullptr; }

    // The window loads: the controls go to their places, and what the feature word offers is enabled.
    virtual void loadPane(std::int32_t features) { static_cast<void>(features); }
    // Asks the ECU for the pane's data, and lets events run.
    virtual void readPane() {}
    // Every third of a second.
    virtual void tickPane() {}

    // A tune was read from a file: all panes show what came, then it counts as edited too, then all show that.
    virtual void showLoadedTune() {}
    virtual void acceptLoadedTune(bool withPwm) { static_cast<void>(withPwm); }
    virtual void showAcceptedTune() {}

protected:
    [[nodiscard]] PaneWindow& paneWindow() const { return window_; }

private:
    PaneWindow& window_;
};

}  // namespace korvane::maps
