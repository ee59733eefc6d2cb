#include "ecu/server/Pty.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include "ecu/server/TerminalSpeed.h"

namespace korvane::ecu {

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

Descriptor openMaster() {
    Descriptor master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (master.number() < 0 || grantpt(master.number()) != 0 || unlockpt(master.number()) != 0) {
        fail("no pseudo-terminal");
    }
    return master;
}

std::string slaveOf(const Descriptor& master) {
    std::array<char, 128> name{};
    if (ptsname_r(master.number(), name.data(), name.size()) != 0) {
        fail("no name for the pseudo-terminal");
    }
    return name.data();
}

void makeRaw(int descriptor) {
    termios settings{};
    if (tcgetattr(descriptor, &settings) != 0) {
        fail("the pseudo-terminal has no settings");
    }
    cfmakeraw(&settings);
    cfsetspeed(&settings, B57600);
    if (tcsetattr(descriptor, TCSANOW, &settings) != 0) {
        fail("the pseudo-terminal can't be set to raw bytes");
    }
}

}  // namespace

Pty::Pty() : master_(openMaster()), slavePath_(slaveOf(master_)) {
    slave_ = Descriptor(::open(slavePath_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (slave_.number() < 0) {
        fail(slavePath_);
    }
    makeRaw(slave_.number());
}

void Pty::read(std::vector<std::uint8_t>& to, std::size_t most) const {
    std::array<std::uint8_t, 1024> chunk{};
    const ssize_t got = ::read(master_.number(), chunk.data(), std::min(most, chunk.size()));
    if (got > 0) {
        to.insert(to.end(), chunk.begin(), chunk.begin() + got);
    }
}

void Pty::write(std::span<const std::uint8_t> bytes) const {
    while (!bytes.empty()) {
        const ssize_t put = ::write(master_.number(), bytes.data(), bytes.size());
        if (put <= 0) {
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

int Pty::baud() const {
    return terminalSpeed(slave_.number());
}

void Pty::clearExclusiveMark() const {
    ioctl(slave_.number(), TIOCNXCL);
}

DeviceLink::DeviceLink(std::filesystem::path path, std::string target)
    : path_(std::move(path)), target_(std::move(target)) {
    std::error_code error;
    if (std::filesystem::is_symlink(std::filesystem::symlink_status(path_, error))) {
        std::filesystem::remove(path_, error);
    }
    std::filesystem::create_symlink(target_, path_, error);
    if (error) {
        throw std::system_error(error, "the link " + path_.string() + " can't be made");
    }
}

DeviceLink::~DeviceLink() {
    std::error_code error;
    if (std::filesystem::read_symlink(path_, error) == target_) {
        std::filesystem::remove(path_, error);
    }
}

}  // namespace korvane::ecu
