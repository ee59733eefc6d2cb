#include "logs/LogFindings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>

#include "core/Numbers.h"
#include "core/TextEncoding.h"
#include "logs/LogCells.h"
#include "logs/LogGrammar.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {

namespace {

constexpr int kDay = 24 * 60 * 60;  // s
constexpr std::size_t kTimeSize = 8;
constexpr std::size_t kLineSize = kWrittenColumns * kCellSize;
constexpr std::size_t kSpareCells = 2;  // at the end of a line, which are never stored
constexpr std::size_t kStored = kLineSize - kSpareCells * kCellSize;
constexpr std::size_t kDebugStored = 16 * kCellSize;
constexpr int kIgnitionColumn = 3;  // of a debug row
constexpr int kSparkColumn = 4;

// The seconds of "hh:mm:ss", or nothing for another text.
std::optional<int> secondsIn(std::string_view time) {
    int seconds = 0;
    for (std::size_t i = 0; i < kTimeSize && time.size() == kTimeSize; ++i) {
        const char character = time[i];
        if (i % 3 == 2 ? character != ':' : character < '0' || character > '9') {
            return {};
        }
    }
    if (time.size() != kTimeSize) {
        return {};
    }
    for (std::size_t i = 0; i < kTimeSize; i += 3) {
        seconds = seconds * 60 + (time[i] - '0') * 10 + (time[i + 1] - '0');
    }
    return seconds;
}

bool areNuls(std::string_view text) {
    return text.find_first_not_of('\0') == std::string_view::npos;
}

// In a line whose cells all end in a blank, but for the spare ones, no two cells are joined.
bool hasLongCell(std::string_view line) {
    bool blanks = line.size() == kLineSize && areNuls(line.substr(kStored));
    for (std::size_t end = kCellSize - 1; blanks && end < kStored; end += kCellSize) {
        blanks = line[end] == kBlank;
    }
    if (blanks) {
        return false;
    }
    for (std::string_view cell = takeCell(line); !cell.empty(); cell = takeCell(line)) {
        if (cell.size() > kCellSize && !areNuls(cell)) {
            return true;
        }
    }
    return false;
}

bool endsInNuls(std::string_view line, std::size_t from) {
    return line.size() == kLineSize && areNuls(line.substr(from));
}

// NULs anywhere but in the cells that neither kind of row stores.
bool hasNulRun(std::string_view line) {
    if (endsInNuls(line, kDebugStored)) {
        line = line.substr(0, kDebugStored);
    } else if (endsInNuls(line, kStored)) {
        line = line.substr(0, kStored);
    }
    return line.find('\0') != std::string_view::npos;
}

bool isPattern(std::string_view cell) {
    return cell == "21845" || cell == "43690";
}

// The cells after those of a debug row are empty at first, later those of an older row; then its debug words show it.
bool isDebugRow(std::string_view line) {
    return endsInNuls(line, kDebugStored) || isPattern(cellOf(line, kIgnitionColumn)) ||
           isPattern(cellOf(line, kSparkColumn));
}

bool hasOtherDecimal(std::string_view line, char decimal) {
    const char other = decimal == ',' ? '.' : ',';
    const std::size_t at = line.find(other);
    return at != std::string_view::npos && at > 0 && at + 1 < line.size() && line[at - 1] >= '0' && line[at - 1] <= '9';
}

// Whether the time is earlier than in the row before. A step back of half a day or more is midnight.
bool goesBack(std::optional<int> before, std::optional<int> now) {
    return before && now && *now < *before && *before - *now < kDay / 2;
}

enum Finding : std::size_t { Abutting, NulRun, DebugRow, OtherDecimal, TimeBack, kFindings };

constexpr std::array<std::string_view, kFindings> kTexts{"cells run together", "NUL characters", "ignition debug rows",
                                                         "the other decimal separator", "time goes back"};

class Look {
public:
    explicit Look(const clsTXTdata& log) : log_(log) {
        for (std::int32_t row = 1; row <= log.storedRows(); ++row) {
            const std::string_view line = log.line(row);
            const auto time = secondsIn(line.substr(0, line.find(kBlank)));
            note(Abutting, row, hasLongCell(line));
            note(NulRun, row, hasNulRun(line));
            note(DebugRow, row, isDebugRow(line));
            note(OtherDecimal, row, hasOtherDecimal(line, log.decimal()));
            note(TimeBack, row, goesBack(last_, time));
            first_ = first_ ? first_ : time;
            last_ = time ? time : last_;
        }
    }

    [[nodiscard]] std::string text() const {
        const LogLoad& load = log_.lastLoad();
        const std::string name = core::decode(load.path.filename().string()) + ": ";
        const std::string rows = core::textOf(log_.ItemCount()) + " rows";
        if (!load.opened) {
            return name + "not read: " + load.description + (log_.ItemCount() > 0 ? "; " + rows + " of zeros" : "");
        }
        std::string text = name + rows + span() + ending(load);
        for (std::size_t i = 0; i < kFindings; ++i) {
            if (rows_[i] != 0) {
                text += "; " + std::string(kTexts[i]) + ", row " + core::textOf(rows_[i]);
            }
        }
        if (!load.lastLineEnded) {
            text += "; last line cut, row " + core::textOf(log_.storedRows());
        }
        return text;
    }

private:
    void note(Finding finding, std::int32_t row, bool found) {
        if (found && rows_[finding] == 0) {
            rows_[finding] = row;
        }
    }

    [[nodiscard]] std::string span() const {
        if (!first_) {
            return {};
        }
        const int seconds = (*last_ - *first_ + kDay) % kDay;
        std::string text = ", " + timeOf(*first_) + " to " + timeOf(*last_);
        if (seconds > 0 && rows_[TimeBack] == 0) {
            const double rate = core::roundHalfEven(10.0 * log_.ItemCount() / seconds) / 10;
            text += ", " + core::textOf(rate) + " rows a second";
        }
        return text;
    }

    [[nodiscard]] static std::string timeOf(int seconds) {
        std::string text;
        for (const int part : {seconds / 3600, seconds / 60 % 60, seconds % 60}) {
            text += (text.empty() ? "" : ":") + std::string(part < 10 ? "0" : "") + core::textOf(part);
        }
        return text;
    }

    [[nodiscard]] static std::string ending(const LogLoad& load) {
        if (load.failure == 0) {
            return {};
        }
        if (load.failedRow > kReadRows) {
            return "; more than " + core::textOf(kReadRows) + " lines";
        }
        return "; ends early at row " + core::textOf(load.failedRow) + ": " + load.description;
    }

    const clsTXTdata& log_;
    std::array<std::int32_t, kFindings> rows_{};
    std::optional<int> first_;
    std::optional<int> last_;
};

}  // namespace

std::string findingsOf(const clsTXTdata& log) {
    return log.lastLoad().path.empty() ? std::string() : Look(log).text();
}

}  // namespace korvane::logs
