#include "ecu/EepromFile.h"

#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>

#include "ecu/NumberText.h"

namespace korvane::ecu {

namespace {

constexpr std::uintmax_t kLongestFile = 1'000'000;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string reason() {
    return std::strerror(errno);
}

}  // namespace

std::string readEepromFile(const std::filesystem::path& path, std::vector<std::uint8_t>& cells) {
    std::ifstream file(path);
    if (!file) {
        return "the EEPROM file " + path.string() + " can't be read: " + reason();
    }
    std::error_code unknownSize;
    if (std::filesystem::file_size(path, unknownSize) > kLongestFile && !unknownSize) {
        return "the EEPROM file " + path.string() + " is too long to hold an EEPROM";
    }
    std::vector<std::uint8_t> read;
    std::size_t number = 0;
    std::size_t firstEmpty = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const std::string where = path.string() + ", line " + std::to_string(number) + ": ";
        const std::string_view text = trimmed(line);
        if (text.empty()) {
            firstEmpty = firstEmpty == 0 ? number : firstEmpty;
            continue;
        }
        const auto value = parseNumber<int>(text, 0, 255);
        if (!value || firstEmpty != 0) {
            return where + "a number from 0 to 255 must stand on each line";
        }
        if (read.size() == kEepromCells) {
            return where + "the EEPROM has no more than " + std::to_string(kEepromCells) + " cells";
        }
        read.push_back(static_cast<std::uint8_t>(*value));
    }
    if (file.bad() || read.empty()) {
        return "the EEPROM file " + path.string() + " holds no numbers";
    }
    cells = std::move(read);
    return {};
}

std::string writeEepromFile(const std::filesystem::path& path, std::span<const std::uint8_t> cells) {
    std::filesystem::path unfinished = path;
    unfinished += ".part";
    {
        std::ofstream file(unfinished, std::ios::trunc);
        for (const std::uint8_t cell : cells) {
            file << static_cast<int>(cell) << '\n';
        }
        file.close();
        if (!file) {
            const std::string why = reason();
            std::error_code ignored;
            std::filesystem::remove(unfinished, ignored);
            return "the EEPROM can't be saved to " + path.string() + ": " + why;
        }
    }
    std::error_code error;
    std::filesystem::rename(unfinished, path, error);
    return error ? "the EEPROM can't be saved to " + path.string() + ": " + error.message() : std::string();
}

}  // namespace korvane::ecu
