#include "logs/clsTXTdata.h"

#include <algorithm>
#include <new>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/TextEncoding.h"
#include "logs/LogCells.h"
#include "logs/LogLines.h"
#include "logs/LogNumber.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {

namespace {

using core::LiveChannel;
using platform::RuntimeError;

constexpr double kRpmScale = 10;          // logged value / shown value
constexpr double kPressureScale = 100;    // shown value / logged value
constexpr std::uint32_t kUsualRate = 15;  // of a row that is alone in its second
constexpr double kLiveSpeed = 16;

std::string_view nameOf(int column) {
    const auto index = static_cast<std::size_t>(column);
    return index < kColumnNames.size() ? kColumnNames[index] : std::string_view();
}

// What a scaled column shows for the logged text; 0 for none.
double scaled(std::string_view text, int column, char decimal) {
    const double logged = text.empty() ? 0 : numberOf(text, decimal);
    return core::finite(column == kRpmColumn ? logged / kRpmScale : logged * kPressureScale);
}

// Most texts are plain numbers, which the quick path converts.
double valOf(std::string_view text) {
    double number = 0;
    return isNumber(text, '.', number) ? number : core::val(text);
}

}  // namespace

bool clsTXTdata::LoadFromFile(const std::filesystem::path& path) {
    reset();
    load_.path = path;
    try {
        bytes_.open(path);
        itemCount_ = 0;
        load_.opened = true;
        readRows();
    } catch (const RuntimeError& failure) {
        noteFailure(failure);
    } catch (const std::bad_alloc&) {
        noteFailure({kErrorOutOfMemory, "Out of memory"});
    }
    bytes_.close();
    return false;
}

void clsTXTdata::noteFailure(const RuntimeError& failure) {
    load_.failure = failure.number();
    load_.description = failure.what();
    load_.failedRow = load_.opened ? itemCount_ + 1 : 0;
}

void clsTXTdata::reset() {
    bytes_.clear();
    columns_.clear();
    starts_.assign(1, 0);
    rates_.clear();
    count_ = 0;
    speed_ = 0;
    lastTime_ = nameOf(kTimeColumn);
    stage_ = Stage::Done;
    load_ = {};
}

void clsTXTdata::readRows() {
    LogLines lines(bytes_, [this] {
        const bool more = bytes_.readBlock();
        if (loading) {
            loading(bytes_.text().size(), bytes_.fileSize());
        }
        return more;
    });
    LogLine line;
    while (lines.next(line)) {
        load_.lastLineEnded = line.hasEnd();
        addRow(line);
        ++itemCount_;
    }
}

void clsTXTdata::addRow(const LogLine& line) {
    if (itemCount_ == kReadRows) {
        platform::raiseSubscript();
    }
    starts_.push_back(static_cast<std::uint32_t>(line.next));
    const std::string_view text = bytes_.text().substr(line.begin, line.end - line.begin);
    stage_ = Stage::Cells;
    if (countCells(text) > static_cast<std::size_t>(kReadColumns)) {
        platform::raiseSubscript();
    }
    addRate(cellOf(text, kTimeColumn));
    stage_ = Stage::Rate;
    static_cast<void>(scaled(cellOf(text, kRpmColumn), kRpmColumn, decimal_));
    stage_ = Stage::Rpm;
    static_cast<void>(scaled(cellOf(text, kPressureColumn), kPressureColumn, decimal_));
    stage_ = Stage::Done;
}

// Counts the rows that have the same time.
void clsTXTdata::addRate(std::string_view time) {
    if (time == lastTime_) {
        ++count_;
    } else {
        speed_ = count_ == 0 ? kUsualRate : count_;
        count_ = 0;
    }
    lastTime_ = time;
    rates_.push_back(std::max(count_, speed_));
}

std::int32_t clsTXTdata::storedRows() const {
    return static_cast<std::int32_t>(starts_.size()) - 1;
}

