// What is no file, has no end or has no writer is refused at once.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using testing::HasSubstr;
using Words = std::vector<std::string>;

class RefusedInput : public testing::Test {
protected:
    RefusedInput() { EXPECT_EQ(mkfifo(pipe_.c_str(), 0600), 0); }

    // A program that waits for the other end of the pipe is ended by the alarm.
    Outcome run(Words arguments, const std::string& input = {}) {
        arguments.insert(arguments.end(), {"--headless", "--virtual-time", "--folder", folder_.path().string()});
        return runProgram("korvane-tuner", arguments, input, [] { alarm(20); });
    }

    void expectRefused(const std::string& option, const std::string& value, const std::string& why) {
        const auto outcome = run({"--ecu", "none", option, value});
        EXPECT_EQ(outcome.status, 2) << option << " " << value;
        EXPECT_EQ(outcome.errors, "korvane-tuner: " + why + "\n");
    }

    support::TempFolder folder_;
    std::string pipe_ = (folder_ / "pipe").string();
};

TEST_F(RefusedInput, AScriptIsARegularFileOf64MiBAtMost) {
    for (const auto& file : {pipe_, std::string("/dev/zero")}) {
        expectRefused("--script", file,
                      "--script needs a file and not \"" + file + "\"; commands from elsewhere come on standard input");
    }
    const auto script = folder_.write("script", "");
    std::filesystem::resize_file(script, (std::size_t{64} << 20U) + 1);
    expectRefused("--script", script.string(), "the script \"" + script.string() + "\" is larger than 64 MiB");
}

TEST_F(RefusedInput, PreferencesAreARegularFile) {
    for (const auto& file : {pipe_, std::string("/dev/zero"), folder_.path().string()}) {
        expectRefused("--preferences", file, "--preferences needs a file and not \"" + file + "\"");
    }
}

TEST_F(RefusedInput, PreferencesOfTheFolderThatAreNoFileAreTold) {
    ASSERT_EQ(mkfifo((folder_ / "preferences.ini").c_str(), 0600), 0);
    const auto outcome = run({"--ecu", "none"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "korvane-tuner: the preferences are not kept: " + (folder_ / "preferences.ini").string() +
                                  " is no file\n");
}

TEST_F(RefusedInput, ATraceIsNoPipe) {
    expectRefused("--trace", pipe_, "--trace needs a file and not \"" + pipe_ + "\"");
    EXPECT_EQ(run({"--ecu", "none", "--trace", "/dev/null"}).status, 0);
}

// In the program's folder, and where a dialog leads to.
TEST_F(RefusedInput, NeitherPipesNorDevicesNorFoldersAreFilesOfTheProgram) {
    for (const auto* name : {"Settings_par.ini", "Settings.ini", "preferences.ini"}) {
        ASSERT_EQ(mkfifo((folder_ / name).c_str(), 0600), 0);
    }
    std::string input =
        "click frmSarn2.btnConnect\nset frmMisc.TimerInitialGetData.Enabled false\nwait 300\n"
        "click frmSarn2.btnKartat\nset frmMaps.btnSaveLambdaSetpoint.Enabled true\n"
        "set frmMaps.btnloadLambdaSetpoint.Enabled true\n";
    for (const auto* button : {"frmMaps.btnLoad", "frmMaps.btnSave", "frmMaps.btnSaveLambdaSetpoint",
                               "frmMaps.btnloadLambdaSetpoint", "frmSarn2.btnUploadEEPROM"}) {
        for (const auto& file : {pipe_, std::string("/dev/zero"), folder_.path().string()}) {
            input += "file " + file + "\nclick " + button + "\n";
        }
    }
    const auto outcome = run({"--ecu", "type=11"}, input + "messages\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("Error loadfile: Path/File access error"));
    EXPECT_THAT(outcome.output, HasSubstr("Error save: Path/File access error"));
    EXPECT_THAT(outcome.output, HasSubstr("Error tablesave: Path/File access error"));
    EXPECT_THAT(outcome.output, HasSubstr("The lambda file can't be read:"));
    EXPECT_THAT(outcome.output, HasSubstr("The EEPROM file can't be read:"));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe_));
}

}  // namespace
}  // namespace korvane::app
