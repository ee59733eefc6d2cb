// Text files as lines. Failures raise RuntimeError with the number and description that a message shows.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/DiskFlush.h"
#include "platform/RuntimeError.h"

namespace korvane::core {

inline constexpr int kErrorFileNotFound = 53;
inline constexpr int kErrorDeviceIo = 57;
inline constexpr int kErrorDiskFull = 61;
inline constexpr int kErrorTooManyFiles = 67;
inline constexpr int kErrorPermissionDenied = 70;
inline constexpr int kErrorPathFileAccess = 75;
inline constexpr int kErrorPathNotFound = 76;

inline constexpr std::string_view kLineEnd = "\r\n";

// The largest text file, in bytes, that the program reads; what is larger is no file of its own.
inline constexpr std::size_t kLargestTextFile = std::size_t{16} << 20U;

// The failure behind an errno value.
[[nodiscard]] platform::RuntimeError fileError(const std::error_code& failure);

// A file that is open and written in place.
class OutputFile {
public:
    enum class Mode { Replace, Append };  // both create a missing file

    // Raises RuntimeError 75 for a pipe, whose opening may take for ever, and for a disk.
    OutputFile(const std::filesystem::path& path, Mode mode);

    void write(std::string_view text);
    void writeLine(std::string_view text);
    // Some write failures are reported only here. Without this call the destructor closes the file and reports nothing.
    void close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closer> file_;
};

using LineSink = std::function<void(std::string_view)>;

// Replaces the file in one step (platform/Files.h) by the lines that `lines` gives. Raises RuntimeError on failure.
void replaceLines(const std::filesystem::path& path, const std::function<void(const LineSink&)>& lines,
                  const platform::DiskFlush& toDisk = {});

// The lines of a file in UTF-8, without their ends. Raises RuntimeError if it can't be read or is larger than `limit`.
[[nodiscard]] std::vector<std::string> readLines(const std::filesystem::path& path,
                                                 std::size_t limit = kLargestTextFile);

}  // namespace korvane::core
