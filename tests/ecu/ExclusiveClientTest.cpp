// Programs that open the terminal exclusively, as the program does, and are killed.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "ServedEcu.h"
#include "ecu/server/EcuServer.h"
#include "ecu/server/Pty.h"

namespace korvane::ecu {
namespace {

constexpr uid_t kNobody = 65534;

// The mark does not stop the superuser.
void becomeOrdinary() {
    if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
        ::_exit(127);
    }
}

// What the open of a terminal by an ordinary user gives: 0, or the system's error number.
int openError(const std::string& path) {
    const pid_t child = ::fork();
    if (child == 0) {
        becomeOrdinary();
        ::_exit(::open(path.c_str(), O_RDWR | O_NOCTTY) >= 0 ? 0 : errno);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

// True as soon as the open succeeds, false after five seconds.
bool opensSoon(const std::string& path) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (openError(path) != 0) {
        if (std::chrono::steady_clock::now() > limit) {
            return false;
        }
    }
    return true;
}

enum class Mark { Set, Unset };

// A process that has opened the terminal, has set the mark or not, and has sent `bytes` and read none.
class Client {
public:
    explicit Client(const std::string& path, Mark mark = Mark::Set, const std::string& bytes = {}) {
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe2(ready.data(), O_CLOEXEC), 0);
        child_ = ::fork();
        if (child_ == 0) {
            becomeOrdinary();
            const int terminal = ::open(path.c_str(), O_RDWR | O_NOCTTY);
            const bool sent = ::write(terminal, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
            const bool marked = mark == Mark::Unset || ::ioctl(terminal, TIOCEXCL) == 0;
            if (marked && sent && ::write(ready[1], "x", 1) == 1) {
                ::pause();
            }
            ::_exit(1);
        }
        const Descriptor readEnd(ready[0]);
        { const Descriptor writeEnd(ready[1]); }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1) << "the client did not get the terminal";
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { kill(); }

    void kill() {
        if (child_ > 0) {
            ::kill(child_, SIGKILL);
            ::waitpid(child_, nullptr, 0);
            child_ = -1;
        }
    }

private:
    pid_t child_ = -1;
};

class ExclusiveClient : public ServedEcu {
protected:
    ExclusiveClient() {
        if (::geteuid() == 0) {
            EXPECT_EQ(::chown(pty_.slavePath().c_str(), kNobody, static_cast<gid_t>(-1)), 0);
        }
    }

    [[nodiscard]] const std::string& path() const { return pty_.slavePath(); }
};

TEST_F(ExclusiveClient, KeepsOthersOutWhileItLives) {
    const Client first(path());
    EXPECT_EQ(openError(path()), EBUSY);
    EXPECT_EQ(openError(path()), EBUSY) << "an open that failed changes nothing";
}

TEST_F(ExclusiveClient, LeavesTheTerminalFreeWhenItIsKilled) {
    for (int i = 0; i < 3; ++i) {
        Client client(path());
        client.kill();
        EXPECT_TRUE(opensSoon(path()));
    }
}

TEST_F(ExclusiveClient, KeepsTheMarkWhenAnotherLeaves) {
    Client other(path(), Mark::Unset);
    const Client client(path());
    other.kill();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(openError(path()), EBUSY);
    }
}

// Whether the identity comes within five seconds, asked for as the program does, once and again.
bool identifiesItself(int terminal) {
    const std::string wanted = {'y', 5, '\xFF', '\xFF', 0x0D, 0x3A, 11, '\x86'};
    std::string heard;
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(::write(terminal, "y\0\x86", 3), 3);
        pollfd watched = {.fd = terminal, .events = POLLIN, .revents = 0};
        while (::poll(&watched, 1, 250) == 1) {
            std::array<char, 256> chunk{};
            heard.append(chunk.data(),
                         static_cast<std::size_t>(std::max<ssize_t>(::read(terminal, chunk.data(), chunk.size()), 0)));
            if (heard.ends_with(wanted)) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(ExclusiveClient, MayDieInTheMiddleOfACommandAndOfAnAnswer) {
    Client client(path(), Mark::Set, "xxxfF\x01\x02\x03");  // live frames, a map, and the beginning of a map to send
    client.kill();
    ASSERT_TRUE(opensSoon(path()));
    const Descriptor next(::open(path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_TRUE(identifiesItself(next.number()));
}

}  // namespace
}  // namespace korvane::ecu
