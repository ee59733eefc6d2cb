#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "core/Checked.h"
#include "core/tables/SharedTables.h"

namespace korvane::core {
namespace {

template <class Call>
int errorOf(Call call) {
    try {
        call();
    } catch (const platform::RuntimeError& error) {
        EXPECT_STREQ(error.what(), "Subscript out of range");
        return error.number();
    }
    return 0;
}

TEST(Checked, ReachesEveryElementAndNoFurther) {
    const auto tables = std::make_unique<SharedTables>();
    checked(tables->EEImage, 3000) = 5;
    EXPECT_EQ(tables->EEImage.at(3000), 5);
    EXPECT_EQ(errorOf([&] { checked(tables->EEImage, 3001) = 5; }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { checked(tables->EEImage, -1) = 5; }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { checked(tables->FuelMapIn, std::size_t{320}) = 5; }), platform::kErrorSubscript);
}

TEST(SharedTables, StartAsBeforeTheFirstAnswer) {
    const auto tables = std::make_unique<SharedTables>();
    EXPECT_EQ(tables->Features, -1);
    EXPECT_EQ(tables->SWType, 0);
    EXPECT_EQ(tables->HwVersion, 3.1F);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(tables->EEParams.at(511).value));
    EXPECT_EQ(tables->EETime.at(0), "");
    EXPECT_EQ(tables->MiscBlock.size(), 10U);
    EXPECT_EQ(tables->liveValues.size(), 31U);
    EXPECT_EQ(tables->logDataCount, 0);
}

// Stands for a value of any type, which is never made.
struct Anything {
    template <class T>
    operator T() const;
};

// Of an aggregate: with one initial value more than it has members it can't be made.
template <class T, class... Values>
constexpr std::size_t memberCount() {
    if constexpr (requires { T{std::declval<Values>()..., Anything{}}; }) {
        return memberCount<T, Values..., Anything>();
    } else {
        return sizeof...(Values);
    }
}

template <class Table>
void expectAllNamed() {
    std::set<std::string_view> names;
    std::apply([&](const auto&... member) { (names.insert(member.name), ...); }, kMembers<Table>);
    EXPECT_EQ(names.size(), memberCount<Table>()) << "a member is missing in the list behind " << *names.begin();
}

template <class... Parts>
void expectAllNamed(const TablesOf<Parts...>&) {
    (expectAllNamed<Parts>(), ...);
    EXPECT_EQ(sizeof(SharedTables), sizeof(TablesOf<Parts...>)) << "SharedTables has a member outside its parts";
}

TEST(SharedTables, ScriptsKnowEachMemberOfEachPart) {
    expectAllNamed(*std::make_unique<SharedTables>());
    expectAllNamed<EEParam>();
    expectAllNamed<LiveValue>();
}

TEST(LogTable, ACellNeverStoredHoldsTenNuls) {
    const LogTable log;
    EXPECT_EQ(log.cell(26, 100), std::string(10, '\0'));
    EXPECT_EQ(log.row(0), std::string(270, '\0'));
}

TEST(LogTable, AStoredTextIsPaddedOrCutToTen) {
    LogTable log;
    log.set(0, 0, "12:00:05");
    log.set(1, 0, "12.3456789012");
    log.set(2, 0, "");
    EXPECT_EQ(log.cell(0, 0), "12:00:05  ");
    EXPECT_EQ(log.cell(1, 0), "12.3456789");
    EXPECT_EQ(log.cell(2, 0), "          ");
    EXPECT_EQ(log.row(0).substr(0, 30), "12:00:05  12.3456789          ");
    EXPECT_EQ(log.cell(0, 1), std::string(10, '\0'));
}

TEST(LogTable, TheLastCellIsInRangeAndTheNextIsNot) {
    LogTable log;
    log.set(26, 100, "end");
    EXPECT_EQ(log.row(100).substr(260), "end       ");
    EXPECT_EQ(errorOf([&] { log.set(27, 0, ""); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { log.set(0, 101, ""); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { static_cast<void>(log.cell(-1, 0)); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { static_cast<void>(log.row(-1)); }), platform::kErrorSubscript);
}

}  // namespace
}  // namespace korvane::core
