// Tool-tips whose text is not the program's own: names, numbers and paths.
#pragma once

#include <QString>

namespace korvane::views {

// What a tool-tip must be given to show the text as it is, also where the toolkit would take it for marked up text.
[[nodiscard]] QString plainTip(const QString& text);

}  // namespace korvane::views
