#include <gtest/gtest.h>
#include <vector>

#include "app/Options.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using Words = std::vector<std::string>;

Options parsed(const Words& words) {
    const auto result = parseOptions(words);
    if (const auto* error = std::get_if<OptionsError>(&result)) {
        ADD_FAILURE() << error->text;
        return {};
    }
    return std::get<Options>(result);
}

std::string failure(const Words& words) {
    const auto result = parseOptions(words);
    const auto* error = std::get_if<OptionsError>(&result);
    return error != nullptr ? error->text : "(none)";
}

TEST(OptionsTest, NothingGivenIsAWindowOnARealPort) {
    const Options options = parsed({});
    EXPECT_FALSE(options.headless || options.console || options.virtualTime || options.help || options.version);
    EXPECT_FALSE(options.script || options.ecu || options.connect || options.folder || options.preferences);
    EXPECT_FALSE(options.decimal || options.trace);
    EXPECT_TRUE(options.ports.empty());
    EXPECT_EQ(options.now, (platform::WallTime{2026, 1, 5, 12, 0, 0}));
}

TEST(OptionsTest, EachOptionIsRead) {
    const support::TempFolder folder;
    folder.write("script", "now\n");
    const auto script = (folder.path() / "script").string();
    const Options options = parsed({"--headless",
                                    "--console",
                                    "--virtual-time",
                                    "--script",
                                    script,
                                    "--now",
                                    "2024-02-29 23:59:58",
                                    "--ecu",
                                    "type=11,seed=3",
                                    "--port",
                                    "COM3=/dev/ttyUSB0",
                                    "--connect",
                                    "COM15",
                                    "--folder",
                                    folder.path().string(),
                                    "--preferences",
                                    "p.ini",
                                    "--decimal",
                                    ",",
                                    "--trace",
                                    "t.txt"});
    EXPECT_TRUE(options.headless && options.console && options.virtualTime);
    EXPECT_EQ(options.script, script);
    EXPECT_EQ(options.now, (platform::WallTime{2024, 2, 29, 23, 59, 58}));
    EXPECT_EQ(options.ecu, "type=11,seed=3");
    EXPECT_EQ(options.ports, (std::map<int, std::string>{{3, "/dev/ttyUSB0"}}));
    EXPECT_EQ(options.connect, 15);
    EXPECT_EQ(options.folder, folder.path());
    EXPECT_EQ(options.preferences, "p.ini");
    EXPECT_EQ(options.decimal, ',');
    EXPECT_EQ(options.trace, "t.txt");
}

TEST(OptionsTest, TheLastOneCountsAndPortsAddUp) {
    const support::TempFolder folder;
    const Options options =
        parsed({"--decimal", "no", "--folder", folder.nowhere().string(), "--ecu", "type=1", "--port", "COM1=/dev/a=b",
                "--port", "COM2=/dev/b", "--port", "COM1=/dev/c", "--ecu", "none", "--decimal", ".", "--folder", "/"});
    EXPECT_EQ(options.decimal, '.');
    EXPECT_EQ(options.ecu, "none");
    EXPECT_EQ(options.folder, "/");
    EXPECT_EQ(options.ports, (std::map<int, std::string>{{1, "/dev/c"}, {2, "/dev/b"}}));
}

TEST(OptionsTest, LettersAskForHelpAndVersion) {
    EXPECT_TRUE(parsed({"-h"}).help);
    EXPECT_TRUE(parsed({"-V", "--no-such-option"}).version);
}

TEST(OptionsTest, StrictNeedsHeadless) {
    EXPECT_TRUE(parsed({"--headless", "--strict"}).strict);
    EXPECT_EQ(failure({"--console", "--strict"}), "--strict works with --headless only");
}

TEST(OptionsTest, UnknownOptionsAndMissingValuesAreTold) {
    EXPECT_EQ(failure({"--headles"}), "unknown option \"--headles\"; --help lists them all");
    EXPECT_EQ(failure({"--headless", "-x"}), "unknown option \"-x\"; --help lists them all");
    EXPECT_EQ(failure({"--a\nb"}), "unknown option \"--a?b\"; --help lists them all");
    EXPECT_EQ(failure({"--folder"}), "--folder needs a value");
    EXPECT_EQ(failure({"--trace", "--headless"}), "--trace needs a value");
}

