// The bytes of a log file, read block by block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace korvane::logs {

inline constexpr int kErrorOutOfMemory = 7;

class LogBytes {
public:
    // Bytes. A larger file is no log: the largest has 27 MB. A longer line is no line of a log.
    static constexpr std::size_t kLimit = std::size_t{256} << 20U;
    static constexpr std::size_t kLongestLine = std::size_t{16} << 20U;

    // Raises RuntimeError for what can't be read or is no file: a pipe, a device and a folder are not opened.
    void open(const std::filesystem::path& path);
    // Reads on; false at the end of the file. Raises RuntimeError where the disk fails, or at kLimit.
    bool readBlock();
    void close() { file_.reset(); }
    // Forgets the bytes.
    void clear();

    [[nodiscard]] std::string_view text() const { return {bytes_.get(), size_}; }
    // Of the file when it was opened.
    [[nodiscard]] std::uintmax_t fileSize() const { return fileSize_; }

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void growTo(std::size_t room);

    std::unique_ptr<std::FILE, Closer> file_;
    std::unique_ptr<char[]> bytes_;  // NOLINT(modernize-avoid-c-arrays): memory that is not filled before it is read to
    std::size_t size_ = 0;
    std::size_t room_ = 0;
    std::uintmax_t fileSize_ = 0;
};

}  // namespace korvane::logs
