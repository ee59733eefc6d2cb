// Plain decimal numbers out of texts, whole text or nothing.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace korvane::ecu {

template <typename Number>
[[nodiscard]] std::optional<Number> parseNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

// The same, and nothing for a number outside `low` to `high` either.
template <typename Number>
[[nodiscard]] std::optional<Number> parseNumber(std::string_view text, Number low, Number high) {
    const auto number = parseNumber<Number>(text);
    return number && *number >= low && *number <= high ? number : std::nullopt;
}

}  // namespace korvane::ecu
