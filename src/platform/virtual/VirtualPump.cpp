#include "platform/virtual/VirtualPump.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace korvane::platform {

namespace {

constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();
constexpr Micros kLongestSettling = Micros{600'000} * kMicrosPerMilli;
constexpr int kMostSettling = 100'000;

}  // namespace

VirtualPump::VirtualPump(WallTime start) : wallStart_(secondsOf(start)) {}

VirtualPump::~VirtualPump() = default;

WallTime VirtualPump::wallTime() const {
    return wallTimeOf(wallStart_ + now_ / kMicrosPerSecond);
}

void VirtualPump::pump() {
    // What the events ask for while they run waits for the next chance, so a pump always ends.
    const auto before = orders();
    while (runFirst(now_, before)) {
    }
}

void VirtualPump::wait(int milliseconds) {
    runUntil(now_ + std::max(milliseconds, 0) * kMicrosPerMilli);
}

void VirtualPump::runUntil(Micros moment) {
    while (runFirst(moment, kAll)) {
    }
    now_ = std::max(now_, moment);
}

void VirtualPump::sleep(int milliseconds) {
    const Micros end = now_ + std::max(milliseconds, 0) * kMicrosPerMilli;
    const bool outer = std::exchange(blocked_, true);
    runUntil(end);
    blocked_ = outer;
}

void VirtualPump::whenSettled(std::function<void()> call, Micros) {
    const Micros latest = now_ + kLongestSettling;
    for (int events = 0; events < kMostSettling && now_ <= latest && runFirst(now_, kAll); ++events) {
    }
    call();
}

}  // namespace korvane::platform
