#include "performance/CarFile.h"

#include <algorithm>
#include <string_view>

#include "core/files/TableFile.h"
#include "core/files/TextFile.h"
#include "platform/RuntimeError.h"

namespace korvane::performance {

namespace {

constexpr int kErrorPastEnd = 62;

std::string fieldOf(std::string_view line) {
    line = line.substr(0, line.find(','));
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return std::string(line);
}

}  // namespace

CarValues readCar(const std::filesystem::path& path) {
    const auto lines = core::readLines(path, kLargestCarFile);
    if (lines.size() < kCarValues) {
        throw platform::RuntimeError(kErrorPastEnd, "Input past end of file");
    }
    CarValues values;
    std::copy_n(lines.begin(), kCarValues, values.begin());
    values.front() = fieldOf(lines.front());
    return values;
}

bool saveCar(const std::filesystem::path& path, const CarValues& values, platform::Dialogs& dialogs) {
    // The writer of tables leaves out the last element.
    std::array<std::string, kCarValues + 1> lines;
    std::copy(values.begin(), values.end(), lines.begin());
    return core::SaveTextTable(path, lines, dialogs);
}

}  // namespace korvane::performance
