// Draws a map into its grid.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "maps/grid/CellFace.h"
#include "maps/grid/MapGrid.h"
#include "maps/grid/MapImages.h"
#include "maps/transfer/MapContext.h"

namespace korvane::maps {

class MapDisplay {
public:
    // `ofEdited` says whether cells are locked while the edited image is drawn; with the received one they stay locked.
    MapDisplay(MapGrid& grid, const MapContext& context, const MapImages& images, Rewrite ofEdited)
        : grid_(grid), context_(context), images_(images), ofEdited_(ofEdited) {}
    MapDisplay(const MapDisplay&) = delete;
    MapDisplay& operator=(const MapDisplay&) = delete;
    virtual ~MapDisplay() = default;

    struct Reading {
        double number;         // in the tuner's unit
        bool tooLong = false;  // a pulse that the engine's speed leaves no time for
    };
    // What a cell with this count shows.
    [[nodiscard]] virtual Reading readingOf(int cell, std::uint8_t count) const = 0;
    // The horsepower that a cell with this count is good for; nothing where that is not known.
    [[nodiscard]] virtual std::optional<double> powerOf(int cell, std::uint8_t count) const {
        return static_cast<void>(cell), static_cast<void>(count), std::nullopt;
    }

    void showReceived() {
        received_ = true;
        show(context_.tables.*images_.received, Rewrite::Locked);
    }
    void showEdited() { show(context_.tables.*images_.edited, ofEdited_); }
    // After the grid has got numbers in another way.
    void noteFill();
    void noteLoaded() {
        received_ = true;
        noteFill();
    }

protected:
    // `toolTip` holds the count and may be written anew.
    virtual void composeToolTip(int cell, std::uint8_t count, std::string& toolTip) const {
        static_cast<void>(cell), static_cast<void>(count), static_cast<void>(toolTip);
    }
    virtual void beforeMap() {}
    // Events may run in it.
    virtual void beforeCell() {}

    [[nodiscard]] const MapGrid& grid() const { return grid_; }
    [[nodiscard]] core::SharedTables& tables() const { return context_.tables; }

private:
    void show(const core::MapImage& image, Rewrite rewrite);
    void showCell(int cell, std::uint8_t count, Rewrite rewrite);
    [[nodiscard]] std::vector<bool> unreadCells() const;

    MapGrid& grid_;
    const MapContext& context_;
    const MapImages& images_;
    Rewrite ofEdited_;
    bool received_ = false;  // a map that was read or loaded has been shown
    std::string toolTip_;    // kept for its memory
};

}  // namespace korvane::maps
