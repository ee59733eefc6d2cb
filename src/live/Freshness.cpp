#include "live/Freshness.h"

namespace korvane::live {

Freshness::Freshness(platform::EventPump& pump) : pump_(pump), look_(pump.makeAlarm([this] { look(); })) {}

void Freshness::arrived() {
    last_ = pump_.now();
    if (!Fresh) {
        Fresh = true;
        look_->callAt(last_ + kLasts);
    }
}

// The alarm is not moved with each of a hundred arrivals a second.
void Freshness::look() {
    if (pump_.now() < last_ + kLasts) {
        look_->callAt(last_ + kLasts);
    } else {
        Fresh = false;
    }
}

}  // namespace korvane::live