std::string_view clsTXTdata::line(std::int32_t row) const {
    const std::size_t begin = core::checked(starts_, row - 1);
    std::string_view text = bytes_.text().substr(begin, core::checked(starts_, row) - begin);
    while (text.ends_with('\n') || text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    return text;
}

bool clsTXTdata::isScaled(int column, std::int32_t row) const {
    const bool done = row < storedRows() || stage_ == Stage::Done;
    return (column == kRpmColumn && (done || stage_ == Stage::Rpm)) || (column == kPressureColumn && done);
}

LogCell clsTXTdata::Data(int column, int row) const {
    if (column < 0 || column >= kReadColumns || row < 0 || row > kReadRows) {
        platform::raiseSubscript();
    }
    if (row == 0) {
        return nameOf(column);
    }
    if (row > storedRows()) {
        return 0.0;
    }
    if (column == kRateColumn && static_cast<std::size_t>(row) <= rates_.size()) {
        return static_cast<double>(rates_[static_cast<std::size_t>(row) - 1]);
    }
    const std::string_view text = cellOf(line(row), column);
    if (isScaled(column, row)) {
        return scaled(text, column, decimal_);
    }
    return text.empty() ? LogCell(0.0) : LogCell(text);
}

std::string clsTXTdata::TData(int column, int row) const {
    const LogCell cell = Data(column, row);
    if (const auto* const text = std::get_if<std::string_view>(&cell)) {
        return core::isUtf8(*text) ? std::string(*text) : core::fromWindows1252(*text);
    }
    return textOf(std::get<double>(cell));
}

std::string clsTXTdata::textOf(double number) const {
    return core::withDecimal(core::textOf(number), decimal_);
}

double clsTXTdata::number(int column, int row) const {
    const LogCell cell = Data(column, row);
    const auto* const text = std::get_if<std::string_view>(&cell);
    return text == nullptr ? std::get<double>(cell) : numberOf(*text, decimal_);
}

double clsTXTdata::valAt(int column, int row) const {
    const LogCell cell = Data(column, row);
    const auto* const text = std::get_if<std::string_view>(&cell);
    return valOf(text == nullptr ? textOf(std::get<double>(cell)) : *text);
}

const LogColumn& clsTXTdata::column(int column, CellReading reading) const {
    const auto known = columns_.find({column, reading});
    if (known != columns_.end()) {
        return known->second;
    }
    return columns_.emplace(std::pair(column, reading), convert(column, reading)).first->second;
}

LogColumn clsTXTdata::convert(int column, CellReading reading) const {
    static_cast<void>(Data(column, 0));
    LogColumn converted;
    converted.values.resize(static_cast<std::size_t>(itemCount_) + 1);
    std::int32_t row = 1;
    try {
        for (; row <= itemCount_; ++row) {
            converted.values[static_cast<std::size_t>(row)] =
                reading == CellReading::Val ? valAt(column, row) : core::toSingle(number(column, row));
        }
    } catch (const RuntimeError& failure) {
        converted.failedRow = row;
        converted.failure = failure.number();
    }
    return converted;
}

void clsTXTdata::getTrendData(TrendTarget& target, bool all, int series, int column) const {
    if (all) {
        target.table = this;
        return;
    }
    auto& cells = core::checked(target.series, series);
    for (int row = 1; row <= TrendTarget::kLastRow; ++row) {
        cells[static_cast<std::size_t>(row)] = Data(column, row);
    }
}

bool clsTXTdata::getNextSimDataPacket() {
    const auto value = [this](LiveChannel channel) -> double& {
        return live_.liveValues[core::indexOf(channel)].value;
    };
    value(LiveChannel::Rpm) = kRpmScale * number(kRpmColumn, replayRow_);
    value(LiveChannel::Pressure) = number(kPressureColumn, replayRow_) / kPressureScale;
    for (std::size_t i = 1; i < core::indexOf(LiveChannel::UpdateSpeed); ++i) {
        const auto channel = static_cast<LiveChannel>(i);
        if (channel != LiveChannel::Pressure) {
            value(channel) = number(columnOf(channel), replayRow_);
        }
    }
    value(LiveChannel::UpdateSpeed) = kLiveSpeed;
    ++replayRow_;
    if (replayRow_ >= itemCount_) {
        replayRow_ = 1;
        return false;
    }
    return true;
}

double clsTXTdata::getSimSpeed() const {
    return number(kRateColumn, replayRow_);
}

}  // namespace korvane::logs
