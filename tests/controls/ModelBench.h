// A machine in memory and a window on it that notes its own events, for tests of controls.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "controls/Window.h"
#include "support/ErrorOf.h"
#include "support/MachineBench.h"

namespace korvane::controls {

class NotingWindow : public Window {
public:
    using Window::hideOnClose;
    using Window::Window;

    void Form_KeyDown(int keyCode, int shift) override {
        events.push_back("form " + std::to_string(keyCode) + " " + std::to_string(shift));
    }

    std::vector<std::string> events;
    bool refusesToGo = false;
    bool failsToLoad = false;

protected:
    void Form_Load() override {
        events.emplace_back("load");
        if (failsToLoad) {
            throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
        }
    }
    bool Form_Unload() override {
        events.emplace_back("unload");
        return !refusesToGo;
    }
    void Form_Resize() override { events.push_back("resize " + std::to_string(Width) + " " + std::to_string(Height)); }
};

// Notes which properties changed, by address, and in which order.
class NotingObserver : public Observer {
public:
    explicit NotingObserver(Object& object) : object_(object) { object_.addObserver(*this); }
    NotingObserver(const NotingObserver&) = delete;
    NotingObserver& operator=(const NotingObserver&) = delete;
    ~NotingObserver() override { object_.removeObserver(*this); }

    void propertyChanged(Object&, const void* property) override { changes.push_back(property); }

    std::vector<const void*> changes;

private:
    Object& object_;
};

using support::errorOf;

class ModelBench : public support::MachineBench {
protected:
    platform::MemoryLine& line_ = virtual_.line;
    WindowList& windows_ = virtual_.windows;
    platform::Machine& machine_ = virtual_.machine;
    NotingWindow window_{machine_, "frmTest"};
};

}  // namespace korvane::controls
