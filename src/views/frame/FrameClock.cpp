#include "views/frame/FrameClock.h"

#include <algorithm>

namespace korvane::views {

FrameClock::FrameClock() {
    timer_.setSingleShot(true);
    timer_.setInterval(kFrame);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
}

void FrameClock::add(Client& client) {
    clients_.push_back(&client);
}

void FrameClock::remove(Client& client) {
    std::erase(clients_, &client);
}

void FrameClock::wake() {
    if (!timer_.isActive()) {
        timer_.start();
    }
}

void FrameClock::tick() {
    timer_.stop();
    // NOLINTNEXTLINE(modernize-loop-convert): what a client shows may close its window, or open another
    for (std::size_t i = 0; i < clients_.size(); ++i) {
        clients_[i]->frame();
    }
}

}  // namespace korvane::views
