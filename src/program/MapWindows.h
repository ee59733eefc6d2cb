// Opens the right map window, and owns the map windows.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "controls/WindowShelf.h"
#include "link/Windows.h"
#include "maps/FrmMaps_QV_ign.h"
#include "maps/FrmMaps_ign_limiter.h"
#include "maps/MapForm.h"
#include "maps/transfer/MapContext.h"
#include "platform/Machine.h"

namespace korvane::program {

// Each opening makes a window anew, so that it starts as designed. Of frmMaps_Large there may be any number, of the
// others one. The dispatcher and the live update use the newest; the analyser uses the newest with a fuel map.
class MapWindows {
public:
    MapWindows(platform::Machine& machine, const maps::MapContext& context, link::Windows& windows);

    // The window for the firmware type that the ECU has named.
    void open();
    void openLarge();
    void openLimiter();
    // Without the first reads, which would replace what is loaded.
    void openTune(const std::filesystem::path& tune, bool large);
    void openSetpoints(const std::filesystem::path& setpoints);
    void unloadAll() { shelf_.unloadAll(); }

    // Redraws frmMaps' edited fuel map, if frmMaps is open.
    void populateFuelOUT();

    // What the box of the injection offset says in the newest window that has one, or would say in a new one.
    [[nodiscard]] double injectionOffset() const;
    // The misc block of the open map window's boxes, if they have one.
    [[nodiscard]] std::optional<link::MiscBytes> miscOfBoxes() const;

private:
    // The one of its kind: shown again, or made.
    template <class Kind>
    void openOnly();
    template <class Kind>
    [[nodiscard]] std::unique_ptr<Kind> make();
    [[nodiscard]] maps::MapForm& openUnread(bool large);
    // The rest of the program learns of the window.
    void announce(maps::MapForm& window);
    void announce(maps::FrmMaps_QV_ign& window);
    void announce(maps::FrmMaps_ign_limiter& window);
    void closed(maps::MapForm& window);
    void closed(maps::FrmMaps_QV_ign& window);
    void closed(maps::FrmMaps_ign_limiter& window);
    void forget(const link::MapWindow& window);

    platform::Machine& machine_;
    const maps::MapContext& context_;
    link::Windows& windows_;
    controls::WindowShelf shelf_;
    const maps::MapForm* analysed_ = nullptr;
};

}  // namespace korvane::program
