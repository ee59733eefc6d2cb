// The pages of the log viewer, worked out by hand.
#include <gtest/gtest.h>
#include <limits>
#include <ostream>

#include "platform/RuntimeError.h"
#include "support/ErrorOf.h"
#include "trend/LogPages.h"

namespace korvane::trend {

std::ostream& operator<<(std::ostream& out, const LogPage& page) {
    return out << page.pageStart << " to " << page.pageEnd << ", " << page.pagePoints << " points";
}

namespace {

using Turn = LogPage (*)(const LogPage&, std::int32_t, std::int32_t);

struct Case {
    const char* what;
    Turn turn;
    LogPage before;
    std::int32_t points;
    std::int32_t maxRows;
    LogPage after;
};

class LogPages : public testing::TestWithParam<Case> {};

TEST_P(LogPages, TurnAsWorkedOut) {
    const auto& each = GetParam();
    EXPECT_EQ(each.turn(each.before, each.points, each.maxRows), each.after) << each.what;
}

INSTANTIATE_TEST_SUITE_P(
    ChoiceOfTheLength, LogPages,
    testing::Values(
        Case{"a long log opens at its start", &pageOf, {0, 0, 0}, 10000, 25000, {0, 10000, 10000}},
        Case{"a log as long as the page fills it", &pageOf, {0, 0, 0}, 500, 500, {0, 500, 500}},
        Case{"a page longer than the log is cut to it", &pageOf, {0, 0, 0}, 10000, 300, {0, 300, 300}},
        Case{"the page keeps its start", &pageOf, {10000, 20000, 10000}, 5000, 25000, {10000, 15000, 5000}},
        Case{"a longer one that runs out moves back",
             &pageOf,
             {20000, 25000, 5000},
             10000,
             25000,
             {15000, 25000, 10000}},
        Case{"a shorter log takes the page along", &pageOf, {15000, 25000, 10000}, 10000, 300, {0, 300, 300}},
        Case{"a log without rows", &pageOf, {0, 0, 0}, 10000, 0, {0, 0, 0}},
        Case{"a log without rows after another", &pageOf, {500, 1000, 500}, 500, 0, {0, 0, 0}},
        Case{"a page before the log stays there", &pageOf, {-10000, 0, 10000}, 10000, 25000, {-10000, 0, 10000}},
        Case{"no length chosen", &pageOf, {100, 600, 500}, 0, 25000, {100, 100, 0}}));

INSTANTIATE_TEST_SUITE_P(
    Next, LogPages,
    testing::Values(
        Case{"a whole page further", &nextPage, {0, 10000, 10000}, 10000, 25000, {10000, 20000, 10000}},
        Case{"up to the last row", &nextPage, {0, 10000, 10000}, 10000, 20000, {10000, 20000, 10000}},
        Case{"the last page is as long and overlaps",
             &nextPage,
             {10000, 20000, 10000},
             10000,
             25000,
             {15000, 25000, 10000}},
        Case{"the last page stays", &nextPage, {15000, 25000, 10000}, 10000, 25000, {15000, 25000, 10000}},
        Case{"a log shorter than the page begins at row 2", &nextPage, {0, 300, 300}, 10000, 300, {2, 300, 298}},
        Case{"and stays there", &nextPage, {2, 300, 298}, 10000, 300, {2, 300, 298}},
        Case{"a log exactly a page long", &nextPage, {0, 500, 500}, 500, 500, {0, 500, 500}},
        Case{"a log of one row ends before it begins", &nextPage, {0, 1, 1}, 500, 1, {2, 1, -1}},
        Case{"a log of two rows has an empty page", &nextPage, {0, 2, 2}, 500, 2, {2, 2, 0}},
        Case{"no log", &nextPage, {0, 0, 0}, 10000, 0, {0, 0, 0}}));

INSTANTIATE_TEST_SUITE_P(
    Previous, LogPages,
    testing::Values(
        Case{"a whole page back", &previousPage, {15000, 25000, 10000}, 10000, 25000, {5000, 15000, 10000}},
        Case{"back to the first row", &previousPage, {10000, 20000, 10000}, 10000, 25000, {0, 10000, 10000}},
        Case{"less than a page is left", &previousPage, {5000, 15000, 10000}, 10000, 25000, {0, 10000, 10000}},
        Case{"the first page stays", &previousPage, {0, 10000, 10000}, 10000, 25000, {0, 10000, 10000}},
        Case{"a full first page even if the one before was shorter",
             &previousPage,
             {2, 300, 298},
             10000,
             300,
             {0, 300, 300}},
        Case{"cut to the log", &previousPage, {0, 10000, 10000}, 10000, 300, {0, 300, 300}},
        Case{"a page of one row steps before the log", &previousPage, {2, 3, 1}, 500, 3, {-498, 2, 500}},
        Case{"a page that ends before it begins", &previousPage, {2, 1, -1}, 500, 1, {-498, 2, 500}},
        Case{"an empty page steps before the log", &previousPage, {0, 0, 0}, 10000, 0, {-10000, 0, 10000}}));

TEST(LogPagesTest, ARowThatNoNumberHoldsIsAnOverflow) {
    constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    const LogPage last{kHighest - 500, kHighest, 500};
    EXPECT_EQ(support::errorOf([&] { static_cast<void>(nextPage(last, 500, kHighest)); }), platform::kErrorOverflow);
    EXPECT_EQ(support::errorOf([&] {
                  static_cast<void>(pageOf({kHighest, 0, 0}, 500, kHighest));
              }),
              platform::kErrorOverflow);
    EXPECT_EQ(support::errorOf([&] {
                  static_cast<void>(nextPage({0, 500, 500}, 500, kLowest));
              }),
              platform::kErrorOverflow);
}

}  // namespace
}  // namespace korvane::trend
