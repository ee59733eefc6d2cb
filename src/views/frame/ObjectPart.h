// Keeps a piece of a view up to date that shows objects other than the control of one widget.
#pragma once

#include <functional>
#include <vector>

#include "controls/Object.h"
#include "views/frame/Binder.h"
#include "views/frame/BoundPart.h"

namespace korvane::views {

// A change of an object only marks the part; it is shown with the next frame.
class ObjectPart : public BoundPart, private controls::Observer {
public:
    ObjectPart(Binder& binder, std::vector<controls::Object*> objects, std::function<void()> show);
    ~ObjectPart() override { forget(); }

    void show() override;
    void showColorsAgain() override { show(); }
    void detach(const ControlSet&) override { forget(); }

    // Binds a part of `objects`, which live as long as the window, and shows it at once. `show` is called for as long
    // as they live.
    static void bind(Binder& binder, std::vector<controls::Object*> objects, std::function<void()> show);

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;
    void forget();

    Binder& binder_;
    std::vector<controls::Object*> objects_;
    std::function<void()> show_;
    bool waiting_ = false;
};

}  // namespace korvane::views
