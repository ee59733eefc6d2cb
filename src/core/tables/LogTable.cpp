#include "core/tables/LogTable.h"

#include <algorithm>

#include "platform/RuntimeError.h"

namespace korvane::core {

void LogTable::set(int column, int row, std::string_view text) {
    char* const cell = characters_.data() + offset(column, row);
    const std::string_view kept = text.substr(0, kCellSize);
    std::fill(std::copy(kept.begin(), kept.end(), cell), cell + kCellSize, ' ');
}

std::string_view LogTable::cell(int column, int row) const {
    return {characters_.data() + offset(column, row), kCellSize};
}

std::string_view LogTable::row(int row) const {
    return {characters_.data() + offset(0, row), kCellSize * kColumns};
}

std::size_t LogTable::offset(int column, int row) {
    if (column < 0 || column >= kColumns || row < 0 || row >= kRows) {
        platform::raiseSubscript();
    }
    return kCellSize * static_cast<std::size_t>(row * kColumns + column);
}

}  // namespace korvane::core
