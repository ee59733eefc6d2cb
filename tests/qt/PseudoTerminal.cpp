#include "qt/PseudoTerminal.h"

#include <array>
#include <asm/termbits.h>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace korvane::platform {

namespace {

bool isReadable(int handle) {
    constexpr int kTwoSeconds = 2000;
    pollfd state{handle, POLLIN, 0};
    return ::poll(&state, 1, kTwoSeconds) > 0;
}

}  // namespace

PseudoTerminal::PseudoTerminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
        throw std::runtime_error("no pseudo-terminal");
    }
    std::array<char, 64> name{};
    if (::ptsname_r(master_, name.data(), name.size()) != 0) {
        throw std::runtime_error("a pseudo-terminal without a name");
    }
    path_ = name.data();
    other_ = ::open(name.data(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

PseudoTerminal::~PseudoTerminal() {
    hangUp();
    ::close(other_);
}

void PseudoTerminal::send(std::string_view bytes) const {
    if (::write(master_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("the pseudo-terminal does not take the bytes");
    }
}

std::string PseudoTerminal::received() const {
    std::array<char, 65536> bytes{};
    const auto count = ::read(master_, bytes.data(), bytes.size());
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

std::string PseudoTerminal::received(std::size_t count) const {
    std::string bytes = received();
    while (bytes.size() < count && isReadable(master_)) {
        bytes += received();
    }
    return bytes;
}

void PseudoTerminal::waitUntilSent() const {
    if (!isReadable(other_)) {
        throw std::runtime_error("the bytes do not arrive");
    }
}

void PseudoTerminal::hangUp() {
    if (master_ >= 0) {
        ::close(master_);
        master_ = -1;
    }
}

int PseudoTerminal::rate() const {
    termios2 state{};
    return ::ioctl(master_, TCGETS2, &state) == 0 ? static_cast<int>(state.c_ospeed) : -1;
}

bool PseudoTerminal::isFree() const {
    const bool locked = ::flock(other_, LOCK_EX | LOCK_NB) == 0;
    return locked && ::flock(other_, LOCK_UN) == 0;
}

}  // namespace korvane::platform
