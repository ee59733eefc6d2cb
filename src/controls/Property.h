// A property of a control or window: a value that tells when it changes.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

#include "controls/Object.h"

namespace korvane::controls {

// Assigning an equal value notifies no observer. Reads as the value itself.
template <class T>
class Property {
public:
    explicit Property(Object& owner, T initial = {}) : owner_(&owner), value_(std::move(initial)) {}
    Property(const Property&) = delete;
    ~Property() = default;

    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): an equal value changes nothing
    Property& operator=(const Property& other) { return *this = other.value_; }

    Property& operator=(const T& value) {
        if (!(value_ == value)) {
            value_ = value;
            owner_->changed(this);
        }
        return *this;
    }

    // Assigns in place, so that a short text that changes a hundred times a second costs no allocation.
    template <class Text>
    requires std::same_as<T, std::string> && std::convertible_to<Text, std::string_view> &&
        (!std::same_as<std::remove_cvref_t<Text>, std::string>)Property&
        operator=(const Text& text) {
        if (const std::string_view view = text; value_ != view) {
            value_.assign(view);
            owner_->changed(this);
        }
        return *this;
    }

    // NOLINTNEXTLINE(google-explicit-constructor): a property reads as its value
    operator const T&() const { return value_; }
    [[nodiscard]] const T& get() const { return value_; }

    friend bool operator==(const Property& property, const T& value) { return property.value_ == value; }

private:
    Object* owner_;
    T value_;
};

}  // namespace korvane::controls
