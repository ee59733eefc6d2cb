#include "platform/Files.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <random>

#include "platform/NewFile.h"

namespace korvane::platform {

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr int kTries = 3;
constexpr fs::perms kWritable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

std::string randomDigits() {
    std::random_device source;
    std::uniform_int_distribution<std::size_t> digit(0, kHexDigits.size() - 1);
    std::string digits;
    for (std::size_t i = 0; i < kUnusedDigits; ++i) {
        digits += kHexDigits.at(digit(source));
    }
    return digits;
}

// What a write to `path` would reach: the end of a chain of links, whether there is a file or not.
fs::path withoutLinks(fs::path path, std::error_code& error) {
    for (int link = 0; link < kMostLinks; ++link) {
        if (!fs::is_symlink(fs::symlink_status(path, error))) {
            error.clear();
            return path;
        }
        const fs::path target = fs::read_symlink(path, error);
        if (error) {
            return path;
        }
        path = path.parent_path() / target;
    }
    error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    return path;
}

// Why the regular file at `place` must stay as it is.
std::error_code whyNotWritten(const fs::path& place, const fs::file_status& status) {
    if ((status.permissions() & kWritable) == fs::perms::none) {
        return std::make_error_code(std::errc::permission_denied);
    }
    std::FILE* const file = std::fopen(place.string().c_str(), "r+b");
    if (file == nullptr) {
        return {errno, std::generic_category()};
    }
    std::fclose(file);
    return {};
}

std::error_code whyNotReplaced(const fs::path& place) {
    std::error_code error;
    const fs::file_status status = fs::status(place, error);
    switch (status.type()) {
        case fs::file_type::regular:
            return whyNotWritten(place, status);
        case fs::file_type::not_found:
            return place.has_filename() ? std::error_code()
                                        : std::make_error_code(std::errc::no_such_file_or_directory);
        case fs::file_type::none:
            return error;
        case fs::file_type::directory:
            return std::make_error_code(std::errc::is_a_directory);
        default:
            return std::make_error_code(std::errc::invalid_argument);
    }
}

std::error_code replaceOnce(const fs::path& place, const FileContent& content, const DiskFlush& toDisk) {
    NewFile file(place);
    content([&file](std::string_view bytes) { file.write(bytes); });
    return file.takePlace(toDisk);
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

std::error_code replaceFile(const fs::path& path, const FileContent& content, const DiskFlush& toDisk) {
    std::error_code error;
    const fs::path place = withoutLinks(path, error);
    if (!error) {
        error = whyNotReplaced(place);
    }
    if (error) {
        return error;
    }
    NewFile::removeLeftovers(place);
    for (int turn = 1; turn <= kTries; ++turn) {
        error = replaceOnce(place, content, toDisk);
        if (error != std::errc::no_such_file_or_directory) {
            break;
        }
    }
    return error;
}

std::error_code replaceFile(const fs::path& path, std::string_view content, const DiskFlush& toDisk) {
    return replaceFile(
        path, [content](const FileSink& write) { write(content); }, toDisk);
}

std::error_code moveFile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    if (const auto status = fs::status(from, error); !fs::is_regular_file(status)) {
        return fs::exists(status) ? std::make_error_code(std::errc::invalid_argument) : error;
    }
    if (fs::exists(fs::symlink_status(to, error))) {
        return std::make_error_code(std::errc::file_exists);
    }
    fs::create_hard_link(from, to, error);
    if (!error) {
        if (!fs::remove(from, error)) {
            std::error_code kept;
            fs::remove(to, kept);
        }
    } else if (error != std::errc::file_exists) {
        // Not every file system has hard links, and not every user may make one.
        fs::rename(from, to, error);
    }
    return error;
}

WallTime lastWrite(const fs::path& path, std::error_code& error) {
    const auto written = fs::last_write_time(path, error);
    if (error) {
        return {};
    }
    const auto moment = std::chrono::floor<std::chrono::seconds>(std::chrono::file_clock::to_sys(written));
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    const std::tm* const local = std::localtime(&seconds);
    if (local == nullptr) {
        error = std::make_error_code(std::errc::value_too_large);
        return {};
    }
    return {local->tm_year + 1900, local->tm_mon + 1, local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec};
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
