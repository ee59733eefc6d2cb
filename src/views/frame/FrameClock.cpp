#include "views/frame/FrameClock.h"

#include <algorithm>

namespace korvane::views {

namespace {

constexpr qint64 kSlowest = 200;  // ms that a painting may seem to take: more is a machine that was asleep

}  // namespace

FrameClock::FrameClock() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
    painted_.setSingleShot(true);
    QObject::connect(&painted_, &QTimer::timeout, &painted_, [this] { cost_ = begun_.elapsed(); });
}

qint64 FrameClock::pauseBefore(qint64 since, qint64 cost) {
    return std::max<qint64>(std::max<qint64>(kFrame, 2 * std::min(cost, kSlowest)) - since, 0);
}

void FrameClock::add(Client& client) {
    clients_.push_back(&client);
}

void FrameClock::remove(Client& client) {
    std::erase(clients_, &client);
}

void FrameClock::wake() {
    if (!timer_.isActive()) {
        timer_.start(begun_.isValid() ? static_cast<int>(pauseBefore(begun_.elapsed(), cost_)) : 0);
    }
}

void FrameClock::tick() {
    timer_.stop();
    begun_.start();
    painted_.start(0);
    // NOLINTNEXTLINE(modernize-loop-convert): what a client shows may close its window, or open another
    for (std::size_t i = 0; i < clients_.size(); ++i) {
        clients_[i]->frame();
    }
}

}  // namespace korvane::views
