#include <gtest/gtest.h>
#include <string>

#include "core/TextEncoding.h"

namespace korvane::core {
namespace {

TEST(IsUtf8, TakesWellFormedTextOfEveryLength) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("plain"));
    EXPECT_TRUE(isUtf8("\xC3\xA4"));          // U+00E4
    EXPECT_TRUE(isUtf8("\xE2\x82\xAC"));      // U+20AC
    EXPECT_TRUE(isUtf8("\xED\x9F\xBF"));      // U+D7FF, the last before the surrogates
    EXPECT_TRUE(isUtf8("\xF0\x9F\x9A\x97"));  // U+1F697
    EXPECT_TRUE(isUtf8("\xF4\x8F\xBF\xBF"));  // U+10FFFF, the last
}

TEST(IsUtf8, RefusesWhatIsMalformed) {
    EXPECT_FALSE(isUtf8("\xE4"));              // cut short
    EXPECT_FALSE(isUtf8("\xE2\x82"));          // cut short
    EXPECT_FALSE(isUtf8("\x80"));              // no lead
    EXPECT_FALSE(isUtf8("\xE4iti"));           // not followed by its rest
    EXPECT_FALSE(isUtf8("\xE2\x82Z"));         // only the first follows
    EXPECT_FALSE(isUtf8("\xC0\xAF"));          // overlong
    EXPECT_FALSE(isUtf8("\xE0\x80\xAF"));      // overlong
    EXPECT_FALSE(isUtf8("\xF0\x80\x80\xAF"));  // overlong
    EXPECT_FALSE(isUtf8("\xED\xA0\x80"));      // a surrogate
    EXPECT_FALSE(isUtf8("\xF4\x90\x80\x80"));  // above the last
    EXPECT_FALSE(isUtf8("\xFF"));
}

TEST(FromWindows1252, GivesEachByteItsCharacter) {
    EXPECT_EQ(fromWindows1252("abc"), "abc");
    EXPECT_EQ(fromWindows1252("p\xE4\xE4ll\xE4"), "p\xC3\xA4\xC3\xA4ll\xC3\xA4");
    EXPECT_EQ(fromWindows1252("\xD6"), "\xC3\x96");      // O with two dots
    EXPECT_EQ(fromWindows1252("\x80"), "\xE2\x82\xAC");  // the euro sign
    EXPECT_EQ(fromWindows1252("\x9F"), "\xC5\xB8");      // U+0178
    EXPECT_EQ(fromWindows1252("\x81"), "\xC2\x81");      // left open by the code page
    EXPECT_EQ(fromWindows1252("\xB0"), "\xC2\xB0");      // degrees
}

TEST(Decode, KeepsUtf8AndConvertsTheRest) {
    EXPECT_EQ(decode("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(decode("\xE4"), "\xC3\xA4");
    // One byte that is no UTF-8 makes the whole text Windows-1252.
    EXPECT_EQ(decode("\xC3\xA4\xE4"), "\xC3\x83\xC2\xA4\xC3\xA4");
}

TEST(Decode, DropsAByteOrderMark) {
    EXPECT_EQ(decode("\xEF\xBB\xBF[Par0]"), "[Par0]");
}

TEST(Decode, DropsSeveralByteOrderMarks) {
    EXPECT_EQ(decode("\xEF\xBB\xBF\xEF\xBB\xBF[Par0]"), "[Par0]");
}

}  // namespace
}  // namespace korvane::core
