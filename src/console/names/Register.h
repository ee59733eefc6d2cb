// Shorthands for registering variables and arrays.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "console/names/Names.h"
#include "console/text/Convert.h"
#include "core/tables/Members.h"

namespace korvane::console {

using core::Access;

// `value` as a variable of type T takes it; ConsoleError for another kind or range.
template <class T>
[[nodiscard]] T variableFrom(const Json& value) {
    if constexpr (std::is_same_v<T, bool>) {
        return truth(value);
    } else if constexpr (std::is_same_v<T, std::string>) {
        return text(value);
    } else if constexpr (std::is_integral_v<T>) {
        return wholeOf<T>(value);
    } else if constexpr (std::is_same_v<T, float>) {
        return singleNumber(value);
    } else {
        return realNumber(value);
    }
}

template <class T>
void addVariable(Names& names, const std::string& name, T& variable, Access access = Access::ReadWrite) {
    Names::Set set;
    if (access == Access::ReadWrite) {
        set = [&variable](Names::Indices, const Json& value) { variable = variableFrom<T>(value); };
    }
    names.add(
        name, {}, [&variable](Names::Indices) { return Json(variable); }, std::move(set));
}

// The elements of `array`, a type with an operator[] and a size(), from index 0 on. `part` picks what is meant of an
// element: a pointer to its member, or std::identity.
template <class Array, class Part>
void addElements(Names& names, const std::string& form, Array& array, Part part, Access access = Access::ReadWrite) {
    using T = std::remove_cvref_t<std::invoke_result_t<Part, decltype(array[0])>>;
    const auto place = [](Names::Indices indices) { return static_cast<std::size_t>(indices.front()); };
    Names::Set set;
    if (access == Access::ReadWrite) {
        set = [&array, part, place](Names::Indices indices, const Json& value) {
            std::invoke(part, array[place(indices)]) = variableFrom<T>(value);
        };
    }
    names.add(
        form, {{0, static_cast<int>(array.size()) - 1}},
        [&array, part, place](Names::Indices indices) { return Json(std::invoke(part, array[place(indices)])); },
        std::move(set));
}

}  // namespace korvane::console
