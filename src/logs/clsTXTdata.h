// A log file in memory: what its cells hold, and its replay into the live channels.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "core/tables/LiveTable.h"
#include "logs/LogBytes.h"
#include "logs/LogGrammar.h"
#include "logs/LogLines.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {

// A text of the log, valid until the next load, or a number.
using LogCell = std::variant<std::string_view, double>;

// How a cell becomes a number.
enum class CellReading {
    Number,  // by the regional settings, in single precision; RuntimeError 13 for any other text, 6 for one too large
    Val      // what core::val() makes of the cell's text; never fails
};

// A column as numbers, one for each row from row 0 (its name, 0 here) to the last one loaded.
struct LogColumn {
    std::vector<double> values;
    // The first row whose cell is no number, and the failure's number; 0 if there is none. Values from it on are 0.
    std::int32_t failedRow = 0;
    int failure = 0;
};

// How a load ended.
struct LogLoad {
    std::filesystem::path path;
    bool opened = false;
    int failure = 0;  // number of the failure that ended it, 0 for none
    std::string description;
    std::int32_t failedRow = 0;  // the row that it failed at, 0 if the file was not opened
    bool lastLineEnded = true;   // the last line read has a line end
};

class clsTXTdata {
public:
    // What getTrendData() fills: cells by series and row (0 to 400, of which it fills 1 to 400), or the table itself.
    struct TrendTarget {
        static constexpr int kSeries = 5;
        static constexpr int kLastRow = 400;
        std::array<std::array<LogCell, kLastRow + 1>, kSeries> series;
        const clsTXTdata* table = nullptr;
    };

    // `decimal` is the separator of the regional settings. Replay writes to `live`.
    clsTXTdata(core::LiveTable& live, char decimal) : live_(live), decimal_(decimal) {}

    // Replaces all rows. Any failure ends the load without a message: the rows before it stay, and the failing row's
    // cells as far as they came. A file that can't be opened leaves ItemCount as it was, above rows of zeros. The
    // replay's row stays in all cases. Always false.
    bool LoadFromFile(const std::filesystem::path& path);

    // Rows loaded; the first is row 1.
    [[nodiscard]] std::int32_t ItemCount() const { return itemCount_; }

    // The cell as text in UTF-8; numbers have the regional separator. Columns 0 to 30, rows 0 (the names) to 100000;
    // any other raises RuntimeError 9. A cell that is missing in the file is "0".
    [[nodiscard]] std::string TData(int column, int row) const;
    // The same cell, not converted to text.
    [[nodiscard]] LogCell Data(int column, int row) const;
    // The same cell by the regional settings: RuntimeError 13 for a text that is no number, 6 for one too large.
    [[nodiscard]] double number(int column, int row) const;

    // All cells of a column at once, converted when they are first asked for. Valid until the next load. RuntimeError 9
    // for a column that does not exist.
    [[nodiscard]] const LogColumn& column(int column, CellReading reading) const;

    // Rows 1 to 400 of a column, or with `all` the whole table. RuntimeError 9 for a series or column out of range.
    void getTrendData(TrendTarget& target, bool all, int series, int column) const;

    // The live channels from the replay's row, which then moves on. False when the file has run out: the last row is
    // never replayed, and the next is row 1. A cell that is no number raises RuntimeError 13; channels before it in the
    // order 0, 4, 1, 2, 3, 5 and on are then set, and the row is replayed again.
    bool getNextSimDataPacket();
    // Rows a second at the replay's row; RuntimeError 13 for a text.
    [[nodiscard]] double getSimSpeed() const;
    [[nodiscard]] std::int32_t replayRow() const { return replayRow_; }

    // For code that reports on the file.
    [[nodiscard]] const LogLoad& lastLoad() const { return load_; }
    [[nodiscard]] char decimal() const { return decimal_; }
    // Rows that have cells: ItemCount, and the failing row if it came that far.
    [[nodiscard]] std::int32_t storedRows() const;
    // A stored row as the file has it, without its line end.
    [[nodiscard]] std::string_view line(std::int32_t row) const;

    // Called during a load, for each block: bytes read, and the file's size.
    std::function<void(std::uintmax_t read, std::uintmax_t size)> loading;

private:
    // How far the row that ended the load came.
    enum class Stage { Cells, Rate, Rpm, Done };

    void reset();
    void noteFailure(const platform::RuntimeError& failure);
    void readRows();
    void addRow(const LogLine& line);
    void addRate(std::string_view time);
    [[nodiscard]] bool isScaled(int column, std::int32_t row) const;
    [[nodiscard]] std::string textOf(double number) const;
    [[nodiscard]] double valAt(int column, int row) const;
    [[nodiscard]] LogColumn convert(int column, CellReading reading) const;

    core::LiveTable& live_;
    char decimal_;
    LogBytes bytes_;
    std::vector<std::uint32_t> starts_;  // of each stored row's line, and behind the last
    std::vector<std::uint32_t> rates_;   // column 24 of each row that came so far
    std::uint32_t count_ = 0;            // rows of the second that is being read, and of the one before
    std::uint32_t speed_ = 0;
    std::string lastTime_;  // column 0 of the row before; empty for none
    std::int32_t itemCount_ = 0;
    std::int32_t replayRow_ = 1;
    Stage stage_ = Stage::Done;  // of the last stored row
    LogLoad load_;
    mutable std::map<std::pair<int, CellReading>, LogColumn> columns_;
};

}  // namespace korvane::logs
