// A part of a map window: controls under their own names, and what they do.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/Overwritten.h"
#include "core/history/MapStep.h"
#include "maps/grid/MapImages.h"
#include "maps/grid/Selection.h"
#include "maps/grid/StatusWords.h"

namespace korvane::maps {

class MapGrid;
class PaneWindow;

// A window inherits its panes, so that their controls are its own. It calls them in the order of its base classes.
class MapPane {
public:
    explicit MapPane(PaneWindow& window);
    MapPane(const MapPane&) = delete;
    MapPane& operator=(const MapPane&) = delete;
    virtual ~MapPane() = default;

    [[nodiscard]] virtual MapGrid* paneGrid() { return nullptr; }

    // The window loads: places the controls and enables what the feature word offers.
    virtual void loadPane(std::int32_t features) { static_cast<void>(features); }
    // Asks the ECU for the pane's data, and lets events run.
    virtual void readPane() {}
    // Every third of a second.
    virtual void tickPane() {}

    // A tune was read from a file. Each step is done for all panes: show what was read, take it as edited, show that.
    virtual void showLoadedTune() {}
    virtual void acceptLoadedTune(bool withPwm) { static_cast<void>(withPwm); }
    virtual void showAcceptedTune() {}

    // In words a cell of its grid and the block that is selected in it; the cells that were not sent,
    // and what has become of those that were.
    [[nodiscard]] virtual std::string cellStatus(int cell) { return static_cast<void>(cell), std::string(); }
    [[nodiscard]] virtual std::string blockStatus() const { return {}; }
    [[nodiscard]] virtual std::optional<UnsentOfMap> unsentStatus() const { return {}; }
    [[nodiscard]] virtual std::optional<StoreOfMap> storeStatus() const { return {}; }

    // What its send would overwrite in the ECU, and whether this connection has read that. Nothing where it can't send.
    struct Sends {
        std::string_view map;  // within a sentence
        core::Overwritten::Part part;
        bool isRead;
    };
    [[nodiscard]] virtual std::optional<Sends> sends() const { return {}; }

    // The map that it edits, and the cells of it that an order is about while this cell has the focus: the selected
    // block, or the cell. Nothing for a pane without such a map.
    struct Target {
        const MapImages& images;
        CellRange cells;
    };
    [[nodiscard]] virtual std::optional<Target> targetAt(int cell) const {
        return static_cast<void>(cell), std::nullopt;
    }
    // A working map was changed from outside the window.
    virtual void showWorkingMap(core::EditedMap map) { static_cast<void>(map); }

protected:
    [[nodiscard]] PaneWindow& paneWindow() const { return window_; }

private:
    PaneWindow& window_;
};

}  // namespace korvane::maps
