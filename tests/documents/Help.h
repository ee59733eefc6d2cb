// The options that a text or a program's --help names.
#pragma once

#include <set>
#include <string>

namespace korvane::documents {

[[nodiscard]] std::set<std::string> optionsIn(const std::string& text);
// Of the first column of its --help.
[[nodiscard]] std::set<std::string> optionsOf(const std::string& program);

}  // namespace korvane::documents
