#include "live/WordsAge.h"

namespace korvane::live {

WordsAge::WordsAge(platform::EventPump& pump, controls::MSComm& port)
    : pump_(pump), port_(port), old_(pump.makeAlarm([this] { Fresh = false; })) {
    port_.addObserver(*this);
}

WordsAge::~WordsAge() {
    port_.removeObserver(*this);
}

void WordsAge::heard() {
    old_->callAt(pump_.now() + kOld);
    Fresh = true;
}

void WordsAge::propertyChanged(controls::Object&, const void* property) {
    if (property == port_.portOpenProperty() && !port_.PortOpen()) {
        old_->cancel();
        Fresh = false;
    }
}

}  // namespace korvane::live
