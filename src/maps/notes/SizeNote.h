// Tells when a window's maps have another size than the ECU's.
#pragma once

#include <cstdint>
#include <string>

#include "controls/Property.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::maps {

// Empty where the sizes agree, and before the ECU has told its type.
[[nodiscard]] std::string sizeNote(std::int32_t swType, const MapGeometry& window);

class SizeNote : public controls::Object {
public:
    controls::Property<std::string> Text{*this};
};

}  // namespace korvane::maps
