// The table of the EEPROM's cells is the program's.
#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "core/ParameterNames.h"
#include "documents/Markdown.h"
#include "settings/MiscFields.h"
#include "support/VirtualProgram.h"

namespace korvane::documents {
namespace {

constexpr const char* kSection = "The EEPROM";

std::vector<std::vector<std::string>> rows() {
    return tableIn(document("docs/eeprom.md"), kSection).rows;
}

std::string rowOf(const core::ParameterName& name) {
    return std::to_string(name.address) + " `" + std::string(name.name) + "` " + (name.is16bit ? "16" : "8");
}

TEST(EepromTable, HasAddressNameAndWidthOfEachParameter) {
    std::vector<std::string> expected;
    std::ranges::transform(core::parameterNames(), std::back_inserter(expected), rowOf);
    std::vector<std::string> documented;
    for (const auto& row : rows()) {
        documented.push_back(row.at(0) + ' ' + row.at(1) + ' ' + row.at(2));
    }
    EXPECT_EQ(documented, expected);
}

TEST(EepromTable, SaysWhatEachCellIs) {
    for (const auto& row : rows()) {
        EXPECT_NE(row.at(4), "") << row.at(1);
    }
}

// "1/72 ms" and "0.02 ms".
double numberOf(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    return *end == '/' ? number / std::strtod(end + 1, nullptr) : number;
}

double factorOf(const fields::Field& field, const core::SharedTables& tables) {
    return field.codec.shown(1, tables);
}

// A window shows counts by a factor of four decimals; a word counts in whole units.
TEST(EepromTable, HasTheUnitsOfTheSettingsWindow) {
    support::VirtualProgram program;
    std::map<int, std::string> units;
    for (const auto& row : rows()) {
        units[std::stoi(row.at(0))] = row.at(3);
    }
    int scaled = 0;
    for (const auto& field : settings::miscFields(program.program.frmMisc(), program.tables)) {
        const double factor = factorOf(field, program.tables);
        const int address = program.tables.addresses.*field.first;
        if (factor != 1.0) {
            EXPECT_NEAR(numberOf(units.at(address)), factor, 0.00005) << address;
            ++scaled;
        }
    }
    EXPECT_EQ(scaled, 11);
}

}  // namespace
}  // namespace korvane::documents
