#include "core/files/TableFile.h"

#include <functional>

#include "core/Numbers.h"
#include "core/files/TextFile.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;

bool saveTable(const fs::path& path, std::size_t size, const std::function<std::string(std::size_t)>& lineOf,
               platform::Dialogs& dialogs, const platform::DiskFlush& toDisk) {
    const auto lines = [&](const LineSink& write) {
        for (std::size_t i = 0; i + 1 < size; ++i) {
            write(lineOf(i));
        }
    };
    try {
        replaceLines(path, lines, toDisk);
        return true;
    } catch (const RuntimeError& failure) {
        tellFailedTable(failure, dialogs);
        return false;
    }
}

}  // namespace

bool SaveByteTable(const fs::path& path, std::span<const std::uint8_t> bytes, platform::Dialogs& dialogs,
                   const platform::DiskFlush& toDisk) {
    return saveTable(
        path, bytes.size(), [bytes](std::size_t i) { return ' ' + textOf(bytes[i]) + ' '; }, dialogs, toDisk);
}

bool SaveTextTable(const fs::path& path, std::span<const std::string> lines, platform::Dialogs& dialogs) {
    return saveTable(path, lines.size(), [lines](std::size_t i) { return lines[i]; }, dialogs, {});
}

void tellFailedTable(const RuntimeError& failure, platform::Dialogs& dialogs) {
    dialogs.show({"", std::string("Error tablesave: ") + failure.what()});
}

TableLoad LoadTextTable(const fs::path& path, std::span<std::string> lines) {
    TableLoad load;
    try {
        for (std::string& line : readLines(path)) {
            const auto index = static_cast<std::size_t>(load.lastIndex) + 1;
            if (index >= lines.size()) {
                load.error = platform::kErrorSubscript;
                break;
            }
            lines[index] = std::move(line);
            load.lastIndex = static_cast<int>(index);
        }
    } catch (const RuntimeError& failure) {
        load.error = failure.number();
    }
    return load;
}

}  // namespace korvane::core
