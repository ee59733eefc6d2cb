// The fuel map as its grid shows it, in milliseconds.
#pragma once

#include <optional>
#include <string>

#include "maps/grid/MapDisplay.h"

namespace korvane::maps {

// How a window takes its injection time scale from the parameters, in milliseconds for one count. May overwrite an
// invalid injection mode.
using InjectionScale = double (*)(core::SharedTables& tables);

// Events run at each cell. RuntimeError 6 where the injection offset makes a time that single precision can't hold.
class FuelDisplay : public MapDisplay {
public:
    // Each drawing sets `injTimeScale` before it.
    FuelDisplay(MapGrid& fuel, controls::Window& window, const MapContext& context, InjectionScale scale,
                float& injTimeScale, const controls::TextBox& injectionOffset);

    void updateScale();
    // The scale by the parameters of now, rounded as it is.
    [[nodiscard]] float scaleNow() const;
    [[nodiscard]] Reading readingOf(int cell, std::uint8_t count) const override;
    [[nodiscard]] std::optional<double> powerOf(int cell, std::uint8_t count) const override;

private:
    // A pulse and the time that the engine leaves it, in milliseconds.
    struct Pulse {
        double length;
        std::optional<double> available;
    };

    // `available` is nothing where the offset counts as map counts: there the pulse is not compared with it.
    [[nodiscard]] Pulse pulseOf(int cell, std::uint8_t count) const;
    void beforeMap() override { updateScale(); }
    void beforeCell() override;
    void composeToolTip(int cell, std::uint8_t count, std::string& toolTip) const override;

    controls::Window& window_;
    InjectionScale scale_;
    float& injTimeScale_;
    const controls::TextBox& injectionOffset_;
};

}  // namespace korvane::maps
