// docs/faults.md has what tools/fault-table would write now, as far as that can be told without an hour of tries.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "FaultRows.h"
#include "documents/Markdown.h"

namespace korvane::proof {
namespace {

using documents::Table;

// Operation and fault, and how often it was tried.
using Tries = std::map<std::pair<std::string, std::string>, std::string>;

const Table& table() {
    static const Table kTable = tableIn(documents::document("docs/faults.md"), "The table");
    return kTable;
}

constexpr std::size_t kFirstOutcome = 3;
constexpr std::size_t kElsewhere = kFirstOutcome + 4;
constexpr std::size_t kUnsaid = kFirstOutcome + kOutcomes;
constexpr std::size_t kAsked = kUnsaid + 1;
constexpr std::size_t kUnseen = kUnsaid + 2;
constexpr std::size_t kStuck = kUnsaid + 3;

int number(const std::string& cell) {
    return cell.empty() ? 0 : std::stoi(cell);
}

TEST(FaultsDocument, HasEachOperationWithEachFaultAtEachByte) {
    Tries expected;
    for (const Operation& operation : operations()) {
        for (const auto& tries : triesOf(operation, referenceOf(operation))) {
            expected[{operation.name, std::string(nameOf(tries.front().fault))}] = std::to_string(tries.size());
        }
    }
    Tries written;
    for (const auto& row : table().rows) {
        written[{row.at(0), row.at(1)}] = row.at(2);
    }
    EXPECT_EQ(written, expected) << "tools/fault-table writes the table anew";
}

TEST(FaultsDocument, CountsEachTryOnce) {
    ASSERT_EQ(table().header.size(), kUnsaid + 4U);
    for (const auto& row : table().rows) {
        int outcomes = 0;
        for (std::size_t column = kFirstOutcome; column < kUnsaid; ++column) {
            outcomes += number(row.at(column));
        }
        EXPECT_EQ(outcomes, number(row.at(2))) << row.at(0) << ", " << row.at(1);
    }
}

TEST(FaultsDocument, NamesTheOutcomesAndTheFaults) {
    for (int i = 0; i < kOutcomes; ++i) {
        EXPECT_EQ(table().header.at(kFirstOutcome + static_cast<std::size_t>(i)), nameOf(static_cast<Outcome>(i)));
    }
    const auto document = documents::document("docs/faults.md");
    for (const auto& row : table().rows) {
        EXPECT_NE(document.prose.find(row.at(1)), std::string::npos) << row.at(1);
    }
}

bool storesUnread(const std::string& name) {
    const auto found = std::ranges::find(operations(), name, &Operation::name);
    return found != operations().end() && found->storesUnread;
}

TEST(FaultsDocument, HasAWayBackButFromACellThatNobodyHasRead) {
    for (const auto& row : table().rows) {
        if (storesUnread(row.at(0))) {
            continue;
        }
        EXPECT_GT(number(row.at(kAsked)), 0) << row.at(0) << ", " << row.at(1);
        EXPECT_LE(number(row.at(kUnseen)), number(row.at(kElsewhere))) << row.at(0) << ", " << row.at(1);
        EXPECT_LE(number(row.at(kStuck)), number(row.at(kElsewhere))) << row.at(0) << ", " << row.at(1);
    }
}

}  // namespace
}  // namespace korvane::proof
