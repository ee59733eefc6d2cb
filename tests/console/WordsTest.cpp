#include <gtest/gtest.h>

#include "console/ConsoleError.h"
#include "console/names/Path.h"
#include "console/text/Arguments.h"
#include "console/text/Hex.h"

namespace korvane::console {
namespace {

std::vector<std::string> words(std::string_view line) {
    std::vector<std::string> out;
    for (const auto& word : splitWords(line)) {
        out.emplace_back(word.written);
    }
    return out;
}

Arguments arguments(std::string_view line) {
    return {line, splitWords(line)};
}

template <class Action>
std::string failure(Action&& action) {
    try {
        action();
        return "done";
    } catch (const ConsoleError& error) {
        return error.what();
    }
}

using Words = std::vector<std::string>;

TEST(Words, AreSeparatedByBlanks) {
    EXPECT_EQ(words("  get \t frmMaps.Caption  "), (Words{"get", "frmMaps.Caption"}));
    EXPECT_EQ(words(""), Words{});
}

TEST(Words, ThatBeginAsJsonRunToTheEndOfTheValue) {
    EXPECT_EQ(words(R"(a "b c" [1, 2] {"d": "e f"} g"h i)"),
              (Words{"a", "\"b c\"", "[1, 2]", "{\"d\": \"e f\"}", "g\"h", "i"}));
}

TEST(Words, ReportBrokenJson) {
    EXPECT_EQ(failure([] { words("a \"b"); }), "\"b: the JSON text lacks its closing quote");
    EXPECT_EQ(failure([] { words("\"a\"b"); }), "a blank must follow \"a\"");
}

TEST(Arguments, TakeTextsBareOrAsJson) {
    auto taken = arguments(R"(bare "with blank" [1])");
    EXPECT_EQ(taken.text(), "bare");
    EXPECT_EQ(taken.text(), "with blank");
    EXPECT_EQ(failure([&] { (void)taken.text(); }), "[1] is no text");
    EXPECT_TRUE(taken.empty());
    EXPECT_EQ(failure([&] { (void)taken.text(); }), "a word is missing");
}

TEST(Arguments, TakeBareJsonValues) {
    auto taken = arguments("12 true null hello 1x");
    EXPECT_EQ(taken.value(), Json(12));
    EXPECT_EQ(taken.value(), Json(true));
    EXPECT_EQ(taken.value(), Json());
    EXPECT_EQ(failure([&] { (void)taken.value(); }), "hello is no JSON value (a text stands in double quotes)");
    EXPECT_EQ(failure([&] { (void)taken.value(); }), "1x is no JSON value (a text stands in double quotes)");
}

TEST(Arguments, TakeWholeNumbersInRange) {
    auto taken = arguments("5 6 1.5 x 99999999999999999999");
    EXPECT_EQ(taken.number(0, 5), 5);
    EXPECT_EQ(failure([&] { (void)taken.number(0, 5); }), "6 is no whole number from 0 to 5");
    EXPECT_EQ(failure([&] { (void)taken.number(0, 5); }), "1.5 is no whole number from 0 to 5");
    EXPECT_EQ(failure([&] { (void)taken.number(0, 5); }), "x is no whole number from 0 to 5");
    EXPECT_EQ(failure([&] { (void)taken.number(0, 5); }), "99999999999999999999 is no whole number from 0 to 5");
    EXPECT_EQ(taken.numberOr(7, 0, 9), 7);
}

TEST(Arguments, HandOutTheRestOfTheLineAsItStands) {
    auto taken = arguments(R"(10 type a  "b c")");
    EXPECT_EQ(taken.number(0, 10), 10);
    EXPECT_EQ(taken.rest(), R"(type a  "b c")");
    EXPECT_TRUE(taken.empty());
}

TEST(Path, IsReadIntoSegments) {
    const Path path = parsePath("frmBigText#2.txtFuel(17).Text");
    ASSERT_EQ(path.segments.size(), 3U);
    EXPECT_EQ(path.segments[0].name, "frmBigText");
    EXPECT_EQ(path.segments[0].instance, 2);
    EXPECT_EQ(path.segments[1].name, "txtFuel");
    EXPECT_EQ(path.segments[1].indices, std::vector<int>{17});
    EXPECT_TRUE(path.segments[2].isPlain());
    EXPECT_EQ(parsePath("logData(0,-3)").segments[0].indices, (std::vector<int>{0, -3}));
    EXPECT_EQ(written(path.segments), "frmBigText#2.txtFuel(17).Text");
    EXPECT_EQ(written(parsePath("logData(0,-3)").segments), "logData(0,-3)");
}

TEST(Path, RefusesWhatIsNoName) {
    for (const auto* text : {"", ".", "a.", ".a", "a..b", "a(", "a()", "a(1", "a(1x)", "a(1)b", "a#", "a#x",
                             "a(1,2,3,4)", "a(99999999999)", "a,b", "a)"}) {
        EXPECT_EQ(failure([&] { (void)parsePath(text); }), std::string(text) + " is no name");
    }
}

TEST(Hex, WritesLowerCaseAndReadsBoth) {
    EXPECT_EQ(hexText(std::vector<std::uint8_t>{0x00, 0x78, 0xAd}), "0078ad");
    EXPECT_EQ(bytesFromHex("0078aD"), (std::vector<std::uint8_t>{0x00, 0x78, 0xAD}));
    EXPECT_EQ(failure([] { (void)bytesFromHex("123"); }), "each byte needs two hex digits");
    EXPECT_EQ(failure([] { (void)bytesFromHex("12-1"); }), "-1 is no byte in hex digits");
    EXPECT_EQ(failure([] { (void)bytesFromHex("1g"); }), "1g is no byte in hex digits");
}

TEST(ErrorSentences, ShowNamesOnOneLineInValidUtf8) {
    EXPECT_EQ(shown("a\nb\xFF\xC3\xA4\x7F"), "a?b?\xC3\xA4?");
    EXPECT_EQ(shown(std::string(300, 'x')), std::string(200, 'x') + "...");
}

}  // namespace
}  // namespace korvane::console
