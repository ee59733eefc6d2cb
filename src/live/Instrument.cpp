#include "live/Instrument.h"

#include "core/Numbers.h"

namespace korvane::live {

void Instrument::redrawWith(double value) {
    number_.assign(core::numberText(value).view());
    ++redraws_;
    changed(faceProperty());
}

}  // namespace korvane::live
