#include "core/files/IniFile.h"

#include <algorithm>
#include <system_error>

#include "core/files/TextFile.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Texts.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;
using platform::sameText;
using platform::trimmed;
using Lines = std::vector<std::string>;

std::string headerOf(std::string_view section) {
    std::string header(trimmed(section));
    if (!header.starts_with('[')) {
        header.insert(header.begin(), '[');
    }
    if (!header.ends_with(']')) {
        header += ']';
    }
    return header;
}

fs::path trimmedPath(const fs::path& file) {
    return fs::path(trimmed(file.string()));
}

bool beginsWithHeader(std::string_view line, std::string_view header) {
    return sameText(trimmed(line).substr(0, header.size()), header);
}

// What of a line counts as a value.
std::string_view valueOf(std::string_view line) {
    return trimmed(line.substr(0, line.find(';')));
}

std::int16_t findSection(const fs::path& file, std::string_view header, Lines& lines, std::size_t& first) {
    std::error_code code;
    if (!fs::exists(file, code) || fs::is_directory(file, code)) {
        return kIniFileMissing;
    }
    try {
        lines = readLines(file, kLargestIniFile);
    } catch (const RuntimeError&) {
        return kIniSectionMissing;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (beginsWithHeader(lines[i], header)) {
            first = i + 1;
            return 0;
        }
    }
    return kIniSectionMissing;
}

// The old lines of a file with one section exchanged for new lines.
Lines withSection(const Lines& old, const std::string& header, std::span<const std::string> lines) {
    Lines result;
    const auto appendSection = [&](std::string_view head) {
        result.emplace_back(head);
        result.insert(result.end(), lines.begin(), lines.end());
    };
    bool copying = true;
    bool notFound = true;
    for (const std::string& oldLine : old) {
        const std::string_view line = trimmed(oldLine);
        if (sameText(line, header)) {
            appendSection(line);
            copying = false;
            notFound = false;
            continue;
        }
        if (!copying && line.starts_with('[')) {
            copying = true;
            result.emplace_back();
        }
        if (copying) {
            result.emplace_back(line);
        }
    }
    if (notFound) {
        result.emplace_back();
        appendSection(header);
    }
    return result;
}

IniStatus replaceSection(const fs::path& file, const std::string& header, std::span<const std::string> lines) {
    std::error_code error;
    IniStatus failed = IniStatus::CannotOpen;
    try {
        Lines old;
        if (fs::exists(file, error)) {
            old = readLines(file, kLargestIniFile);
            failed = IniStatus::CopyFailed;
        }
        replaceLines(file, [content = withSection(old, header, lines)](const LineSink& write) {
            std::for_each(content.begin(), content.end(), write);
        });
        return IniStatus::Done;
    } catch (const RuntimeError& failure) {
        return failure.number() == kErrorDiskFull ? IniStatus::CopyFailed : failed;
    }
}

}  // namespace

std::vector<std::string> ReadIniSection(const fs::path& file, std::string_view section, std::int16_t& error) {
    Lines lines;
    std::size_t first = 0;
    error = findSection(trimmedPath(file), headerOf(section), lines, first);
    if (error != 0) {
        return {std::string()};
    }
    Lines values;
    for (std::size_t i = first; i < lines.size(); ++i) {
        const std::string_view value = valueOf(lines[i]);
        if (value.starts_with('[')) {
            break;
        }
        if (!value.empty()) {
            values.emplace_back(value);
        }
    }
    return values;
}

IniStatus WriteIniSection(const fs::path& file, std::string_view section,
                          std::optional<std::span<const std::string>> lines) {
    if (!lines) {
        return IniStatus::NoArray;
    }
    if (lines->empty()) {
        return IniStatus::NoLines;
    }
    return replaceSection(trimmedPath(file), headerOf(section), *lines);
}

fs::path TempFileName() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    return error ? fs::path() : platform::unusedName(folder, "korvane-tuner.");
}

void KillFile(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error) || fs::is_directory(path, error)) {
        return;
    }
    fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, error);
    fs::remove(path, error);
}

std::string ComplementDigits(std::string_view text) {
    std::string result(text);
    for (char& character : result) {
        if (character == '-') {
            character = ' ';
        } else if (character >= '0' && character <= '9') {
            character = static_cast<char>('0' + '9' - character);
        }
    }
    return result;
}

}  // namespace korvane::core
