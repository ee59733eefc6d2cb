// Sorting by a column's head: texts, numbers and dates.
#include <gmock/gmock.h>

#include "MiscBench.h"
#include "settings/ColumnSort.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;

const std::string kZeros(30, '0');

class ColumnSort : public MiscBench {
protected:
    controls::ListView& list(const char* tag, const std::vector<std::string>& cells) {
        list_.addColumn("first", "");
        list_.addColumn("second", tag);
        for (const auto& cell : cells) {
            list_.addRow({"row " + std::to_string(list_.rowCount() + 1), cell});
        }
        return list_;
    }
    std::vector<std::string> sorted(int column) {
        sortByColumn(list_, column);
        std::vector<std::string> cells;
        for (int row = 1; row <= list_.rowCount(); ++row) {
            cells.push_back(list_.Cell(row, column));
        }
        return cells;
    }

    controls::ListView list_{frmMisc_, "lvwSorted"};
};

TEST_F(ColumnSort, TheFirstClickFallsAndTheNextRises) {
    list("Address", {"0002", "0010", "0001"});
    EXPECT_THAT(sorted(2), ElementsAre("0010", "0002", "0001"));
    EXPECT_THAT(sorted(2), ElementsAre("0001", "0002", "0010"));
    EXPECT_EQ(list_.SortKey.get(), 1);
    EXPECT_TRUE(list_.Sorted);
}

TEST_F(ColumnSort, TheOrderTurnsWhicheverColumnIsClicked) {
    list("", {"b", "c", "a"});
    EXPECT_THAT(sorted(2), ElementsAre("c", "b", "a"));
    EXPECT_THAT(sorted(1), ElementsAre("row 1", "row 2", "row 3"));
}

TEST_F(ColumnSort, EqualTextsStayInTheOrderOfTheLastClick) {
    list("", {"x", "x", "x"});
    EXPECT_THAT(sorted(1), ElementsAre("row 3", "row 2", "row 1"));
    sortByColumn(list_, 2);
    EXPECT_EQ(list_.Cell(1, 1), "row 3");
    EXPECT_EQ(list_.Cell(3, 1), "row 1");
}

TEST_F(ColumnSort, TextsAreNotNumbers) {
    list("", {"9", "10", "-1"});
    EXPECT_THAT(sorted(2), ElementsAre("9", "10", "-1"));
}

TEST_F(ColumnSort, NumbersSortByTheirValue) {
    list("Number", {"9", "-12.5", "10", "0", "-2", "100", "-12.25", "0.5", "+3"});
    EXPECT_THAT(sorted(2), ElementsAre("100", "10", "9", "+3", "0.5", "0", "-2", "-12.25", "-12.5"));
    EXPECT_THAT(sorted(2), ElementsAre("-12.5", "-12.25", "-2", "0", "0.5", "+3", "9", "10", "100"));
}

TEST_F(ColumnSort, WhatIsNoNumberSortsByItsText) {
    list("NUMBER", {"9", "many", "10", ""});
    EXPECT_THAT(sorted(2), ElementsAre("many", "10", "9", ""));
}

TEST_F(ColumnSort, DatesSortByTheirDay) {
    list("date", {"5.1.2026", "2025-12-31", "31.12.2025 23:59", "2026-01-05 00:00:01", "soon"});
    EXPECT_THAT(sorted(2), ElementsAre("soon", "2026-01-05 00:00:01", "5.1.2026", "31.12.2025 23:59", "2025-12-31"));
}

TEST_F(ColumnSort, RowsKeepTheirOwnTagsAndTheSelection) {
    list("NUMBER", {"9", "10", "none"});
    list_.setRowTag(1, "nine");
    list_.clickRow(1);
    EXPECT_THAT(sorted(2), ElementsAre("none", "10", "9"));
    EXPECT_EQ(list_.rowTag(3), "nine");
    EXPECT_EQ(list_.rowTag(2), "");
    EXPECT_EQ(list_.SelectedItem.get(), 3);
}

TEST_F(ColumnSort, AColumnThatDoesNotExistIsASubscriptError) {
    list("", {"b", "a"});
    EXPECT_THROW(sortByColumn(list_, 3), platform::RuntimeError);
    EXPECT_FALSE(list_.Sorted);
}

TEST(NumberKey, HasThirtyDigitsOnEitherSideOfThePoint) {
    EXPECT_EQ(numberKey("12.5"), std::string(28, '0') + "12.5" + std::string(29, '0'));
    EXPECT_EQ(numberKey("0"), kZeros + "." + kZeros);
    EXPECT_EQ(numberKey(" 007 "), std::string(29, '0') + "7." + kZeros);
    EXPECT_EQ(numberKey(".5"), kZeros + ".5" + std::string(29, '0'));
    EXPECT_EQ(numberKey("3."), std::string(29, '0') + "3." + kZeros);
}

TEST(NumberKey, OfANegativeNumberHasTheComplementsBehindABlank) {
    EXPECT_EQ(numberKey("-12.5"), " " + std::string(28, '9') + "87.4" + std::string(29, '9'));
}

TEST(NumberKey, KnowsNoOtherText) {
    for (const char* text : {"", "-", ".", "+", "abc", "1e5", "1,5", "1.2.3", "--1", "1 2", "0x1"}) {
        EXPECT_EQ(numberKey(text), std::nullopt) << text;
    }
}

TEST(DateKey, IsTheMomentInFourteenDigits) {
    const std::map<const char*, const char*> moments{{"2026-01-05", "20260105000000"},
                                                     {"5.1.2026 7:30", "20260105073000"},
                                                     {" 2026-1-5  23:59:58 ", "20260105235958"},
                                                     {"29.2.2024", "20240229000000"}};
    for (const auto& [text, key] : moments) {
        EXPECT_EQ(dateKey(text), key) << text;
    }
}

TEST(DateKey, KnowsNoOtherText) {
    for (const char* text : {"", "12:00", "2026-02-29", "2026-13-01", "32.1.2026", "26-01-05", "5.1.26", "2026-01",
                             "2026-01-05 25:00", "2026-01-05 12:60", "2026-01-05 noon", "a-b-c", "2026-01-05-1"}) {
        EXPECT_EQ(dateKey(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace korvane::settings
