#include "app/Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <vector>

#include "app/OneLine.h"
#include "platform/PortFacts.h"

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

// Also a pipe or a device is no file to open: reading it could take for ever.
void setFile(Options& options, const std::string& value) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(value, error)) {
        throw BadOption("there is no file " + inQuotes(value));
    }
    options.file = value;
}

// A device that is named by its path has no number.
void setDoctor(Options& options, const std::string& value) {
    const bool isPort = value.empty() || value.starts_with("COM");
    options.doctor = value.empty() ? 1 : isPort ? portNumber(value) : platform::kPortOfPath;
    if (!isPort) {
        options.ports[platform::kPortOfPath] = value;
    }
}

using Set = void (*)(Options&, const std::string&);

// A flag has a member, any other option a function.
struct Option {
    OptionHelp help;
    bool Options::*flag = nullptr;
    Set set = nullptr;
    bool addsUp = false;        // all values count; of other options the last one
    bool mayLackValue = false;  // an empty one then
};

constexpr std::array<Option, 20> kOptions{{
    {{"", "FILE", "a tune, a log, a setpoint file or an EEPROM image: its window opens with it"}, nullptr, &setFile},
    {{"--headless", {}, "no display; commands come from standard input"}, &Options::headless},
    {{"--console", {}, "with a display: commands from standard input too"}, &Options::console},
    {{"--script", "FILE", "take the commands from FILE, then quit"}, nullptr, &setScript},
    {{"--strict", {}, "headless only: the first error ends the run with status 1"}, &Options::strict},
    {{"--virtual-time", {}, "headless only: time passes in waits alone, and at once; needs --ecu"},
     &Options::virtualTime},
    {{"--now", "\"YYYY-MM-DD hh:mm:ss\"", "what the virtual clock starts at"},
     nullptr,
     [](Options& options, const std::string& value) { options.now = wallTime(value); }},
    {{"--ecu", "none", "every port leads to a line in memory on which nobody answers"}, nullptr, &setEcu},
    {{"--ecu", "KEY=VALUE,...", "every port leads to the built-in virtual ECU, with these keys"}, nullptr, &setEcu},
    {{"--port", "COM3=/dev/ttyUSB0", "the device that a port name stands for; may be repeated"},
     nullptr,
     &setPort,
     true},
    {{"--connect", "COM1", "connect to this port at the start"},
     nullptr,
     [](Options& options, const std::string& value) { options.connect = portNumber(value); }},
    {{"--folder", "DIR", "the program's own folder: ini files, logs, EEPROM images"}, nullptr, &setFolder},
    {{"--preferences", "FILE", "where the preferences are kept"}, nullptr, &setPreferences},
    {{"--decimal", "CHAR", "the decimal separator of log files, . or ,"}, nullptr, &setDecimal},
    {{"--trace", "FILE", "write every byte on the serial line to FILE"}, nullptr, &setTrace},
    {{"--doctor", "[COM1|DEVICE]", "test this port instead of starting: say what is wrong and what to do"},
     nullptr,
     &setDoctor,
     false,
     true},
    {{"--send", {}, "with --doctor: ask the ECU without a question before"}, &Options::send},
    {{"--json", {}, "with --doctor: write one JSON object"}, &Options::json},
    {{"--version", {}, "print the version", 'V'}, &Options::version},
    {{"--help", {}, "print this", 'h'}, &Options::help},
}};

// A word that is no option is the file to open.
constexpr const Option& kFile = kOptions.front();

struct Given {
    const Option* option;
    std::string value;
};

const Option& optionNamed(const std::string& name) {
    const auto* const option =
        std::find_if(kOptions.begin() + 1, kOptions.end(), [&](const Option& each) { return each.help.name == name; });
    if (option == kOptions.end()) {
        throw BadOption("unknown option " + inQuotes(name) + "; --help lists them all");
    }
    return *option;
}

// Flags are set at once; of the others those that count are returned.
std::vector<Given> readArguments(std::span<const std::string> arguments, Options& options) {
    std::vector<Given> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool isFile = !arguments[i].starts_with("-");
        const Option& option = isFile ? kFile : optionNamed(arguments[i]);
        if (option.flag != nullptr) {
            options.*option.flag = true;
            continue;
        }
        const bool hasValue = isFile || (i + 1 < arguments.size() && !arguments[i + 1].starts_with("--"));
        if (!hasValue && !option.mayLackValue) {
            throw BadOption(arguments[i] + " needs a value");
        }
        if (!option.addsUp) {
            std::erase_if(given, [&](const Given& each) { return each.option == &option; });
        }
        given.push_back({&option, isFile ? arguments[i] : hasValue ? arguments[++i] : std::string()});
    }
    return given;
}

void checkTogether(const Options& options) {
    if ((options.send || options.json) && !options.doctor) {
        throw BadOption("--send and --json work with --doctor only");
    }
    if (options.virtualTime && !options.headless && !options.doctor) {
        throw BadOption("--virtual-time works with --headless only");
    }
    if (options.strict && !options.headless) {
        throw BadOption("--strict works with --headless only");
    }
    if (options.virtualTime && !options.ecu) {
        throw BadOption("--virtual-time needs --ecu");
    }
}

bool isNamed(const OptionHelp& help, std::string_view word) {
    return word == help.name || (help.letter != 0 && word == std::string{'-', help.letter});
}

// --help and --version count wherever they stand.
bool asksFor(std::span<const std::string> arguments, bool Options::*flag) {
    const auto* const option =
        std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& each) { return each.flag == flag; });
    return std::any_of(arguments.begin(), arguments.end(),
                       [&](const std::string& each) { return isNamed(option->help, each); });
}

std::string firstColumn(const OptionHelp& help) {
    std::string text = help.letter == 0 ? std::string() : std::string{'-', help.letter, ',', ' '};
    text += help.name;
    text += help.name.empty() || help.value.empty() ? "" : " ";
    return text.append(help.value);
}

}  // namespace

std::variant<Options, OptionsError> parseOptions(std::span<const std::string> arguments) {
    Options options;
    options.help = asksFor(arguments, &Options::help);
    options.version = asksFor(arguments, &Options::version);
    if (options.help || options.version) {
        return options;
    }
    try {
        for (const auto& given : readArguments(arguments, options)) {
            given.option->set(options, given.value);
        }
        checkTogether(options);
        return options;
    } catch (const BadOption& error) {
        return OptionsError{error.what()};
    }
}

std::vector<OptionHelp> optionTable() {
    std::vector<OptionHelp> all;
    for (const auto& option : kOptions) {
        all.push_back(option.help);
    }
    return all;
}

std::string optionsHelp() {
    constexpr std::size_t kColumn = 31;
    std::string text =
        "Korvane Tuner: tunes and watches an engine control unit over a serial line.\n\n"
        "korvane-tuner [options] [FILE]\n\n";
    for (const auto& option : kOptions) {
        auto column = firstColumn(option.help);
        column.resize(kColumn, ' ');
        text += "  " + column + std::string(option.help.meaning) + '\n';
    }
    return text;
}

}  // namespace korvane::app
