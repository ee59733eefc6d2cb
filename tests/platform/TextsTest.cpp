#include <gtest/gtest.h>

#include "platform/Texts.h"

namespace korvane::platform {
namespace {

TEST(Trimmed, LeavesOutBlanksAndTabsAtTheEnds) {
    EXPECT_EQ(trimmed("  a b\t"), "a b");
    EXPECT_EQ(trimmed(" \t "), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(SameText, CaseDoesNotCount) {
    EXPECT_TRUE(sameText("[Par0]", "[pAR0]"));
    EXPECT_TRUE(sameText("\xC3\x84iti", "\xC3\xA4ITI"));
    EXPECT_TRUE(sameText("", ""));
}

TEST(SameText, EverythingElseCounts) {
    EXPECT_FALSE(sameText("Par0", "Par1"));
    EXPECT_FALSE(sameText("Par", "Par1"));
    EXPECT_FALSE(sameText("[", "{"));                // 32 apart, but no letters
    EXPECT_FALSE(sameText("\xC3\x97", "\xC3\xB7"));  // the signs for times and divided by
    EXPECT_FALSE(sameText("\xC2\x84", "\xC2\xA4"));
}

}  // namespace
}  // namespace korvane::platform
