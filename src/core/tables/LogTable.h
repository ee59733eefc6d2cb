// Rows of a datalog as finished text, waiting for the disk.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace korvane::core {

// 27 columns (0 to 26) by 101 rows (0 to 100) of cells of ten characters. A cell never stored holds ten NUL characters.
// A column or row out of range raises RuntimeError 9.
class LogTable {
public:
    static constexpr int kColumns = 27;
    static constexpr int kRows = 101;
    static constexpr std::size_t kCellSize = 10;

    // Stores `text` padded with blanks at its end, or cut at ten bytes.
    void set(int column, int row, std::string_view text);

    [[nodiscard]] std::string_view cell(int column, int row) const;
    // The 27 cells of a row with nothing between them: 270 characters.
    [[nodiscard]] std::string_view row(int row) const;

private:
    [[nodiscard]] static std::size_t offset(int column, int row);

    std::array<char, kCellSize * kColumns * kRows> characters_{};
};

}  // namespace korvane::core
