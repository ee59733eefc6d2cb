// Continues Numbers: from numbers to texts.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "core/Numbers.h"

namespace korvane::core {

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// From 0.0001 on a number has no exponent, however many decimals it takes: a text that is cut to a width must not lose
// its order of magnitude.
constexpr int kSmallestPlainExponent = -4;

// A number as digits d1 d2 d3 ... and the power of ten of d1, trailing zeros left out.
struct Decimal {
    bool negative = false;
    std::array<char, 20> digits{};
    int count = 0;
    int exponent = 0;

    [[nodiscard]] std::string_view from(int first, int length) const {
        return std::string_view(digits.data(), static_cast<std::size_t>(count))
            .substr(static_cast<std::size_t>(first), static_cast<std::size_t>(length));
    }
};

Decimal decimalOf(double value, int precision) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, precision - 1).ptr;
    Decimal decimal;
    const char* at = text.data();
    for (; at != end && *at != 'e'; ++at) {
        if (isDigit(*at)) {
            decimal.digits.at(static_cast<std::size_t>(decimal.count++)) = *at;
        }
    }
    const bool positive = at + 1 < end && at[1] == '+';
    std::from_chars(at + (positive ? 2 : 1), end, decimal.exponent);
    decimal.negative = text.front() == '-';
    while (decimal.count > 1 && decimal.digits.at(static_cast<std::size_t>(decimal.count - 1)) == '0') {
        --decimal.count;
    }
    return decimal;
}

void appendZeros(NumberText& text, int count) {
    for (int i = 0; i < count; ++i) {
        text.append('0');
    }
}

char digitOf(std::uint32_t number, std::uint32_t place) {
    return static_cast<char>('0' + number / place % 10);
}

// Up to four digits, which do not wait for one another.
void appendShort(NumberText& text, std::uint32_t value) {
    for (const std::uint32_t place : {1000U, 100U, 10U}) {
        if (value >= place) {
            text.append(digitOf(value, place));
        }
    }
    text.append(digitOf(value, 1));
}

void appendInteger(NumberText& text, std::int64_t value) {
    if (value >= 0 && value < 10000) {
        appendShort(text, static_cast<std::uint32_t>(value));
        return;
    }
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text.append(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

void appendExponentForm(NumberText& text, const Decimal& decimal) {
    text.append(decimal.from(0, 1));
    if (decimal.count > 1) {
        text.append('.');
        text.append(decimal.from(1, decimal.count - 1));
    }
    text.append(decimal.exponent < 0 ? "E-" : "E+");
    const int exponent = std::abs(decimal.exponent);
    appendZeros(text, exponent < 10 ? 1 : 0);
    appendInteger(text, exponent);
}

void appendPlain(NumberText& text, const Decimal& decimal) {
    const int whole = decimal.exponent + 1;
    if (whole <= 0) {
        text.append("0.");
        appendZeros(text, -whole);
        text.append(decimal.from(0, decimal.count));
        return;
    }
    text.append(decimal.from(0, std::min(whole, decimal.count)));
    appendZeros(text, whole - decimal.count);
    if (decimal.count > whole) {
        text.append('.');
        text.append(decimal.from(whole, decimal.count - whole));
    }
}

NumberText unusualText(double value) {
    NumberText text;
    if (value == 0.0) {
        text.append('0');
    } else if (std::isnan(value)) {
        text.append("-1.#IND");
    } else {
        text.append(value < 0.0 ? "-1.#INF" : "1.#INF");
    }
    return text;
}

NumberText generalText(double value, int precision) {
    if (value == 0.0 || !std::isfinite(value)) {
        return unusualText(value);
    }
    const Decimal decimal = decimalOf(value, precision);
    NumberText text;
    if (decimal.negative) {
        text.append('-');
    }
    const int decimals = decimal.count - 1 - decimal.exponent;
    const bool tooSmall = decimals > precision && decimal.exponent < kSmallestPlainExponent;
    if (decimal.exponent >= precision || tooSmall) {
        appendExponentForm(text, decimal);
    } else {
        appendPlain(text, decimal);
    }
    return text;
}

// Below this a number of ten-thousandths has at most 14 digits, so the double nearest to it has no shorter text.
constexpr double kTenThousandthsLimit = 1e10;

// None for 0, and no zeros at the end.
void appendDecimals(NumberText& text, std::uint32_t tenThousandths) {
    if (tenThousandths == 0) {
        return;
    }
    text.append('.');
    for (const std::uint32_t place : {1000U, 100U, 10U, 1U}) {
        text.append(digitOf(tenThousandths, place));
        if (tenThousandths % place == 0) {
            return;
        }
    }
}

NumberText textOfTenThousandths(std::int64_t count) {
    NumberText text;
    if (count < 0) {
        text.append('-');
        count = -count;
    }
    appendInteger(text, count / 10000);
    appendDecimals(text, static_cast<std::uint32_t>(count % 10000));
    return text;
}

}  // namespace

void NumberText::append(std::string_view text) {
    for (const char character : text) {
        append(character);
    }
}

NumberText numberText(double value) {
    if (std::abs(value) < kTenThousandthsLimit) {
        const auto count = static_cast<std::int64_t>(value * 10000.0 + (value < 0.0 ? -0.5 : 0.5));
        if (static_cast<double>(count) / 10000.0 == value) {
            return textOfTenThousandths(count);
        }
    }
    return generalText(value, 15);
}

NumberText numberText(float value) {
    return generalText(static_cast<double>(value), 7);
}

NumberText numberText(int value) {
    NumberText text;
    appendInteger(text, value);
    return text;
}

std::string withDecimal(std::string text, char separator) {
    std::replace(text.begin(), text.end(), '.', separator);
    return text;
}

}  // namespace korvane::core
