#include "keep/point/PointStore.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "core/OneLine.h"
#include "core/TimeText.h"
#include "keep/point/PointDifference.h"
#include "platform/Files.h"
#include "platform/NewFile.h"

namespace korvane::keep {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPoint = ".point";
constexpr std::string_view kNote = ".note";
constexpr auto kNoFile = "no file";
constexpr auto kUnreadable = "can't be read";
constexpr auto kGone = "There is no such restore point.";
constexpr int kMostInASecond = 999;
constexpr int kLastYear = 9999;
constexpr std::chrono::hours kLeftoverAge{1};

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Up to one byte more than a point can have, in one or two calls of the system.
std::optional<std::string_view> readUpTo(const fs::path& path, std::span<char> buffer) {
    const std::unique_ptr<std::FILE, Closer> file(std::fopen(path.string().c_str(), "rb"));
    if (!file) {
        return std::nullopt;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), file.get());
    if (std::ferror(file.get()) != 0) {
        return std::nullopt;
    }
    return std::string_view(buffer.data(), size);
}

using PointBuffer = std::array<char, kLargestPoint + 1>;

std::string nameOf(const fs::path& path) {
    return path.filename().string();
}

bool isPointName(std::string_view name) {
    return name.size() > kPoint.size() && name.ends_with(kPoint) &&
           name.find(fs::path::preferred_separator) == name.npos;
}

// A file that somebody has copied may have any other name.
bool beginsWithDate(std::string_view name) {
    constexpr std::string_view kForm = "0000-00-00_00_00_00_000_";
    return name.size() > kForm.size() &&
           std::equal(kForm.begin(), kForm.end(), name.begin(),
                      [](char form, char given) { return form == '0' ? given >= '0' && given <= '9' : given == form; });
}

// The order in which points were made: the time of the clock, and a number within one second. A clock that is set back
// does not set the order back: the turn goes on behind that of the newest point.
struct Turn {
    platform::WallTime time;
    int number = 0;

    friend auto operator<=>(const Turn&, const Turn&) = default;
};

int numberIn(std::string_view name, std::size_t at, std::size_t size) {
    int number = 0;
    std::from_chars(name.data() + at, name.data() + at + size, number);
    return number;
}

// Of a name that begins with a date. None has a moment that no clock shows.
std::optional<Turn> turnOf(std::string_view name) {
    const Turn turn{{numberIn(name, 0, 4), numberIn(name, 5, 2), numberIn(name, 8, 2), numberIn(name, 11, 2),
                     numberIn(name, 14, 2), numberIn(name, 17, 2)},
                    numberIn(name, 20, 3)};
    return platform::isMoment(turn.time) ? std::optional(turn) : std::nullopt;
}

// The last moment of four digits is its own next.
Turn next(const Turn& turn) {
    if (turn.number < kMostInASecond) {
        return {turn.time, turn.number + 1};
    }
    const auto later = platform::wallTimeOf(platform::secondsOf(turn.time) + 1);
    return later.year > kLastYear ? turn : Turn{later, 0};
}

std::string stemOf(const Turn& turn) {
    std::string number = std::to_string(turn.number);
    number.insert(0, 3 - number.size(), '0');
    return core::dateText(turn.time) + '_' + core::timeFileText(turn.time) + '_' + number + '_';
}

std::string noteNameOf(std::string_view pointName) {
    return std::string(pointName.substr(0, pointName.size() - kPoint.size())).append(kNote);
}

// The type is looked at first: to open a pipe would wait for its other end.
template <class What>
Decoded<What> read(const fs::path& path, bool isRegular, Decoded<What> (*decode)(std::string_view)) {
    if (!isRegular) {
        return {{}, kNoFile};
    }
    PointBuffer buffer;
    const auto bytes = readUpTo(path, buffer);
    return bytes ? decode(*bytes) : Decoded<What>{{}, kUnreadable};
}

PointEntry entryOf(const fs::directory_entry& file, std::string name) {
    std::error_code error;
    auto head = read(file.path(), file.is_regular_file(error), decodeHead);
    if (!head.content) {
        return {
            .name = std::move(name), .time = {}, .reason = {}, .ecu = {}, .note = {}, .damage = std::move(head.damage)};
    }
    auto& [time, reason, ecu] = *head.content;
    return {.name = std::move(name), .time = time, .reason = std::move(reason), .ecu = ecu, .note = {}, .damage = {}};
}

// Of the points whose names begin with a date, in no order.
template <class Visit>
void forEachDatedName(const fs::path& folder, Visit visit) {
    std::error_code error;
    for (fs::directory_iterator file(folder, error), end; !error && file != end; file.increment(error)) {
        if (auto name = nameOf(file->path()); isPointName(name) && beginsWithDate(name)) {
            visit(std::move(name));
        }
    }
}

std::string noteIn(const fs::path& path) {
    const auto text = platform::readFile(path, PointStore::kLongestNote);
    return text ? core::onOneLine(*text) : std::string();
}

bool isNewer(const PointEntry& one, const PointEntry& other) {
    const auto keyOf = [](const PointEntry& entry) {
        return std::tuple(entry.damage.empty(), entry.time, std::string_view(entry.name));
    };
    return keyOf(one) > keyOf(other);
}

