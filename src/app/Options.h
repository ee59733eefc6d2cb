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

#include "platform/WallTime.h"

namespace korvane::app {

// A test of a port instead of the program.
struct DoctorTask {
    int port = 1;
    bool json = false;
    bool maySend = false;  // without a question
};

struct Options {
    bool headless = false;
    bool console = false;
    bool virtualTime = false;
    bool strict = false;  // the first error ends the run
    bool help = false;
    bool version = false;
    std::optional<std::filesystem::path> script;
    platform::WallTime now{2026, 1, 5, 12, 0, 0};
    std::optional<std::string> ecu;    // "none", or KEY=VALUE,... as given
    std::map<int, std::string> ports;  // the devices that COM1 to COM15 mean
    std::optional<int> connect;        // COM port to connect to at the start
    std::optional<std::filesystem::path> folder;
    std::optional<std::filesystem::path> preferences;
    std::optional<char> decimal;
    std::optional<std::filesystem::path> trace;
    std::optional<DoctorTask> doctor;
    std::optional<std::filesystem::path> log;  // to open in the viewer at the start
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

// What --help shows.
[[nodiscard]] std::string_view optionsHelp();

}  // namespace korvane::app
