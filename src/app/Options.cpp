#include "app/Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <vector>

#include "app/OneLine.h"

namespace korvane::app {

namespace {

using platform::WallTime;

constexpr int kHighestPort = 15;

class BadOption : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string inQuotes(std::string_view text) {
    return '"' + onOneLine(text) + '"';
}

std::optional<int> wholeNumber(std::string_view digits) {
    int value = 0;
    const auto* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value);
    const bool plain = std::all_of(digits.begin(), digits.end(), [](char each) { return each >= '0' && each <= '9'; });
    return plain && result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

int portNumber(std::string_view name) {
    const auto number = name.starts_with("COM") ? wholeNumber(name.substr(3)) : std::nullopt;
    if (!number || *number < 1 || *number > kHighestPort) {
        throw BadOption(inQuotes(name) + " is no port: COM1 to COM15");
    }
    return *number;
}

bool exists(const WallTime& time) {
    constexpr int kFirstYear = 1970;
    return time.year >= kFirstYear && time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 &&
           time.hour < 24 && time.minute < 60 && time.second < 60 &&
           platform::wallTimeOf(platform::secondsOf(time)) == time;
}

WallTime wallTime(std::string_view text) {
    constexpr std::string_view kPattern = "dddd-dd-dd dd:dd:dd";
    const auto part = [&](std::size_t at, std::size_t length) { return wholeNumber(text.substr(at, length)); };
    const bool fits = std::equal(text.begin(), text.end(), kPattern.begin(), kPattern.end(), [](char each, char model) {
        return model == 'd' ? each >= '0' && each <= '9' : each == model;
    });
    if (fits) {
        const WallTime time{*part(0, 4), *part(5, 2), *part(8, 2), *part(11, 2), *part(14, 2), *part(17, 2)};
        if (exists(time)) {
            return time;
        }
    }
    throw BadOption("--now needs a time as YYYY-MM-DD hh:mm:ss, not " + inQuotes(text));
}

void setPort(Options& options, const std::string& value) {
    const auto equals = value.find('=');
    if (equals == std::string::npos || equals + 1 == value.size()) {
        throw BadOption("--port needs a port and its device, such as COM3=/dev/ttyUSB0, not " + inQuotes(value));
    }
    options.ports[portNumber(std::string_view(value).substr(0, equals))] = value.substr(equals + 1);
}

void setDecimal(Options& options, const std::string& value) {
    if (value != "." && value != ",") {
        throw BadOption("--decimal needs . or , and not " + inQuotes(value));
    }
    options.decimal = value.front();
}

void setFolder(Options& options, const std::string& value) {
    std::error_code error;
    if (!std::filesystem::is_directory(value, error)) {
        throw BadOption("there is no folder " + inQuotes(value));
    }
    options.folder = value;
}

void setScript(Options& options, const std::string& value) {
    std::error_code error;
    if (!std::filesystem::exists(value, error) || std::filesystem::is_directory(value, error)) {
        throw BadOption("there is no file " + inQuotes(value));
    }
    if (!std::filesystem::is_regular_file(value, error)) {
        throw BadOption("--script needs a file and not " + inQuotes(value) + "; commands from elsewhere come on " +
                        "standard input");
    }
    if (std::filesystem::file_size(value, error) > kLargestScript || error) {
        throw BadOption("the script " + inQuotes(value) + " is larger than 64 MiB");
    }
    options.script = value;
}

void setPreferences(Options& options, const std::string& value) {
    std::error_code error;
    const auto status = std::filesystem::status(value, error);
    if (value.empty() || (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))) {
        throw BadOption("--preferences needs a file and not " + inQuotes(value));
    }
    options.preferences = value;
}

void setEcu(Options& options, const std::string& value) {
    if (value.empty()) {
        throw BadOption("--ecu needs none or KEY=VALUE,...");
    }
    options.ecu = value;
}

// Opening a pipe would wait for a reader, and a block device must not be overwritten with text.
void setTrace(Options& options, const std::string& value) {
    std::error_code error;
    const auto status = std::filesystem::status(value, error);
    if (std::filesystem::is_fifo(status) || std::filesystem::is_socket(status) ||
        std::filesystem::is_block_file(status)) {
        throw BadOption("--trace needs a file and not " + inQuotes(value));
    }
    options.trace = value;
}

// Also a pipe or a device is no log: reading it could take for ever.
void setLog(Options& options, const std::string& value) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(value, error)) {
        throw BadOption("there is no file " + inQuotes(value));
    }
    options.log = value;
}

struct Flag {
    std::string_view name;
    bool Options::*member;
};

