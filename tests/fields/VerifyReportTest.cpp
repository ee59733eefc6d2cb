#include <gtest/gtest.h>

#include "fields/VerifyReport.h"

namespace korvane::fields {
namespace {

TEST(DifferencesTest, NoneIsVerifiedAndOneIsNamed) {
    Differences differences;
    EXPECT_EQ(differences.words(), "verified");
    EXPECT_FALSE(differences.any());
    differences.add("cell 18", "90", "93");
    EXPECT_EQ(differences.words(), "cell 18 is 90, sent 93");
    EXPECT_TRUE(differences.any());
}

TEST(DifferencesTest, ManyAreCountedAndEightAreNamed) {
    Differences differences;
    differences.add("a", "1", "2");
    differences.add("b", "3", "4");
    EXPECT_EQ(differences.words(), "2 differ: a is 1, sent 2; b is 3, sent 4");
    for (int i = 0; i < 7; ++i) {
        differences.add("c", "5", "6");
    }
    const auto words = differences.words();
    EXPECT_EQ(words.substr(0, 10), "9 differ: ");
    EXPECT_EQ(words.substr(words.size() - 12), "; and 1 more");
}

class VerifyReportTest : public testing::Test {
protected:
    VerifyReport report_;
};

TEST_F(VerifyReportTest, TellsOfThoseThatRunTogether) {
    EXPECT_EQ(report_.Text.get(), "");
    const int fuel = report_.begin("Fuel", {});
    EXPECT_EQ(report_.Text.get(), "Fuel: reading back");
    const int misc = report_.begin("Misc", {});
    report_.end(misc, "verified", false);
    report_.end(fuel, "cell 1 is 2, sent 3", true);
    EXPECT_EQ(report_.Text.get(), "Fuel: cell 1 is 2, sent 3; Misc: verified");
    EXPECT_TRUE(report_.Failed);
    report_.end(report_.begin("Misc", {}), "verified", false);
    EXPECT_EQ(report_.Text.get(), "Misc: verified");
    EXPECT_FALSE(report_.Failed);
}

TEST_F(VerifyReportTest, TheSameThatBeginsAgainTakesThePlaceOfTheOneThatRuns) {
    const int first = report_.begin("Fuel", {});
    const int second = report_.begin("Fuel", {});
    report_.end(second, "verified", false);
    report_.end(first, "cell 1 is 2, sent 3", true);
    EXPECT_EQ(report_.Text.get(), "Fuel: verified");
    EXPECT_FALSE(report_.Failed);
}

TEST_F(VerifyReportTest, SendsAgainWhatHasFailedAndNothingElse) {
    std::string sent;
    const int outer = report_.begin("Fuel", [&] {
        sent += "f";
        report_.end(report_.begin("Fuel", {}), "verified", false);
    });
    report_.end(report_.begin("Misc", [&] { sent += "m"; }), "verified", false);
    report_.sendAgain();
    EXPECT_EQ(sent, "");
    report_.end(outer, "not verified: no answer", true);
    report_.sendAgain();
    EXPECT_EQ(sent, "f");
    report_.sendAgain();
    EXPECT_EQ(sent, "f");
}

struct Told : controls::Object {};

TEST_F(VerifyReportTest, WhatWasVerifiedIsSoUntilTheEcuHasSomethingElse) {
    Told ecu;
    int has = 5;
    const int fuel = report_.begin("Fuel", {});
    report_.end(report_.begin("Misc", {}), "verified", false);
    report_.end(fuel, "verified", false);
    report_.holdsWhile(fuel, ecu, [&has] { return has == 5; });
    ecu.changed(&ecu);
    EXPECT_EQ(report_.Text.get(), "Fuel: verified; Misc: verified");
    has = 6;
    ecu.changed(&ecu);
    EXPECT_EQ(report_.Text.get(), "Fuel: verified before the last changes; Misc: verified");
    has = 5;
    ecu.changed(&ecu);
    EXPECT_EQ(report_.Text.get(), "Fuel: verified before the last changes; Misc: verified");
    report_.end(report_.begin("Fuel", {}), "verified", false);
    EXPECT_EQ(report_.Text.get(), "Fuel: verified");
}

TEST_F(VerifyReportTest, APortThatIsOpenAgainWasClosed) {
    report_.end(report_.begin("Fuel", {}), notVerified(link::ReadEnd::Closed), true);
    EXPECT_EQ(report_.Text.get(), "Fuel: not verified: the port is closed");
    report_.lineOpened();
    EXPECT_EQ(report_.Text.get(), "Fuel: not verified: the port was closed");
    EXPECT_TRUE(report_.Failed);
}

}  // namespace
}  // namespace korvane::fields
