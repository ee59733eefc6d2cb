#include "platform/FilePreferences.h"

#include <algorithm>
#include <system_error>

#include "platform/Files.h"
#include "platform/Texts.h"

namespace korvane::platform {

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr std::size_t kLargestFile = std::size_t{1} << 20U;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isControl(char character) {
    return character >= '\0' && character < ' ' && character != '\t' && character != '\r' && character != '\n';
}

bool isText(std::string_view content) {
    return std::none_of(content.begin(), content.end(), isControl);
}

Lines linesOf(std::string_view content) {
    // With one left, what is written back would begin with it.
    while (content.starts_with(kByteOrderMark)) {
        content.remove_prefix(kByteOrderMark.size());
    }
    Lines lines;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        lines.emplace_back(content.substr(0, end));
        content.remove_prefix(std::min(end + 1, content.size()));
    }
    return lines;
}

std::string contentOf(const Lines& lines) {
    std::string content;
    for (const std::string& line : lines) {
        content += line;
        content += '\n';
    }
    return content;
}

// A line without the blanks at its ends and without the CR of a Windows line end.
std::string_view meaningOf(std::string_view line) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return trimmed(line);
}

bool isHeader(std::string_view line) {
    return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

bool isHeaderOf(std::string_view line, std::string_view key) {
    return isHeader(line) && sameText(trimmed(line.substr(1, line.size() - 2)), key);
}

bool isComment(std::string_view line) {
    return line.starts_with(';') || line.starts_with('#');
}

// The text of a `name=text` line, or nothing if the line is another.
std::optional<std::string_view> textIn(std::string_view line, std::string_view name) {
    const std::size_t equals = line.find('=');
    if (isComment(line) || equals == std::string_view::npos || !sameText(trimmed(line.substr(0, equals)), name)) {
        return std::nullopt;
    }
    return trimmed(line.substr(equals + 1));
}

bool isQuoted(std::string_view text) {
    return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

std::string lineOf(std::string_view name, std::string_view text) {
    const bool quotes = isQuoted(text) || trimmed(text) != text;
    const std::string_view quote = quotes ? "\"" : "";
    return std::string(name).append("=").append(quote).append(text).append(quote);
}

// The place of a value among the lines, or the place to insert it.
struct Place {
    std::optional<std::size_t> line;  // of the value
    std::optional<std::size_t> end;   // behind the last used line under the key
};

Place placeOf(const Lines& lines, std::string_view key, std::string_view name) {
    Place place;
    bool under = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = meaningOf(lines[i]);
        if (isHeader(line)) {
            under = isHeaderOf(line, key);
        } else if (under && !place.line && textIn(line, name)) {
            place.line = i;
        }
        if (under && !line.empty()) {
            place.end = i + 1;
        }
    }
    return place;
}

void setValue(Lines& lines, std::string_view key, std::string_view name, std::string_view text) {
    const Place place = placeOf(lines, key, name);
    if (place.line) {
        lines[*place.line] = lineOf(name, text);
    } else if (place.end) {
        lines.insert(lines.begin() + static_cast<Lines::difference_type>(*place.end), lineOf(name, text));
    } else {
        if (!lines.empty()) {
            lines.emplace_back();
        }
        lines.push_back("[" + std::string(key) + "]");
        lines.push_back(lineOf(name, text));
    }
}

}  // namespace

FilePreferences::FilePreferences(const fs::path& path, Writes writes) : writes_(writes) {
    std::error_code error;
    path_ = fs::absolute(path, error);
    if (error) {
        path_ = path;
    }
    reload();
}

std::optional<std::string> FilePreferences::read(std::string_view key, std::string_view name) const {
    const Place place = placeOf(lines_, key, name);
    if (!place.line) {
        return std::nullopt;
    }
    const std::string_view text = textIn(meaningOf(lines_[*place.line]), name).value_or("");
    return std::string(isQuoted(text) ? text.substr(1, text.size() - 2) : text);
}

void FilePreferences::write(std::string_view key, std::string_view name, std::string_view text) {
    const auto* const end = std::find_if(text.begin(), text.end(), [](char character) {
        return character == '\r' || character == '\n' || isControl(character);
    });
    remember(key, name, text.substr(0, static_cast<std::size_t>(end - text.begin())));
    const FileState found = reload();
    for (const Entry& entry : written_) {
        setValue(lines_, entry.key, entry.name, entry.text);
    }
    if (writes_ == Writes::IntoTheFile) {
        save(found);
    }
}

FilePreferences::FileState FilePreferences::reload() {
    std::error_code error;
    if (!fs::exists(path_, error) && !error) {
        lines_.clear();
        return FileState::Missing;
    }
    const std::optional<std::string> content = readFile(path_, kLargestFile);
    if (!content || !isText(*content)) {
        return FileState::Damaged;
    }
    lines_ = linesOf(*content);
    return FileState::Text;
}

void FilePreferences::remember(std::string_view key, std::string_view name, std::string_view text) {
    std::erase_if(written_, [&](const Entry& entry) { return sameText(entry.key, key) && sameText(entry.name, name); });
    written_.push_back({std::string(key), std::string(name), std::string(text)});
}

bool FilePreferences::keepDamagedFile() const {
    std::error_code error;
    if (!fs::is_regular_file(path_, error)) {
        return false;
    }
    fs::path kept = path_;
    kept += ".damaged";
    if (fs::exists(fs::symlink_status(kept, error))) {
        kept = unusedName(kept.parent_path(), kept.filename().string() + ".");
    }
    fs::rename(path_, kept, error);
    return !error;
}

void FilePreferences::save(FileState found) const {
    if (found == FileState::Damaged && !keepDamagedFile()) {
        return;
    }
    std::error_code error;
    fs::create_directories(path_.parent_path(), error);
    // A store that can't be written keeps the value for this run.
    static_cast<void>(replaceFile(path_, contentOf(lines_)));
}

}  // namespace korvane::platform
