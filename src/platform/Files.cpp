#include "platform/Files.h"

#include <array>
#include <fstream>
#include <functional>
#include <random>
#include <system_error>
#include <utility>

namespace korvane::platform {

namespace {

namespace fs = std::filesystem;

constexpr fs::perms kWritable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

std::string randomDigits() {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::random_device source;
    std::uniform_int_distribution<std::size_t> digit(0, kDigits.size() - 1);
    std::string name;
    for (int i = 0; i < 12; ++i) {
        name += kDigits.at(digit(source));
    }
    return name;
}

bool writeAll(const fs::path& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    return file.good();
}

fs::path withoutLinks(const fs::path& path) {
    std::error_code error;
    fs::path place = fs::canonical(path, error);
    return error ? path : place;
}

bool mayBeReplaced(const fs::file_status& status) {
    return !fs::exists(status) ||
           (fs::is_regular_file(status) && (status.permissions() & kWritable) != fs::perms::none);
}

// Has `write` make the new content under another name in the same folder, then gives that file the name.
bool replaceThrough(const fs::path& path, const std::function<bool(const fs::path&)>& write) {
    const fs::path place = withoutLinks(path);
    std::error_code error;
    const fs::file_status status = fs::status(place, error);
    if (!mayBeReplaced(status)) {
        return false;
    }
    const fs::path made = unusedName(place.parent_path(), place.filename().string() + ".");
    bool done = write(made);
    if (done && fs::exists(status)) {
        fs::permissions(made, status.permissions(), error);
    }
    if (done) {
        fs::rename(made, place, error);
        done = !error;
    }
    if (!done) {
        fs::remove(made, error);
    }
    return done;
}

}  // namespace

std::optional<std::string> readFile(const fs::path& path, std::size_t limit) {
    std::error_code error;
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > limit || error) {
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::string content;
    std::array<char, 65536> block{};
    while (file && content.size() <= limit) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        content.append(block.data(), static_cast<std::size_t>(file.gcount()));
    }
    if (!file.eof() || content.size() > limit) {
        return std::nullopt;
    }
    return content;
}

bool replaceFile(const fs::path& path, std::string_view content) {
    return replaceThrough(path, [content](const fs::path& made) { return writeAll(made, content); });
}

bool replaceFileByCopy(const fs::path& path, const fs::path& source) {
    return replaceThrough(path, [&source](const fs::path& made) {
        std::error_code error;
        return fs::copy_file(source, made, error);
    });
}

fs::path unusedName(const fs::path& folder, std::string_view stem) {
    std::error_code error;
    fs::path name;
    do {
        name = folder / (std::string(stem) + randomDigits());
    } while (fs::exists(fs::symlink_status(name, error)));
    return name;
}

}  // namespace korvane::platform
