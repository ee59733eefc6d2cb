// The steady agent as a script: a drive on the virtual ECU, a fault of the sensor, the way back, and a new start of the
// program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

class SteadyScript : public ScriptBench {
protected:
    static constexpr const char* kBegin =
        "click frmSarn2.btnConnect\n"
        "wait 30000\n"
        "click frmSarn2.btnKartat\n"
        "wait 3000\n"
        "set frmMaps.chkInjAnal.Value 1\n"
        "set frmMaps.chkSteadyAgent.Value 1\n"
        "get clsSteadyAgent.State\n"  // 6
        "wait 800000\n"
        "get clsSteadyAgent.State\n"  // 8
        "get history(1).text\n";
};

TEST_F(SteadyScript, ItWorksStopsOnAFaultAndTheKeyPutsAllBack) {
    const auto replies = goodRepliesTo(std::string(kBegin) +
                                           "ecu lambdafault stuck\n"
                                           "wait 60000\n"
                                           "get clsSteadyAgent.State\n"  // 12
                                           "get clsSteadyAgent.StopReason\n"
                                           "get frmMaps.chkSteadyAgent.Value\n"
                                           "key frmMaps.txtFuel(3) 119\n"
                                           "wait 5000\n"
                                           "get clsSteadyAgent.StopReason\n"  // 17
                                           "get frmMaps.UnsentStatus\n",
                                       "type=11,drive=lap");
    ASSERT_EQ(replies.size(), 19U);
    EXPECT_EQ(replies[6], "ok \"waiting for proof of life\"");
    EXPECT_EQ(replies[8], "ok \"working\"");
    EXPECT_THAT(replies[9], testing::StartsWith("ok \"Fuel: steady agent, "));
    EXPECT_EQ(replies[12], "ok \"stopped\"");
    EXPECT_THAT(replies[13], testing::StartsWith("ok \"lambda "));
    EXPECT_EQ(replies[14], "ok 0");
    EXPECT_EQ(replies[17], "ok \"put back by the tuner\"");
    EXPECT_EQ(replies[18], "ok \"\"") << "the ECU has what its EEPROM has";
}

TEST_F(SteadyScript, ASilentEcuStopsIt) {
    const auto replies = goodRepliesTo(std::string(kBegin) +
                                           "ecu silent 1\n"
                                           "wait 8000\n"
                                           "get clsSteadyAgent.State\n"  // 12
                                           "get clsSteadyAgent.StopReason\n"
                                           "ecu silent 0\n"
                                           "wait 8000\n"
                                           "get clsSteadyAgent.State\n",  // 16
                                       "type=11,drive=lap");
    ASSERT_EQ(replies.size(), 17U);
    EXPECT_EQ(replies[12], "ok \"putting back: waits until the ECU answers\"");
    EXPECT_EQ(replies[13], "ok \"link late\"");
    EXPECT_EQ(replies[16], "ok \"stopped\"");
}

TEST_F(SteadyScript, TheBaselineOutlivesTheProgram) {
    static_cast<void>(goodRepliesTo(kBegin, "type=11,drive=lap"));
    const auto replies = goodRepliesTo(
        "click frmSarn2.btnConnect\n"
        "wait 30000\n"
        "click frmSarn2.btnKartat\n"
        "wait 3000\n"
        "get FuelMapOut(60)\n"  // 4
        "set frmMaps.chkOnlineChanges.Value 1\n"
        "key frmMaps.txtFuel(60) 187\n"
        "key frmMaps.txtFuel(60) 187\n"
        "key frmMaps.txtFuel(60) 119\n"
        "wait 2000\n"
        "get FuelMapOut(60)\n"  // 10
        "get clsSteadyAgent.Cell(60).Baseline\n"
        "get frmMaps.HistoryNote\n",
        "type=11,drive=idle");
    ASSERT_EQ(replies.size(), 13U);
    EXPECT_EQ(replies[10], replies[4]);
    EXPECT_EQ(replies[11], replies[4]);
}

TEST_F(SteadyScript, TheSameDriveGivesTheSameLog) {
    const auto logOfARun = [this] {
        static_cast<void>(goodRepliesTo(kBegin, "type=11,drive=lap"));
        auto text = folder_.read("SteadyAgent2026-01-05.txt");
        std::filesystem::remove(folder_.path() / "SteadyAgent2026-01-05.txt");
        std::filesystem::remove(folder_.path() / "steady-11-3386.baseline");
        return text;
    };
    const auto first = logOfARun();
    EXPECT_THAT(first, testing::HasSubstr(" CELL "));
    EXPECT_EQ(logOfARun(), first);
}

}  // namespace
}  // namespace korvane::app
