// Links, pictures and file names in the documents lead somewhere.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "documents/Markdown.h"

namespace korvane::documents {
namespace {

using testing::Contains;
using testing::SizeIs;

std::vector<std::string> linksOf(const Document& document) {
    return found(document.prose, R"(\]\(([^)\s]+)\))");
}

std::filesystem::path targetOf(const Document& document, const std::string& link) {
    const std::string file = link.substr(0, link.find('#'));
    const auto from = std::filesystem::path(document.name);
    return file.empty() ? from : (from.parent_path() / file).lexically_normal();
}

std::vector<std::string> anchorsOf(const Document& document) {
    std::vector<std::string> anchors;
    std::map<std::string, int> uses;
    for (const auto& heading : document.headings) {
        const std::string anchor = anchorOf(heading.text);
        const int before = uses[anchor]++;
        anchors.push_back(before == 0 ? anchor : anchor + '-' + std::to_string(before));
    }
    return anchors;
}

TEST(Links, LeadToAFile) {
    for (const auto& document : allDocuments()) {
        for (const auto& link : linksOf(document)) {
            EXPECT_TRUE(std::filesystem::exists(projectFolder() / targetOf(document, link)))
                << document.name << ": " << link;
        }
    }
}

TEST(Links, LeadToAHeading) {
    int anchors = 0;
    for (const auto& from : allDocuments()) {
        for (const auto& link : linksOf(from)) {
            if (const auto hash = link.find('#'); hash != std::string::npos) {
                const auto target = document(targetOf(from, link).string());
                EXPECT_THAT(anchorsOf(target), Contains(link.substr(hash + 1))) << from.name << ": " << link;
                ++anchors;
            }
        }
    }
    EXPECT_GT(anchors, 20);
}

TEST(Links, ShowEachPictureSomewhere) {
    std::set<std::string> shown;
    for (const auto& document : allDocuments()) {
        for (const auto& link : linksOf(document)) {
            shown.insert(targetOf(document, link).string());
        }
    }
    for (const auto& entry : std::filesystem::directory_iterator(projectFolder() / "docs/pictures")) {
        EXPECT_THAT(shown, Contains("docs/pictures/" + entry.path().filename().string()));
    }
}

// The last part of the first document says what else there is.
TEST(Links, LeadFromTheReadmeToEachDocument) {
    std::set<std::string> linked{"README.md"};
    const auto readme = document("README.md");
    for (const auto& link : linksOf(readme)) {
        linked.insert(targetOf(readme, link).string());
    }
    for (const auto& document : allDocuments()) {
        EXPECT_THAT(linked, Contains(document.name));
    }
}

TEST(Links, AreWholeInTheInstalledCopy) {
    const auto rules = contentOf(projectFolder() / "packaging/CMakeLists.txt");
    for (const auto& document : allDocuments()) {
        if (!document.name.starts_with("docs/")) {
            EXPECT_THAT(rules, testing::HasSubstr("../" + document.name));
        }
    }
}

TEST(Tables, HaveAsManyCellsInEachRow) {
    for (const auto& document : allDocuments()) {
        for (const auto& table : document.tables) {
            for (const auto& row : table.rows) {
                EXPECT_THAT(row, SizeIs(table.header.size())) << document.name << ", " << table.section;
            }
        }
    }
}

bool namesAFile(const std::string& code) {
    return !found(code, R"(^((?:[A-Za-z_]+/)+[A-Za-z0-9_.-]*)$)").empty() && !code.starts_with("build/");
}

bool isAFile(const std::string& name) {
    for (const char* const folder : {"", "src/", "tests/"}) {
        for (const char* const ending : {"", ".h", ".cpp"}) {
            if (std::filesystem::exists(projectFolder() / (folder + name + ending))) {
                return true;
            }
        }
    }
    return false;
}

TEST(FileNames, AreThoseOfFiles) {
    int names = 0;
    for (const auto& document : allDocuments()) {
        for (const auto& code : codeIn(document.prose)) {
            if (namesAFile(code)) {
                ++names;
                EXPECT_TRUE(isAFile(code)) << document.name << ": " << code;
            }
        }
    }
    EXPECT_GT(names, 40);
}

}  // namespace
}  // namespace korvane::documents
