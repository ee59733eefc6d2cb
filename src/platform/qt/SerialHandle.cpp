#include "platform/qt/SerialHandle.h"

#include <asm/termbits.h>  // the rate as a number; the C library's termios.h knows rates by constants alone
#include <cerrno>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>

namespace korvane::platform {

int deviceRate(int handle) {
    termios2 state{};
    return ::ioctl(handle, TCGETS2, &state) == 0 ? static_cast<int>(state.c_ospeed) : 0;
}

std::size_t queuedOutput(int handle) {
    int bytes = 0;
    return ::ioctl(handle, TIOCOUTQ, &bytes) == 0 && bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

bool isHungUp(int handle) {
    pollfd state{handle, 0, 0};
    return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

bool lockDevice(int handle) {
    return ::flock(handle, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace korvane::platform
