#include <gtest/gtest.h>
#include <limits>

#include "console/text/Json.h"

namespace korvane::console {
namespace {

// What a text reads as, written again.
std::string rewritten(std::string_view text) {
    return writeJson(readJson(text).value);
}

std::string failure(std::string_view text) {
    try {
        return "read as " + rewritten(text);
    } catch (const JsonError& error) {
        return error.what();
    }
}

TEST(JsonReader, ReadsEachKindOfValue) {
    EXPECT_TRUE(readJson("null").value.isNull());
    EXPECT_EQ(readJson("true").value, Json(true));
    EXPECT_EQ(readJson("false").value, Json(false));
    EXPECT_EQ(readJson("-12").value, Json(-12));
    EXPECT_EQ(readJson("0.5").value, Json(0.5));
    EXPECT_EQ(readJson("\"a b\"").value, Json("a b"));
    EXPECT_EQ(readJson("[1,[],\"x\"]").value, Json(Json::Array{1, Json::Array{}, "x"}));
    EXPECT_EQ(readJson(R"({"a":1,"b":{}})").value, Json(Json::Object{{"a", 1}, {"b", Json::Object{}}}));
}

TEST(JsonReader, TellsWhereTheValueEnded) {
    EXPECT_EQ(readJson("12 rest").end, 2U);
    EXPECT_EQ(readJson("  [1, 2]x").end, 8U);
    EXPECT_EQ(readJson("\"a\"\"b\"").end, 3U);
}

TEST(JsonReader, KeepsWholeNumbersWholeAsLongAsTheyFitSixtyFourBits) {
    EXPECT_EQ(*readJson("9223372036854775807").value.asWhole(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(readJson("9223372036854775808").value.asWhole(), nullptr);
    EXPECT_DOUBLE_EQ(*readJson("9223372036854775808").value.asDouble(), 9223372036854775808.0);
    EXPECT_DOUBLE_EQ(*readJson("1e2").value.asDouble(), 100.0);
    EXPECT_DOUBLE_EQ(*readJson("-1.5E-1").value.asDouble(), -0.15);
}

TEST(JsonReader, RefusesNumbersThatAreNoJsonNumbers) {
    for (const auto* text : {"", "-", ".5", "+1", "1.", "1e", "nul", "tru", "hello", "Infinity"}) {
        EXPECT_EQ(failure(text), "the value is no JSON") << text;
    }
    EXPECT_EQ(failure("1e999"), "the number is out of range");
    EXPECT_EQ(readJson("012").end, 1U);
}

TEST(JsonReader, UnderstandsEscapes) {
    EXPECT_EQ(*readJson(R"("\"\\\/\b\f\n\r\t")").value.asText(), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(*readJson(R"("\u00e4\u20AC")").value.asText(), "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(*readJson(R"("\u0000")").value.asText(), std::string(1, '\0'));
}

TEST(JsonReader, JoinsSurrogatesAndRefusesHalves) {
    EXPECT_EQ(*readJson(R"("\ud83d\ude00")").value.asText(), "\xF0\x9F\x98\x80");
    for (const auto* text : {R"("\ud83d")", R"("\ude00")", R"("\ud83d\u0041")", R"("\ud83dx")"}) {
        EXPECT_EQ(failure(text), "the JSON text holds half a character") << text;
    }
}

TEST(JsonReader, RefusesBrokenTexts) {
    EXPECT_EQ(failure("\"abc"), "the JSON text lacks its closing quote");
    EXPECT_EQ(failure("\"a\tb\""), "the JSON text holds a character that must be escaped");
    EXPECT_EQ(failure("\"\xFF\""), "the JSON text holds a character that must be escaped");
    EXPECT_EQ(failure(R"("\x")"), "the JSON text holds an unknown escape");
    EXPECT_EQ(failure("\"\\"), "the JSON text holds an unknown escape");
    EXPECT_EQ(failure(R"("\u12")"), "the JSON text holds an unknown escape");
    EXPECT_EQ(failure(R"("\u12g4")"), "the JSON text holds an unknown escape");
}

TEST(JsonReader, RefusesBrokenArraysAndObjects) {
    EXPECT_EQ(failure("[1,2"), "the JSON value lacks a ]");
    EXPECT_EQ(failure("[1,]"), "the value is no JSON");
    EXPECT_EQ(failure(R"({"a" 1})"), "the JSON value lacks a :");
    EXPECT_EQ(failure(R"({1:1})"), "the JSON value lacks a \"");
    EXPECT_EQ(failure(R"({"a":1)"), "the JSON value lacks a }");
}

TEST(JsonReader, EndsAtItsDepth) {
    const auto nested = [](int depth) {
        return std::string(static_cast<std::size_t>(depth), '[') + std::string(static_cast<std::size_t>(depth), ']');
    };
    EXPECT_EQ(failure(nested(64)), "read as " + nested(64));
    EXPECT_EQ(failure(nested(65)), "the JSON value is nested too deep");
    EXPECT_EQ(failure(std::string(1'000'000, '[')), "the JSON value is nested too deep");
}

TEST(JsonWriter, WritesOnOneLineWithoutBlanks) {
    EXPECT_EQ(rewritten("[ 1 , { \"a\" : null } , true, \"x y\" ]"), R"([1,{"a":null},true,"x y"])");
    EXPECT_EQ(writeJson(Json("a\nb\r\t\"\\\x01")), R"("a\nb\r\t\"\\\u0001")");
}

TEST(JsonWriter, WritesNumbersInTheirShortestForm) {
    EXPECT_EQ(writeJson(Json(0.1)), "0.1");
    EXPECT_EQ(writeJson(Json(100.0)), "100");
    EXPECT_EQ(writeJson(Json(3.1F)), "3.1");
    EXPECT_EQ(writeJson(Json(std::uint8_t{255})), "255");
    EXPECT_EQ(writeJson(Json(std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
}

TEST(JsonWriter, WritesWhatIsNoNumberAsNull) {
    EXPECT_EQ(writeJson(Json(std::numeric_limits<double>::infinity())), "null");
    EXPECT_EQ(writeJson(Json(std::numeric_limits<double>::quiet_NaN())), "null");
    EXPECT_EQ(writeJson(Json(std::numeric_limits<float>::quiet_NaN())), "null");
}

TEST(JsonWriter, WritesValidUtf8Whatever) {
    EXPECT_EQ(writeJson(Json("\xC3\xA4\xFFz\xE2\x82")), "\"\xC3\xA4\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace korvane::console
