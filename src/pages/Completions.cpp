#include "pages/Completions.h"

#include <algorithm>

namespace korvane::pages {

namespace {

using Kind = Completion::Kind;

std::string joined(const std::vector<std::string>& words, std::string_view between) {
    std::string text;
    for (const auto& word : words) {
        text += (text.empty() ? "" : std::string(between)) + word;
    }
    return text;
}

// Each option once, in the order of the table.
std::vector<Option> distinct(const Page& page) {
    std::vector<Option> options;
    for (const auto& option : page.options) {
        const bool known = std::ranges::any_of(
            options, [&](const Option& each) { return each.name == option.name && each.letter == option.letter; });
        if (!known) {
            options.push_back(option);
        }
    }
    return options;
}

std::vector<std::string> allForms(const Page& page) {
    std::vector<std::string> all;
    for (const auto& option : distinct(page)) {
        const auto forms = formsOf(option);
        all.insert(all.end(), forms.begin(), forms.end());
    }
    return all;
}

std::string functionOf(const Page& page) {
    std::string name = '_' + page.program;
    std::ranges::replace(name, '-', '_');
    return name;
}

std::string bashCase(const Option& option) {
    const auto head = "        " + joined(formsOf(option), "|") + ")\n            ";
    const auto& completion = option.completion;
    switch (completion.kind) {
        case Kind::File:
            return head + "_filedir\n            return\n            ;;\n";
        case Kind::Folder:
            return head + "_filedir -d\n            return\n            ;;\n";
        case Kind::Words:
            return head + "mapfile -t COMPREPLY < <(compgen -W \"" + joined(completion.words, " ") +
                   "\" -- \"$cur\")\n"
                   "            [[ ${COMPREPLY-} != *= ]] || compopt -o nospace\n            return\n            ;;\n";
        case Kind::Nothing:
            break;
    }
    return head + "return\n            ;;\n";
}

// Within single quotes.
std::string zshQuoted(std::string_view text) {
    std::string quoted;
    for (const char letter : text) {
        if (letter == '\'') {
            quoted += "'\\''";
            continue;
        }
        quoted += letter == '[' || letter == ']' || letter == ':' || letter == '\\' ? "\\" : "";
        quoted += letter;
    }
    return quoted;
}

std::string zshAction(const Completion& completion) {
    switch (completion.kind) {
        case Kind::File:
            return "_files";
        case Kind::Folder:
            return "_files -/";
        case Kind::Words:
            return "(" + joined(completion.words, " ") + ")";
        case Kind::Nothing:
            break;
    }
    return " ";
}

std::string zshLine(const Option& option) {
    std::string lines;
    for (const auto& form : formsOf(option)) {
        lines += "  '*" + form + "[" + zshQuoted(option.meaning) + "]";
        lines += option.value.empty() ? "" : ":" + zshQuoted(option.value) + ":" + zshAction(option.completion);
        lines += "' \\\n";
    }
    return lines;
}

std::string fishQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char letter : text) {
        quoted += letter == '\'' || letter == '\\' ? "\\" : "";
        quoted += letter;
    }
    return quoted + '\'';
}

std::string fishValue(const Option& option) {
    if (option.value.empty()) {
        return {};
    }
    switch (option.completion.kind) {
        case Kind::File:
            return " -r -F";
        case Kind::Folder:
            return " -x -a '(__fish_complete_directories)'";
        case Kind::Words:
            return " -x -a " + fishQuoted(joined(option.completion.words, " "));
        case Kind::Nothing:
            break;
    }
    return " -x";
}

}  // namespace

std::string bashCompletion(const Page& page) {
    std::string text = "# Completion of " + page.program + " for bash.\n" + functionOf(page) +
                       "() {\n"
                       "    local cur prev words cword\n"
                       "    _init_completion -n = || return\n"
                       "    case $prev in\n";
    for (const auto& option : distinct(page)) {
        text += option.value.empty() ? "" : bashCase(option);
    }
    text += "    esac\n";
    text += page.operand.empty() ? "" : "    if [[ $cur != -* ]]; then\n        _filedir\n        return\n    fi\n";
    return text + "    mapfile -t COMPREPLY < <(compgen -W \"" + joined(allForms(page), " ") +
           "\" -- \"$cur\")\n} &&\n    complete -F " + functionOf(page) + ' ' + page.program + '\n';
}

std::string zshCompletion(const Page& page) {
    std::string text = "#compdef " + page.program + "\n# Completion of " + page.program + " for zsh.\n_arguments \\\n";
    for (const auto& option : distinct(page)) {
        text += zshLine(option);
    }
    return text + (page.operand.empty() ? "  '::: '" : "  '*:file:_files'") + '\n';
}

std::string fishCompletion(const Page& page) {
    std::string text = "# Completion of " + page.program + " for fish.\n";
    text += page.operand.empty() ? "complete -c " + page.program + " -f\n" : "";
    for (const auto& option : distinct(page)) {
        text += "complete -c " + page.program;
        text += option.letter.empty() ? "" : " -s " + option.letter.substr(1);
        text += option.name.empty() ? "" : " -l " + option.name.substr(2);
        text += " -d " + fishQuoted(option.meaning) + fishValue(option) + '\n';
    }
    return text;
}

}  // namespace korvane::pages
