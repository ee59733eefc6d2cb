#include "platform/NewFile.h"

#include <algorithm>
#include <cerrno>
#include <string>

#include "platform/Files.h"

namespace korvane::platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = ".korvane-";
constexpr std::size_t kLongestName = 254;

std::error_code lastFailure() {
    return {errno, std::generic_category()};
}

bool isInsideCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The common beginning of the names of all temporary files for `place`.
std::string stemOf(const fs::path& place) {
    std::string name = place.filename().string();
    std::size_t size = kLongestName - kMark.size() - kUnusedDigits;
    if (name.size() > size) {
        while (size > 0 && isInsideCharacter(name[size])) {
            --size;
        }
        name.resize(size);
    }
    return name.append(kMark);
}

fs::path folderOf(const fs::path& place) {
    return place.has_parent_path() ? place.parent_path() : fs::path(".");
}

bool isLeftover(const fs::directory_entry& entry) {
    const std::string name = entry.path().filename().string();
    const std::size_t digits = name.size() - std::min(name.size(), kUnusedDigits);
    std::error_code error;
    return std::string_view(name).substr(0, digits).ends_with(kMark) &&
           name.find_first_not_of(kHexDigits, digits) == std::string::npos &&
           fs::is_regular_file(entry.symlink_status(error));
}

bool isOlder(const fs::directory_entry& entry, std::chrono::seconds age) {
    std::error_code error;
    return age.count() == 0 || entry.last_write_time(error) < fs::file_time_type::clock::now() - age;
}

}  // namespace

NewFile::NewFile(const fs::path& place) : place_(place) {
    do {
        made_ = unusedName(place.parent_path(), stemOf(place));
        file_.reset(std::fopen(made_.string().c_str(), "wbx"));
    } while (!file_ && errno == EEXIST);
    if (file_) {
        keepPermissions();
    } else {
        failure_ = lastFailure();
    }
}

NewFile::~NewFile() {
    if (file_) {
        file_.reset();
        std::error_code error;
        fs::remove(made_, error);
    }
}

// Before the first byte is written: nobody may read what the permissions of the old file would forbid.
void NewFile::keepPermissions() {
    std::error_code error;
    const fs::file_status status = fs::status(place_, error);
    if (fs::is_regular_file(status)) {
        fs::permissions(made_, status.permissions(), error);
    }
}

void NewFile::write(std::string_view bytes) {
    if (!failure_ && std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) {
        failure_ = lastFailure();
    }
}

std::error_code NewFile::takePlace(const DiskFlush& toDisk) {
    if (!file_) {
        return failure_;
    }
    finish(toDisk);
    if (!failure_) {
        fs::rename(made_, place_, failure_);
    }
    if (failure_) {
        std::error_code error;
        fs::remove(made_, error);
    } else if (toDisk) {
        return toDisk(folderOf(place_));
    }
    return failure_;
}

void NewFile::finish(const DiskFlush& toDisk) {
    if (std::fclose(file_.release()) != 0 && !failure_) {
        failure_ = lastFailure();
    }
    if (!failure_ && toDisk) {
        failure_ = toDisk(made_);
    }
}

void NewFile::removeLeftovers(const fs::path& place, std::chrono::seconds age) {
    std::error_code error;
    std::error_code kept;
    for (fs::directory_iterator entry(folderOf(place), error), end; !error && entry != end; entry.increment(error)) {
        if (isLeftover(*entry) && isOlder(*entry, age)) {
            fs::remove(entry->path(), kept);
        }
    }
}

}  // namespace korvane::platform
