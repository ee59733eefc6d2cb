#include "app/VirtualRun.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <string_view>
#include <unistd.h>

#include "app/Session.h"
#include "platform/virtual/VirtualPump.h"

namespace korvane::app {

namespace {

void feedStandardInput(Session& session) {
    std::array<char, 65536> buffer;
    while (!session.program().ended()) {
        const auto count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            pollfd input{STDIN_FILENO, POLLIN, 0};
            ::poll(&input, 1, -1);
            continue;
        }
        if (count <= 0) {
            return;
        }
        session.commands().feed(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
    }
}

// Each piece is carried out before the next one is split into lines.
void feedInPieces(Session& session, std::string_view script) {
    constexpr std::size_t kPiece = 65536;
    for (std::size_t at = 0; at < script.size(); at += kPiece) {
        session.commands().feed(script.substr(at, kPiece));
    }
}

}  // namespace

int runVirtual(const Options& options) {
    platform::VirtualPump pump(options.now);
    Session session(options, {pump, {}, nullptr, nullptr, {}, {}});
    session.start();
    if (options.script) {
        feedInPieces(session, readScript(*options.script));
    } else {
        feedStandardInput(session);
    }
    session.commands().endOfInput();
    return reportEnd(session);
}

}  // namespace korvane::app
