#include <gtest/gtest.h>

#include "console/ConsoleError.h"
#include "console/names/Names.h"
#include "platform/RuntimeError.h"

namespace korvane::console {
namespace {

class NamesTest : public testing::Test {
protected:
    NamesTest() {
        names.add("Speed", {}, [](Names::Indices) { return Json(7); });
        names.add(
            "Cells()", {{1, 9}}, [this](Names::Indices at) { return Json(cells.at(static_cast<std::size_t>(at[0]))); },
            [this](Names::Indices at, const Json& value) {
                cells.at(static_cast<std::size_t>(at[0])) = static_cast<int>(*value.asWhole());
            });
        names.add("log()", {{0, 2}, {0, 5}}, [](Names::Indices at) { return Json(at[0] * 10 + at[1]); });
        names.add("shared.stats().Sum", {{0, 3}}, [](Names::Indices at) { return Json(at[0] + 100); });
        names.addProcedure("Add", "ONE TWO [THREE]", [](std::span<const Json> arguments) -> std::optional<Json> {
            std::int64_t sum = 0;
            for (const auto& argument : arguments) {
                sum += *argument.asWhole();
            }
            return sum;
        });
        names.addProcedure("Fail", "", [](std::span<const Json>) -> std::optional<Json> {
            throw platform::RuntimeError(9, "Subscript out of range");
        });
    }

    std::string get(std::string_view path) {
        return outcome([&] {
            const auto value = names.get(parsePath(path));
            return value ? writeJson(*value) : "(unknown)";
        });
    }
    std::string set(std::string_view path, const Json& value) {
        return outcome([&] { return names.set(parsePath(path), value) ? "set" : "(unknown)"; });
    }
    std::string call(const std::string& name, const Json::Array& arguments) {
        return outcome([&] { return writeJson(names.call(name, arguments).value_or(Json("nothing"))); });
    }

    template <class Action>
    static std::string outcome(Action&& action) {
        try {
            return action();
        } catch (const ConsoleError& error) {
            return error.what();
        }
    }

    std::array<int, 10> cells{};
    Names names;
};

TEST_F(NamesTest, ValuesAreReadByName) {
    EXPECT_EQ(get("Speed"), "7");
    EXPECT_EQ(get("log(2,3)"), "23");
    EXPECT_EQ(get("shared.stats(3).Sum"), "103");
    EXPECT_EQ(get("speed"), "(unknown)");
    EXPECT_EQ(get("Speed#2"), "(unknown)");
}

TEST_F(NamesTest, ValuesAreSetWhereThatMakesSense) {
    EXPECT_EQ(set("Cells(9)", 4), "set");
    EXPECT_EQ(get("Cells(9)"), "4");
    EXPECT_EQ(set("Speed", 4), "Speed can only be read");
    EXPECT_EQ(set("Nothing", 4), "(unknown)");
}

TEST_F(NamesTest, WrongIndicesAreToldWithTheRange) {
    EXPECT_EQ(get("Cells(0)"), "Cells(0) does not exist: the index must be 1 to 9");
    EXPECT_EQ(get("Cells(10)"), "Cells(10) does not exist: the index must be 1 to 9");
    EXPECT_EQ(set("Cells(10)", 1), "Cells(10) does not exist: the index must be 1 to 9");
    EXPECT_EQ(get("Cells"), "Cells() needs an index: 1 to 9");
    EXPECT_EQ(get("log(1)"), "log() needs an index: 0 to 2, 0 to 5");
    EXPECT_EQ(get("Speed(1)"), "Speed takes no index");
    EXPECT_EQ(get("shared(1).stats.Sum"), "shared.stats().Sum needs an index: 0 to 3");
}

TEST_F(NamesTest, ProceduresAnswerAndCheckTheirArguments) {
    EXPECT_EQ(call("Add", {1, 2}), "3");
    EXPECT_EQ(call("Add", {1, 2, 3}), "6");
    EXPECT_EQ(call("Add", {1}), "Add takes the arguments ONE TWO [THREE]");
    EXPECT_EQ(call("Add", {1, 2, 3, 4}), "Add takes the arguments ONE TWO [THREE]");
    EXPECT_EQ(call("Fail", {}), "Fail: Subscript out of range");
    EXPECT_EQ(call("Nothing", {}), "no procedure is named Nothing");
}

TEST_F(NamesTest, WhatIsMissingIsToldWithWhatThereIs) {
    EXPECT_EQ(names.missing(parsePath("nobody.x")), "no open window, table or value is named nobody");
    EXPECT_EQ(names.missing(parsePath("shared.x")), "shared.x does not exist (shared has stats.Sum)");
}

}  // namespace
}  // namespace korvane::console
