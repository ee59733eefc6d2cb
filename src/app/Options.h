// The program's command line.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/WallTime.h"

namespace korvane::app {

struct Options {
    bool headless = false;
    bool console = false;
    bool virtualTime = false;
    bool strict = false;  // the first error ends the run
    bool json = false;    // of the test of a port: its output
    bool send = false;    // the test may send without a question
    bool help = false;
    bool version = false;
    std::optional<std::filesystem::path> script;
    platform::WallTime now{2026, 1, 5, 12, 0, 0};
    std::optional<std::string> ecu;    // "none", or KEY=VALUE,... as given
    std::map<int, std::string> ports;  // the devices that COM1 to COM15 mean, and platform::kPortOfPath
    std::optional<int> connect;        // COM port to connect to at the start
    std::optional<std::filesystem::path> folder;
    std::optional<std::filesystem::path> preferences;
    std::optional<char> decimal;
    std::optional<std::filesystem::path> trace;
    std::optional<int> doctor;                  // the port to test instead of starting the program
    std::optional<std::filesystem::path> file;  // to open in its window at the start
};

// The largest script file in bytes.
inline constexpr std::size_t kLargestScript = std::size_t{64} << 20U;

// Whether windows come back where the user left them: not if commands work with them, which count on the windows' own
// sizes.
[[nodiscard]] inline bool remembersWindows(const Options& options) {
    return !options.headless && !options.console && !options.script;
}

struct OptionsError {
    std::string text;  // what is wrong
};

// `arguments` without the program's name. With help or version asked for, nothing else is checked.
[[nodiscard]] std::variant<Options, OptionsError> parseOptions(std::span<const std::string> arguments);

// A line of --help, of the manual page and of the completions.
struct OptionHelp {
    std::string_view name;  // "--script"; empty for the file to open
    std::string_view value = {};
    std::string_view meaning;
    char letter = 0;  // its short form, or 0
};

// One table is read by parseOptions() and shown by all of these. An option with two kinds of values has two rows.
[[nodiscard]] std::vector<OptionHelp> optionTable();

// What --help shows.
[[nodiscard]] std::string optionsHelp();

}  // namespace korvane::app
