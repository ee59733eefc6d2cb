// Keeps a piece of a view up to date that shows objects which are no controls.
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
    void showColorsAgain() override { show_(); }
    void detach(const ControlSet&) override { forget(); }

    // Binds a part of `objects` and shows it at once. Both live as long as the window.
    static void bind(Binder& binder, std::vector<controls::Object*> objects, QWidget& widget,
                     std::function<void()> show);

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
