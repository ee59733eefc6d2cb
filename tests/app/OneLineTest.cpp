#include <gtest/gtest.h>
#include <string>

#include "app/OneLine.h"

namespace korvane::app {
namespace {

using namespace std::string_literals;

TEST(OneLine, ATextWithoutControlCharactersStays) {
    EXPECT_EQ(onOneLine(""), "");
    EXPECT_EQ(onOneLine("\"\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x9A\x97\""), "\"\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x9A\x97\"");
}

TEST(OneLine, ControlCharactersAreReplaced) {
    EXPECT_EQ(onOneLine("a\nb\r\nc\td\0e\x1B[31m\x7F"s), "a?b??c?d?e?[31m?");
    EXPECT_EQ(onOneLine("a\xC2\x80\xC2\x85\xC2\x9F\xC2\xA0"), "a???\xC2\xA0");
}

TEST(OneLine, OtherEndsOfLinesAreReplaced) {
    EXPECT_EQ(onOneLine("a\xE2\x80\xA8g\xE2\x80\xA9h"), "a?g?h");
}

TEST(OneLine, BytesThatAreNoCharacterAreReplacedOneByOne) {
    EXPECT_EQ(onOneLine("\xFF\xE4 \xC3"), "?? ?");
    EXPECT_EQ(onOneLine("\xC0\x8A"), "??");         // a line feed in an overlong form
    EXPECT_EQ(onOneLine("\xED\xA0\x80z"), "???z");  // half a pair of surrogates
}

}  // namespace
}  // namespace korvane::app
