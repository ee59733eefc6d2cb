// Notes the changes of properties.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "console/names/Finder.h"
#include "platform/EventPump.h"

namespace korvane::console {

// A watch ends by itself when its window or control is destroyed.
class Watches : private controls::Observer {
public:
    explicit Watches(const platform::EventPump& pump) : pump_(pump) {}
    Watches(const Watches&) = delete;
    Watches& operator=(const Watches&) = delete;
    ~Watches() override;

    // `name` is what the notes call it. A property that is watched already under this name stays so.
    void add(const std::string& name, const Target& target);
    // False if it is not watched.
    [[nodiscard]] bool remove(const std::string& name);

    // [[ms,"name",value],...] since the last call, oldest first. If there are too many, the oldest are dropped.
    [[nodiscard]] Json takeChanges();

private:
    struct Watch {
        std::string name;
        Target target;
        Json last;
    };
    struct Change {
        std::int64_t milliseconds;
        std::string name;
        Json value;
        std::size_t size;
    };

    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;
    [[nodiscard]] bool observes(const controls::Object& object) const;
    void note(const Watch& watch);

    const platform::EventPump& pump_;
    std::vector<Watch> watches_;
    std::deque<Change> changes_;
    std::size_t size_ = 0;
};

}  // namespace korvane::console
