// The tuner's story at the map window as a script: read, raise a block, send, save, close, open, load, compare.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class MapScript : public ScriptBench {
protected:
    [[nodiscard]] std::vector<std::string> run(const std::string& script,
                                               const std::string& ecu = "type=11,drive=idle") const {
        return goodRepliesTo(script, ecu);
    }
    static int number(const std::string& reply) { return std::stoi(reply.substr(3)); }
};

TEST_F(MapScript, ABlockIsRaisedSentSavedAndLoadedBack) {
    const auto file = (folder_.path() / "tune.txt").string();
    const auto replies =
        run("click frmSarn2.btnConnect\n"
            "wait 2000\n"
            "click frmSarn2.btnKartat\n"
            "wait 1000\n"
            "get FuelMapOut(17)\n"  // 4
            "get FuelMapOut(35)\n"
            "get FuelMapOut(36)\n"
            "mouse frmMaps.txtFuel(17) 1\n"  // 7
            "mouse frmMaps.txtFuel(35) 1\n"
            "key frmMaps.txtFuel(35) 187\n"
            "get FuelMapOut(17)\n"  // 10
            "get FuelMapOut(35)\n"
            "get FuelMapOut(36)\n"
            "get frmMaps.txtFuel(17).ForeColor\n"  // 13
            "click frmMaps.btnWriteFuel\n"
            "get frmMaps.Caption\n"  // 15
            "get frmSarn2.TimerRequestData.Enabled\n"
            "file " +
            file +
            "\n"
            "click frmMaps.btnSave\n"
            "close frmMaps\n"
            "set FuelMapOut(17) 0\n"
            "click frmSarn2.btnKartat\n"
            "wait 1000\n"
            "get FuelMapIn(17)\n"  // 23: what the ECU kept
            "set FuelMapOut(17) 1\n"
            "file " +
            file +
            "\n"
            "click frmMaps.btnLoad\n"
            "get FuelMapOut(17)\n"  // 27
            "get FuelMapOut(36)\n"
            "get frmMaps.txtFuel(17).ForeColor\n"
            "messages\n"
            "dialogs\n");
    ASSERT_EQ(replies.size(), 32U);
    const int first = number(replies[4]);
    const int last = number(replies[5]);
    const int behind = number(replies[6]);
    EXPECT_GT(first, 0);
    EXPECT_EQ(number(replies[10]), first + 1);
    EXPECT_EQ(number(replies[11]), last + 1);
    EXPECT_EQ(number(replies[12]), behind);
    EXPECT_EQ(replies[13], "ok 16711680") << "an edited cell is blue";
    EXPECT_EQ(replies[15], "ok \"Fuel kartta lähetetty ja talletettu autoon\"");
    EXPECT_EQ(replies[16], "ok true");
    EXPECT_EQ(number(replies[23]), first + 1);
    EXPECT_EQ(number(replies[27]), first + 1);
    EXPECT_EQ(number(replies[28]), behind);
    EXPECT_EQ(replies[29], "ok 0") << "a loaded cell is black";
    EXPECT_THAT(replies[31], HasSubstr("\"title\":\"Save Settings\""));
    EXPECT_THAT(replies[31], HasSubstr("\"title\":\"Open Settings file\""));
}

// Two halves, both acknowledged, and only then the letter that stores them.
TEST_F(MapScript, ALargeMapGoesOutInTwoHalves) {
    const auto replies =
        run("click frmSarn2.btnConnect\n"
            "wait 2000\n"
            "click frmSarn2.btnKartat\n"
            "wait 1500\n"
            "get frmMaps_Large.Caption\n"  // 4
            "get FuelMapIn(319)\n"
            "key frmMaps_Large.txtFuel(319) 187\n"
            "get FuelMapOut(319)\n"  // 7
            "click frmMaps_Large.btnWriteFuel\n"
            "get frmMaps_Large.Caption\n"  // 9
            "get FuelSendAcks\n"
            "click frmMaps_Large.btnReadFuel\n"
            "wait 1000\n"
            "get FuelMapIn(319)\n",  // 13
            "type=14,drive=idle");
    ASSERT_EQ(replies.size(), 14U);
    EXPECT_EQ(number(replies[7]), number(replies[5]) + 1);
    EXPECT_EQ(replies[9], "ok \"Fuel kartta lähetetty ja talletettu autoon\"");
    EXPECT_EQ(replies[10], "ok 11");
    EXPECT_EQ(number(replies[13]), number(replies[5]) + 1);
}

TEST_F(MapScript, ARefusedHalfIsToldAndNothingIsStored) {
    const auto replies =
        run("click frmSarn2.btnConnect\n"
            "wait 2000\n"
            "click frmSarn2.btnKartat\n"
            "wait 1500\n"
            "messages\n"
            "ecu refuse 246\n"
            "sent\n"
            "click frmMaps_Large.btnWriteFuel\n"
            "messages\n"  // 8
            "get frmMaps_Large.Caption\n"
            "get frmSarn2.TimerRequestData.Enabled\n",
            "type=15,drive=idle");
    ASSERT_EQ(replies.size(), 11U);
    EXPECT_THAT(replies[8], HasSubstr("Tiedon lähetys epäonnistui. Lähetä data uudelleen"));
    EXPECT_THAT(replies[9], StartsWith("ok \"Sent 50% of Inj map "));
    EXPECT_EQ(replies[10], "ok true");
}

}  // namespace
}  // namespace korvane::app
