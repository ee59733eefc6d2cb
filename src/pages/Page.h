// What a manual page and the completions of a program are made of.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvane::pages {

// What completes a value.
struct Completion {
    enum class Kind { Nothing, File, Folder, Words };

    Kind kind = Kind::Nothing;
    std::vector<std::string> words;
};

struct Option {
    std::string name;    // "--script"; may be empty if there is a letter
    std::string letter;  // "-V", or empty
    std::string value;
    std::string meaning;
    Completion completion;
};

struct Section {
    std::string title;
    std::string text;  // paragraphs, with an empty line between them
};

struct Page {
    std::string program;
    std::string summary;
    std::string operand;         // what may stand without an option, or empty
    std::string operandMeaning;  // of that
    std::vector<Option> options;
    std::vector<Section> sections;
    std::vector<std::string> others;  // programs to see also
};

// From the programs' own tables.
[[nodiscard]] Page tunerPage();
[[nodiscard]] Page ecuPage();

// `value` as a table of options has it: a kind of file, or words such as "lap, idle or off".
[[nodiscard]] Completion completionOf(std::string_view value);

// "-V, --version", with what is there.
[[nodiscard]] std::vector<std::string> formsOf(const Option& option);

}  // namespace korvane::pages
