#include "trend/LogCursor.h"

#include <algorithm>

#include "core/Numbers.h"

namespace korvane::trend {

bool LogCursor::showsRows() const {
    return page_.maxX > 0 && page_.right > page_.left && page_.lastShown() >= page_.firstShown();
}

void LogCursor::mark(double distance) {
    row_.reset();
    if (showsRows()) {
        const double row = core::roundHalfEven(page_.firstRow + distance);
        row_ = core::toInt32(std::clamp(row, page_.firstShown(), page_.lastShown()));
    }
}

void LogCursor::setPage(const Page& page) {
    const auto before = page_.firstRow;
    page_ = page;
    if (row_) {
        mark(static_cast<double>(*row_) - before);
    }
}

void LogCursor::moveTo(double x) {
    mark((page_.right - x) * page_.maxX / (page_.right - page_.left));
}

void LogCursor::moveLeft(std::int32_t rows) {
    if (row_) {
        mark(static_cast<double>(*row_) - page_.firstRow + rows);
    } else {
        mark(rows > 0 ? 0 : page_.maxX);
    }
}

double LogCursor::x() const {
    if (!row_) {
        return 0;
    }
    const double distance = static_cast<double>(*row_) - page_.firstRow;
    return page_.right - distance * (page_.right - page_.left) / page_.maxX;
}

}  // namespace korvane::trend
