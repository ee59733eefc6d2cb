#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/RawWriteQuestion.h"

namespace korvane::settings {
namespace {

std::string asked(const char* address, int bytes = 1) {
    const auto question = rawWriteQuestion(address, bytes);
    return question ? question->text : std::string();
}

TEST(RawWriteQuestion, AnAddressOfTheEepromAsksNothing) {
    for (const char* address : {"0", "1", "00", "2999", "3000", " 16", "16.9"}) {
        EXPECT_EQ(asked(address), "") << address;
    }
    EXPECT_EQ(asked("2999", 2), "");
}

TEST(RawWriteQuestion, AnAddressThatIsNoneIsAskedFor) {
    for (const char* address : {"", " ", "\t"}) {
        EXPECT_EQ(asked(address), "The address is empty and counts as 0. Write anyway?");
    }
    for (const char* address : {"x", "INJ_OFF", "-"}) {
        EXPECT_EQ(asked(address), "The address is no number and counts as 0. Write anyway?") << address;
    }
}

TEST(RawWriteQuestion, AnAddressAboveTheLastIsAskedFor) {
    const char* const above = "The address is above 3000, the last of the EEPROM. Write anyway?";
    EXPECT_EQ(asked("3001"), above);
    EXPECT_EQ(asked("1e9"), above);
    EXPECT_EQ(asked("3000", 2), above) << "the high byte goes to 3001";
}

TEST(RawWriteQuestion, HasTwoButtonsAndNoBoxToStopIt) {
    const auto question = rawWriteQuestion("", 1);
    ASSERT_TRUE(question);
    EXPECT_EQ(question->yes, "Write");
    EXPECT_EQ(question->no, "Do not write");
    EXPECT_EQ(question->stop, "");
}

}  // namespace
}  // namespace korvane::settings
