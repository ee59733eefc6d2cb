#include "ecu/server/EcuServer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>
#include <time.h>

namespace korvane::ecu {

namespace {

constexpr Micros kHandOver = 1000;
// Bytes from the PC that are on the line at once; the rest waits in the terminal's buffer.
constexpr std::size_t kMostIncoming = 4096;

Micros clockTime() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return Micros{time.tv_sec} * 1'000'000 + time.tv_nsec / 1000;
}

// Waits until one of `watched` is readable or `until` has come.
void waitFor(std::span<pollfd> watched, std::optional<Micros> until) {
    timespec left{};
    if (until) {
        const Micros micros = std::max(*until - clockTime(), Micros{0});
        left = {.tv_sec = micros / 1'000'000, .tv_nsec = micros % 1'000'000 * 1000};
    }
    if (ppoll(watched.data(), watched.size(), until ? &left : nullptr, nullptr) < 0 && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "no waiting");
    }
}

}  // namespace

Descriptor endSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    Descriptor descriptor(signalfd(-1, &signals, SFD_CLOEXEC));
    if (descriptor.number() < 0) {
        throw std::system_error(errno, std::generic_category(), "no signals");
    }
    return descriptor;
}

void EcuServer::run(const Descriptor& end) {
    std::array<pollfd, 3> watched = {{{.fd = end.number(), .events = POLLIN, .revents = 0},
                                      {.fd = -1, .events = POLLIN, .revents = 0},
                                      {.fd = others_.descriptor(), .events = POLLIN, .revents = 0}}};
    lineFree_ = clockTime();
    while (watched[0].revents == 0) {
        work(clockTime());
        watched[1].fd = incoming_.size() < kMostIncoming ? pty_.descriptor() : -1;
        waitFor(watched, nextWork());
        if ((watched[1].revents & POLLIN) != 0) {
            hear(clockTime());
        }
        if (watched[2].revents != 0 && others_.lastOneLeft()) {
            pty_.clearExclusiveMark();
        }
    }
}

void EcuServer::hear(Micros now) {
    bytes_.clear();
    pty_.read(bytes_, kMostIncoming - incoming_.size());
    const int baud = pty_.baud();
    if (baud <= 0) {
        return;
    }
    ecu_.setBaud(baud);
    lineFree_ = std::max(lineFree_, now);
    for (const std::uint8_t byte : bytes_) {
        lineFree_ += 10'000'000 / baud;
        incoming_.push_back({lineFree_, byte});
    }
}

void EcuServer::work(Micros now) {
    while (!incoming_.empty() && incoming_.front().arrival <= now) {
        ecu_.receive(incoming_.front().byte, incoming_.front().arrival);
        incoming_.pop_front();
    }
    bytes_.clear();
    ecu_.take(now, bytes_);
    pty_.write(bytes_);
}

std::optional<Micros> EcuServer::nextWork() const {
    std::optional<Micros> next = ecu_.nextDue();
    if (next) {
        *next += kHandOver;
    }
    if (!incoming_.empty()) {
        next = std::min(next.value_or(incoming_.front().arrival), incoming_.front().arrival);
    }
    return next;
}

}  // namespace korvane::ecu
