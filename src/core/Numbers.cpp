#include "core/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/RuntimeError.h"

namespace korvane::core {

namespace {

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Reads the characters of a text one by one and leaves out the blanks.
class Characters {
public:
    explicit Characters(std::string_view text) : text_(text) { skipBlanks(); }

    // The present character, NUL at the end.
    [[nodiscard]] char peek() const { return text_.empty() ? '\0' : text_.front(); }

    char next() {
        const char character = peek();
        text_.remove_prefix(1);
        skipBlanks();
        return character;
    }

private:
    void skipBlanks() {
        while (!text_.empty() && isBlank(text_.front())) {
            text_.remove_prefix(1);
        }
    }

    std::string_view text_;
};

void takeDigits(Characters& from, std::string& to) {
    while (isDigit(from.peek())) {
        to += from.next();
    }
}

void takeSign(Characters& from, std::string& to) {
    if (from.peek() == '-') {
        to += from.next();
    } else if (from.peek() == '+') {
        from.next();
    }
}

void takeExponent(Characters& from, std::string& to) {
    if (from.peek() != 'E' && from.peek() != 'e') {
        return;
    }
    from.next();
    std::string exponent = "e";
    takeSign(from, exponent);
    if (isDigit(from.peek())) {
        takeDigits(from, exponent);
        to += exponent;
    }
}

// The number at the front of `text`, in the form that from_chars knows.
std::string numberPart(std::string_view text) {
    Characters from(text);
    std::string number;
    takeSign(from, number);
    takeDigits(from, number);
    if (from.peek() == '.') {
        number += from.next();
        takeDigits(from, number);
    }
    takeExponent(from, number);
    return number;
}

// A power of ten up to this many digits and a whole number of as many are exact in a double, so that their quotient is
// the double nearest to the true one.
constexpr std::size_t kExactDigits = 15;
constexpr std::array<double, kExactDigits + 1> kPowersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The number that is the whole text, if it has few digits and no exponent: most texts are so.
std::optional<double> shortNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    std::int64_t number = 0;
    std::size_t digits = 0;
    std::size_t point = text.size();
    for (std::size_t i = negative ? 1 : 0; i < text.size(); ++i) {
        if (isDigit(text[i]) && ++digits <= kExactDigits) {
            number = number * 10 + (text[i] - '0');
        } else if (text[i] == '.' && point == text.size()) {
            point = i;
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    const std::size_t decimals = point == text.size() ? 0 : text.size() - point - 1;
    const double size = static_cast<double>(number) / kPowersOfTen[decimals];
    return negative ? -size : size;
}

// Places of `mantissa` before its point, leading zeros left out; negative for zeros that follow the point.
std::int64_t placesOf(std::string_view mantissa) {
    const std::size_t first = mantissa.find_first_of("123456789");
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    if (first == std::string_view::npos) {
        return 0;
    }
    const auto distance = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    return distance > 0 ? distance : distance + 1;
}

// The value of a number that no double can hold: 0 if it is too small, the largest double if it is too large.
double outOfRange(std::string_view number) {
    const std::size_t end = std::min(number.find('e'), number.size());
    const std::string_view digits = end < number.size() ? number.substr(end + 1) : std::string_view("0");
    std::int32_t exponent = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc()) {
        exponent =
            digits.front() == '-' ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
    }
    const double size = placesOf(number.substr(0, end)) + exponent > 0 ? std::numeric_limits<double>::max() : 0.0;
    return number.front() == '-' ? -size : size;
}

template <class T>
T narrowed(double value) {
    const double rounded = roundHalfEven(value);
    // In this form the comparison fails for NaN too.
    if (!(rounded >= std::numeric_limits<T>::min() && rounded <= std::numeric_limits<T>::max())) {
        platform::raiseOverflow();
    }
    return static_cast<T>(rounded);
}

constexpr double kCurrencyScale = 10000.0;
constexpr double kQuickCurrency = 1e9;  // ten-thousandths up to which a double's product is near enough to the true one
constexpr double kNearHalf = 1e-6;

// A sum with this number has no bits left for a fraction, so the addition rounds half to even. Needed a hundred times a
// frame, so it must not cost a function call.
constexpr double kRounder = 6755399441055744.0;
constexpr double kRounderLimit = 2251799813685248.0;
constexpr long double kCurrencyLimit = 9223372036854775807.0L;

// `value`, which lies close beside that half or on it, as std::nearbyint() rounds it.
double roundedBeside(double half, long double value) {
    if (value == half) {
        return std::nearbyint(half);
    }
    return std::copysign(half + (value < half ? -0.5 : 0.5), half);
}

}  // namespace

double val(std::string_view text) {
    if (const auto number = shortNumber(text)) {
        return *number;
    }
    const std::string number = numberPart(text);
    double value = 0.0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    return result.ec == std::errc::result_out_of_range ? outOfRange(number) : value;
}

double toInt(double value) {
    return std::floor(value);
}

double roundHalfEven(double value) {
    return std::abs(value) < kRounderLimit ? value + kRounder - kRounder : std::nearbyint(value);
}

std::uint8_t toByte(double value) {
    return narrowed<std::uint8_t>(value);
}

std::int16_t toInt16(double value) {
    return narrowed<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    return narrowed<std::int32_t>(value);
}

double finite(double value) {
    if (!std::isfinite(value)) {
        platform::raiseOverflow();
    }
    return value;
}

double quotient(double dividend, double divisor) {
    if (divisor == 0.0) {
        platform::raiseDivisionByZero();
    }
    return finite(dividend / divisor);
}

float toSingle(double value) {
    if (!(std::abs(value) <= std::numeric_limits<float>::max())) {
        platform::raiseOverflow();
    }
    return static_cast<float>(value);
}

double toCurrency(double value) {
    const double quick = value * kCurrencyScale;
    const double nearest = roundHalfEven(quick);
    const bool isSmall = std::abs(quick) < kQuickCurrency;
    if (isSmall && std::abs(std::abs(quick - nearest) - 0.5) > kNearHalf) {
        return nearest / kCurrencyScale;
    }
    // The wider type holds the product exactly, so that only a true half counts as one.
    const long double product = static_cast<long double>(value) * kCurrencyScale;
    if (isSmall) {
        return roundedBeside(nearest + (quick < nearest ? -0.5 : 0.5), product) / kCurrencyScale;
    }
    const long double scaled = std::nearbyint(product);
    if (!(std::abs(scaled) <= kCurrencyLimit)) {
        platform::raiseOverflow();
    }
    return static_cast<double>(scaled) / kCurrencyScale;
}

}  // namespace korvane::core
