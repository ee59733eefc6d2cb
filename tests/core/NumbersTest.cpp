#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"
#include "support/ErrorOf.h"

namespace korvane::core {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

template <class Call>
int errorOf(Call call) {
    try {
        static_cast<void>(call());
    } catch (const platform::RuntimeError& error) {
        EXPECT_STREQ(error.what(), "Overflow");
        return error.number();
    }
    return 0;
}

TEST(Val, ReadsTheNumberAtTheFront) {
    EXPECT_EQ(val("12"), 12.0);
    EXPECT_EQ(val("-0.5"), -0.5);
    EXPECT_EQ(val("+7"), 7.0);
    EXPECT_EQ(val(".5"), 0.5);
    EXPECT_EQ(val("5."), 5.0);
    EXPECT_EQ(val("007"), 7.0);
    EXPECT_EQ(val("1e3"), 1000.0);
    EXPECT_EQ(val("25E-2"), 0.25);
}

TEST(Val, WhatDoesNotBelongToTheNumberEndsIt) {
    EXPECT_EQ(val("12abc"), 12.0);
    EXPECT_EQ(val("12,5"), 12.0);
    EXPECT_EQ(val("1.2.3"), 1.2);
    EXPECT_EQ(val("3-4"), 3.0);
    EXPECT_EQ(val("1e"), 1.0);
    EXPECT_EQ(val("1e+"), 1.0);
    EXPECT_EQ(val("2ex"), 2.0);
    EXPECT_EQ(val(std::string_view("4\0005", 3)), 4.0);
}

TEST(Val, BlanksCountForNothing) {
    EXPECT_EQ(val("  42  "), 42.0);
    EXPECT_EQ(val("1 2 . 5"), 12.5);
    EXPECT_EQ(val("\t- 3\r\n"), -3.0);
}

TEST(Val, WhatIsNoNumberIsZero) {
    for (const auto* text : {"", " ", "abc", "-", "+", ".", "-.", "e5", "--1", "nan", "inf", "&H10",
                             "\xC3\xA4"
                             "1"}) {
        EXPECT_EQ(val(text), 0.0) << text;
    }
    EXPECT_EQ(val("0x10"), 0.0);
}

TEST(Val, NumbersThatNoDoubleHoldsEndAtItsLimits) {
    EXPECT_EQ(val("1e999"), kLargest);
    EXPECT_EQ(val("-1e999"), -kLargest);
    EXPECT_EQ(val("1e99999999999999999999999"), kLargest);
    EXPECT_EQ(val(std::string(400, '9')), kLargest);
    EXPECT_EQ(val("1e9223372036854775807"), kLargest);
    EXPECT_EQ(val("-1e9223372036854775807"), -kLargest);
    EXPECT_EQ(val("0.001e-9223372036854775808"), 0.0);
    EXPECT_EQ(val("1e-999"), 0.0);
    EXPECT_EQ(val("1e-99999999999999999999999"), 0.0);
    EXPECT_EQ(val("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(val("0e999"), 0.0);
    EXPECT_EQ(val("0e99999999999999999999999"), 0.0);
    EXPECT_EQ(val("0." + std::string(400, '0') + "1e401"), 1.0);
}

// A short text is read in another way than a long one: both give the double nearest to the number, and so does strtod.
TEST(Val, EveryTextOfDigitsIsTheNearestDouble) {
    std::mt19937 random(11);
    for (int i = 0; i < 1000000; ++i) {
        std::string text(random() % 4 == 0 ? 1 : 0, '-');
        const auto digits = 1 + random() % 18;
        const auto point = random() % (digits + 4);
        for (unsigned at = 0; at < digits; ++at) {
            text += at == point ? "." : "";
            text += static_cast<char>('0' + random() % 10);
        }
        const double expected = std::strtod(text.c_str(), nullptr);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(val(text)), std::bit_cast<std::uint64_t>(expected)) << text;
    }
}

TEST(ToInt, GoesDownToTheNextWholeNumber) {
    EXPECT_EQ(toInt(2.9), 2.0);
    EXPECT_EQ(toInt(-2.1), -3.0);
    EXPECT_EQ(toInt(-2.0), -2.0);
}

TEST(RoundHalfEven, TiesGoToTheEvenNumber) {
    EXPECT_EQ(roundHalfEven(0.5), 0.0);
    EXPECT_EQ(roundHalfEven(1.5), 2.0);
    EXPECT_EQ(roundHalfEven(2.5), 2.0);
    EXPECT_EQ(roundHalfEven(-1.5), -2.0);
    EXPECT_EQ(roundHalfEven(-2.5), -2.0);
    EXPECT_EQ(roundHalfEven(2.5000001), 3.0);
}

TEST(ToByte, RoundsAndThenChecksTheRange) {
    EXPECT_EQ(toByte(254.5), 254);
    EXPECT_EQ(toByte(255.4), 255);
    EXPECT_EQ(toByte(-0.5), 0);
    EXPECT_EQ(errorOf([] { return toByte(255.5); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toByte(-0.6); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toByte(kNoNumber); }), platform::kErrorOverflow);
}

TEST(ToInt16, RoundsAndThenChecksTheRange) {
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt16(32767.4), 32767);
    EXPECT_EQ(toInt16(-32768.5), -32768);
    EXPECT_EQ(errorOf([] { return toInt16(32767.5); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toInt16(-32769.0); }), platform::kErrorOverflow);
}

TEST(ToInt32, RoundsAndThenChecksTheRange) {
    EXPECT_EQ(toInt32(2147483647.4), 2147483647);
    EXPECT_EQ(toInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(errorOf([] { return toInt32(2147483647.5); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toInt32(kInfinity); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toInt32(val("1e999")); }), platform::kErrorOverflow);
}

TEST(Finite, IsTheNumberOrAnOverflow) {
    EXPECT_EQ(finite(-1.5), -1.5);
    EXPECT_EQ(errorOf([] { return finite(kInfinity); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return finite(kNoNumber); }), platform::kErrorOverflow);
}

TEST(Quotient, NeedsADivisorAndARoomForTheResult) {
    EXPECT_EQ(quotient(1, -4), -0.25);
    EXPECT_EQ(support::errorOf([] { static_cast<void>(quotient(1, 0)); }), 11);
    EXPECT_EQ(support::errorOf([] { static_cast<void>(quotient(0, 0)); }), 11);
    EXPECT_EQ(errorOf([] { return quotient(1e200, 1e-200); }), platform::kErrorOverflow);
}

TEST(ToSingle, RoundsAndChecksTheRange) {
    EXPECT_EQ(toSingle(0.1), 0.1F);
    EXPECT_EQ(toSingle(-3.4e38), -3.4e38F);
    EXPECT_EQ(errorOf([] { return toSingle(3.5e38); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toSingle(kNoNumber); }), platform::kErrorOverflow);
}

TEST(ToCurrency, KeepsFourDecimalsHalfToEven) {
    EXPECT_EQ(toCurrency(1.23456), 1.2346);
    // 4 * 0.0390625 = 0.15625 exactly: a tie, 1562 is even.
    EXPECT_EQ(toCurrency(10.15625), 10.1562);
    // 12 * 0.0390625 = 0.46875: 4687.5 goes to 4688.
    EXPECT_EQ(toCurrency(0.46875), 0.4688);
    EXPECT_EQ(toCurrency(-0.15625), -0.1562);
    EXPECT_EQ(toCurrency(2.0 / 2.56), 0.7812);
}

// The doubles on a half of a ten-thousandth and next to it, rounded exactly by the wider type.
TEST(ToCurrency, ValuesBesideAHalfGoToTheRightSide) {
    std::mt19937 random(7);
    for (int i = 0; i < 300000; ++i) {
        const double limit = i % 2 == 0 ? 100 : 2e8;
        const double middle =
            (std::floor(static_cast<double>(random()) / 4294967296.0 * limit) - limit / 2 + 0.5) / 1e4;
        for (const double value : {std::nextafter(middle, -1e9), middle, std::nextafter(middle, 1e9)}) {
            const double expected = static_cast<double>(std::nearbyint(static_cast<long double>(value) * 10000)) / 1e4;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(toCurrency(value)), std::bit_cast<std::uint64_t>(expected)) << value;
        }
    }
}

TEST(ToCurrency, OverflowsBeyondItsRange) {
    EXPECT_EQ(toCurrency(922337203685477.0), 922337203685477.0);
    EXPECT_EQ(errorOf([] { return toCurrency(922337203685478.0); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toCurrency(-922337203685478.0); }), platform::kErrorOverflow);
    EXPECT_EQ(errorOf([] { return toCurrency(kNoNumber); }), platform::kErrorOverflow);
}

TEST(TextOf, ADoubleHasItsShortestTextUpTo15Digits) {
    EXPECT_EQ(textOf(0.0), "0");
    EXPECT_EQ(textOf(-0.0), "0");
    EXPECT_EQ(textOf(0.1), "0.1");
    EXPECT_EQ(textOf(-0.5), "-0.5");
    EXPECT_EQ(textOf(123456.0), "123456");
    EXPECT_EQ(textOf(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(textOf(2.0 / 3.0), "0.666666666666667");
    EXPECT_EQ(textOf(100.0 / 3.0), "33.3333333333333");
    EXPECT_EQ(textOf(0.1 + 0.2), "0.3");
    EXPECT_EQ(textOf(256000.0 / 18432000.0), "0.0138888888888889");
    EXPECT_EQ(textOf(123456789012.3456), "123456789012.346");
    EXPECT_EQ(textOf(12.3456789012), "12.3456789012");
    EXPECT_EQ(textOf(10000000000.25), "10000000000.25");
}

TEST(TextOf, ADoubleThatNeedsMoreDigitsHasTheExponentForm) {
    EXPECT_EQ(textOf(999999999999999.0), "999999999999999");
    EXPECT_EQ(textOf(1e15), "1E+15");
    EXPECT_EQ(textOf(-1.25e100), "-1.25E+100");
    EXPECT_EQ(textOf(999999999999999.9), "1E+15");
    EXPECT_EQ(textOf(0.00001), "0.00001");
    EXPECT_EQ(textOf(0.000000000000001), "0.000000000000001");
    EXPECT_EQ(textOf(0.0000000000000001), "1E-16");
    EXPECT_EQ(textOf(1.5e-20), "1.5E-20");
    EXPECT_EQ(textOf(1.0 / 3000.0), "0.000333333333333333");
    EXPECT_EQ(textOf(1.0 / 30000.0), "3.33333333333333E-05");
    EXPECT_EQ(textOf(kLargest), "1.79769313486232E+308");
}

TEST(TextOf, AFloatHasUpTo7Digits) {
    EXPECT_EQ(textOf(3.386F), "3.386");
    EXPECT_EQ(textOf(3.1F), "3.1");
    EXPECT_EQ(textOf(1.0F / 3.0F), "0.3333333");
    EXPECT_EQ(textOf(9999999.0F), "9999999");
    EXPECT_EQ(textOf(1e7F), "1E+07");
    EXPECT_EQ(textOf(256000.0F / 18432000.0F), "0.01388889");
}

TEST(TextOf, AnInteger) {
    EXPECT_EQ(textOf(-1), "-1");
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(9999), "9999");
    EXPECT_EQ(textOf(12345), "12345");
    EXPECT_EQ(textOf(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(textOf(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(textOf(std::uint8_t{255}), "255");
}

TEST(TextOf, WhatIsNoNumberHasATextToo) {
    EXPECT_EQ(textOf(kInfinity), "1.#INF");
    EXPECT_EQ(textOf(-kInfinity), "-1.#INF");
    EXPECT_EQ(textOf(kNoNumber), "-1.#IND");
}

TEST(NumberText, TheShortWayForTenThousandthsGivesTheSameText) {
    EXPECT_EQ(numberText(10.1562).view(), "10.1562");
    EXPECT_EQ(numberText(-0.0001).view(), "-0.0001");
    EXPECT_EQ(numberText(0.05).view(), "0.05");
    EXPECT_EQ(numberText(9999999999.9999).view(), "9999999999.9999");
    EXPECT_EQ(numberText(-9999999999.5).view(), "-9999999999.5");
    // One bit beside a ten-thousandth is still that number in 15 digits.
    EXPECT_EQ(numberText(std::nextafter(0.7, 1.0)).view(), "0.7");
}

// All up to 3, compared with the digits that the C library writes.
TEST(NumberText, ATenThousandthHasTheDigitsThatItNeeds) {
    for (int count = -30000; count <= 30000; ++count) {
        std::array<char, 32> expected{};
        std::snprintf(expected.data(), expected.size(), "%.10g", count / 10000.0);
        if (std::abs(count) >= 10 || count == 0) {  // below it writes an exponent
            ASSERT_EQ(numberText(count / 10000.0).view(), expected.data());
        }
    }
}

TEST(NumberText, HasRoomForFortyCharacters) {
    NumberText text;
    text.append(std::string(40, 'a'));
    EXPECT_EQ(text.view(), std::string(40, 'a'));
    EXPECT_THROW(text.append("b"), std::out_of_range);
    EXPECT_THROW(text.append('b'), std::out_of_range);
}

TEST(WithDecimal, PutsTheSeparatorInThePlaceOfThePoint) {
    EXPECT_EQ(withDecimal(std::string("1.5E-20"), ','), "1,5E-20");
    EXPECT_EQ(withDecimal(std::string("1.5"), '.'), "1.5");
}

}  // namespace
}  // namespace korvane::core
