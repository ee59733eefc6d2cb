#include "trend/LogPages.h"

#include <algorithm>

#include "core/Numbers.h"

namespace korvane::trend {

namespace {

// Where a last page begins that is shorter than the pages before it.
constexpr std::int32_t kEarliestLastPage = 2;

std::int32_t sum(std::int32_t row, std::int32_t rows) {
    return core::toInt32(static_cast<double>(row) + rows);
}

std::int32_t difference(std::int32_t row, std::int32_t rows) {
    return core::toInt32(static_cast<double>(row) - rows);
}

LogPage pageBetween(std::int32_t start, std::int32_t end) {
    return {start, end, difference(end, start)};
}

}  // namespace

LogPage pageOf(const LogPage& page, std::int32_t points, std::int32_t maxRows) {
    const auto pagePoints = std::min(points, maxRows);
    const auto end = sum(page.pageStart, pagePoints);
    if (maxRows >= end) {
        return {page.pageStart, end, pagePoints};
    }
    return {difference(maxRows, pagePoints), maxRows, pagePoints};
}

LogPage nextPage(const LogPage& page, std::int32_t points, std::int32_t maxRows) {
    const auto end = sum(page.pageEnd, page.pagePoints);
    if (maxRows >= end) {
        return pageBetween(page.pageEnd, end);
    }
    const auto start = difference(maxRows, points);
    return pageBetween(start < 0 ? kEarliestLastPage : start, maxRows);
}

LogPage previousPage(const LogPage& page, std::int32_t points, std::int32_t maxRows) {
    if (difference(page.pageStart, page.pagePoints) >= 0) {
        return pageBetween(difference(page.pageStart, points), page.pageStart);
    }
    return pageBetween(0, std::min(points, maxRows));
}

}  // namespace korvane::trend
