// Tells when a window's maps have another size than the ECU's, and when its fuel times have another scale.
#pragma once

#include <cstdint>
#include <string>

#include "controls/Property.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::maps {

// Empty where the sizes agree, and before the ECU has told its type.
[[nodiscard]] std::string sizeNote(std::int32_t swType, const MapGeometry& window);

// Where the fuel times were drawn by another scale than the settings give now: they come later than the map.
[[nodiscard]] std::string scaleNote(double drawn, double now);

class SizeNote : public controls::Object {
public:
    controls::Property<std::string> Text{*this};
    controls::Property<std::string> Scale{*this};
    // Both, as the line has them.
    [[nodiscard]] std::string words() const {
        return Text.get() + (Text.get().empty() || Scale.get().empty() ? "" : "\n") + Scale.get();
    }
};

}  // namespace korvane::maps
