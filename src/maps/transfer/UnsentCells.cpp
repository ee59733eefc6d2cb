#include "maps/transfer/UnsentCells.h"

#include <algorithm>

#include "core/Checked.h"

namespace korvane::maps {

namespace {

struct CellBytes {
    std::uint8_t edited;
    std::uint8_t working;
    std::uint8_t kept;
};

CellBytes bytesOf(const MapContext& context, const MapImages& map, int cell) {
    const auto& ecu = context.connection.ecuMaps.*map.inEcu;
    const auto at = static_cast<std::size_t>(cell);
    const auto working = ecu.working(at).value_or(core::checked(context.tables.*map.received, cell));
    return {core::checked(context.tables.*map.edited, cell), working, ecu.kept(at).value_or(working)};
}

}  // namespace

UnsentCells unsentCells(const MapContext& context, const MapImages& map, MapGeometry shape) {
    UnsentCells count;
    for (int cell = map.firstSent; cell <= std::min(map.lastSent, shape.cells() - 1); ++cell) {
        const auto bytes = bytesOf(context, map, cell);
        if (bytes.edited != bytes.working) {
            ++count.unsent;
        } else if (bytes.edited != bytes.kept) {
            ++count.unstored;
        }
    }
    return count;
}

bool isUnsent(const MapContext& context, const MapImages& map, int cell) {
    const auto bytes = bytesOf(context, map, cell);
    return bytes.edited != bytes.working;
}

}  // namespace korvane::maps