constexpr std::array<Flag, 4> kFlags{{{"--headless", &Options::headless},
                                      {"--console", &Options::console},
                                      {"--virtual-time", &Options::virtualTime},
                                      {"--strict", &Options::strict}}};

struct Setting {
    std::string_view name;
    void (*set)(Options&, const std::string&);
    bool addsUp = false;  // all values count; of other options the last one
};

constexpr std::array<Setting, 9> kSettings{{
    {"--script", &setScript},
    {"--now", [](Options& options, const std::string& value) { options.now = wallTime(value); }},
    {"--ecu", &setEcu},
    {"--port", &setPort, true},
    {"--connect", [](Options& options, const std::string& value) { options.connect = portNumber(value); }},
    {"--folder", &setFolder},
    {"--preferences", &setPreferences},
    {"--decimal", &setDecimal},
    {"--trace", &setTrace},
}};

struct Given {
    const Setting* setting;
    std::string value;
};

bool setFlag(Options& options, std::string_view name) {
    const auto* const flag =
        std::find_if(kFlags.begin(), kFlags.end(), [&](const Flag& each) { return each.name == name; });
    if (flag == kFlags.end()) {
        return false;
    }
    options.*flag->member = true;
    return true;
}

// A word that is no option is the log to open.
constexpr Setting kLog{{}, &setLog};

const Setting& settingNamed(const std::string& name) {
    const auto* const setting =
        std::find_if(kSettings.begin(), kSettings.end(), [&](const Setting& each) { return each.name == name; });
    if (setting == kSettings.end()) {
        throw BadOption("unknown option " + inQuotes(name) + "; --help lists them all");
    }
    return *setting;
}

// Flags are set at once; of the settings those that count are returned.
std::vector<Given> readArguments(std::span<const std::string> arguments, Options& options) {
    std::vector<Given> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (setFlag(options, arguments[i])) {
            continue;
        }
        const bool isLog = !arguments[i].starts_with("-");
        const Setting& setting = isLog ? kLog : settingNamed(arguments[i]);
        if (!isLog && (i + 1 == arguments.size() || arguments[i + 1].starts_with("--"))) {
            throw BadOption(arguments[i] + " needs a value");
        }
        if (!setting.addsUp) {
            std::erase_if(given, [&](const Given& each) { return each.setting == &setting; });
        }
        given.push_back({&setting, isLog ? arguments[i] : arguments[++i]});
    }
    return given;
}

void checkTogether(const Options& options) {
    if (options.virtualTime && !options.headless) {
        throw BadOption("--virtual-time works with --headless only");
    }
    if (options.strict && !options.headless) {
        throw BadOption("--strict works with --headless only");
    }
    if (options.virtualTime && !options.ecu) {
        throw BadOption("--virtual-time needs --ecu");
    }
}

bool asksFor(std::span<const std::string> arguments, std::string_view name, std::string_view letter) {
    return std::any_of(arguments.begin(), arguments.end(),
                       [&](const std::string& each) { return each == name || each == letter; });
}

}  // namespace

std::variant<Options, OptionsError> parseOptions(std::span<const std::string> arguments) {
    Options options;
    options.help = asksFor(arguments, "--help", "-h");
    options.version = asksFor(arguments, "--version", "-V");
    if (options.help || options.version) {
        return options;
    }
    try {
        for (const auto& given : readArguments(arguments, options)) {
            given.setting->set(options, given.value);
        }
        checkTogether(options);
        return options;
    } catch (const BadOption& error) {
        return OptionsError{error.what()};
    }
}

std::string_view optionsHelp() {
    return R"(Korvane Tuner: tunes and watches an engine control unit over a serial line.

korvane-tuner [options] [FILE.txt]

  FILE.txt                       a log, which the viewer opens at the start
  --headless                     no display; commands come from standard input
  --console                      with a display: commands from standard input too
  --script FILE                  take the commands from FILE, then quit
  --strict                       headless only: the first error ends the run with status 1
  --virtual-time                 headless only: time passes in waits alone, and at once; needs --ecu
  --now "YYYY-MM-DD hh:mm:ss"    what the virtual clock starts at
  --ecu none                     every port leads to a line in memory on which nobody answers
  --ecu KEY=VALUE,...            every port leads to the built-in virtual ECU, with these keys
  --port COM3=/dev/ttyUSB0       the device that a port name stands for; may be repeated
  --connect COM1                 connect to this port at the start
  --folder DIR                   the program's own folder: ini files, logs, EEPROM images
  --preferences FILE             where the preferences are kept
  --decimal CHAR                 the decimal separator of log files, . or ,
  --trace FILE                   write every byte on the serial line to FILE
  -V, --version                  print the version
  -h, --help                     print this
)";
}

}  // namespace korvane::app
