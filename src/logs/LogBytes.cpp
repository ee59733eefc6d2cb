#include "logs/LogBytes.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "core/files/TextFile.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;

constexpr std::size_t kBlock = std::size_t{1} << 20U;
constexpr std::size_t kFirstRoom = std::size_t{64} << 20U;  // at the most

}  // namespace

void LogBytes::open(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        throw RuntimeError(core::kErrorFileNotFound, "File not found");
    }
    if (!fs::is_regular_file(status)) {
        throw RuntimeError(core::kErrorPathFileAccess, "Path/File access error");
    }
    file_.reset(std::fopen(path.string().c_str(), "rb"));
    if (!file_) {
        throw core::fileError({errno, std::generic_category()});
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    fileSize_ = fs::file_size(path, error);
    growTo(static_cast<std::size_t>(std::min<std::uintmax_t>(error ? 0 : fileSize_, kFirstRoom)) + 1);
}

bool LogBytes::readBlock() {
    if (size_ >= kLimit) {
        throw RuntimeError(kErrorOutOfMemory, "Out of memory");
    }
    if (size_ == room_) {
        growTo(room_ + std::max(room_ / 2, kBlock));
    }
    const std::size_t wanted = std::min(kBlock, room_ - size_);
    const std::size_t count = std::fread(bytes_.get() + size_, 1, wanted, file_.get());
    size_ += count;
    if (count < wanted && std::ferror(file_.get()) != 0) {
        throw core::fileError({errno, std::generic_category()});
    }
    return count > 0;
}

void LogBytes::clear() {
    bytes_.reset();
    size_ = 0;
    room_ = 0;
}

void LogBytes::growTo(std::size_t room) {
    auto bytes = std::make_unique_for_overwrite<char[]>(room);  // NOLINT(modernize-avoid-c-arrays)
    std::copy_n(bytes_.get(), size_, bytes.get());
    bytes_ = std::move(bytes);
    room_ = room;
}

}  // namespace korvane::logs
