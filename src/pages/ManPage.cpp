#include "pages/ManPage.h"

namespace korvane::pages {

namespace {

// A plain hyphen is printed as another character, and a point or an apostrophe at the beginning of a line is a request.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        const bool begins = result.empty() || result.back() == '\n';
        result += begins && (letter == '.' || letter == '\'') ? "\\&" : "";
        switch (letter) {
            case '\\':
                result += "\\e";
                break;
            case '-':
                result += "\\-";
                break;
            case '~':
                result += "\\(ti";
                break;
            case '"':
                result += "\\(dq";
                break;
            default:
                result += letter;
        }
    }
    return result;
}

std::string bold(std::string_view text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string upper(std::string text) {
    for (char& letter : text) {
        letter = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    }
    return text;
}

std::string paragraphs(std::string_view text) {
    std::string result = escaped(text);
    for (auto at = result.find("\n\n"); at != std::string::npos; at = result.find("\n\n")) {
        result.replace(at, 2, "\n.PP\n");
    }
    return result + '\n';
}

std::string entry(const std::string& head, std::string_view text) {
    return ".TP\n" + head + '\n' + escaped(text) + '\n';
}

std::string headOf(const Option& option) {
    std::string head;
    for (const auto& form : formsOf(option)) {
        head += (head.empty() ? "" : ", ") + bold(form);
    }
    return option.value.empty() ? head : head + " \\fI" + escaped(option.value) + "\\fR";
}

std::string optionsOf(const Page& page) {
    std::string text = ".SH OPTIONS\n";
    if (!page.operand.empty()) {
        text += entry("\\fI" + escaped(page.operand) + "\\fR", page.operandMeaning);
    }
    for (const auto& option : page.options) {
        text += entry(headOf(option), option.meaning);
    }
    return text;
}

}  // namespace

std::string manPage(const Page& page, std::string_view version, std::string_view date) {
    std::string text = ".TH " + upper(page.program) + " 1 " + std::string(date) + " \"Korvane Tuner " +
                       std::string(version) + "\" \"User commands\"\n";
    text += ".SH NAME\n" + escaped(page.program) + " \\- " + escaped(page.summary) + '\n';
    text += ".SH SYNOPSIS\n" + bold(page.program) + " [options]" +
            (page.operand.empty() ? "" : " [" + escaped(page.operand) + ']') + '\n';
    text += optionsOf(page);
    for (const auto& section : page.sections) {
        text += ".SH \"" + section.title + "\"\n" + paragraphs(section.text);
    }
    text += ".SH \"SEE ALSO\"\n";
    for (const auto& other : page.others) {
        text += bold(other) + "(1)\n";
    }
    return text;
}

}  // namespace korvane::pages
