#include "ecu/server/Options.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace korvane::ecu {

namespace {

struct Option {
    std::string_view name;
    std::string_view value;
    std::string_view meaning;
    char letter = 0;
    bool Options::*flag = nullptr;
    std::string Options::*text = nullptr;
};

constexpr std::array<Option, 4> kOptions{{
    {"--pty", "PATH", "makes PATH a link to the terminal", 0, nullptr, &Options::link},
    {"--with-parent", "", "ends with the process that started it", 0, &Options::withParent},
    {"", "", "prints the program's version", 'V', &Options::programVersion},
    {"--help", "", "this text", 'h', &Options::help},
}};

const Option* optionNamed(std::string_view word) {
    const auto* const found = std::ranges::find_if(kOptions, [&](const Option& option) {
        const bool isLetter = word.size() == 2 && word[0] == '-' && option.letter != 0 && word[1] == option.letter;
        return isLetter || (!option.name.empty() && word == option.name);
    });
    return found == kOptions.end() ? nullptr : found;
}

bool isKey(std::string_view word) {
    return std::ranges::any_of(keyHelp(), [&](const KeyHelp& key) { return key.key == word.substr(2); });
}

std::string firstColumn(const OptionHelp& help) {
    constexpr std::size_t kColumn = 17;
    std::string text = help.letter == 0 ? std::string() : std::string{'-', help.letter};
    text += help.letter == 0 || help.name.empty() ? "" : ", ";
    text += help.name;
    text += help.value == "PATH" ? " PATH" : "";
    text.resize(std::max(text.size() + 1, kColumn), ' ');
    return text;
}

}  // namespace

std::string parseOptions(std::span<const std::string_view> arguments, Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        const Option* const option = optionNamed(argument);
        if (option != nullptr && option->flag != nullptr) {
            options.*option->flag = true;
        } else if (option == nullptr && (!argument.starts_with("--") || argument.size() == 2)) {
            return "an option is wanted where \"" + std::string(argument) + "\" stands";
        } else if (i + 1 == arguments.size()) {
            return std::string(argument) +
                   (option != nullptr || isKey(argument) ? " needs a value" : " is no option; see --help");
        } else if (option != nullptr) {
            options.*option->text = arguments[++i];
        } else if (std::string error = parseKey(options.ecu, argument.substr(2), arguments[++i]); !error.empty()) {
            return error;
        }
    }
    return {};
}

std::vector<OptionHelp> optionTable() {
    std::vector<OptionHelp> all;
    for (const Option& option : kOptions) {
        all.push_back(
            {std::string(option.name), std::string(option.value), std::string(option.meaning), option.letter});
    }
    for (const KeyHelp& key : keyHelp()) {
        all.push_back({"--" + std::string(key.key), std::string(key.values), std::string(key.meaning)});
    }
    return all;
}

std::string helpText() {
    std::string text =
        "korvane-ecu plays the engine control unit on a pseudo-terminal and prints the terminal's path.\n"
        "It ends on SIGINT or SIGTERM.\n\n";
    const auto all = optionTable();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const OptionHelp& help = all[i];
        const bool isKeyLine = i >= kOptions.size();
        text += i == kOptions.size() ? "\n" : "";
        text += "  " + firstColumn(help) + help.meaning + (isKeyLine ? " (" + help.value + ")" : "") + "\n";
    }
    return text;
}

}  // namespace korvane::ecu
