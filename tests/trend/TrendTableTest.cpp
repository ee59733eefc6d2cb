#include <gtest/gtest.h>

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

TEST(TrendTable, WhatDoesNotExistIsABoundsFailure) {
    TrendTable table;
    EXPECT_THROW(table.push(1, 6), platform::RuntimeError);
    EXPECT_THROW(table.push(1, -1), platform::RuntimeError);
    EXPECT_THROW(table.describe(6, "", ""), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.name(6)), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.value(0, 401)), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(table.value(0, 1)), platform::RuntimeError);
}

}  // namespace
}  // namespace korvane::trend
