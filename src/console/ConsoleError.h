// What ends a command with an error reply.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace korvane::console {

// what() is a sentence for the user that names the thing.
class ConsoleError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// `name` as an error sentence shows it: on one line, in valid UTF-8, cut where it is very long.
[[nodiscard]] std::string shown(std::string_view name);

}  // namespace korvane::console
