// A temporary file beside the file that it replaces when it is complete.
#pragma once

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "platform/DiskFlush.h"

namespace korvane::platform {

// The first failure ends the writing; takePlace() returns it. A file that has not taken its place is deleted with the
// object.
class NewFile {
public:
    // `place` is no link, and what is there, if anything, is a regular file.
    explicit NewFile(const std::filesystem::path& place);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    void write(std::string_view bytes);
    // With a `toDisk`, a loss of power leaves the old file or the new one; after a return without failure the new one.
    [[nodiscard]] std::error_code takePlace(const DiskFlush& toDisk = {});

    // Removes what programs that were killed have left behind in the folder of `place`, if it was written longer ago
    // than `age`.
    static void removeLeftovers(const std::filesystem::path& place, std::chrono::seconds age = std::chrono::seconds(0));

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void keepPermissions();
    void finish(const DiskFlush& toDisk);

    std::filesystem::path place_;
    std::filesystem::path made_;
    std::unique_ptr<std::FILE, Closer> file_;
    std::error_code failure_;
};

}  // namespace korvane::platform