std::string sentence(std::string_view what, const std::error_code& error) {
    return std::string(what).append(": ").append(error.message());
}

std::error_code writeAnew(const fs::path& place, std::string_view bytes, const platform::DiskFlush& toDisk) {
    platform::NewFile file(place);
    file.write(bytes);
    return file.takePlace(toDisk);
}

}  // namespace

PointStore::PointStore(fs::path folder, platform::DiskFlush toDisk)
    : folder_(std::move(folder)), toDisk_(std::move(toDisk)) {}

std::vector<PointEntry> PointStore::list() const {
    std::vector<PointEntry> entries;
    std::set<std::string> notes;
    std::error_code error;
    for (fs::directory_iterator file(folder_, error), end; !error && file != end; file.increment(error)) {
        auto name = nameOf(file->path());
        if (isPointName(name)) {
            entries.push_back(entryOf(*file, std::move(name)));
        } else if (name.ends_with(kNote)) {
            notes.insert(std::move(name));
        }
    }
    for (auto& entry : entries) {
        if (const auto note = noteNameOf(entry.name); notes.contains(note)) {
            entry.note = noteIn(folder_ / note);
        }
    }
    std::sort(entries.begin(), entries.end(), isNewer);
    return entries;
}

std::vector<std::string> PointStore::names() const {
    std::vector<std::string> names;
    forEachDatedName(folder_, [&names](std::string name) { names.push_back(std::move(name)); });
    std::sort(names.begin(), names.end(), std::greater<>());
    return names;
}

bool PointStore::mayBeOf(std::string_view name, const EcuIdentity& ecu) const {
    const auto path = folder_ / name;
    std::error_code error;
    if (!isPointName(name) || !fs::is_regular_file(path, error)) {
        return false;
    }
    std::array<char, kBytesToEcu> buffer;
    const auto front = readUpTo(path, buffer);
    const auto found = front ? ecuAtFront(*front) : std::nullopt;
    return found && isSameEcu(*found, ecu);
}

Decoded<Snapshot> PointStore::load(std::string_view name) const {
    if (!isPointName(name)) {
        return {{}, kNoFile};
    }
    const auto path = folder_ / name;
    std::error_code error;
    return read(path, fs::is_regular_file(path, error), decodePoint);
}

// The digits behind the turn differ for two programs.
std::string PointStore::nameFor(const platform::WallTime& time) {
    if (!newestAt_ || *newestAt_ != lastChange()) {
        newest_.clear();
        forEachDatedName(folder_, [this](std::string name) {
            if (name > newest_ && turnOf(name)) {
                newest_ = std::move(name);
            }
        });
    }
    Turn turn{time, 0};
    if (!newest_.empty()) {
        turn = std::max(turn, next(*turnOf(newest_)));
    }
    return nameOf(platform::unusedName(folder_, stemOf(turn))).append(kPoint);
}

// The clock of the files moves in steps of some milliseconds: what another program does within one would not show. So
// the folder gets the time between two of them. Nothing where it takes none, or whole seconds only.
std::optional<fs::file_time_type> PointStore::markChange() const {
    std::error_code error;
    const auto now = fs::file_time_type::clock::now();
    fs::last_write_time(folder_, now, error);
    const auto marked = lastChange();
    return !error && marked == now ? std::optional(marked) : std::nullopt;
}

fs::file_time_type PointStore::lastChange() const {
    std::error_code error;
    return fs::last_write_time(folder_, error);
}

PointStore::Added PointStore::add(const Snapshot& point) {
    std::error_code error;
    fs::create_directories(folder_, error);
    if (error) {
        return {{}, sentence("The folder of the restore points can't be made", error)};
    }
    removeLeftovers();
    auto name = nameFor(point.time);
    if (error = writeAnew(folder_ / name, encodePoint(point), toDisk_); error) {
        newestAt_.reset();
        return {{}, sentence("The restore point can't be written", error)};
    }
    newest_ = turnOf(name) ? std::max(newest_, name) : newest_;
    newestAt_ = markChange();
    return {std::move(name), {}};
}

// What a program that was killed has left. What another one writes now is younger.
void PointStore::removeLeftovers() {
    if (!std::exchange(cleaned_, true)) {
        platform::NewFile::removeLeftovers(folder_ / kPoint, kLeftoverAge);
    }
}

std::string PointStore::remove(std::string_view name) {
    std::error_code error;
    if (!isPointName(name) || !fs::exists(fs::symlink_status(folder_ / name, error))) {
        return kGone;
    }
    if (!fs::remove(folder_ / name, error)) {
        return sentence("The restore point can't be removed", error);
    }
    fs::remove(folder_ / noteNameOf(name), error);
    return {};
}

std::string PointStore::setNote(std::string_view name, std::string_view text) {
    std::error_code error;
    if (!isPointName(name) || !fs::exists(fs::symlink_status(folder_ / name, error))) {
        return kGone;
    }
    if (text.size() > kLongestNote) {
        return "A note has at most " + std::to_string(kLongestNote) + " bytes.";
    }
    const auto place = folder_ / noteNameOf(name);
    if (text.empty()) {
        fs::remove(place, error);
    } else {
        error = writeAnew(place, core::onOneLine(text), toDisk_);
    }
    return error ? sentence("The note can't be written", error) : std::string();
}

}  // namespace korvane::keep
