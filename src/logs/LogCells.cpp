#include "logs/LogCells.h"

#include <algorithm>
#include <cstdint>

#include "logs/LogGrammar.h"

namespace korvane::logs {

namespace {

// At most 255, so that the count of a block fits a byte and the compiler can vectorise the loop.
constexpr std::size_t kBlock = 240;

std::uint8_t cellsBeginning(std::string_view line, std::size_t first, std::size_t end) {
    std::uint8_t count = 0;
    for (std::size_t i = first; i < end; ++i) {
        const int begins = static_cast<int>(line[i] != kBlank) & static_cast<int>(line[i - 1] == kBlank);
        count = static_cast<std::uint8_t>(count + begins);
    }
    return count;
}

// Whether the cell of `column` begins where a writer puts it.
bool standsInPlace(std::string_view line, std::size_t column) {
    const std::size_t place = column * kCellSize;
    return column > 0 && place < line.size() && line[place] != kBlank && line[place - 1] == kBlank &&
           countCells(line.substr(0, place)) == column;
}

}  // namespace

std::string_view takeCell(std::string_view& rest) {
    std::size_t begin = 0;
    while (begin < rest.size() && rest[begin] == kBlank) {
        ++begin;
    }
    rest.remove_prefix(begin);
    const std::string_view cell = rest.substr(0, rest.find(kBlank));
    rest.remove_prefix(cell.size());
    return cell;
}

std::size_t countCells(std::string_view line) {
    std::size_t count = !line.empty() && line.front() != kBlank ? 1 : 0;
    for (std::size_t first = 1; first < line.size(); first += kBlock) {
        count += cellsBeginning(line, first, std::min(first + kBlock, line.size()));
    }
    return count;
}

std::string_view cellOf(std::string_view line, int column) {
    const auto cells = static_cast<std::size_t>(column);
    if (standsInPlace(line, cells)) {
        line.remove_prefix(cells * kCellSize);
        return takeCell(line);
    }
    std::string_view cell = takeCell(line);
    for (std::size_t i = 0; i < cells && !cell.empty(); ++i) {
        cell = takeCell(line);
    }
    return cell;
}

}  // namespace korvane::logs
