#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "platform/RuntimeError.h"
#include "trend/TrendTable.h"

namespace korvane::trend {
namespace {

constexpr int kRows = 399;  // 2 to 400

TEST(TrendTable, StartsEmpty) {
    const TrendTable table;
    for (int series = 0; series < 6; ++series) {
        EXPECT_EQ(table.name(series), "");
        EXPECT_EQ(table.unit(series), "");
        EXPECT_FALSE(table.hasSamples(series));
        for (int row = 2; row <= 400; ++row) {
            EXPECT_EQ(table.value(series, row), 0);
        }
    }
}

TEST(TrendTable, ASeriesHasNameAndUnit) {
    TrendTable table;
    table.describe(5, "Lambda", " s");
    EXPECT_EQ(table.name(5), "Lambda");
    EXPECT_EQ(table.unit(5), " s");
    EXPECT_EQ(table.name(4), "");
}

TEST(TrendTable, TheNewestSampleStandsInRow2AndTheOthersMoveUp) {
    TrendTable table;
    for (const double value : {1.5, 2.5, 3.5}) {
        table.push(value, 1);
    }
    EXPECT_EQ(table.value(1, 2), 3.5);
    EXPECT_EQ(table.value(1, 3), 2.5);
    EXPECT_EQ(table.value(1, 4), 1.5);
    EXPECT_EQ(table.value(1, 5), 0);
    EXPECT_TRUE(table.hasSamples(1));
    EXPECT_FALSE(table.hasSamples(0));
    EXPECT_EQ(table.value(0, 2), 0);
}

TEST(TrendTable, After399SamplesTheOldestFallsOut) {
    TrendTable table;
    for (int i = 1; i <= kRows; ++i) {
        table.push(i, 0);
    }
    EXPECT_EQ(table.value(0, 400), 1);
    EXPECT_EQ(table.value(0, 2), 399);
    table.push(400, 0);
    EXPECT_EQ(table.value(0, 400), 2);
    EXPECT_EQ(table.value(0, 2), 400);
}

TEST(TrendTable, EveryRowIsRightAfterAnyNumberOfSamples) {
    TrendTable table;
    for (int pushed = 1; pushed <= 10000; ++pushed) {
        table.push(pushed, 3);
        if (pushed % 97 == 0) {
            for (int row = 2; row <= 400; ++row) {
                ASSERT_EQ(table.value(3, row), std::max(pushed - (row - 2), 0)) << pushed;
            }
        }
    }
}

TEST(TrendTable, RowsComeNewestFirst) {
    TrendTable table;
    for (int i = 1; i <= 500; ++i) {
        table.push(i, 2);
    }
    const auto rows = table.rows(2, 2, 400);
    ASSERT_EQ(rows.size(), 399U);
    EXPECT_EQ(rows.front(), 500);
    EXPECT_EQ(rows.back(), 102);
    EXPECT_EQ(table.rows(2, 10, 12).size(), 3U);
    EXPECT_EQ(table.rows(2, 10, 12).front(), 492);
}

// Whatever the owner of rows sees between two calls of BeforeMove stays as it is.
TEST(TrendTable, TellsBeforeRowsMove) {
    TrendTable table;
    std::span<const double> rows;
    int pushed = 0;
    int seenAt = 0;
    int moves = 0;
    const auto check = [&] {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            ASSERT_EQ(rows[i], std::max(seenAt - static_cast<int>(i), 0)) << pushed;
        }
    };
    const auto look = [&] {
        rows = table.rows(0, 2, 400);
        seenAt = pushed;
    };
    table.BeforeMove = [&] {
        check();
        rows = {};
        ++moves;
    };
    for (pushed = 1; pushed <= 20000; ++pushed) {
        table.push(pushed, 0);
        check();
        if (rows.empty()) {
            look();
        }
    }
    EXPECT_GT(moves, 2);
    EXPECT_LT(moves, 20);
}

TEST(TrendTable, TellsBeforeANameChanges) {
    TrendTable table;
    table.describe(1, "Throttle", " %");
    std::string before;
    table.BeforeMove = [&] { before = table.seen()[1].name; };
    table.describe(1, "Lambda", " s");
    EXPECT_EQ(before, "Throttle");
    EXPECT_EQ(table.seen()[1].name, "Lambda");
}

TEST(TrendTable, SeriesAreSeenAsTheyAre) {
    TrendTable table;
    table.describe(1, "Throttle", " %");
    table.push(7, 1);
    const auto seen = table.seen();
    EXPECT_EQ(seen[1].name, "Throttle");
    EXPECT_EQ(seen[1].unit, " %");
    EXPECT_TRUE(seen[1].hasSamples);
    EXPECT_FALSE(seen[0].hasSamples);
    ASSERT_EQ(seen[1].samples.size(), 399U);
    EXPECT_EQ(seen[1].samples[0], 7);
    EXPECT_EQ(seen[1].samples[1], 0);
}

// Compared with the highest of all rows, between looks at irregular distances and for plots of several widths.
TEST(TrendTable, ThePeakIsThatOfTheRowsWhateverCameBetween) {
    TrendTable table;
    std::mt19937 random(5);
    const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    for (int look = 0; look < 20000; ++look) {
        const int drift = (look / 500 % 3 - 1) * (look % 500);  // rises, stays and falls
        for (int i = below(look % 100 == 0 ? 600 : 8); i > 0; --i) {
            table.push(below(30) + drift, 4);
        }
        const int last = look % 1000 < 900 ? 298 : 2 + below(399);
        const auto rows = table.rows(4, 2, last);
        ASSERT_EQ(table.peak(4, last), std::max(*std::max_element(rows.begin(), rows.end()), 0.0)) << look;
    }
}

TEST(TrendTable, WhatDoesNotExistIsABoundsFailure) {
    TrendTable table;
    EXPECT_THROW(table.push(1, 6), platform::RuntimeError);
    EXPECT_THROW(table.push(1, -1), platform::RuntimeError);
    EXPECT_THROW(table.describe(6, "", ""), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.name(6)), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.value(0, 401)), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.value(0, 1)), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.peak(0, 401)), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.peak(6, 400)), platform::RuntimeError);
}

}  // namespace
}  // namespace korvane::trend
