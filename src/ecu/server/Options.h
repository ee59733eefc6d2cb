// The command line of the program korvane-ecu.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "ecu/server/EcuSettings.h"

namespace korvane::ecu {

struct Options {
    EcuSettings ecu;
    std::string link;         // where a link to the pseudo-terminal is made; empty: nowhere
    bool withParent = false;  // end with the process that started this one
    bool help = false;
    bool programVersion = false;  // --version is a key of the firmware
};

// `arguments` without the program's name. Returns an empty text, or one sentence that says what is wrong.
[[nodiscard]] std::string parseOptions(std::span<const std::string_view> arguments, Options& options);

[[nodiscard]] std::string helpText();

}  // namespace korvane::ecu
