#include "ecu/memory/FileReplacement.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "ecu/server/Descriptor.h"

namespace korvane::ecu {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = ".korvane-";
constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::size_t kDigits = 12;
constexpr std::size_t kLongestName = 255;
constexpr int kMostLinks = 40;
constexpr int kAttempts = 3;

// Where a chain of links ends, also when nothing is there yet.
fs::path withoutLinks(fs::path path) {
    std::error_code error;
    for (int links = 0; links < kMostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++links) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

std::string beginningOf(const fs::path& file) {
    return file.filename().string().substr(0, kLongestName - kMark.size() - kDigits) + std::string(kMark);
}

bool isLeftOver(const fs::directory_entry& entry, std::string_view beginning) {
    const std::string name = entry.path().filename().string();
    std::error_code error;
    return name.size() == beginning.size() + kDigits && name.starts_with(beginning) &&
           name.find_first_not_of(kHexDigits, beginning.size()) == std::string::npos &&
           fs::is_regular_file(entry.symlink_status(error));
}

void removeLeftOvers(const fs::path& folder, std::string_view beginning) {
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? "." : folder, error);
    while (!error && entry != fs::directory_iterator()) {
        if (isLeftOver(*entry, beginning)) {
            std::error_code ignored;
            fs::remove(entry->path(), ignored);
        }
        entry.increment(error);
    }
}

bool writeAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t put = ::write(file, content.data(), content.size());
        if (put < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(put, 0)));
    }
    return true;
}

// Some file systems have no fsync().
bool isKept(int file) {
    return ::fsync(file) == 0 || errno == EINVAL;
}

class Replacement {
public:
    Replacement(fs::path place, fs::file_status status, std::string_view content, const ReplacementSteps& steps)
        : place_(std::move(place)), status_(status), content_(content), steps_(steps) {}

    // Returns 0, or the system's error number.
    [[nodiscard]] int attempt() const {
        const fs::path made = place_.parent_path() / (beginningOf(place_) + steps_.digits());
        const bool old = fs::exists(status_);
        const Descriptor file(
            ::open(made.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, old ? 0600 : 0666));
        if (file.number() < 0) {
            return errno;
        }
        if (fill(file.number(), made) && std::rename(made.c_str(), place_.c_str()) == 0) {
            return 0;
        }
        const int why = errno;
        ::unlink(made.c_str());
        return why;
    }

private:
    [[nodiscard]] bool fill(int file, const fs::path& made) const {
        if (!writeAll(file, content_) || !isKept(file)) {
            return false;
        }
        if (fs::exists(status_)) {
            // A file system without modes may refuse, and has no mode to keep.
            static_cast<void>(::fchmod(file, static_cast<mode_t>(status_.permissions())));
        }
        steps_.written(made);
        return true;
    }

    fs::path place_;
    fs::file_status status_;
    std::string_view content_;
    const ReplacementSteps& steps_;
};

std::string whyNotReplaceable(const fs::file_status& status) {
    constexpr fs::perms kWritable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if (!fs::exists(status)) {
        return {};
    }
    if (!fs::is_regular_file(status)) {
        return "it is no regular file";
    }
    return (status.permissions() & kWritable) == fs::perms::none ? "it is marked read-only" : "";
}

}  // namespace

std::string randomDigits() {
    std::random_device source;
    std::uniform_int_distribution<std::size_t> digit(0, kHexDigits.size() - 1);
    std::string digits(kDigits, '0');
    std::ranges::generate(digits, [&] { return kHexDigits.at(digit(source)); });
    return digits;
}

std::string replaceFile(const fs::path& path, std::string_view content, const ReplacementSteps& steps) {
    const fs::path place = withoutLinks(path);
    std::error_code unknown;
    const fs::file_status status = fs::symlink_status(place, unknown);
    if (std::string why = whyNotReplaceable(status); !why.empty()) {
        return why;
    }
    removeLeftOvers(place.parent_path(), beginningOf(place));
    const Replacement replacement(place, status, content, steps);
    int error = ENOENT;
    // Another process that saves the same file may take the new one for a left-over, or have the same name in use.
    for (int i = 0; i < kAttempts && (error == ENOENT || error == EEXIST); ++i) {
        error = replacement.attempt();
    }
    return error == 0 ? std::string() : std::strerror(error);
}

}  // namespace korvane::ecu
