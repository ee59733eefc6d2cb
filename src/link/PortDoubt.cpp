#include "link/PortDoubt.h"

#include <array>

namespace korvane::link {

namespace {

constexpr std::array kProperties{controls::PropertyInfo{"shown",
                                                        [](const controls::Object& object) -> controls::Value {
                                                            return dynamic_cast<const PortDoubt&>(object).Shown.get();
                                                        },
                                                        nullptr}};

}  // namespace

PortDoubt::PortDoubt(platform::EventPump& pump, LinkState& state)
    : pump_(pump), state_(state), look_(pump.makeAlarm([this] { look(); })) {
    state_.addObserver(*this);
}

PortDoubt::~PortDoubt() {
    state_.removeObserver(*this);
}

std::vector<std::span<const controls::PropertyInfo>> PortDoubt::propertyTables() const {
    return {kProperties};
}

bool PortDoubt::isSilent() const {
    return state_.state() == LinkState::State::Silent || state_.state() == LinkState::State::Late;
}

void PortDoubt::propertyChanged(controls::Object&, const void* property) {
    if (property != state_.stateProperty()) {
        return;
    }
    if (state_.state() == LinkState::State::Live) {
        Shown = false;
    }
    look();
}

// Again when the silence will have been long enough.
void PortDoubt::look() {
    if (!isSilent()) {
        look_->cancel();
    } else if (state_.silence() >= kLongSilence) {
        Shown = true;
    } else {
        look_->callAt(pump_.now() + kLongSilence - state_.silence());
    }
}

}  // namespace korvane::link
