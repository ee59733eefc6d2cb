#include <gtest/gtest.h>

#include "core/tables/ModuleReg.h"
#include "support/MemoryPreferences.h"

namespace korvane::core {
namespace {

using support::MemoryPreferences;

TEST(ModuleReg, TheKeyFollowsTheProgramsTitle) {
    EXPECT_EQ(kSettingsKey, "Software\\" + std::string(kProgramTitle) + "\\Settings");
}

TEST(ModuleReg, WhatWasWrittenIsReadBack) {
    MemoryPreferences preferences;
    RegWriteString(preferences, kSettingsKey, "CarFile", "/home/me/car.par");
    EXPECT_EQ(RegReadString(preferences, kSettingsKey, "CarFile"), "/home/me/car.par");
    EXPECT_EQ(preferences.read("Software\\KorvaneTuner\\Settings", "CarFile"), "/home/me/car.par");
}

TEST(ModuleReg, AMissingKeyOrValueIsNothing) {
    MemoryPreferences preferences;
    EXPECT_FALSE(RegReadString(preferences, kSettingsKey, "Port"));
    RegWriteString(preferences, "Other", "Port", "2");
    EXPECT_FALSE(RegReadString(preferences, kSettingsKey, "Port"));
}

TEST(ModuleReg, ATextEndsAtItsFirstNul) {
    MemoryPreferences preferences;
    RegWriteString(preferences, kSettingsKey, "CarFile", std::string_view("ab\0cd", 5));
    EXPECT_EQ(RegReadString(preferences, kSettingsKey, "CarFile"), "ab");
}

TEST(ModuleReg, AnOldTextIsReadAsUtf8) {
    MemoryPreferences preferences;
    preferences.write(kSettingsKey, "CarFile", "\xE4");
    EXPECT_EQ(RegReadString(preferences, kSettingsKey, "CarFile"), "\xC3\xA4");
}

TEST(ModuleReg, ANumberIsReadLenientlyAndOtherwise0) {
    MemoryPreferences preferences;
    EXPECT_EQ(RegReadNumber(preferences, kSettingsKey, "Speed"), 0);
    const auto numberIn = [&](std::string_view text) {
        RegWriteString(preferences, kSettingsKey, "Speed", text);
        return RegReadNumber(preferences, kSettingsKey, "Speed");
    };
    EXPECT_EQ(numberIn("6"), 6);
    EXPECT_EQ(numberIn(" -1 "), -1);
    EXPECT_EQ(numberIn(""), 0);
    EXPECT_EQ(numberIn("fast"), 0);
    EXPECT_EQ(numberIn("99999999999"), 0);
}

}  // namespace
}  // namespace korvane::core
