#include "platform/qt/DiskFlush.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace korvane::platform {

std::error_code flushToDisk(const std::filesystem::path& fileOrFolder) {
    const int handle = ::open(fileOrFolder.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (handle < 0) {
        return {errno, std::generic_category()};
    }
    std::error_code failure;
    // Some file systems can't do it for a folder, which is no failure of the disk.
    if (::fsync(handle) != 0 && errno != EINVAL) {
        failure = {errno, std::generic_category()};
    }
    ::close(handle);
    return failure;
}

}  // namespace korvane::platform
