#include "core/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
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

}  // namespace

double val(std::string_view text) {
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
    if (std::abs(quick) < kQuickCurrency && std::abs(std::abs(quick - nearest) - 0.5) > kNearHalf) {
        return nearest / kCurrencyScale;
    }
    // The wider type holds the product exactly, so that only a true half counts as one.
    const long double scaled = std::nearbyint(static_cast<long double>(value) * kCurrencyScale);
    if (!(std::abs(scaled) <= kCurrencyLimit)) {
        platform::raiseOverflow();
    }
    return static_cast<double>(scaled) / kCurrencyScale;
}

}  // namespace korvane::core
