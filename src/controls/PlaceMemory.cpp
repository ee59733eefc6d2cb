#include "controls/PlaceMemory.h"

#include <array>
#include <charconv>
#include <string>
#include <utility>

namespace korvane::controls {

namespace {

constexpr std::string_view kKey = "Windows";
constexpr std::string_view kScreens = " | ";
constexpr std::string_view kMaximized = " maximized";

// "1340x690@26,40", with nothing behind it.
std::optional<Area> areaOf(std::string_view text) {
    Area area;
    const std::array<std::pair<int*, char>, 4> parts{
        {{&area.width, 'x'}, {&area.height, '@'}, {&area.left, ','}, {&area.top, '\0'}}};
    for (const auto& [number, separator] : parts) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
        if (error != std::errc()) {
            return std::nullopt;
        }
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (text.empty() ? separator != '\0' : text.front() != separator) {
            return std::nullopt;
        }
        text.remove_prefix(text.empty() ? 0 : 1);
    }
    return area.width > 0 && area.height > 0 ? std::optional(area) : std::nullopt;
}

std::string textOf(const RememberedPlace& place, std::string_view screens) {
    return signatureOf(std::array{place.area}) + std::string(place.maximized ? kMaximized : "") +
           std::string(kScreens) + std::string(screens);
}

}  // namespace

std::optional<RememberedPlace> PlaceMemory::recall(std::string_view window, std::string_view screens) const {
    const std::string text = preferences_.read(kKey, window).value_or("");
    const auto divider = text.find(kScreens);
    if (divider == std::string::npos || std::string_view(text).substr(divider + kScreens.size()) != screens) {
        return std::nullopt;
    }
    std::string_view place = std::string_view(text).substr(0, divider);
    const bool maximized = place.ends_with(kMaximized);
    place.remove_suffix(maximized ? kMaximized.size() : 0);
    const auto area = areaOf(place);
    return area ? std::optional(RememberedPlace{*area, maximized}) : std::nullopt;
}

void PlaceMemory::remember(std::string_view window, const RememberedPlace& place, std::string_view screens) {
    const std::string text = textOf(place, screens);
    if (preferences_.read(kKey, window) != text) {
        preferences_.write(kKey, window, text);
    }
}

}  // namespace korvane::controls
