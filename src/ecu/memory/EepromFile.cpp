#include "ecu/memory/EepromFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "ecu/memory/FileReplacement.h"
#include "ecu/server/NumberText.h"

namespace korvane::ecu {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestFile = 1'000'000;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string unreadable(const fs::path& path, const std::string& why) {
    return "the EEPROM file " + path.string() + " can't be read: " + why;
}

std::string tooLong(const fs::path& path) {
    return "the EEPROM file " + path.string() + " is too long to hold an EEPROM";
}

// Opening a pipe or a device may wait for ever or have side effects, so the kind of file is checked before. Returns as
// readEepromFile() does.
std::string look(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        return unreadable(path, error ? error.message() : std::strerror(ENOENT));
    }
    if (!fs::is_regular_file(status)) {
        return unreadable(path, "it is no regular file");
    }
    return fs::file_size(path, error) > kLongestFile && !error ? tooLong(path) : std::string();
}

// Some files of the system hold more than their size says.
std::string load(const fs::path& path, std::string& text) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return unreadable(path, std::strerror(errno));
    }
    text.resize(kLongestFile + 1);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad()) {
        return unreadable(path, std::strerror(errno));
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text.size() > kLongestFile ? tooLong(path) : std::string();
}

std::string parse(const fs::path& path, const std::string& text, std::vector<std::uint8_t>& cells) {
    std::vector<std::uint8_t> read;
    std::size_t number = 0;
    std::size_t firstEmpty = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::string where = path.string() + ", line " + std::to_string(number) + ": ";
        const std::string_view value = trimmed(line);
        if (value.empty()) {
            firstEmpty = firstEmpty == 0 ? number : firstEmpty;
            continue;
        }
        const auto cell = parseNumber<int>(value, 0, 255);
        if (!cell || firstEmpty != 0) {
            return where + "a number from 0 to 255 must stand on each line";
        }
        if (read.size() == kEepromCells) {
            return where + "the EEPROM has no more than " + std::to_string(kEepromCells) + " cells";
        }
        read.push_back(static_cast<std::uint8_t>(*cell));
    }
    if (read.empty()) {
        return "the EEPROM file " + path.string() + " holds no numbers";
    }
    cells = std::move(read);
    return {};
}

template <typename Number>
std::string writeLines(const fs::path& path, std::span<const Number> numbers, const std::string& what) {
    std::string text;
    for (const Number number : numbers) {
        text += std::to_string(number) + "\n";
    }
    const std::string why = replaceFile(path, text);
    return why.empty() ? why : what + " can't be saved to " + path.string() + ": " + why;
}

}  // namespace

std::string readEepromFile(const fs::path& path, std::vector<std::uint8_t>& cells) {
    std::string text;
    std::string error = look(path);
    if (error.empty()) {
        error = load(path, text);
    }
    return error.empty() ? parse(path, text, cells) : error;
}

std::string writeEepromFile(const fs::path& path, std::span<const std::uint8_t> cells) {
    return writeLines(path, cells, "the EEPROM");
}

std::string writeWearFile(const fs::path& path, std::span<const std::uint32_t> writes) {
    return writeLines(path, writes, "the wear of the EEPROM");
}

}  // namespace korvane::ecu
