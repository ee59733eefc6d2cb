#include "keep/restore/RestoreJournal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "core/TimeText.h"
#include "keep/point/Checksum.h"
#include "keep/restore/SettingCells.h"
#include "platform/Files.h"

namespace korvane::keep {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTitle = "Korvane restore journal ";
constexpr std::string_view kFormat = "1";
constexpr std::string_view kFeatures = "features ";
constexpr std::string_view kEnd = "end ";
constexpr std::size_t kSumDigits = 16;
constexpr std::size_t kLargest = 65536;    // bytes; one with all cells is smaller
constexpr std::size_t kLongestText = 250;  // of a name or reason, bytes
constexpr auto kDamaged = "it is damaged";

std::string onOneLine(std::string_view text) {
    std::string line(text.substr(0, kLongestText));
    std::replace_if(
        line.begin(), line.end(), [](char each) { return static_cast<unsigned char>(each) < ' '; }, ' ');
    return line;
}

std::string sumText(std::string_view bytes) {
    std::string digits(kSumDigits, '0');
    std::uint64_t sum = checksumOf(bytes);
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, sum >>= 4U) {
        *digit = platform::kHexDigits[sum & 0xFU];
    }
    return digits;
}

// Takes lines from the front of a text. What does not read as it should leaves `good` false.
class Lines {
public:
    explicit Lines(std::string_view text) : rest_(text) {}

    // The rest of a line that begins with `word`.
    std::string_view behind(std::string_view word) {
        const auto end = rest_.find('\n');
        good = good && end != std::string_view::npos && rest_.starts_with(word);
        if (!good) {
            return {};
        }
        const auto line = rest_.substr(word.size(), end - word.size());
        rest_.remove_prefix(end + 1);
        return line;
    }

    // Numbers of 0 to `most` in a line, with one of `between` behind each but the last.
    template <std::size_t Count>
    std::array<int, Count> numbers(std::string_view word, int most, std::string_view between = " ") {
        std::array<int, Count> numbers{};
        auto line = behind(word);
        for (std::size_t i = 0; good && i < Count; ++i) {
            const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), numbers.at(i));
            line.remove_prefix(static_cast<std::size_t>(end - line.data()));
            good = error == std::errc() && numbers.at(i) >= 0 && numbers.at(i) <= most;
            if (good && i + 1 < Count) {
                good = !line.empty() && between.find(line.front()) != std::string_view::npos;
                line.remove_prefix(good ? 1 : 0);
            }
        }
        good = good && line.empty();
        return numbers;
    }

    [[nodiscard]] bool isAt(std::string_view word) const { return good && rest_.starts_with(word); }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }

    bool good = true;

private:
    std::string_view rest_;
};

constexpr int kMostNumber = 999999;

RestoreJournal::Goal goalOf(std::string_view word, bool& good) {
    good = good && (word == "point" || word == "before");
    return word == "before" ? RestoreJournal::Goal::Before : RestoreJournal::Goal::Point;
}

std::vector<JournalCell> cellsOf(Lines& lines) {
    const int count = lines.numbers<1>("cells ", kLastSetting + 1)[0];
    std::vector<JournalCell> cells;
    int above = -1;
    for (int i = 0; lines.good && i < count; ++i) {
        const auto [address, before, point] = lines.numbers<3>("", kMostNumber);
        lines.good = lines.good && address > above && address <= kLastSetting && before <= 255 && point <= 255;
        above = address;
        cells.push_back({address, static_cast<std::uint8_t>(before), static_cast<std::uint8_t>(point)});
    }
    lines.good = lines.good && !cells.empty();
    return cells;
}

