#include "live/BackupFile.h"

#include <string>
#include <system_error>

#include "core/TimeText.h"
#include "core/files/TextFile.h"
#include "platform/Files.h"

namespace korvane::live {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPrefix = "EEPROM_";
constexpr const char* kExtension = ".txt";

void moveToItsDate(const fs::path& path, const std::string& time) {
    std::error_code failure;
    const auto written = platform::lastWrite(path, failure);
    for (int number = 1; !failure; ++number) {
        const std::string behind = number == 1 ? "" : "_" + std::to_string(number);
        const std::string name = kPrefix + core::dateText(written) + '_' + time + behind + kExtension;
        failure = platform::moveFile(path, path.parent_path() / name);
        if (!failure) {
            return;
        }
        if (failure == std::errc::file_exists) {
            failure.clear();
        }
    }
    throw core::fileError(failure);
}

}  // namespace

fs::path takeBackupPath(const fs::path& folder, const platform::WallTime& now) {
    const std::string time = core::timeFileText(now);
    const fs::path path = folder / (kPrefix + time + kExtension);
    std::error_code error;
    if (fs::exists(path, error)) {
        moveToItsDate(path, time);
    }
    return path;
}

}  // namespace korvane::live
