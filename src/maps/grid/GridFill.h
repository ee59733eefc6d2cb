// Whether a grid shows anything yet.
#pragma once

#include "controls/Property.h"

namespace korvane::maps {

class GridFill : public controls::Object {
public:
    // Until the first read, edit or load of a tune. The empty cells are no values of the ECU.
    controls::Property<bool> NeverRead{*this, true};
};

}  // namespace korvane::maps
