#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ecu/server/Options.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

using testing::HasSubstr;

std::string parsed(std::vector<std::string_view> arguments, Options& options) {
    return parseOptions(arguments, options);
}

TEST(Options, AreTheKeysAndAFewMore) {
    Options options;
    EXPECT_EQ(parsed({"--type", "15", "--pty", "/tmp/ecu", "--drive", "3000:50:20", "--with-parent"}, options), "");
    EXPECT_EQ(options.ecu.type, 15);
    EXPECT_EQ(options.ecu.drive.kind, DriveKind::Bench);
    EXPECT_EQ(options.link, "/tmp/ecu");
    EXPECT_TRUE(options.withParent);
    EXPECT_FALSE(options.help);
}

TEST(Options, TheLastOneCounts) {
    Options options;
    EXPECT_EQ(parsed({"--type", "15", "--type", "10"}, options), "");
    EXPECT_EQ(options.ecu.type, 10);
}

TEST(Options, MistakesAreNamed) {
    Options options;
    EXPECT_THAT(parsed({"type", "15"}, options), HasSubstr("\"type\""));
    EXPECT_THAT(parsed({"--"}, options), HasSubstr("\"--\""));
    EXPECT_EQ(parsed({"--type"}, options), "--type needs a value");
    EXPECT_EQ(parsed({"--pty"}, options), "--pty needs a value");
    EXPECT_EQ(parsed({"--tipe"}, options), "--tipe is no option; see --help");
    EXPECT_THAT(parsed({"--tipe", "1"}, options), HasSubstr("\"tipe\""));
    EXPECT_THAT(parsed({"--lose", "2"}, options), HasSubstr("lose"));
}

TEST(Options, AFileThatIsNotThereIsNamed) {
    Options options;
    const support::TempFolder folder;
    const std::string file = folder.nowhere().string();
    EXPECT_THAT(parsed({"--eeprom", file}, options), HasSubstr(file));
}

TEST(Options, LettersAskForHelpAndForTheVersionOfTheProgram) {
    Options help;
    EXPECT_EQ(parsed({"-h"}, help), "");
    EXPECT_TRUE(help.help);
    Options version;
    EXPECT_EQ(parsed({"-V"}, version), "");
    EXPECT_TRUE(version.programVersion);
    Options firmware;
    EXPECT_EQ(parsed({"--version", "7"}, firmware), "");
    EXPECT_FALSE(firmware.programVersion);
}

TEST(Options, HelpTellsAllOfThem) {
    Options options;
    EXPECT_EQ(parsed({"--help"}, options), "");
    EXPECT_TRUE(options.help);
    for (const KeyHelp& key : keyHelp()) {
        EXPECT_THAT(helpText(), HasSubstr("--" + std::string(key.key) + " "));
    }
    EXPECT_THAT(helpText(), HasSubstr("--pty PATH"));
}

}  // namespace
}  // namespace korvane::ecu
