#include "logs/LogLines.h"

#include <algorithm>

#include "platform/RuntimeError.h"

namespace korvane::logs {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr int kErrorOutOfStringSpace = 14;

}  // namespace

bool LogLines::next(LogLine& line) {
    std::size_t end = findEnd();
    while (!atEnd_ && moreIsNeeded(end)) {
        readMore();
        end = findEnd();
    }
    const std::string_view text = bytes_.text();
    if (end == kNone) {
        line = {begin_, text.size(), text.size()};
    } else {
        const bool both = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        line = {begin_, end, end + (both ? 2U : 1U)};
    }
    const bool found = line.next > begin_;
    begin_ = searched_ = line.next;
    return found;
}

// A line feed is searched once, however many lines end before it.
std::size_t LogLines::findEnd() {
    const std::string_view text = bytes_.text();
    if (lineFeed_ < searched_ || (lineFeed_ < text.size() && text[lineFeed_] != '\n')) {
        lineFeed_ = std::min(text.find('\n', std::max(lineFeed_, searched_)), text.size());
    }
    const std::string_view part = text.substr(0, lineFeed_);
    const std::size_t carriageReturn = part.find('\r', searched_);
    searched_ = std::min(carriageReturn, lineFeed_);
    return searched_ < text.size() ? searched_ : kNone;
}

// A CR that is the last byte may be half of a line's end.
bool LogLines::moreIsNeeded(std::size_t end) const {
    return end == kNone || end + 1 == bytes_.text().size();
}

void LogLines::readMore() {
    if (bytes_.text().size() - begin_ > LogBytes::kLongestLine) {
        throw platform::RuntimeError(kErrorOutOfStringSpace, "Out of string space");
    }
    atEnd_ = !readOn_();
}

}  // namespace korvane::logs
