#include <gtest/gtest.h>

#include "core/Bytes.h"

namespace korvane::core {
namespace {

TEST(Bytes, AreThoseOfTheLowWord) {
    EXPECT_EQ(lowByte(0x1234), 0x34);
    EXPECT_EQ(highByte(0x1234), 0x12);
    EXPECT_EQ(lowByte(0x56781234), 0x34);
    EXPECT_EQ(highByte(0x56781234), 0x12);
}

TEST(Bytes, OfANegativeNumberAreItsTwosComplement) {
    EXPECT_EQ(lowByte(-2), 0xFE);
    EXPECT_EQ(highByte(-2), 0xFF);
    EXPECT_EQ(lowByte(-32768), 0);
    EXPECT_EQ(highByte(-32768), 0x80);
}

TEST(Bytes, HaveAComplement) {
    EXPECT_EQ(complement('W'), 0xA8);
    EXPECT_EQ(complement(0), 255);
    EXPECT_EQ(complement(255), 0);
}

}  // namespace
}  // namespace korvane::core
