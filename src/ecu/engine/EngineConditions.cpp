#include "ecu/engine/EngineConditions.h"

#include <algorithm>

#include "ecu/server/NumberText.h"

namespace korvane::ecu {

double TransportDelay::msAt(double manifoldBar) const {
    const double load = std::clamp((manifoldBar - kIdleBar) / (kFullLoadBar - kIdleBar), 0.0, 1.0);
    return idleMs + (fullLoadMs - idleMs) * load;
}

std::optional<TransportDelay> parseTransportDelay(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto idle = parseNumber<double>(text.substr(0, colon), 0.0, TransportDelay::kLongestMs);
    const auto full = parseNumber<double>(text.substr(colon + 1), 0.0, TransportDelay::kLongestMs);
    return idle && full ? std::optional(TransportDelay{*idle, *full}) : std::nullopt;
}

}  // namespace korvane::ecu
