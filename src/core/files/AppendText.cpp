#include "core/files/AppendText.h"

#include <system_error>

#include "core/files/TextFile.h"
#include "platform/RuntimeError.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;

// The file's size before a text, restored when its write fails. What is no regular file has none.
class SizeBefore {
public:
    explicit SizeBefore(const fs::path& path) : path_(path) {
        std::error_code error;
        existed_ = fs::exists(fs::status(path, error));
        size_ = existed_ ? fs::file_size(path, error) : 0;
        known_ = !error || !existed_;
    }

    void restore() const {
        std::error_code error;
        if (!known_ || !fs::is_regular_file(path_, error)) {
            return;
        }
        if (existed_) {
            fs::resize_file(path_, size_, error);
        } else {
            fs::remove(path_, error);
        }
    }

private:
    fs::path path_;
    bool existed_ = false;
    bool known_ = false;
    std::uintmax_t size_ = 0;
};

}  // namespace

void appendText(const fs::path& path, std::string_view text) {
    if (path.native().find('\0') != std::string::npos) {
        throw RuntimeError(kErrorPathFileAccess, "Path/File access error");
    }
    const SizeBefore before(path);
    try {
        OutputFile file(path, OutputFile::Mode::Append);
        file.write(text);
        file.close();
    } catch (const RuntimeError&) {
        before.restore();
        throw;
    }
}

}  // namespace korvane::core
