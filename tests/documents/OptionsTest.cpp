// The options and keys that the documents name are those of the programs.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <utility>

#include "documents/Help.h"
#include "documents/Markdown.h"
#include "ecu/server/EcuSettings.h"
#include "ecu/server/Options.h"

namespace korvane::documents {
namespace {

using testing::Contains;

// Command lines and single options: what stands between code marks, and the lines of blocks.
std::vector<std::string> codeOf(const Document& document) {
    auto code = codeIn(document.prose);
    for (const auto& block : document.blocks) {
        std::string joined;
        for (const auto& line : block.lines) {
            joined += line;
            if (line.ends_with('\\')) {
                joined.pop_back();
                continue;
            }
            code.push_back(std::exchange(joined, {}));
        }
    }
    return code;
}

bool isOfAnotherTool(const std::string& code) {
    for (const char* const tool : {"cmake", "ctest", "--gtest_filter", "tests/faults/run", "sudo", "clang-", "--only",
                                   "--prefix", "printf", "rm -", "mkdir -p", "groups", "#!/"}) {
        if (code.find(tool) != std::string::npos) {
            return true;
        }
    }
    return false;
}

class OptionsOfDocuments : public testing::Test {
protected:
    const std::set<std::string> tuner_ = optionsOf("korvane-tuner");
    const std::set<std::string> ecu_ = optionsOf("korvane-ecu");
    std::set<std::string> both_ = [this] {
        auto all = tuner_;
        all.insert(ecu_.begin(), ecu_.end());
        return all;
    }();

    // Which program the options of a command line are for.
    [[nodiscard]] const std::set<std::string>& allowedIn(const std::string& code) const {
        if (code.find("korvane-ecu") != std::string::npos) {
            return ecu_;
        }
        return code.find("korvane-tuner") != std::string::npos ? tuner_ : both_;
    }
};

TEST_F(OptionsOfDocuments, Exist) {
    int options = 0;
    for (const auto& document : allDocuments()) {
        for (const auto& code : codeOf(document)) {
            for (const auto& option : isOfAnotherTool(code) ? std::set<std::string>() : optionsIn(code)) {
                if (option.starts_with("--") || code.starts_with("korvane-")) {
                    EXPECT_THAT(allowedIn(code), Contains(option)) << document.name << ": " << code;
                    ++options;
                }
            }
        }
    }
    EXPECT_GT(options, 60);
}

std::set<std::string> inFirstColumn(const Table& table) {
    std::set<std::string> options;
    for (const auto& row : table.rows) {
        for (const auto& code : codeIn(row.front())) {
            options.merge(optionsIn(code));
        }
    }
    return options;
}

TEST_F(OptionsOfDocuments, AreAllOfTheProgramsOwn) {
    EXPECT_EQ(inFirstColumn(tableIn(document("docs/console.md"), "Options")), tuner_);
}

TEST_F(OptionsOfDocuments, AreAllOfTheVirtualEcusButItsKeys) {
    auto options = inFirstColumn(tableIn(document("docs/virtual-ecu.md"), "Starting it"));
    for (const auto& help : ecu::keyHelp()) {
        options.insert("--" + std::string(help.key));
    }
    EXPECT_EQ(options, ecu_);
}

TEST(KeysOfDocuments, AreThoseOfTheVirtualEcuInItsOrder) {
    std::vector<std::string> keys;
    for (const auto& row : tableIn(document("docs/virtual-ecu.md"), "Keys").rows) {
        const auto named = codeIn(row.front());
        keys.insert(keys.end(), named.begin(), named.end());
    }
    std::vector<std::string> expected;
    for (const auto& help : ecu::keyHelp()) {
        expected.emplace_back(help.key);
    }
    EXPECT_EQ(keys, expected);
}

// Where the text names a default, it is the one with which the virtual ECU starts: setting it changes nothing.
TEST(KeysOfDocuments, HaveTheirDefaults) {
    const ecu::EcuSettings fresh;
    ecu::EcuSettings set;
    for (const auto& row : tableIn(document("docs/virtual-ecu.md"), "Keys").rows) {
        for (const auto& value : found(row.at(1) + ' ' + row.at(2), "default `?(\\w+(?:\\.\\d+)?)`?")) {
            EXPECT_EQ(ecu::parseKey(set, codeIn(row.front()).front(), value), "");
        }
    }
    EXPECT_EQ(set.type, fresh.type);
    EXPECT_EQ(set.version, fresh.version);
    EXPECT_EQ(set.features, fresh.features);
    EXPECT_EQ(set.identityLength, fresh.identityLength);
    EXPECT_EQ(set.payloadLength, fresh.payloadLength);
    EXPECT_EQ(set.seed, fresh.seed);
    EXPECT_EQ(set.ignitionFault, fresh.ignitionFault);
    EXPECT_EQ(set.mapFault, fresh.mapFault);
    EXPECT_EQ(set.conditions, fresh.conditions);
}

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word && word != "#" && word != "&";) {
        words.push_back(word);
    }
    return words;
}

// But for `eeprom`, whose file is the reader's.
std::string faultOfEcuLine(const std::string& line) {
    auto words = wordsOf(line);
    words.erase(words.begin());
    if (const auto file = std::ranges::find(words, "--eeprom"); file != words.end()) {
        words.erase(file, file + 2);
    }
    const std::vector<std::string_view> arguments(words.begin(), words.end());
    ecu::Options options;
    return ecu::parseOptions(arguments, options);
}

std::string faultOfKeyList(const std::string& list) {
    ecu::EcuSettings settings;
    return list == "none" ? std::string() : ecu::parseKeyList(settings, list);
}

TEST(KeysOfDocuments, HaveValuesInExamplesThatTheVirtualEcuTakes) {
    int examples = 0;
    for (const auto& document : allDocuments()) {
        for (const auto& code : codeOf(document)) {
            if (code.starts_with("korvane-ecu ")) {
                EXPECT_EQ(faultOfEcuLine(code), "") << document.name << ": " << code;
                ++examples;
            }
            for (const auto& list : found(code, R"(--ecu ([a-z]+=\S+|none))")) {
                EXPECT_EQ(faultOfKeyList(list), "") << document.name << ": " << code;
                ++examples;
            }
        }
    }
    EXPECT_GT(examples, 12);
}

}  // namespace
}  // namespace korvane::documents
