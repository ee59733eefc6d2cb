#include "logs/LogWriter.h"

#include <algorithm>
#include <limits>
#include <span>

#include "controls/Color.h"
#include "core/Numbers.h"
#include "core/TimeText.h"
#include "core/files/AppendText.h"
#include "core/files/TextFile.h"
#include "logs/LogGrammar.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {

namespace {

using core::LogTable;
using platform::RuntimeError;

// Columns of a debug row behind the time.
constexpr int kFirstCaption = 1;
constexpr int kFirstWord = 11;
constexpr int kLastCaptions = 14;

}  // namespace

LogWriter::LogWriter(platform::Machine& machine, core::SharedTables& tables, controls::CheckBox& chkDatalog,
                     controls::TextBox& txtDatalogFile, LogCounts& counts)
    : machine_(machine), tables_(tables), chkDatalog_(chkDatalog), txtDatalogFile_(txtDatalogFile), counts_(counts) {
    chkDatalog_.Click = [this] { chkDatalog_Click(); };
    txtDatalogFile_.Change = [this] { nameFile(); };
}

void LogWriter::chkDatalog_Click() {
    const bool on = chkDatalog_.Value == 1;
    if (on && txtDatalogFile_.Text.get().empty()) {
        const auto now = machine_.pump.wallTime();
        txtDatalogFile_.Text = "DATA_" + core::dateStamp(now) + core::hourMinuteStamp(now);
    }
    txtDatalogFile_.Locked = on;
    txtDatalogFile_.BackColor = on ? controls::kButtonFace : controls::kWindowBackground;
}

// Appended as text: a name that begins with a slash is in the folder too.
std::string LogWriter::pathOfFile() const {
    return (machine_.folder / "").string() + txtDatalogFile_.Text.get() + ".txt";
}

void LogWriter::nameFile() {
    const std::string path = txtDatalogFile_.Text.get().empty() ? std::string() : pathOfFile();
    const auto written = onDisk_.find(path);
    counts_.path = path;
    counts_.onDisk = written == onDisk_.end() ? 0 : written->second;
}

void LogWriter::setCell(int column, std::string_view text) {
    tables_.logData.set(column, tables_.logDataCount, text);
}

void LogWriter::setNumber(int column, double value) {
    const core::NumberText text = core::numberText(value);
    const std::string_view kept = text.view().substr(0, LogTable::kCellSize);
    std::array<char, LogTable::kCellSize> cell{};
    std::replace_copy(kept.begin(), kept.end(), cell.begin(), '.', machine_.decimal);
    setCell(column, {cell.data(), kept.size()});
}

void LogWriter::setTime() {
    setCell(kTimeColumn, core::timeText(machine_.pump.wallTime()));
}

void LogWriter::writeLiveRow() {
    if (tables_.logDataCount >= 0 && tables_.logDataCount < LogTable::kRows) {
        setTime();
        for (int column = kTimeColumn + 1; column <= kRateColumn; ++column) {
            const double value = tables_.liveValues[static_cast<std::size_t>(column - 1)].value;
            setNumber(column, value);
        }
    }
    rowIsDone();
}

void LogWriter::writeDebugRow(const DebugCaptions& captions) {
    setTime();
    int column = kFirstCaption;
    for (const auto caption : {captions.RPMticks, captions.EnnakkoTicks, captions.IgnDeb, captions.SparkDeb,
                               captions.IgnErr, captions.SparkErr}) {
        setCell(column++, caption);
    }
    for (const auto caption : captions.values6to9) {
        setCell(column++, caption);
    }
    column = kFirstWord;
    for (const int word : {tables_.IdlePidWord, tables_.BoostPidWord, static_cast<std::int32_t>(tables_.AccelWord)}) {
        setCell(column++, core::numberText(word).view());
    }
    column = kLastCaptions;
    for (const auto caption : captions.values10and11) {
        setCell(column++, caption);
    }
    rowIsDone();
}

void LogWriter::rowIsDone() {
    if (tables_.logDataCount < std::numeric_limits<std::int32_t>::max()) {
        ++tables_.logDataCount;
    }
    if (tables_.logDataCount >= LogTable::kRows) {
        saveLogData();
    }
    counts_.waiting = tables_.logDataCount;
}

void LogWriter::saveLogData() {
    const std::string path = pathOfFile();
    try {
        core::appendText(path, batch());
        counts_.onDisk = onDisk_[path] += tables_.logDataCount;
        emptyBuffer();
    } catch (const RuntimeError& failure) {
        emptyBuffer();
        const std::string why = failure.what() + core::textOf(failure.number());
        machine_.dialogs.show({"", "Error saveLogData: " + why});
    }
}

void LogWriter::emptyBuffer() {
    tables_.logDataCount = 0;
    counts_.waiting = 0;
}

std::string LogWriter::batch() const {
    std::string rows;
    rows.reserve(LogTable::kRows * (LogTable::kCellSize * LogTable::kColumns + core::kLineEnd.size()));
    for (int row = 0; row < tables_.logDataCount; ++row) {
        rows += tables_.logData.row(row);
        rows += core::kLineEnd;
    }
    return rows;
}

}  // namespace korvane::logs
