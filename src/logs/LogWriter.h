// Writes the log: a row for each frame into the buffer of the shared tables, the buffer to the disk when it is full.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "controls/Controls.h"
#include "core/tables/SharedTables.h"
#include "logs/LogCounts.h"
#include "logs/RowWriter.h"
#include "platform/Machine.h"

namespace korvane::logs {

// What a row of the ignition debug window shows: captions of its labels, and of those of the main window.
struct DebugCaptions {
    std::string_view RPMticks;
    std::string_view EnnakkoTicks;
    std::string_view IgnDeb;
    std::string_view SparkDeb;
    std::string_view IgnErr;
    std::string_view SparkErr;
    std::array<std::string_view, 4> values6to9;
    std::array<std::string_view, 2> values10and11;
};

class LogWriter : public RowWriter {
public:
    // Sets the handlers of both controls. The caller decides whether a frame becomes a row.
    LogWriter(platform::Machine& machine, core::SharedTables& tables, controls::CheckBox& chkDatalog,
              controls::TextBox& txtDatalogFile, LogCounts& counts);

    // A row of the live channels. A cell that can't be stored is skipped. Allocates nothing.
    void writeLiveRow() override;
    // A row of the ignition debug window; columns 16 to 26 keep what the buffer held. RuntimeError 9 if logDataCount is
    // no row of the buffer.
    void writeDebugRow(const DebugCaptions& captions);

    // Appends the rows of the buffer to the file that is named now and empties the buffer, whether that works or not. A
    // failure shows "Error saveLogData: ", its description and number; the file is then cut to the size before the
    // batch, if the disk allows it.
    void saveLogData();

private:
    void chkDatalog_Click();
    void nameFile();
    [[nodiscard]] std::string pathOfFile() const;
    void setCell(int column, std::string_view text);
    void setNumber(int column, double value);
    void setTime();
    void rowIsDone();
    void emptyBuffer();
    [[nodiscard]] std::string batch() const;

    platform::Machine& machine_;
    core::SharedTables& tables_;
    controls::CheckBox& chkDatalog_;
    controls::TextBox& txtDatalogFile_;
    LogCounts& counts_;
    std::map<std::string, std::int64_t, std::less<>> onDisk_;  // rows written by path
};

}  // namespace korvane::logs
