#include "views/frame/ObjectPart.h"

#include <memory>
#include <utility>

namespace korvane::views {

ObjectPart::ObjectPart(Binder& binder, std::vector<controls::Object*> objects, std::function<void()> show)
    : binder_(binder), objects_(std::move(objects)), show_(std::move(show)) {
    for (auto* object : objects_) {
        object->addObserver(*this);
    }
}

void ObjectPart::bind(Binder& binder, std::vector<controls::Object*> objects, std::function<void()> show) {
    binder.bind(std::make_unique<ObjectPart>(binder, std::move(objects), std::move(show)));
}

void ObjectPart::show() {
    waiting_ = false;
    if (!objects_.empty()) {
        show_();
    }
}

void ObjectPart::propertyChanged(controls::Object&, const void*) {
    if (!std::exchange(waiting_, true)) {
        binder_.marked(*this);
    }
}

void ObjectPart::objectGone(const controls::Object& object) {
    std::erase(objects_, &object);
}

void ObjectPart::forget() {
    for (auto* object : objects_) {
        object->removeObserver(*this);
    }
    objects_.clear();
}

}  // namespace korvane::views
