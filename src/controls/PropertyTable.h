// Builds the tables through which properties are reached by name.
#pragma once

#include <limits>
#include <type_traits>

#include "controls/Property.h"
#include "platform/RuntimeError.h"

namespace korvane::controls {

// A picture that the program knows by name.
enum class Picture { None, Grey, Green, Red };

[[nodiscard]] std::string_view nameOf(Picture picture);
[[nodiscard]] Picture pictureNamed(std::string_view name);  // raises RuntimeError 13 for an unknown name

namespace detail {

template <class T>
Value toValue(const T& value) {
    if constexpr (std::is_same_v<T, Picture>) {
        return std::string(nameOf(value));
    } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
        return static_cast<std::int64_t>(value);
    } else {
        return value;
    }
}

[[noreturn]] inline void wrongKind(const char* wanted) {
    throw platform::RuntimeError(platform::kErrorTypeMismatch, std::string("the value must be ") + wanted);
}

template <class T>
T integerOf(const Value& value) {
    const auto* whole = std::get_if<std::int64_t>(&value);
    if (whole == nullptr) {
        wrongKind("a whole number");
    }
    if (*whole < static_cast<std::int64_t>(std::numeric_limits<T>::min()) ||
        *whole > static_cast<std::int64_t>(std::numeric_limits<T>::max())) {
        wrongKind("a number in the property's range");
    }
    return static_cast<T>(*whole);
}

inline double numberOf(const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    wrongKind("a number");
}

template <class T>
T fromValue(const Value& value) {
    if constexpr (std::is_same_v<T, bool>) {
        const auto* flag = std::get_if<bool>(&value);
        return flag != nullptr ? *flag : (wrongKind("true or false"), false);
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, Picture>) {
        const auto* text = std::get_if<std::string>(&value);
        if (text == nullptr) {
            wrongKind("a text");
        }
        if constexpr (std::is_same_v<T, Picture>) {
            return pictureNamed(*text);
        } else {
            return *text;
        }
    } else if constexpr (std::is_integral_v<T>) {
        return integerOf<T>(value);
    } else {
        return numberOf(value);
    }
}

template <class Member>
struct MemberOf;
template <class Class, class T>
struct MemberOf<Property<T> Class::*> {
    using Owner = Class;
    using Type = T;
};

}  // namespace detail

// The table row of a Property member: property<&Label::Caption>("Caption").
template <auto Member>
constexpr PropertyInfo property(std::string_view name) {
    using Owner = typename detail::MemberOf<decltype(Member)>::Owner;
    using Type = typename detail::MemberOf<decltype(Member)>::Type;
    return {name,
            [](const Object& object) -> Value {
                return detail::toValue<Type>((dynamic_cast<const Owner&>(object).*Member).get());
            },
            [](Object& object, const Value& value) {
                dynamic_cast<Owner&>(object).*Member = detail::fromValue<Type>(value);
            }};
}

// The same for a number that is limited when a script assigns it. `Wanted`, called with the object and the number, says
// what may be assigned, or returns null for a number that may.
template <auto Member, auto Wanted>
constexpr PropertyInfo limitedProperty(std::string_view name) {
    using Owner = typename detail::MemberOf<decltype(Member)>::Owner;
    PropertyInfo info = property<Member>(name);
    info.set = [](Object& object, const Value& value) {
        auto& owner = dynamic_cast<Owner&>(object);
        const int number = detail::fromValue<int>(value);
        if (const char* const wanted = Wanted(owner, number); wanted != nullptr) {
            detail::wrongKind(wanted);
        }
        owner.*Member = number;
    };
    return info;
}

// The row of a property that is computed and can only be read.
template <auto Getter>
constexpr PropertyInfo readOnlyProperty(std::string_view name) {
    return {name, Getter, nullptr};
}

}  // namespace korvane::controls
