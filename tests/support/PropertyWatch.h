// Notes what happens to one property of a control or window.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "controls/Object.h"
#include "controls/Property.h"

namespace korvane::support {

// Calls `changed` at each change of the property at `property`.
class PropertyWatch : public controls::Observer {
public:
    PropertyWatch(controls::Object& object, const void* property, std::function<void()> changed)
        : object_(object), property_(property), changed_(std::move(changed)) {
        object_.addObserver(*this);
    }
    PropertyWatch(const PropertyWatch&) = delete;
    PropertyWatch& operator=(const PropertyWatch&) = delete;
    ~PropertyWatch() override { object_.removeObserver(*this); }

    void propertyChanged(controls::Object&, const void* property) override {
        if (property == property_) {
            changed_();
        }
    }

private:
    controls::Object& object_;
    const void* property_;
    std::function<void()> changed_;
};

// The values that a property takes one after the other.
template <class T>
class PropertyValues {
public:
    PropertyValues(controls::Object& object, controls::Property<T>& property)
        : watch_(object, &property, [this, &property] { values.push_back(property.get()); }) {}

    std::vector<T> values;

private:
    PropertyWatch watch_;
};

}  // namespace korvane::support
