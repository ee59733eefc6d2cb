#include "keep/desk/DeskFile.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <utility>

#include "keep/point/PointFile.h"
#include "platform/Files.h"
#include "platform/NewFile.h"

namespace korvane::keep {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFolder = "desk";
constexpr std::chrono::hours kLeftoverAge{1};
constexpr std::string_view kDesk = ".desk";
constexpr std::string_view kLock = ".lock";
constexpr std::string_view kPoint = ".point";
constexpr std::string_view kUntold = "untold";

bool isDeskName(std::string_view name) {
    return name.size() == platform::kUnusedDigits + kDesk.size() && name.ends_with(kDesk);
}

std::string withEnding(std::string_view name, std::string_view ending) {
    return std::string(name.substr(0, name.size() - kDesk.size())).append(ending);
}

std::string sentence(std::string_view what, const std::error_code& error) {
    return std::string(what).append(": ").append(error.message());
}

}  // namespace

DeskFile::DeskFile(PointStore& store, platform::DiskFlush toDisk, platform::FileHold hold)
    : store_(store), folder_(store.folder() / kFolder), toDisk_(std::move(toDisk)), hold_(std::move(hold)) {}

std::shared_ptr<const void> DeskFile::holdOf(std::string_view name) const {
    return hold_ ? hold_(folder_ / withEnding(name, kLock)) : std::make_shared<const char>();
}

std::string DeskFile::begin() {
    std::error_code error;
    fs::create_directories(folder_, error);
    if (error || held_) {
        return error ? sentence("The folder of the desk can't be made", error) : std::string();
    }
    name_ = platform::unusedName(folder_, {}).filename().string().append(kDesk);
    held_ = holdOf(name_);
    return held_ ? std::string() : "The file of the desk can't be made.";
}

// A loss of power may bring the file before this one back: a name that is there already needs no flush of its own, and
// each of them takes the disk some time.
std::string DeskFile::write(const Snapshot& desk) {
    if (auto failure = begin(); !failure.empty()) {
        return failure;
    }
    const auto flush = [this, isNew = !isThere()](const fs::path& place) {
        return toDisk_ && (isNew || place != folder_) ? toDisk_(place) : std::error_code();
    };
    platform::NewFile file(folder_ / name_);
    file.write(encodePoint(desk));
    const auto error = file.takePlace(flush);
    return error ? sentence("The file of the desk can't be written", error) : std::string();
}

bool DeskFile::isThere() const {
    std::error_code error;
    return !name_.empty() && fs::exists(folder_ / name_, error);
}

void DeskFile::remove() {
    if (held_) {
        drop(name_);
        held_.reset();
        name_.clear();
    }
}

// The lock goes last: nobody takes the file for one that was left.
void DeskFile::drop(const std::string& name) const {
    std::error_code error;
    fs::remove(folder_ / name, error);
    fs::remove(folder_ / withEnding(name, kLock), error);
}

std::vector<std::string> DeskFile::names() const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator file(folder_, error), end; !error && file != end; file.increment(error)) {
        std::error_code strange;
        auto name = file->path().filename().string();
        if (isDeskName(name) && fs::is_regular_file(file->symlink_status(strange))) {
            names.push_back(std::move(name));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

DeskFile::Left DeskFile::takeLeft() {
    platform::NewFile::removeLeftovers(folder_ / kDesk, kLeftoverAge);
    Left left{.points = untold(), .failure = {}};
    for (const auto& name : names()) {
        const auto held = holdOf(name);
        if (!held) {
            continue;
        }
        auto [point, failure] = take(name);
        if (!point.empty()) {
            left.points.push_back(std::move(point));
        }
        left.failure = failure.empty() ? left.failure : failure;
    }
    if (!left.points.empty()) {
        noteUntold(left.points);
    }
    return left;
}

// Points that are gone by now need no telling.
std::vector<std::string> DeskFile::untold() const {
    constexpr std::size_t kLargest = 65536;
    std::vector<std::string> points;
    std::istringstream lines(platform::readFile(folder_ / kUntold, kLargest).value_or(std::string()));
    for (std::string name; std::getline(lines, name);) {
        std::error_code error;
        if (name.ends_with(kPoint) && fs::is_regular_file(store_.folder() / name, error)) {
            points.push_back(name);
        }
    }
    return points;
}

void DeskFile::noteUntold(const std::vector<std::string>& points) const {
    std::string lines;
    for (const auto& name : points) {
        lines += name + '\n';
    }
    static_cast<void>(platform::replaceFile(folder_ / kUntold, lines));
}

void DeskFile::told() const {
    std::error_code error;
    fs::remove(folder_ / kUntold, error);
}

// Another program may have taken it since the names were read.
PointStore::Added DeskFile::take(const std::string& name) {
    const auto bytes = platform::readFile(folder_ / name, kLargestPoint);
    auto point = decodePoint(bytes.value_or(std::string()));
    if (!point.content) {
        return takeUnread(name);
    }
    point.content->reason = kUnfinished;
    auto added = store_.add(*point.content);
    if (!added.name.empty()) {
        drop(name);
    }
    return added;
}

PointStore::Added DeskFile::takeUnread(const std::string& name) {
    const auto kept = std::string("desk-").append(withEnding(name, kPoint));
    const auto error = platform::moveFile(folder_ / name, store_.folder() / kept);
    if (!error) {
        drop(name);
        return {kept, {}};
    }
    return {{}, error == std::errc::no_such_file_or_directory ? "" : sentence("The file of the desk is left", error)};
}

}  // namespace korvane::keep
