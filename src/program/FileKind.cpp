#include "program/FileKind.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "live/EepromImage.h"
#include "platform/Texts.h"

namespace korvane::program {

namespace {

constexpr std::size_t kBeginning = 32768;  // bytes; the lines of an upload have at most 7 each
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr int kUploaded = 1011;  // lines

std::string beginningOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text(kBeginning, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

std::string_view firstWord(std::string_view text) {
    constexpr std::string_view kBetweenWords = " ,\r\n";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    text.remove_prefix(std::min(text.find_first_not_of(kBetweenWords), text.size()));
    return text.substr(0, text.find_first_of(kBetweenWords));
}

bool isByte(std::string_view line) {
    return live::imageByte(line.substr(0, line.find('\r'))).has_value();
}

bool isImage(const std::string& text) {
    std::istringstream lines(text);
    std::string line;
    for (int i = 0; i < kUploaded; ++i) {
        if (!std::getline(lines, line) || !isByte(line)) {
            return false;
        }
    }
    return true;
}

}  // namespace

FileKind kindOf(const std::filesystem::path& file) {
    if (platform::sameText(file.extension().string(), ".lam")) {
        return FileKind::Setpoints;
    }
    const auto text = beginningOf(file);
    const auto word = firstWord(text);
    if (word == "Injection" || word == "Injection_320") {
        return word == "Injection" ? FileKind::Tune : FileKind::LargeTune;
    }
    return isImage(text) ? FileKind::EepromImage : FileKind::Log;
}

}  // namespace korvane::program
