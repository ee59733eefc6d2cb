#include "console/text/Convert.h"

#include <cmath>

#include "console/ConsoleError.h"

namespace korvane::console {

namespace {

constexpr double kExactWhole = 9007199254740992.0;  // up to here a double names every whole number

std::optional<std::int64_t> wholeIn(const Json& value) {
    if (const auto* whole = value.asWhole()) {
        return *whole;
    }
    const auto* real = value.asDouble();
    if (real != nullptr && std::abs(*real) <= kExactWhole && std::trunc(*real) == *real) {
        return static_cast<std::int64_t>(*real);
    }
    return {};
}

}  // namespace

controls::Value toValue(const Json& value) {
    if (const auto whole = wholeIn(value)) {
        return *whole;
    }
    if (const auto* real = value.asDouble()) {
        return *real;
    }
    if (const auto* flag = value.asBool()) {
        return *flag;
    }
    if (const auto* content = value.asText()) {
        return *content;
    }
    if (value.isNull()) {
        return {};
    }
    throw ConsoleError("the value must be a number, a text, true or false");
}

std::int64_t wholeNumber(const Json& value, std::int64_t least, std::int64_t most) {
    const auto whole = wholeIn(value);
    if (!whole || *whole < least || *whole > most) {
        throw ConsoleError("the value must be a whole number from " + std::to_string(least) + " to " +
                           std::to_string(most));
    }
    return *whole;
}

double realNumber(const Json& value) {
    if (const auto* whole = value.asWhole()) {
        return static_cast<double>(*whole);
    }
    if (const auto* real = value.asDouble()) {
        return *real;
    }
    throw ConsoleError("the value must be a number");
}

float singleNumber(const Json& value) {
    const double real = realNumber(value);
    if (std::abs(real) > std::numeric_limits<float>::max()) {
        throw ConsoleError("the value must be a number of single precision");
    }
    return static_cast<float>(real);
}

bool truth(const Json& value) {
    if (const auto* flag = value.asBool()) {
        return *flag;
    }
    throw ConsoleError("the value must be true or false");
}

std::string text(const Json& value) {
    if (const auto* content = value.asText()) {
        return *content;
    }
    throw ConsoleError("the value must be a text");
}

}  // namespace korvane::console
