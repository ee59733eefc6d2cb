#include <gtest/gtest.h>

#include "logs/LogNumber.h"
#include "support/ErrorOf.h"

namespace korvane::logs {
namespace {

using support::errorOf;

TEST(LogNumber, IsTheWholeText) {
    EXPECT_EQ(numberOf("0", '.'), 0);
    EXPECT_EQ(numberOf("-12.5", '.'), -12.5);
    EXPECT_EQ(numberOf("+7", '.'), 7);
    EXPECT_EQ(numberOf(".5", '.'), 0.5);
    EXPECT_EQ(numberOf("5.", '.'), 5);
    EXPECT_EQ(numberOf("1.5E-3", '.'), 0.0015);
    EXPECT_EQ(numberOf("1e2", '.'), 100);
    EXPECT_EQ(numberOf("0.30000000000000004", '.'), 0.30000000000000004);
    EXPECT_EQ(numberOf("123456789012345678", '.'), 123456789012345678.0);
    EXPECT_EQ(numberOf("12,5", ','), 12.5);
    EXPECT_EQ(numberOf("1,5E-3", ','), 0.0015);
}

TEST(LogNumber, AnyOtherTextIsNone) {
    for (const char* text : {"",    "abc", "-",    "+",      ".",       "1.2.3", "1,5", "12x", "1E",   "1E-", "E5",
                             "1 2", "--1", "0x10", "1.#INF", "-1.#IND", "inf",   "nan", "\t1", "1E5.", ".E5"}) {
        EXPECT_EQ(errorOf([&] { static_cast<void>(numberOf(text, '.')); }), 13) << text;
    }
    EXPECT_EQ(errorOf([&] { static_cast<void>(numberOf("1.5", ',')); }), 13);
    EXPECT_EQ(errorOf([&] { static_cast<void>(numberOf("1.5E5", ',')); }), 13);
}

TEST(LogNumber, OneTooLargeOverflowsAndOneTooSmallIsZero) {
    EXPECT_EQ(errorOf([&] { static_cast<void>(numberOf("1E+999", '.')); }), 6);
    EXPECT_EQ(errorOf([&] { static_cast<void>(numberOf("-1E+999", '.')); }), 6);
    EXPECT_EQ(numberOf("1E-999", '.'), 0);
}

}  // namespace
}  // namespace korvane::logs
