#include "ecu/server/OpenWatch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace korvane::ecu {

namespace {

constexpr std::uint32_t kClosed = IN_CLOSE_WRITE | IN_CLOSE_NOWRITE;
constexpr std::uint32_t kWanted = IN_OPEN | kClosed;

}  // namespace

OpenWatch::OpenWatch(const std::filesystem::path& path) : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    watched_ = inotify_add_watch(events_.number(), path.c_str(), kWanted);
    // The system reports equal events in a row as one. With the folder watched as well, each comes as two that differ,
    // so that two closes at the same time remain two.
    inotify_add_watch(events_.number(), path.parent_path().c_str(), kWanted);
}

bool OpenWatch::lastOneLeft() {
    bool closed = false;
    std::array<char, 4096> events{};
    for (ssize_t got = 0; (got = ::read(events_.number(), events.data(), events.size())) > 0;) {
        inotify_event event{};
        for (std::size_t at = 0; at + sizeof event <= static_cast<std::size_t>(got); at += sizeof event + event.len) {
            std::memcpy(&event, events.data() + at, sizeof event);
            if (event.wd == watched_) {
                const bool close = (event.mask & kClosed) != 0;
                closed = closed || close;
                opened_ = std::max(opened_ + (close ? -1L : 1L), 0L);
            }
        }
    }
    return closed && opened_ == 0;
}

}  // namespace korvane::ecu
