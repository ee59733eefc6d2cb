#include "fields/Captions.h"

#include <string>

#include "core/Numbers.h"

namespace korvane::fields {

void Captions::showPercent(controls::Window& window, double percent) const {
    if (underWay != nullptr && percent >= 0) {
        window.Caption = underWay + core::textOf(percent) + "%";
    }
}

void Captions::showEnd(controls::Window& window) const {
    if (ended != nullptr) {
        window.Caption = ended;
    }
}

}  // namespace korvane::fields
