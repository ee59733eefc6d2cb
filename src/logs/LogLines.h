// The lines of a log file, one by one as they are read. CR, LF and CR LF each end a line; the last may have no end.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

#include "logs/LogBytes.h"

namespace korvane::logs {

struct LogLine {
    std::size_t begin = 0;
    std::size_t end = 0;   // without the line's end
    std::size_t next = 0;  // where the next line begins
    [[nodiscard]] bool hasEnd() const { return next > end; }
};

class LogLines {
public:
    // `readOn` reads a block more and says whether there was one.
    LogLines(LogBytes& bytes, std::function<bool()> readOn) : bytes_(bytes), readOn_(std::move(readOn)) {}

    // False at the end of the file. Raises RuntimeError for a line of more than LogBytes::kLongestLine.
    [[nodiscard]] bool next(LogLine& line);

private:
    // Where the line that begins at `begin_` ends; npos if the bytes read don't show it.
    [[nodiscard]] std::size_t findEnd();
    [[nodiscard]] bool moreIsNeeded(std::size_t end) const;
    void readMore();

    LogBytes& bytes_;
    std::function<bool()> readOn_;
    std::size_t begin_ = 0;
    std::size_t searched_ = 0;  // there is no line end between begin_ and this place
    std::size_t lineFeed_ =
        0;  // the first at or behind begin_ or, if there is none, the end of the bytes searched for it
    bool atEnd_ = false;
};

}  // namespace korvane::logs
