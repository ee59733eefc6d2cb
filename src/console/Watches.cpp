#include "console/Watches.h"

#include <algorithm>

namespace korvane::console {

namespace {

constexpr std::size_t kMemory = std::size_t{64} << 20U;  // bytes of unread notes

// Roughly what the value takes in memory.
std::size_t weightOf(const Json& value) {
    std::size_t weight = sizeof(Json);
    if (const auto* text = value.asText()) {
        weight += text->size();
    } else if (const auto* items = value.asArray()) {
        for (const auto& item : *items) {
            weight += weightOf(item);
        }
    }
    return weight;
}

// A row that does not exist at the moment reads as null.
Json currentValue(const Target& target) {
    try {
        return readProperty(target);
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

Watches::~Watches() {
    for (const auto& watch : watches_) {
        watch.target.object->removeObserver(*this);
    }
}

void Watches::add(const std::string& name, const Target& target) {
    if (std::any_of(watches_.begin(), watches_.end(),
                    [&](const Watch& watch) { return watch.name == name && watch.target.object == target.object; })) {
        return;
    }
    Json value = readProperty(target);
    if (!observes(*target.object)) {
        target.object->addObserver(*this);
    }
    watches_.push_back({name, target, std::move(value)});
}

bool Watches::remove(const std::string& name) {
    const auto found =
        std::find_if(watches_.begin(), watches_.end(), [&](const Watch& watch) { return watch.name == name; });
    if (found == watches_.end()) {
        return false;
    }
    controls::Object& object = *found->target.object;
    watches_.erase(found);
    if (!observes(object)) {
        object.removeObserver(*this);
    }
    return true;
}

Json Watches::takeChanges() {
    Json::Array out;
    for (auto& change : changes_) {
        out.emplace_back(Json::Array{change.milliseconds, std::move(change.name), std::move(change.value)});
    }
    changes_.clear();
    size_ = 0;
    return out;
}

// Values are compared to find which property has changed: some properties are computed from others.
void Watches::propertyChanged(controls::Object& object, const void*) {
    for (auto& watch : watches_) {
        if (watch.target.object != &object) {
            continue;
        }
        Json value = currentValue(watch.target);
        if (!(value == watch.last)) {
            watch.last = std::move(value);
            note(watch);
        }
    }
}

void Watches::objectGone(const controls::Object& object) {
    std::erase_if(watches_, [&](const Watch& watch) { return watch.target.object == &object; });
}

bool Watches::observes(const controls::Object& object) const {
    return std::any_of(watches_.begin(), watches_.end(),
                       [&](const Watch& watch) { return watch.target.object == &object; });
}

void Watches::note(const Watch& watch) {
    const std::size_t size = sizeof(Change) + watch.name.size() + weightOf(watch.last);
    changes_.push_back({pump_.milliseconds(), watch.name, watch.last, size});
    size_ += size;
    while (size_ > kMemory && changes_.size() > 1) {
        size_ -= changes_.front().size;
        changes_.pop_front();
    }
}

}  // namespace korvane::console
