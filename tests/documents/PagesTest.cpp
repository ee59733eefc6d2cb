// The manual pages and the completions have the options of --help, no more and no fewer.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "app/Process.h"
#include "documents/Help.h"
#include "documents/Markdown.h"
#include "support/TempFolder.h"

namespace korvane::documents {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string replaced(std::string text, const std::string& old, const std::string& fresh) {
    for (auto at = text.find(old); at != std::string::npos; at = text.find(old, at + fresh.size())) {
        text.replace(at, old.size(), fresh);
    }
    return text;
}

std::set<std::string> asSet(const std::vector<std::string>& words) {
    return {words.begin(), words.end()};
}

// The texts behind the options of --help.
std::vector<std::string> meaningsOf(const std::string& program) {
    std::vector<std::string> meanings;
    for (const auto& line : app::linesOf(app::runProgram(program, {"--help"}).output)) {
        const auto gap = line.find("  ", 2);
        if (line.starts_with("  -") && gap != std::string::npos) {
            const auto meaning = line.substr(line.find_first_not_of(' ', gap));
            meanings.push_back(meaning.substr(0, meaning.find(" (")));
        }
    }
    return meanings;
}

class PagesOf : public testing::TestWithParam<std::string> {
protected:
    PagesOf() {
        const auto outcome = app::runProgram("korvane-pages", {folder_.path().string(), "2026-01-05"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
    }

    [[nodiscard]] std::string page(const std::string& before, const std::string& after) const {
        return folder_.read(before + GetParam() + after);
    }
    [[nodiscard]] std::string manual() const {
        auto text = replaced(page("", ".1"), R"(\-)", "-");
        text = replaced(text, R"(\(dq)", "\"");
        return replaced(text, R"(\(ti)", "~");
    }

    support::TempFolder folder_;
};

TEST_P(PagesOf, TheManualHasTheOptions) {
    EXPECT_EQ(asSet(found(manual(), R"(\\fB(--?[a-zA-Z][a-z-]*)\\fR)")), optionsOf(GetParam()));
    EXPECT_THAT(manual(),
                HasSubstr(".TH " + std::string(GetParam() == "korvane-ecu" ? "KORVANE-ECU" : "KORVANE-TUNER") +
                          " 1 2026-01-05 "));
}

TEST_P(PagesOf, TheCompletionsHaveTheOptions) {
    // The last list of words is that of the options.
    const auto words = found(page("", ".bash"), R"re(compgen -W "([^"]*)")re");
    ASSERT_THAT(words, Not(IsEmpty()));
    EXPECT_EQ(optionsIn(words.back()), optionsOf(GetParam()));
    EXPECT_EQ(asSet(found(page("_", ""), R"('\*(--?[a-zA-Z][a-z-]*)\[)")), optionsOf(GetParam()));
    std::set<std::string> fish;
    for (const auto& name : found(page("", ".fish"), R"( -l ([a-z-]+))")) {
        fish.insert("--" + name);
    }
    for (const auto& letter : found(page("", ".fish"), R"( -s ([a-zA-Z]))")) {
        fish.insert("-" + letter);
    }
    EXPECT_EQ(fish, optionsOf(GetParam()));
}

TEST_P(PagesOf, TheManualSaysWhatHelpSays) {
    const auto meanings = meaningsOf(GetParam());
    EXPECT_THAT(meanings, Not(IsEmpty()));
    for (const auto& meaning : meanings) {
        EXPECT_THAT(manual(), HasSubstr('\n' + meaning));
    }
}

INSTANTIATE_TEST_SUITE_P(Programs, PagesOf, testing::Values("korvane-tuner", "korvane-ecu"),
                         [](const auto& program) { return replaced(program.param, "-", ""); });

}  // namespace
}  // namespace korvane::documents
