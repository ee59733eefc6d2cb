// Access to a table by an index that comes from outside.
#pragma once

#include <concepts>
#include <cstddef>
#include <iterator>
#include <utility>

#include "platform/RuntimeError.h"

namespace korvane::core {

// `table[index]`; raises RuntimeError 9 for an index outside the table.
template <class Table, std::integral Index>
[[nodiscard]] constexpr decltype(auto) checked(Table&& table, Index index) {
    if (std::cmp_less(index, 0) || std::cmp_greater_equal(index, std::size(table))) {
        platform::raiseSubscript();
    }
    return std::forward<Table>(table)[static_cast<std::size_t>(index)];
}

}  // namespace korvane::core
