#include "performance/AccelerationLog.h"

#include <string>

#include "core/TimeText.h"
#include "core/files/TextFile.h"

namespace korvane::performance {

void appendToLog(const std::filesystem::path& carFile, const platform::WallTime& when, std::string_view text) {
    std::filesystem::path path = carFile;
    path += ".txt";
    core::OutputFile log(path, core::OutputFile::Mode::Append);
    log.writeLine(core::dateText(when) + ' ' + core::timeText(when) + "    " + std::string(text));
    log.close();
}

}  // namespace korvane::performance
