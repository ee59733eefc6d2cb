#include "app/ReplyWriter.h"

#include <cerrno>
#include <poll.h>
#include <system_error>
#include <unistd.h>

#include "app/OneLine.h"

namespace korvane::app {

void ReplyWriter::write(std::string_view reply) {
    while (!failed_ && !reply.empty()) {
        const long count = writeSome(reply);
        if (count < 0) {
            failed_ = true;
            complain("replies can't be written: " + std::generic_category().message(errno));
            return;
        }
        reply.remove_prefix(static_cast<std::size_t>(count));
    }
}

// A descriptor that does not block, as a parent process may hand it on, is waited for.
long ReplyWriter::writeSome(std::string_view bytes) const {
    const auto count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count < 0 && errno == EAGAIN) {
        pollfd output{descriptor_, POLLOUT, 0};
        ::poll(&output, 1, -1);
        return 0;
    }
    return count < 0 && errno == EINTR ? 0 : count;
}

}  // namespace korvane::app
