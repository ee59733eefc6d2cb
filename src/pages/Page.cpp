#include "pages/Page.h"

#include <algorithm>
#include <cctype>

#include "app/Options.h"
#include "ecu/server/EcuSettings.h"
#include "ecu/server/Options.h"

namespace korvane::pages {

namespace {

constexpr int kPorts = 15;

std::vector<std::string> portNames(std::string_view behind) {
    std::vector<std::string> names;
    for (int port = 1; port <= kPorts; ++port) {
        names.push_back("COM" + std::to_string(port) + std::string(behind));
    }
    return names;
}

std::vector<std::string> ecuWords() {
    std::vector<std::string> words{"none"};
    for (const auto& key : ecu::keyHelp()) {
        words.push_back(std::string(key.key) + '=');
    }
    return words;
}

bool isWord(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](unsigned char each) { return std::isalnum(each) != 0; });
}

std::string withBreaks(std::string text) {
    for (const std::string_view between : {", or ", ", ", " or ", " and ", " joined "}) {
        for (auto at = text.find(between); at != std::string::npos; at = text.find(between, at)) {
            text.replace(at, between.size(), "\n");
        }
    }
    return text + '\n';
}

// "lap, idle or rpm:load:throttle" has the words "lap" and "idle".
std::vector<std::string> wordsIn(std::string_view value) {
    std::vector<std::string> words;
    const std::string pieces = withBreaks(std::string(value));
    for (std::size_t at = 0; at < pieces.size(); at = pieces.find('\n', at) + 1) {
        const auto piece = pieces.substr(at, pieces.find('\n', at) - at);
        if (isWord(piece)) {
            words.push_back(piece);
        }
    }
    return words;
}

template <class Help>
Option optionOf(const Help& help) {
    Option option;
    option.name = help.name;
    option.letter = help.letter == 0 ? std::string() : std::string{'-', help.letter};
    option.value = help.value;
    option.meaning = help.meaning;
    option.completion = completionOf(help.value);
    return option;
}

const Section kTunerFiles{
    "FILES",
    "~/.config/korvane-tuner/preferences.ini: port, speed and other choices, sizes and places of the windows.\n\n"
    "~/.local/share/korvane-tuner: the program's own folder, with Settings_par.ini, logs, images of the EEPROM and "
    "restore points."};

const Section kTunerOpening{
    "FILES TO OPEN",
    "A tune opens in a map window, a log in the log viewer, a setpoint file (.lam) in the analyser of a map window, "
    "and an image of the EEPROM in the comparison, beside what is known of the ECU. Nothing is sent by that."};

const Section kTunerStatus{"EXIT STATUS",
                           "0 after an ordinary end; 1 when a reply could not be written, or a strict run met an "
                           "error; 2 when the options can't be met."};

const Section kTunerEnvironment{"ENVIRONMENT",
                                "KORVANE_DEBUG=1: write what no window shows to standard error.\n\n"
                                "XDG_CONFIG_HOME and XDG_DATA_HOME: used instead of ~/.config and ~/.local/share."};

const Section kEcuOutput{"DESCRIPTION",
                         "Plays the engine control unit with a simulated engine on a pseudo-terminal, and prints the "
                         "terminal's path. It ends on SIGINT or SIGTERM."};

const Section kEcuExample{"EXAMPLE",
                          "korvane-ecu --pty /tmp/ecu --drive cruise &\n\n"
                          "korvane-tuner --port COM1=/tmp/ecu --connect COM1"};

}  // namespace

Completion completionOf(std::string_view value) {
    using Kind = Completion::Kind;
    if (value == "FILE" || value == "PATH" || value == "a file") {
        return {Kind::File, {}};
    }
    if (value == "DIR") {
        return {Kind::Folder, {}};
    }
    if (value.starts_with("COM")) {
        return {Kind::Words, portNames(value.find('=') == std::string_view::npos ? "" : "=")};
    }
    if (value == "CHAR") {
        return {Kind::Words, {".", ","}};
    }
    if (value == "KEY=VALUE,..." || value == "none") {
        return {Kind::Words, ecuWords()};
    }
    auto words = wordsIn(value);
    return {words.empty() ? Kind::Nothing : Kind::Words, std::move(words)};
}

std::vector<std::string> formsOf(const Option& option) {
    std::vector<std::string> forms;
    for (const auto& form : {option.letter, option.name}) {
        if (!form.empty()) {
            forms.push_back(form);
        }
    }
    return forms;
}

Page tunerPage() {
    Page page{.program = "korvane-tuner",
              .summary = "tune and watch an engine control unit over a serial line",
              .operand = {},
              .operandMeaning = {},
              .options = {},
              .sections = {kTunerOpening, kTunerFiles, kTunerEnvironment, kTunerStatus},
              .others = {"korvane-ecu"}};
    for (const auto& help : app::optionTable()) {
        if (help.name.empty()) {
            page.operand = help.value;
            page.operandMeaning = help.meaning;
        } else {
            page.options.push_back(optionOf(help));
        }
    }
    return page;
}

Page ecuPage() {
    Page page{.program = "korvane-ecu",
              .summary = "a virtual engine control unit for Korvane Tuner",
              .operand = {},
              .operandMeaning = {},
              .options = {},
              .sections = {kEcuOutput, kEcuExample},
              .others = {"korvane-tuner"}};
    for (const auto& help : ecu::optionTable()) {
        page.options.push_back(optionOf(help));
    }
    return page;
}

}  // namespace korvane::pages
