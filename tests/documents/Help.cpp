#include "documents/Help.h"

#include "app/Process.h"
#include "documents/Markdown.h"

namespace korvane::documents {

std::set<std::string> optionsIn(const std::string& text) {
    static const std::string kOption = R"((?:^|[\s"`'(|,])(--[a-z][a-z-]+|-[a-zA-Z])(?=[\s=,|)]|$))";
    const auto options = found(text, kOption);
    return {options.begin(), options.end()};
}

std::set<std::string> optionsOf(const std::string& program) {
    std::set<std::string> options;
    for (const auto& line : app::linesOf(app::runProgram(program, {"--help"}).output)) {
        if (line.starts_with("  -")) {
            // The meaning begins behind two blanks; an example value has none.
            options.merge(optionsIn(line.substr(0, line.find("  ", 2))));
        }
    }
    return options;
}

}  // namespace korvane::documents
