// The command line of the program korvane-ecu.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

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

// A line of --help, of the manual page and of the completions.
struct OptionHelp {
    std::string name;   // "--pty"; empty if there is only a letter
    std::string value;  // what it takes; empty for a flag
    std::string meaning;
    char letter = 0;  // its short form, or 0
};

// The program's own options and, behind them, the keys.
[[nodiscard]] std::vector<OptionHelp> optionTable();

[[nodiscard]] std::string helpText();

}  // namespace korvane::ecu
