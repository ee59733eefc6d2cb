// The only conversions between numbers and texts, and between wide and narrow numbers, in the program.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace korvane::core {

// The number that `text` begins with: an optional sign, digits with an optional point, an optional exponent behind an
// E. Blanks, tabs and line breaks are skipped at every place; the first character that does not belong to
// the number ends it, a comma too. What is no number is 0. A number too large for a double is the largest double.
[[nodiscard]] double val(std::string_view text);

// The largest whole number not above `value`.
[[nodiscard]] double toInt(double value);
// The nearest whole number, of two equally near the even one.
[[nodiscard]] double roundHalfEven(double value);

// The nearest whole number as roundHalfEven() finds it; raises RuntimeError 6 if the type can't hold it.
[[nodiscard]] std::uint8_t toByte(double value);
[[nodiscard]] std::int16_t toInt16(double value);
[[nodiscard]] std::int32_t toInt32(double value);

// `value`; raises RuntimeError 6 if it is infinite or no number.
[[nodiscard]] double finite(double value);
// Raises RuntimeError 11 for a divisor of 0, and 6 as finite() does.
[[nodiscard]] double quotient(double dividend, double divisor);
// The nearest float; raises RuntimeError 6 for what is too large for one.
[[nodiscard]] float toSingle(double value);

// `value` rounded to four decimals, half to even; raises RuntimeError 6 beyond +-922337203685477.5807.
[[nodiscard]] double toCurrency(double value);

// A number's text without an allocation.
class NumberText {
public:
    [[nodiscard]] std::string_view view() const { return {characters_.data(), size_}; }

    void append(char character) { characters_.at(size_++) = character; }
    void append(std::string_view text);

private:
    std::array<char, 40> characters_;
    std::size_t size_ = 0;
};

// The shortest text with at most 15 significant digits (7 for a float), with a point: "0.1", "-0.5", "123456". The
// exponent form, "1.5E-20", comes from 1E+15 (1E+07) on, and below 0.0001 where more than 15 (7) decimals would be
// needed.
[[nodiscard]] NumberText numberText(double value);
[[nodiscard]] NumberText numberText(float value);
[[nodiscard]] NumberText numberText(int value);

template <class Number>
[[nodiscard]] std::string textOf(Number value) {
    return std::string(numberText(value).view());
}

// The text of a number with `separator` in the place of the point.
[[nodiscard]] std::string withDecimal(std::string text, char separator);

}  // namespace korvane::core
