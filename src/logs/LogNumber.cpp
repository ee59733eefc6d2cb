#include "logs/LogNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <system_error>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {

namespace {

enum class Outcome { Number, NoNumber, TooLarge };

constexpr std::array<double, 16> kPowersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// At most 15 digits with at most one separator, which are exact in a double before and behind the one division.
bool isPlain(std::string_view text, char decimal, double& number) {
    std::int64_t digits = 0;
    std::size_t count = 0;
    std::size_t decimals = text.size();
    for (const char character : text) {
        if (isDigit(character)) {
            digits = digits * 10 + (character - '0');
            ++count;
        } else if (character == decimal && decimals == text.size()) {
            decimals = count;
        } else {
            return false;
        }
        if (count >= kPowersOfTen.size()) {
            return false;
        }
    }
    number = static_cast<double>(digits);
    if (decimals != text.size()) {
        number /= kPowersOfTen[count - decimals];
    }
    return count > 0;
}

std::string_view withoutSign(std::string_view text) {
    return text.starts_with('-') || text.starts_with('+') ? text.substr(1) : text;
}

std::size_t takeDigits(std::string_view& rest) {
    const std::size_t count = std::min(rest.find_first_not_of("0123456789"), rest.size());
    rest.remove_prefix(count);
    return count;
}

// `rest` is the text behind the sign.
bool hasForm(std::string_view rest, char decimal) {
    std::size_t digits = takeDigits(rest);
    if (rest.starts_with(decimal)) {
        rest.remove_prefix(1);
        digits += takeDigits(rest);
    }
    if (rest.starts_with('E') || rest.starts_with('e')) {
        rest = withoutSign(rest.substr(1));
        return digits > 0 && takeDigits(rest) > 0 && rest.empty();
    }
    return digits > 0 && rest.empty();
}

Outcome convertRare(std::string_view unsignedText, char decimal, double& number) {
    if (!hasForm(unsignedText, decimal)) {
        return Outcome::NoNumber;
    }
    std::string text(unsignedText);
    std::replace(text.begin(), text.end(), decimal, '.');
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        number = core::val(text);  // 0 for one too small, the largest for one too large
        return number == 0 ? Outcome::Number : Outcome::TooLarge;
    }
    return Outcome::Number;
}

Outcome convert(std::string_view text, char decimal, double& number) {
    const std::string_view rest = withoutSign(text);
    Outcome outcome = Outcome::Number;
    if (!isPlain(rest, decimal, number)) {
        outcome = convertRare(rest, decimal, number);
    }
    if (text.starts_with('-')) {
        number = -number;
    }
    return outcome;
}

}  // namespace

double numberOf(std::string_view text, char decimal) {
    double number = 0;
    switch (convert(text, decimal, number)) {
        case Outcome::Number:
            return number;
        case Outcome::TooLarge:
            platform::raiseOverflow();
        default:
            platform::raiseTypeMismatch();
    }
}

bool isNumber(std::string_view text, char decimal, double& number) {
    return convert(text, decimal, number) == Outcome::Number;
}

}  // namespace korvane::logs
