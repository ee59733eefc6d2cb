#include <gtest/gtest.h>

#include "ecu/server/OneLine.h"

namespace korvane::ecu {
namespace {

TEST(OneLine, LeavesTextsAlone) {
    for (const char* text : {"", "lose takes 0 to 1, not \"2\"", "L\u00E4mp\u00F6\u00A0\u20AC", "\xFF\x80\xC2"}) {
        EXPECT_EQ(oneLine(text), text);
    }
}

TEST(OneLine, HasNoControlCharacter) {
    EXPECT_EQ(oneLine("a\nb\r\nc\td\x1B[2J\x7F"), "a?b??c?d?[2J?");
    EXPECT_EQ(oneLine(std::string_view("\0x", 2)), "?x");
    EXPECT_EQ(oneLine("\xC2\x80 \xC2\x85 \xC2\x9F"), "? ? ?");
    EXPECT_EQ(oneLine("a\u2028b\u2029c"), "a?b?c");
}

}  // namespace
}  // namespace korvane::ecu
