#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Options.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

std::string failure(const std::string& file) {
    const std::vector<std::string> words{"--preferences", file};
    const auto result = parseOptions(words);
    const auto* error = std::get_if<OptionsError>(&result);
    return error != nullptr ? error->text : "(none)";
}

TEST(PreferencesOption, NeedsAFileAndNoFolder) {
    const support::TempFolder folder;
    const auto path = folder.path().string();
    EXPECT_EQ(failure(path), "--preferences needs a file and not \"" + path + "\"");
    EXPECT_EQ(failure(""), "--preferences needs a file and not \"\"");
    EXPECT_EQ(failure(path + "/preferences.ini"), "(none)");
}

}  // namespace
}  // namespace korvane::app
