// Between JSON values and the values of properties, tables and procedures.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>

#include "console/text/Json.h"
#include "controls/Object.h"

namespace korvane::console {

// Null for a value never set.
template <class... Kinds>
[[nodiscard]] Json toJson(const std::variant<std::monostate, Kinds...>& value) {
    return std::visit(
        [](const auto& content) -> Json {
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(content)>, std::monostate>) {
                return {};
            } else {
                return content;
            }
        },
        value);
}
// Raises ConsoleError for an array or an object, which no property holds. A double without a fraction becomes whole.
[[nodiscard]] controls::Value toValue(const Json& value);

// Each raises ConsoleError "the value must be ..." for a value of another kind.
[[nodiscard]] std::int64_t wholeNumber(const Json& value, std::int64_t least, std::int64_t most);
[[nodiscard]] double realNumber(const Json& value);
[[nodiscard]] float singleNumber(const Json& value);
[[nodiscard]] bool truth(const Json& value);
[[nodiscard]] std::string text(const Json& value);

template <class T>
[[nodiscard]] T wholeOf(const Json& value) {
    return static_cast<T>(wholeNumber(value, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

}  // namespace korvane::console
