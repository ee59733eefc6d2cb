#include "ecu/engine/Drive.h"

#include <array>
#include <utility>

#include "ecu/server/NumberText.h"

namespace korvane::ecu {

namespace {

std::optional<Drive> parseBench(std::string_view text) {
    const std::size_t first = text.find(':');
    const std::size_t second = text.find(':', first == std::string_view::npos ? first : first + 1);
    if (second == std::string_view::npos) {
        return std::nullopt;
    }
    const auto rpm = parseNumber<int>(text.substr(0, first), 0, 12000);
    const auto load = parseNumber<double>(text.substr(first + 1, second - first - 1), 0.0, 160.0);
    const auto throttle = parseNumber<double>(text.substr(second + 1), 0.0, 100.0);
    if (!rpm || !load || !throttle) {
        return std::nullopt;
    }
    return Drive{DriveKind::Bench, *rpm, *load, *throttle};
}

}  // namespace

std::optional<Drive> parseDrive(std::string_view text) {
    using Named = std::pair<std::string_view, DriveKind>;
    constexpr std::array kNamed = {Named{"lap", DriveKind::Lap}, Named{"idle", DriveKind::Idle},
                                   Named{"pull", DriveKind::Pull}, Named{"cruise", DriveKind::Cruise},
                                   Named{"off", DriveKind::Off}};
    for (const auto& [name, kind] : kNamed) {
        if (text == name) {
            return Drive{.kind = kind};
        }
    }
    return parseBench(text);
}

}  // namespace korvane::ecu
