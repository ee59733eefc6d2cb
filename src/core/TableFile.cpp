#include "core/TableFile.h"

#include <functional>
#include <system_error>

#include "core/Numbers.h"
#include "core/TextFile.h"
#include "platform/Files.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;

void writeTable(const fs::path& path, std::size_t size, const std::function<std::string(std::size_t)>& lineOf) {
    OutputFile file(path, OutputFile::Mode::Replace);
    for (std::size_t i = 0; i + 1 < size; ++i) {
        file.writeLine(lineOf(i));
    }
    file.close();
}

// The old file stays whole if `write` fails.
void replaceThrough(const fs::path& old, const std::function<void(const fs::path&)>& write) {
    OutputFile(old, OutputFile::Mode::Append).close();  // raises what a write to it would raise
    const fs::path place = fs::canonical(old);
    const fs::path made = platform::unusedName(place.parent_path(), place.filename().string() + ".");
    std::error_code failed;
    try {
        write(made);
        fs::permissions(made, fs::status(place).permissions(), failed);
        fs::rename(made, place);
    } catch (...) {
        fs::remove(made, failed);
        throw;
    }
}

bool saveTable(const fs::path& path, std::size_t size, const std::function<std::string(std::size_t)>& lineOf,
               platform::Dialogs& dialogs) {
    const auto write = [&](const fs::path& file) { writeTable(file, size, lineOf); };
    try {
        std::error_code missing;
        if (fs::is_regular_file(path, missing)) {
            replaceThrough(path, write);
        } else {
            write(path);
        }
        return true;
    } catch (const fs::filesystem_error& failure) {
        dialogs.show({"", "Error tablesave: " + failure.code().message()});
    } catch (const RuntimeError& failure) {
        dialogs.show({"", std::string("Error tablesave: ") + failure.what()});
    }
    return false;
}

}  // namespace

bool SaveByteTable(const fs::path& path, std::span<const std::uint8_t> bytes, platform::Dialogs& dialogs) {
    return saveTable(
        path, bytes.size(), [bytes](std::size_t i) { return ' ' + textOf(bytes[i]) + ' '; }, dialogs);
}

bool SaveTextTable(const fs::path& path, std::span<const std::string> lines, platform::Dialogs& dialogs) {
    return saveTable(
        path, lines.size(), [lines](std::size_t i) { return lines[i]; }, dialogs);
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