TEST(OptionsTest, BadValuesAreTold) {
    EXPECT_EQ(failure({"--decimal", ";"}), "--decimal needs . or , and not \";\"");
    EXPECT_EQ(failure({"--connect", "COM16"}), "\"COM16\" is no port: COM1 to COM15");
    EXPECT_EQ(failure({"--connect", "COM0"}), "\"COM0\" is no port: COM1 to COM15");
    EXPECT_EQ(failure({"--connect", "COM-1"}), "\"COM-1\" is no port: COM1 to COM15");
    EXPECT_EQ(failure({"--connect", "com1"}), "\"com1\" is no port: COM1 to COM15");
    EXPECT_EQ(failure({"--port", "COMx=/dev/a"}), "\"COMx\" is no port: COM1 to COM15");
    EXPECT_EQ(failure({"--port", "COM1"}),
              "--port needs a port and its device, such as COM3=/dev/ttyUSB0, not \"COM1\"");
    EXPECT_EQ(failure({"--port", "COM1="}),
              "--port needs a port and its device, such as COM3=/dev/ttyUSB0, not \"COM1=\"");
    EXPECT_EQ(failure({"--ecu", ""}), "--ecu needs none or KEY=VALUE,...");
    const support::TempFolder folder;
    const auto missing = folder.nowhere().string();
    EXPECT_EQ(failure({"--folder", missing}), "there is no folder \"" + missing + "\"");
    EXPECT_EQ(failure({"--folder", "/dev/null"}), "there is no folder \"/dev/null\"");
    EXPECT_EQ(failure({"--script", missing}), "there is no file \"" + missing + "\"");
    EXPECT_EQ(failure({"--script", "/"}), "there is no file \"/\"");
}

TEST(OptionsTest, AWordThatIsNoOptionIsTheFileToOpen) {
    const support::TempFolder folder;
    folder.write("one.txt", "");
    folder.write("two.txt", "");
    const auto one = (folder.path() / "one.txt").string();
    const auto two = (folder.path() / "two.txt").string();
    EXPECT_FALSE(parsed({"--headless"}).file);
    const Options options = parsed({one, "--headless", "--decimal", ","});
    EXPECT_EQ(options.file, one);
    EXPECT_TRUE(options.headless);
    EXPECT_EQ(options.decimal, ',');
    EXPECT_EQ(parsed({"--console", one, two}).file, two) << "the last one counts";
    EXPECT_NE(optionsHelp().find("[FILE]"), std::string::npos);
}

TEST(OptionsTest, WhatIsOpenedMustBeAFile) {
    for (const auto* text : {"no-such-file.txt", "/", "/dev/null", ""}) {
        EXPECT_EQ(failure({text}), "there is no file \"" + std::string(text) + "\"");
    }
}

TEST(OptionsTest, NowMustBeAMomentOfTheCalendar) {
    for (const auto* text :
         {"", "2026-01-05", "2026-01-05T12:00:00", "2026-1-5 12:00:00", "2026-02-30 12:00:00", "2025-02-29 12:00:00",
          "2026-13-01 12:00:00", "2026-00-01 12:00:00", "2026-01-05 24:00:00", "2026-01-05 12:60:00",
          "2026-01-05 12:00:60", "2026-01-05 12:00:00 ", "0000-01-01 00:00:00"}) {
        EXPECT_EQ(failure({"--now", text}),
                  "--now needs a time as YYYY-MM-DD hh:mm:ss, not \"" + std::string(text) + "\"");
    }
}

TEST(OptionsTest, VirtualTimeNeedsHeadlessAndAnEcu) {
    EXPECT_EQ(failure({"--virtual-time", "--ecu", "none"}), "--virtual-time works with --headless only");
    EXPECT_EQ(failure({"--virtual-time", "--headless"}), "--virtual-time needs --ecu");
    EXPECT_EQ(failure({"--virtual-time", "--headless", "--ecu", "none"}), "(none)");
}

TEST(OptionsTest, HelpAndVersionComeBeforeAllElse) {
    EXPECT_TRUE(parsed({"--nonsense", "--help"}).help);
    const support::TempFolder folder;
    EXPECT_TRUE(parsed({"--folder", folder.nowhere().string(), "--version"}).version);
    for (const auto* option :
         {"--headless", "--console", "--script", "--virtual-time", "--now", "--ecu", "--port", "--connect", "--folder",
          "--preferences", "--decimal", "--trace", "--version", "--help"}) {
        EXPECT_NE(optionsHelp().find(option), std::string::npos) << option;
    }
}

TEST(OptionsTest, WindowsComeBackOnlyWhereNoCommandsWorkWithThem) {
    Options options;
    EXPECT_TRUE(remembersWindows(options));
    for (const auto member : {&Options::headless, &Options::console}) {
        Options other;
        other.*member = true;
        EXPECT_FALSE(remembersWindows(other));
    }
    options.script = "commands";
    EXPECT_FALSE(remembersWindows(options));
}

}  // namespace
}  // namespace korvane::app
