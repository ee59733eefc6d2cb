// What the package brings along fits together.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "documents/Markdown.h"

namespace korvane::documents {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

std::filesystem::path packaging(const std::string& name) {
    return projectFolder() / "packaging" / name;
}

std::vector<std::string> linesIn(const std::string& name) {
    std::istringstream stream(contentOf(packaging(name)));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::set<std::string> typesIn(const std::string& name, const std::string& pattern) {
    const auto types = found(contentOf(packaging(name)), pattern);
    return {types.begin(), types.end()};
}

const char* const kRules = "60-korvane-tuner.rules";

// The vendors and products of the rules that begin with this attribute, as they stand.
std::vector<std::string> adaptersBy(const std::string& attribute) {
    return found(contentOf(packaging(kRules)),
                 '\n' + attribute + R"re(\{idVendor\}=="(\w+", )re" + attribute + R"re(\{idProduct\}=="[^"]+)")re");
}

TEST(UdevRules, StandBeforeTheOneThatGivesAccess) {
    EXPECT_LT(std::stoi(kRules), 73);
}

TEST(UdevRules, AreWellFormed) {
    const std::regex part(R"re([A-Z_]+(\{\w+\})?(==|!=|=|\+=)"[^"]*")re");
    for (const auto& line : linesIn(kRules)) {
        std::istringstream parts(line.starts_with("#") ? "" : line);
        for (std::string each; std::getline(parts, each, ',');) {
            EXPECT_TRUE(std::regex_match(each.substr(each.find_first_not_of(' ')), part)) << each << " in " << line;
        }
    }
}

TEST(UdevRules, JumpToTheirLabels) {
    const auto text = contentOf(packaging(kRules));
    for (const auto& label : found(text, R"re(GOTO="(\w+)")re")) {
        EXPECT_THAT(text, HasSubstr("LABEL=\"" + label + '"'));
    }
}

TEST(UdevRules, GiveAccessToTheAdaptersThatModemManagersLeaveAlone) {
    EXPECT_THAT(adaptersBy("ATTRS"), SizeIs(4));
    auto ports = adaptersBy("ATTRS");
    for (auto& each : ports) {
        each = std::regex_replace(each, std::regex("ATTRS"), "ATTR");
    }
    EXPECT_EQ(adaptersBy("ATTR"), ports);
    for (const auto& line : linesIn(kRules)) {
        if (line.starts_with("ATTR{")) {
            EXPECT_THAT(line, HasSubstr(R"(, ENV{ID_MM_DEVICE_IGNORE}="1")"));
        } else if (line.starts_with("ATTRS{")) {
            EXPECT_THAT(line, HasSubstr(R"(, TAG+="uaccess", ENV{ID_MM_PORT_IGNORE}="1")"));
        }
    }
}

TEST(FileTypes, AreTheSameEverywhere) {
    const auto types = typesIn("korvane-tuner.xml", R"re(<mime-type type="([^"]+)")re");
    EXPECT_THAT(types, SizeIs(4));
    EXPECT_EQ(typesIn("korvane-tuner.desktop", R"re((application/[a-z-]+);)re"), types);
    EXPECT_EQ(typesIn("org.korvane.tuner.metainfo.xml.in", R"re(<mediatype>([^<]+)<)re"), types);
}

TEST(DesktopEntry, OpensAFile) {
    EXPECT_THAT(contentOf(packaging("korvane-tuner.desktop")), HasSubstr("\nExec=korvane-tuner %f\n"));
}

struct Size {
    unsigned width;
    unsigned height;

    bool operator==(const Size&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Size& size) {
    return stream << size.width << " by " << size.height;
}

// Of a PNG picture: two numbers of four bytes at 16, the high byte first.
Size sizeOf(const std::filesystem::path& picture) {
    const auto bytes = contentOf(picture);
    const auto number = [&](std::size_t at) {
        unsigned value = 0;
        for (std::size_t i = at; i < at + 4; ++i) {
            value = value * 256 + static_cast<unsigned char>(bytes.at(i));
        }
        return value;
    };
    EXPECT_EQ(bytes.substr(1, 3), "PNG") << picture;
    return {number(16), number(20)};
}

TEST(Icons, HaveTheirSizes) {
    for (const unsigned side : {48U, 128U, 256U}) {
        EXPECT_EQ(sizeOf(packaging("icons/korvane-tuner-" + std::to_string(side) + ".png")), (Size{side, side}));
    }
}

TEST(Screenshots, AreWideAndLightAndDark) {
    int light = 0;
    int dark = 0;
    for (const auto& line : linesIn("screenshots/captions.txt")) {
        const auto name = line.substr(0, line.find('|'));
        EXPECT_GT(line.size(), name.size() + 10) << "has a caption";
        const auto size = sizeOf(packaging("screenshots/" + name));
        EXPECT_EQ(size.width * 9, size.height * 16) << name;
        light += name.ends_with("-light.png") ? 1 : 0;
        dark += name.ends_with("-dark.png") ? 1 : 0;
    }
    EXPECT_GE(light + dark, 4);
    EXPECT_GE(std::min(light, dark), 2);
}

TEST(Version, StandsInOnePlace) {
    const auto version = found(contentOf(projectFolder() / "CMakeLists.txt"), R"(VERSION (\d+\.\d+\.\d+) LANG)");
    ASSERT_THAT(version, SizeIs(1));
    for (const auto* name : {"CMakeLists.txt", "changelog.in", "org.korvane.tuner.metainfo.xml.in", "copyright"}) {
        EXPECT_THAT(contentOf(packaging(name)), Not(HasSubstr(version.front()))) << name;
    }
}

TEST(Copyright, HasTheTermsOfTheLicense) {
    const auto license = contentOf(projectFolder() / "LICENSE");
    const auto copyright = contentOf(packaging("copyright"));
    for (const auto& line : found(license, R"((?:^|\n)([^\n]{20,}))")) {
        EXPECT_THAT(copyright, HasSubstr(line.substr(line.starts_with("Copyright") ? 14 : 0)));
    }
}

}  // namespace
}  // namespace korvane::documents