std::optional<RestoreJournal> parsed(std::string_view body) {
    Lines lines(body);
    RestoreJournal journal;
    static_cast<void>(lines.behind(kTitle));
    const auto [type, version] = lines.numbers<2>("ecu ", kMostNumber);
    journal.ecu = {type, version};
    if (lines.isAt(kFeatures)) {
        journal.ecu.features = lines.numbers<1>(kFeatures, EcuKind::kAllFeatures)[0];
    }
    journal.pointName = lines.behind("point ");
    const auto time = lines.numbers<6>("time ", kMostNumber, "- :");
    journal.pointTime = {time[0], time[1], time[2], time[3], time[4], time[5]};
    journal.pointReason = lines.behind("reason ");
    journal.goal = goalOf(lines.behind("goal "), lines.good);
    journal.written = lines.numbers<1>("written ", kMostNumber)[0];
    journal.cells = cellsOf(lines);
    const bool whole = lines.good && lines.atEnd() && journal.written <= static_cast<int>(journal.cells.size());
    return whole ? std::optional(journal) : std::nullopt;
}

std::string bodyOf(const RestoreJournal& journal) {
    std::string text(kTitle);
    text.append(kFormat) += '\n';
    text += "ecu " + std::to_string(journal.ecu.type) + ' ' + std::to_string(journal.ecu.version) + '\n';
    if (journal.ecu.features != EcuKind::kAllFeatures) {
        text.append(kFeatures).append(std::to_string(journal.ecu.features)) += '\n';
    }
    text += "point " + onOneLine(journal.pointName) + '\n';
    text += "time " + core::dateText(journal.pointTime) + ' ' + core::timeText(journal.pointTime) + '\n';
    text += "reason " + onOneLine(journal.pointReason) + '\n';
    text += journal.goal == RestoreJournal::Goal::Point ? "goal point\n" : "goal before\n";
    text += "written " + std::to_string(journal.written) + '\n';
    text += "cells " + std::to_string(journal.cells.size()) + '\n';
    for (const auto& [address, before, point] : journal.cells) {
        text += std::to_string(address) + ' ' + std::to_string(before) + ' ' + std::to_string(point) + '\n';
    }
    return text;
}

}  // namespace

std::string encodeJournal(const RestoreJournal& journal) {
    return sealedJournal(bodyOf(journal));
}

std::string sealedJournal(std::string_view lines) {
    return std::string(lines).append(kEnd).append(sumText(lines)) += '\n';
}

JournalFound decodeJournal(std::string_view bytes) {
    const std::size_t tail = kEnd.size() + kSumDigits + 1;
    if (bytes.size() < tail || bytes.size() > kLargest) {
        return {{}, kDamaged};
    }
    const auto body = bytes.substr(0, bytes.size() - tail);
    if (bytes != sealedJournal(body)) {
        return {{}, kDamaged};
    }
    const auto title = body.substr(0, body.find('\n'));
    if (title.starts_with(kTitle) && title.substr(kTitle.size()) != kFormat) {
        return {{}, "it is of a later version of the program"};
    }
    auto journal = parsed(body);
    // There is one way to write a journal.
    if (!journal || bodyOf(*journal) != body) {
        return {{}, kDamaged};
    }
    return {std::move(journal), {}};
}

fs::path JournalFile::path(const EcuKind& ecu) const {
    const auto features = ecu.features == EcuKind::kAllFeatures ? std::string() : '-' + std::to_string(ecu.features);
    return folder_ /
           ("restore-" + std::to_string(ecu.type) + '-' + std::to_string(ecu.version) + features + ".journal");
}

JournalFound JournalFile::load(const EcuKind& ecu) const {
    std::error_code error;
    const auto place = path(ecu);
    if (!fs::exists(fs::symlink_status(place, error))) {
        return {};
    }
    const auto bytes = platform::readFile(place, kLargest);
    if (!bytes) {
        return {{}, "it can't be read"};
    }
    auto found = decodeJournal(*bytes);
    if (found.journal && found.journal->ecu != ecu) {
        return {{}, "it is of another ECU"};
    }
    return found;
}

std::string JournalFile::save(const RestoreJournal& journal, bool flush) const {
    std::error_code error;
    fs::create_directories(folder_, error);
    if (!error) {
        error = platform::replaceFile(path(journal.ecu), encodeJournal(journal),
                                      flush || journal.written == 0 ? toDisk_ : platform::DiskFlush());
    }
    return error ? "the journal can't be written: " + error.message() : std::string();
}

void JournalFile::remove(const EcuKind& ecu) const {
    std::error_code error;
    fs::remove(path(ecu), error);
}

}  // namespace korvane::keep
