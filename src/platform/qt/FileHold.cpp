#include "platform/qt/FileHold.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/qt/SerialHandle.h"

namespace korvane::platform {

namespace {

constexpr int kPermissions = 0666;  // less what the user's mask forbids

class OpenHandle {
public:
    explicit OpenHandle(int handle) : handle_(handle) {}
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;
    ~OpenHandle() { ::close(handle_); }

private:
    int handle_;
};

}  // namespace

std::shared_ptr<const void> holdFile(const std::filesystem::path& file) {
    const int handle = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW, kPermissions);
    if (handle < 0) {
        return nullptr;
    }
    auto held = std::make_shared<OpenHandle>(handle);
    return lockDevice(handle) ? held : nullptr;
}

}  // namespace korvane::platform
