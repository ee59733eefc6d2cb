#include "performance/AccelerationLog.h"

#include <string>

#include "core/TimeText.h"
#include "core/files/AppendText.h"
#include "core/files/TextFile.h"

namespace korvane::performance {

void appendToLog(const std::filesystem::path& carFile, const platform::WallTime& when, std::string_view text) {
    std::filesystem::path path = carFile;
    path += ".txt";
    core::appendText(path, core::dateText(when) + ' ' + core::timeText(when) + "    " + std::string(text) +
                               std::string(core::kLineEnd));
}

}  // namespace korvane::performance
