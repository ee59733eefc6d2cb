#include "maps/notes/SizeNote.h"

#include "core/tables/Module1.h"

namespace korvane::maps {

namespace {

constexpr std::int32_t kUnknownType = 0;

std::string cellsOf(const MapGeometry& shape) {
    return std::to_string(shape.cells()) + " cells (" + std::to_string(shape.columns) + " by " +
           std::to_string(shape.rows) + ")";
}

}  // namespace

std::string sizeNote(std::int32_t swType, const MapGeometry& window) {
    const auto& ecu = core::hasLargeMaps(swType) ? kLargeMaps : kOrdinaryMaps;
    if (swType == kUnknownType || ecu.cells() == window.cells()) {
        return {};
    }
    return "The maps of this ECU have " + cellsOf(ecu) + ", those of this window " + cellsOf(window) +
           ": numbers stand in wrong cells. Do not send.";
}

std::string scaleNote(double drawn, double now) {
    return drawn == now
               ? std::string()
               : "The settings have another injection mode or multiplier than the fuel map was drawn with: its "
                 "times are wrong until it is read again or edited.";
}

}  // namespace korvane::maps
