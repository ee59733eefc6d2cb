#include "settings/ColumnSort.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "core/Numbers.h"
#include "core/files/IniFile.h"
#include "platform/Texts.h"
#include "platform/WallTime.h"

namespace korvane::settings {

namespace {

using controls::ListView;

constexpr std::size_t kKeyDigits = 30;  // on either side of the point
constexpr char kTagEnd = '\0';          // between a row's own tag and the text that its key replaces
constexpr std::string_view kDigits = "0123456789";

using KeyOf = std::optional<std::string> (*)(std::string_view text);

bool isDigits(std::string_view text) {
    return text.find_first_not_of(kDigits) == std::string_view::npos;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

// The whole number in plain digits; nothing for another text or more than `most` digits.
std::optional<int> partOf(std::string_view digits, std::size_t most) {
    if (digits.empty() || digits.size() > most || !isDigits(digits)) {
        return {};
    }
    return core::toInt32(core::val(digits));
}

// `number` with zeros before it.
std::string padded(const std::string& number, std::size_t width) {
    return std::string(width - std::min(width, number.size()), '0') + number;
}

// Sets the members to three whole numbers: the first of at most so many digits, the others of two. False for other
// parts; some members may be set then.
bool setParts(platform::WallTime& moment, const std::array<int platform::WallTime::*, 3>& members,
              const std::vector<std::string_view>& parts, std::size_t mostOfFirst) {
    for (std::size_t i = 0; i < members.size(); ++i) {
        const auto number = parts.size() == members.size() ? partOf(parts[i], i == 0 ? mostOfFirst : 2) : std::nullopt;
        if (!number) {
            return false;
        }
        moment.*members[i] = *number;
    }
    return true;
}

bool setDate(std::string_view text, platform::WallTime& moment) {
    using platform::WallTime;
    const bool yearFirst = text.find('-') != std::string_view::npos;
    auto parts = split(text, yearFirst ? '-' : '.');
    if (!yearFirst) {
        std::reverse(parts.begin(), parts.end());
    }
    return parts[0].size() == 4 && setParts(moment, {&WallTime::year, &WallTime::month, &WallTime::day}, parts, 4);
}

bool setTime(std::string_view text, platform::WallTime& moment) {
    using platform::WallTime;
    auto parts = split(text, ':');
    if (parts.size() == 2) {
        parts.push_back("0");
    }
    return setParts(moment, {&WallTime::hour, &WallTime::minute, &WallTime::second}, parts, 2);
}

// A date that does not exist, such as the 30th of February, is converted to another one.
bool exists(const platform::WallTime& moment) {
    return moment.month >= 1 && moment.month <= 12 && moment.day >= 1 && moment.day <= 31 &&
           platform::wallTimeOf(platform::secondsOf(moment)) == moment;
}

void sortTexts(ListView& list, int column) {
    list.Sorted = false;
    list.SortOrder = (list.SortOrder + 1) % 2;
    list.SortKey = column - 1;
    list.Sorted = true;
}

void putKey(ListView& list, int row, int column, KeyOf keyOf) {
    const std::string text = list.Cell(row, column);
    if (auto key = keyOf(text)) {
        list.setRowTag(row, list.rowTag(row) + kTagEnd + text);
        list.setCell(row, column, std::move(*key));
    }
}

void takeKeyBack(ListView& list, int row, int column) {
    const std::string tag = list.rowTag(row);
    if (const auto end = tag.find(kTagEnd); end != std::string::npos) {
        list.setCell(row, column, tag.substr(end + 1));
        list.setRowTag(row, tag.substr(0, end));
    }
}

void sortByKeys(ListView& list, int column, KeyOf keyOf) {
    for (int row = 1; row <= list.rowCount(); ++row) {
        putKey(list, row, column, keyOf);
    }
    sortTexts(list, column);
    for (int row = 1; row <= list.rowCount(); ++row) {
        takeKeyBack(list, row, column);
    }
}

}  // namespace

void sortByColumn(ListView& list, int column) {
    const std::string& tag = list.column(column).tag;
    if (platform::sameText(tag, "DATE")) {
        sortByKeys(list, column, dateKey);
    } else if (platform::sameText(tag, "NUMBER")) {
        sortByKeys(list, column, numberKey);
    } else {
        sortTexts(list, column);
    }
}

std::optional<std::string> numberKey(std::string_view text) {
    text = platform::trimmed(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const auto parts = split(text, '.');
    const bool hasDigit = text.find_first_of(kDigits) != std::string_view::npos;
    if (!hasDigit || parts.size() > 2 || !std::all_of(parts.begin(), parts.end(), isDigits)) {
        return {};
    }
    std::string_view whole = parts[0];
    whole.remove_prefix(std::min(whole.find_first_not_of('0'), whole.size()));
    std::string fraction(parts.size() == 2 ? parts[1] : std::string_view());
    fraction.resize(kKeyDigits, '0');
    const std::string key = padded(std::string(whole), kKeyDigits) + '.' + fraction;
    return negative ? core::ComplementDigits('-' + key) : key;
}

std::optional<std::string> dateKey(std::string_view text) {
    text = platform::trimmed(text);
    const auto blank = text.find(' ');
    platform::WallTime moment;
    if (!setDate(text.substr(0, blank), moment)) {
        return {};
    }
    const bool timed = blank != std::string_view::npos;
    if ((timed && !setTime(platform::trimmed(text.substr(blank)), moment)) || !exists(moment)) {
        return {};
    }
    std::string key = padded(core::textOf(moment.year), 4);
    for (const int part : {moment.month, moment.day, moment.hour, moment.minute, moment.second}) {
        key += padded(core::textOf(part), 2);
    }
    return key;
}

}  // namespace korvane::settings
