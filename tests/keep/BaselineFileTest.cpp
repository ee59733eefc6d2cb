// The file of the steady agent's baseline.
#include <fstream>
#include <gtest/gtest.h>

#include "keep/point/BaselineFile.h"
#include "support/TempFolder.h"

namespace korvane::keep {
namespace {

using maps::FuelBaseline;

constexpr maps::BaselineOwner kOwner{11, 3386, 16, 10};

FuelBaseline baseline() {
    FuelBaseline made{kOwner, {2026, 1, 5, 12, 0, 7}, {}};
    for (int cell = 0; cell < 160; ++cell) {
        made.cells.push_back(static_cast<std::uint8_t>(cell == 0 ? 255 : cell));
    }
    return made;
}

TEST(BaselineFileTest, WhatIsWrittenIsReadBack) {
    const support::TempFolder folder;
    const BaselineFile file(folder.path());
    EXPECT_EQ(file.save(baseline()), "");
    EXPECT_EQ(file.path(kOwner).filename(), "steady-11-3386.baseline");
    const auto found = file.load(kOwner);
    EXPECT_EQ(found.damage, "");
    EXPECT_EQ(found.baseline, baseline());
}

TEST(BaselineFileTest, WithoutAFileThereIsNeitherABaselineNorDamage) {
    const support::TempFolder folder;
    const auto found = BaselineFile(folder.path()).load(kOwner);
    EXPECT_FALSE(found.baseline);
    EXPECT_EQ(found.damage, "");
}

TEST(BaselineFileTest, AnyByteThatIsChangedOrCutIsSeen) {
    const auto whole = encodeBaseline(baseline());
    ASSERT_EQ(decodeBaseline(whole).baseline, baseline());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        auto bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
        EXPECT_FALSE(decodeBaseline(bytes).baseline) << at;
        EXPECT_FALSE(decodeBaseline(whole.substr(0, at)).baseline) << at;
    }
}

TEST(BaselineFileTest, TheBaselineOfAnotherMapIsNotTaken) {
    const support::TempFolder folder;
    const BaselineFile file(folder.path());
    ASSERT_EQ(file.save(baseline()), "");
    const auto found = file.load({11, 3386, 20, 16});
    EXPECT_FALSE(found.baseline);
    EXPECT_EQ(found.damage, "it is of another map");
}

TEST(BaselineFileTest, AFolderThatIsMissingIsToldAndNothingIsMade) {
    const support::TempFolder folder;
    const BaselineFile file(folder.path() / "none");
    EXPECT_NE(file.save(baseline()), "");
    EXPECT_FALSE(std::filesystem::exists(file.path(kOwner)));
}

TEST(BaselineFileTest, WhatIsNoFileCantBeRead) {
    const support::TempFolder folder;
    const BaselineFile file(folder.path());
    std::filesystem::create_directory(file.path(kOwner));
    EXPECT_EQ(file.load(kOwner).damage, "it can't be read");
}

}  // namespace
}  // namespace korvane::keep
