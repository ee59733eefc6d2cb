#include "core/files/TextFile.h"

#include <algorithm>
#include <cerrno>

#include "core/TextEncoding.h"
#include "platform/Files.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;

[[noreturn]] void fail() {
    throw fileError({errno, std::generic_category()});
}

std::FILE* open(const fs::path& path, OutputFile::Mode mode) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_fifo(status) || fs::is_socket(status) || fs::is_block_file(status)) {
        throw fileError(std::make_error_code(std::errc::invalid_argument));
    }
    return std::fopen(path.string().c_str(), mode == OutputFile::Mode::Replace ? "wb" : "ab");
}

RuntimeError readError(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error)) {
        return {kErrorFileNotFound, "File not found"};
    }
    return {kErrorPathFileAccess, "Path/File access error"};
}

}  // namespace

RuntimeError fileError(const std::error_code& failure) {
    switch (failure.value()) {
        case ENOENT:
        case ENOTDIR:
            return {kErrorPathNotFound, "Path not found"};
        case EACCES:
        case EPERM:
        case EROFS:
            return {kErrorPermissionDenied, "Permission denied"};
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return {kErrorDiskFull, "Disk full"};
        case EMFILE:
        case ENFILE:
            return {kErrorTooManyFiles, "Too many files"};
        case EISDIR:
        case EINVAL:
        case ENAMETOOLONG:
            return {kErrorPathFileAccess, "Path/File access error"};
        default:
            return {kErrorDeviceIo, "Device I/O error"};
    }
}

OutputFile::OutputFile(const fs::path& path, Mode mode) : file_(open(path, mode)) {
    if (!file_) {
        fail();
    }
}

void OutputFile::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size()) {
        fail();
    }
}

void OutputFile::writeLine(std::string_view text) {
    write(text);
    write(kLineEnd);
}

void OutputFile::close() {
    if (std::fclose(file_.release()) != 0) {
        fail();
    }
}

void replaceLines(const fs::path& path, const std::function<void(const LineSink&)>& lines,
                  const platform::DiskFlush& toDisk) {
    const auto content = [&lines](const platform::FileSink& write) {
        lines([&write](std::string_view line) {
            write(line);
            write(kLineEnd);
        });
    };
    const auto failure = platform::replaceFile(path, content, toDisk);
    if (failure) {
        throw fileError(failure);
    }
}

std::vector<std::string> readLines(const fs::path& path, std::size_t limit) {
    const auto content = platform::readFile(path, limit);
    if (!content) {
        throw readError(path);
    }
    const std::string decoded = decode(*content);
    std::string_view text = decoded;
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

}  // namespace korvane::core
