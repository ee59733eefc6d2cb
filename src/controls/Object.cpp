#include "controls/Object.h"

#include <algorithm>
#include <utility>

namespace korvane::controls {

Object::~Object() {
    for (Observer* const observer : std::exchange(observers_, {})) {
        observer->objectGone(*this);
    }
}

const PropertyInfo* Object::findProperty(std::string_view name) const {
    for (const auto table : propertyTables()) {
        const auto found =
            std::find_if(table.begin(), table.end(), [&](const auto& info) { return info.name == name; });
        if (found != table.end()) {
            return &*found;
        }
    }
    return nullptr;
}

void Object::addObserver(Observer& observer) {
    observers_.push_back(&observer);
}

void Object::removeObserver(Observer& observer) {
    std::erase(observers_, &observer);
}

void Object::changed(const void* property) {
    // By index: an observer may be added or removed during the calls.  NOLINTNEXTLINE(modernize-loop-convert)
    for (std::size_t i = 0; i < observers_.size(); ++i) {
        observers_[i]->propertyChanged(*this, property);
    }
    afterChange(property);
}

}  // namespace korvane::controls
