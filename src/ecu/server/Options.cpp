#include "ecu/server/Options.h"

#include <algorithm>
#include <cstddef>

namespace korvane::ecu {

namespace {

std::string padded(std::string text) {
    constexpr std::size_t kColumn = 17;
    text.resize(std::max(text.size() + 1, kColumn), ' ');
    return text;
}

std::string helpLine(std::string_view option, std::string_view meaning) {
    return "  " + padded("--" + std::string(option)) + std::string(meaning) + "\n";
}

bool takesValue(std::string_view option) {
    return option == "--pty" ||
           std::ranges::any_of(keyHelp(), [&](const KeyHelp& key) { return key.key == option.substr(2); });
}

}  // namespace

std::string parseOptions(std::span<const std::string_view> arguments, Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            options.help = true;
        } else if (argument == "-V") {
            options.programVersion = true;
        } else if (argument == "--with-parent") {
            options.withParent = true;
        } else if (!argument.starts_with("--") || argument.size() == 2) {
            return "an option is wanted where \"" + std::string(argument) + "\" stands";
        } else if (i + 1 == arguments.size()) {
            return std::string(argument) + (takesValue(argument) ? " needs a value" : " is no option; see --help");
        } else if (argument == "--pty") {
            options.link = arguments[++i];
        } else if (std::string error = parseKey(options.ecu, argument.substr(2), arguments[++i]); !error.empty()) {
            return error;
        }
    }
    return {};
}

std::string helpText() {
    std::string text =
        "korvane-ecu plays the engine control unit on a pseudo-terminal and prints the terminal's path.\n"
        "It ends on SIGINT or SIGTERM.\n\n";
    text += helpLine("pty PATH", "makes PATH a link to the terminal");
    text += helpLine("with-parent", "ends with the process that started it");
    text += "  " + padded("-V") + "prints the program's version\n";
    text += "  " + padded("-h, --help") + "this text\n";
    text += "\n";
    for (const KeyHelp& key : keyHelp()) {
        text += helpLine(key.key, std::string(key.meaning) + " (" + std::string(key.values) + ")");
    }
    return text;
}

}  // namespace korvane::ecu
