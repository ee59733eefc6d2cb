// Scripts for the program as a process, in virtual time against the virtual ECU.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {

class ScriptBench : public testing::Test {
protected:
    ScriptBench() { folder_.write("Settings_par.ini", ""); }

    // The replies, one for each command. `ecu` are the keys of the virtual ECU, `more` further options.
    [[nodiscard]] std::vector<std::string> repliesTo(const std::string& script, const std::string& ecu,
                                                     const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"--headless", "--virtual-time", "--folder", folder_.path().string(), "--ecu",
                                           ecu};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto outcome = runProgram("korvane-tuner", arguments, script);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.errors, "");
        return linesOf(outcome.output);
    }
    // The same where none may be an error.
    [[nodiscard]] std::vector<std::string> goodRepliesTo(const std::string& script, const std::string& ecu,
                                                         const std::vector<std::string>& more = {}) const {
        const auto replies = repliesTo(script, ecu, more);
        EXPECT_THAT(replies, testing::Each(testing::StartsWith("ok")));
        return replies;
    }

    support::TempFolder folder_;
};

}  // namespace korvane::app
