// Marks a part of a view when one of the objects that it shows has changed.
#pragma once

#include <vector>

#include "controls/Object.h"
#include "views/frame/Binder.h"

namespace korvane::views {

class PartWatch : private controls::Observer {
public:
    PartWatch(Binder& binder, BoundPart& part) : binder_(binder), part_(part) {}
    PartWatch(const PartWatch&) = delete;
    PartWatch& operator=(const PartWatch&) = delete;
    ~PartWatch() override { stop(); }

    void add(controls::Object& object);
    // For the part's show(): the next change marks it again.
    void shown() { marked_ = false; }
    // No object is used from now on.
    void stop();

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;

    Binder& binder_;
    BoundPart& part_;
    std::vector<controls::Object*> objects_;
    bool marked_ = false;
};

}  // namespace korvane::views
