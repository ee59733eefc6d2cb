#include "views/frame/PartWatch.h"

#include <utility>

namespace korvane::views {

void PartWatch::add(controls::Object& object) {
    object.addObserver(*this);
    objects_.push_back(&object);
}

void PartWatch::stop() {
    for (auto* const object : std::exchange(objects_, {})) {
        object->removeObserver(*this);
    }
}

void PartWatch::propertyChanged(controls::Object&, const void*) {
    if (!std::exchange(marked_, true)) {
        binder_.marked(part_);
    }
}

void PartWatch::objectGone(const controls::Object& object) {
    std::erase(objects_, &object);
}

}  // namespace korvane::views
