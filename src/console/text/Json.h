// JSON values, as commands carry them in and replies carry them out.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace korvane::console {

// A name and its value in an object; a template because objects hold values and values hold objects.
template <class Value>
struct JsonMemberOf {
    std::string name;
    Value value;
    friend bool operator==(const JsonMemberOf&, const JsonMemberOf&) = default;
};

// A number without a fraction or an exponent that fits 64 bits is whole; all others are doubles. The members of an
// object keep their order.
class Json {
public:
    using Array = std::vector<Json>;
    using Object = std::vector<JsonMemberOf<Json>>;

    Json() = default;  // null
    template <class T>
    requires std::same_as<T, bool> Json(T value) : value_(value) {}
    template <std::integral T>
    requires(!std::same_as<T, bool>) Json(T value) : value_(static_cast<std::int64_t>(value)) {}
    // What is no finite number becomes null.
    Json(double value);
    Json(float value);
    Json(std::string value) : value_(std::move(value)) {}
    Json(std::string_view value) : value_(std::string(value)) {}
    Json(const char* value) : value_(std::string(value)) {}
    Json(Array value) : value_(std::move(value)) {}
    Json(Object value) : value_(std::move(value)) {}

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    // The value if it is of that kind, or null.
    [[nodiscard]] const bool* asBool() const { return std::get_if<bool>(&value_); }
    [[nodiscard]] const std::int64_t* asWhole() const { return std::get_if<std::int64_t>(&value_); }
    [[nodiscard]] const double* asDouble() const { return std::get_if<double>(&value_); }
    [[nodiscard]] const std::string* asText() const { return std::get_if<std::string>(&value_); }
    [[nodiscard]] const Array* asArray() const { return std::get_if<Array>(&value_); }
    [[nodiscard]] const Object* asObject() const { return std::get_if<Object>(&value_); }

    friend bool operator==(const Json& one, const Json& other) { return one.value_ == other.value_; }

private:
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Array, Object> value_;
};

using JsonMember = JsonMemberOf<Json>;

class JsonError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Values nested deeper than this are refused.
inline constexpr int kJsonDepth = 64;

struct JsonRead {
    Json value;
    std::size_t end = 0;  // behind the value
};

// The value at the front of `text`, blanks before it skipped. Raises JsonError with a sentence on what is wrong.
[[nodiscard]] JsonRead readJson(std::string_view text);

// On one line, without blanks, in valid UTF-8: what is no valid UTF-8 in a text is written as U+FFFD.
void appendJson(std::string& out, const Json& value);
[[nodiscard]] std::string writeJson(const Json& value);

// How many characters from `position` on need no escape in a JSON text, one byte each.
[[nodiscard]] std::size_t plainLength(std::string_view text, std::size_t position);

}  // namespace korvane::console
