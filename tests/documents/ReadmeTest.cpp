// What the first document says of the program holds.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "documents/Markdown.h"
#include "support/VirtualProgram.h"

namespace korvane::documents {
namespace {

using testing::ElementsAreArray;

std::string firstLines(int count) {
    std::istringstream stream(contentOf(projectFolder() / "README.md"));
    std::string lines;
    std::string line;
    for (int i = 0; i < count && std::getline(stream, line); ++i) {
        lines += line + '\n';
    }
    return lines;
}

// "types 10 to 15" and "(20, 21)" are numbers and ranges of numbers.
std::set<int> numbersIn(const std::string& text) {
    std::set<int> numbers;
    const auto firsts = found(text, R"((?:^|[^\d])(\d+))");
    for (const auto& first : firsts) {
        numbers.insert(std::stoi(first));
    }
    for (const auto& range : found(text, R"((\d+ to \d+))")) {
        for (int each = std::stoi(range); each < std::stoi(range.substr(range.rfind(' '))); ++each) {
            numbers.insert(each);
        }
    }
    return numbers;
}

std::set<int> knownTypes(const core::FirmwareIdentity& identity) {
    std::set<int> types;
    for (int type = 0; type < static_cast<int>(identity.SWTypeNames.size()); ++type) {
        if (identity.SWTypeNames.at(static_cast<std::size_t>(type)) != "-") {
            types.insert(type);
        }
    }
    return types;
}

TEST(Readme, NamesTheFirmwareTypesInItsFirstLines) {
    const support::VirtualProgram program;
    std::set<int> named;
    for (const auto& list : found(firstLines(20), R"(\(((?:types )?\d[\d, to]*)\))")) {
        named.merge(numbersIn(list));
    }
    EXPECT_EQ(named, knownTypes(program.tables));
}

TEST(Readme, ListsItsPartsInTheirOrder) {
    const auto readme = document("README.md");
    std::vector<std::string> parts;
    for (const auto& heading : readme.headings) {
        if (heading.level == 2) {
            parts.push_back(heading.text);
        }
    }
    const auto start = readme.prose.find("**Contents**");
    ASSERT_NE(start, std::string::npos);
    const auto list = readme.prose.substr(start, readme.prose.find('\n', start) - start);
    EXPECT_THAT(found(list, R"(\[([^\]]+)\])"), ElementsAreArray(parts));
}

std::string withoutComments(const std::string& text) {
    std::istringstream stream(text);
    std::string kept;
    for (std::string line; std::getline(stream, line);) {
        const auto first = line.find_first_not_of(' ');
        if (first != std::string::npos && line.compare(first, 2, "//") != 0) {
            kept += line + '\n';
        }
    }
    return kept;
}

// Everything that can put a text before a user.
std::string textsOfTheProgram() {
    std::string all = contentOf(projectFolder() / "packaging/korvane-tuner.desktop");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(projectFolder() / "src")) {
        if (entry.is_regular_file()) {
            all += withoutComments(contentOf(entry.path()));
        }
    }
    return all;
}

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

bool isIn(const std::string& all, std::string text) {
    if (text.ends_with("...")) {
        text.resize(text.size() - 3);
    }
    if (all.find(text) != std::string::npos) {
        return true;
    }
    // A text with a number is put together from pieces: then its words have to be there.
    if (std::ranges::none_of(text, isDigit)) {
        return false;
    }
    std::ranges::replace_if(text, isDigit, ' ');
    const auto words = found(text, "(\\S+)");
    return std::ranges::all_of(words, [&](const auto& word) { return all.find(word) != std::string::npos; });
}

std::string withoutCode(const std::string& text) {
    std::string kept;
    bool code = false;
    for (const char letter : text) {
        code = letter == '`' ? !code : code && letter != '\n';
        kept += code || letter == '`' ? ' ' : letter;
    }
    return kept;
}

TEST(Readme, QuotesTextsOfTheProgram) {
    const auto program = textsOfTheProgram();
    const auto quotes = found(withoutCode(document("README.md").prose), "\"([^\"]+)\"");
    EXPECT_GT(quotes.size(), 80U);
    for (const auto& quote : quotes) {
        EXPECT_TRUE(isIn(program, quote)) << '"' << quote << '"';
    }
}

TEST(Readme, TranslatesTextsOfTheProgram) {
    const auto program = textsOfTheProgram();
    for (const auto& row : tableIn(document("README.md"), "Finnish words").rows) {
        for (const auto& word : found(row.front() + ',', R"(\s*([^,]+),)")) {
            EXPECT_TRUE(isIn(program, word)) << word;
        }
    }
}

TEST(Readme, NamesTheControlsOfWindows) {
    for (const auto& code : codeIn(document("README.md").prose)) {
        if (code.starts_with("frm")) {
            EXPECT_TRUE(isIn(textsOfTheProgram(), code.substr(0, code.find('.')))) << code;
        }
    }
}

}  // namespace
}  // namespace korvane::documents
