// Sorts a list by a column.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "controls/ListView.h"

namespace korvane::settings {

// Sorts the list by a column, counted from 1, and each time in the other order than the last. The column's tag, in
// upper or lower case, says how its texts are understood: "NUMBER", "DATE", as plain texts otherwise. A cell that is no
// number or date sorts by its own text. RuntimeError 9 for a column that does not exist.
void sortByColumn(controls::ListView& list, int column);

// Keys: texts whose plain order is that of the values. Nothing for a text that is no such value.

// Digits with an optional sign and point, 30 on either side of the point. A negative number has the complements of its
// digits behind a blank, which sorts before all digits.
[[nodiscard]] std::optional<std::string> numberKey(std::string_view text);
// "YYYYMMDDhhmmss" of a date as "2026-01-05" or "5.1.2026", with an optional time "12:00" or "12:00:30" behind a blank.
[[nodiscard]] std::optional<std::string> dateKey(std::string_view text);

}  // namespace korvane::settings
