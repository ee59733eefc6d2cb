// Calls a function whenever the port is opened.
#pragma once

#include <functional>
#include <utility>

#include "controls/MSComm.h"

namespace korvane::link {

class PortOpening : private controls::Observer {
public:
    // The port outlives it.
    PortOpening(controls::MSComm& port, std::function<void()> opened) : port_(port), opened_(std::move(opened)) {
        port_.addObserver(*this);
    }
    PortOpening(const PortOpening&) = delete;
    PortOpening& operator=(const PortOpening&) = delete;
    ~PortOpening() override { port_.removeObserver(*this); }

private:
    void propertyChanged(controls::Object&, const void* property) override {
        if (property == port_.portOpenProperty() && port_.PortOpen()) {
            opened_();
        }
    }

    controls::MSComm& port_;
    std::function<void()> opened_;
};

}  // namespace korvane::link
