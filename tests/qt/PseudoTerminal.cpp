#include "qt/PseudoTerminal.h"

#include <array>
#include <asm/termbits.h>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <unistd.h>

namespace korvane::platform {

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

}  // namespace korvane::platform
