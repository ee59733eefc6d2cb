// Every operation that stores something, against every fault. With KORVANE_FAULTS=all at each byte; otherwise at a few
// of them. With KORVANE_FAULT_PART=1/2 the second of two parts. With KORVANE_FAULT_ROWS=FOLDER the counts are written
// there, for tools/fault-table.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "FaultRows.h"
#include "settings/SavePlans.h"

namespace korvane::proof {
namespace {

constexpr long kFewTries = 3;

std::string setting(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

Choice choiceFor(const std::vector<Try>& tries) {
    Choice choice;
    if (setting("KORVANE_FAULTS") != "all") {
        choice.step = std::max(1L, static_cast<long>(tries.size()) / kFewTries);
    }
    if (const std::string part = setting("KORVANE_FAULT_PART"); !part.empty()) {
        choice.part = std::stol(part);
        choice.parts = std::stol(part.substr(part.find('/') + 1));
    }
    return choice;
}

void writeRow(const std::string& folder, std::size_t index, const Operation& operation, const FaultRow& row) {
    std::string part = setting("KORVANE_FAULT_PART");
    std::ranges::replace(part, '/', '-');
    std::ofstream file(folder + "/rows" + part + ".txt", std::ios::app);
    file << index << '\t' << operation.name << '\t' << static_cast<int>(row.fault) << '\t' << nameOf(row.fault) << '\t'
         << row.tried;
    for (const int count : row.outcomes) {
        file << '\t' << count;
    }
    file << '\t' << row.silent << '\t' << row.asked << '\t' << row.unseen << '\t' << row.stuck << '\n';
}

class FaultTable : public testing::TestWithParam<std::size_t> {
protected:
    const Operation& operation_ = operations().at(GetParam());
    const Reference reference_ = referenceOf(operation_);
};

TEST_P(FaultTable, StoresOtherValuesThanBefore) {
    EXPECT_NE(reference_.wanted.stored, reference_.before.stored);
    EXPECT_GE(reference_.bytes, 2);
    EXPECT_FALSE(reference_.storings.empty());
}

TEST_P(FaultTable, NothingIsLost) {
    for (const auto& tries : triesOf(operation_, reference_)) {
        const auto some = chosen(tries, choiceFor(tries));
        if (some.empty()) {
            continue;
        }
        const int asking = setting("KORVANE_FAULTS") == "all" ? operation_.asking : 1;
        const FaultRow row = rowOf(operation_, reference_, some, asking);
        EXPECT_THAT(row.failures, testing::IsEmpty());
        if (const std::string folder = setting("KORVANE_FAULT_ROWS"); !folder.empty()) {
            writeRow(folder, GetParam(), operation_, row);
        }
    }
}

TEST(Operations, AreAllOfTheSettingsWindow) {
    const auto ofSettings = [](const Operation& operation) { return operation.name.starts_with("settings: "); };
    constexpr std::ptrdiff_t kThrottleEnds = 2;
    constexpr std::ptrdiff_t kBackedUp = 1;
    constexpr std::ptrdiff_t kVerified = 1;
    EXPECT_EQ(std::ranges::count_if(operations(), ofSettings),
              std::ssize(settings::saveButtons()) + kThrottleEnds + kBackedUp + kVerified);
}

std::string testName(const testing::TestParamInfo<std::size_t>& info) {
    std::string name = operations().at(info.param).name;
    std::ranges::replace_if(
        name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTable, testing::Range(std::size_t{0}, operations().size()), testName);

}  // namespace
}  // namespace korvane::proof
