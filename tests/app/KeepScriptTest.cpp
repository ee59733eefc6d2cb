// A tuner's story on the console: edit, read by mistake, undo, send, compare, restore, verify, each as a script does
// it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class KeepScript : public ScriptBench {
public:
    // Runs commands; the reply to one that was given a name is kept under that.
    KeepScript& then(const std::string& command, const std::string& name = {}) {
        script_ += command + "\n";
        names_.push_back(name);
        return *this;
    }

protected:
    void run() {
        const auto replies = goodRepliesTo(script_, "type=11,drive=idle");
        ASSERT_EQ(replies.size(), names_.size());
        for (std::size_t i = 0; i < replies.size(); ++i) {
            replies_[names_[i]] = replies[i].size() > 3 ? replies[i].substr(3) : std::string();
        }
    }
    [[nodiscard]] const std::string& text(const std::string& name) const { return replies_.at(name); }
    [[nodiscard]] int number(const std::string& name) const { return std::stoi(text(name)); }
    // Cell N of an image that the ECU has saved.
    [[nodiscard]] int inEcu(const char* image, std::size_t cell) const {
        return std::stoi(linesOf(folder_.read(image)).at(cell));
    }

private:
    std::string script_;
    std::vector<std::string> names_;
    std::map<std::string, std::string> replies_;
};

constexpr std::size_t kFuel18 = 16 + 17;  // where the EEPROM keeps the 18th fuel cell
constexpr std::size_t kIdleAdvance = 392;

TEST_F(KeepScript, EditReadByMistakeUndoSendCompareRestoreVerify) {
    const auto image = [this](const char* name) { return "ecu save " + (folder_ / name).string(); };
    then("click frmSarn2.btnConnect").then("wait 26000").then("click frmSarn2.btnKartat").then("wait 3000");
    then("get keep(1).reason", "first point");
    then("get FuelMapOut(17)", "before").then(image("before.txt"));
    // Edit.
    then("key frmMaps.txtFuel(17) 187").then("key frmMaps.txtFuel(17) 187");
    then("get FuelMapOut(17)", "edited").then("get history(2).text", "last step");
    then("get frmMaps.UnsentStatus", "unsent");
    // Read by mistake.
    then("click frmMaps.btnReadFuel").then("wait 1500");
    then("get FuelMapOut(17)", "read").then("get history(3).text", "read step");
    // Undo.
    then("key frmMaps.txtFuel(17) 90 2");
    then("get FuelMapOut(17)", "undone").then("get frmMaps.HistoryNote", "note");
    then("get frmMaps.UnsentStatus", "unsent again");
    // Send.
    then("get keep.count", "points before").then("click frmMaps.btnWriteFuel").then("wait 1500");
    then("get frmMaps.StoreStatus", "stored").then(image("sent.txt"));
    then("get keep.count", "points behind").then("get keep(1).reason", "why").then("get keep(1).differs", "differs");
    // Compare.
    then("get keep(1).name", "name");
    then("key frmMaps.txtFuel(17) 68 2").then("get frmCompare.tabWhat.Caption(1)", "ecu and maps");
    then("choose frmCompare.ComboLeft 4").then("choose frmCompare.ComboLeftPoint 0");
    then("get frmCompare.tabWhat.Caption(1)", "point and maps");
    then("choose frmCompare.grdCells 17").then("get frmCompare.lblOne.Caption", "cell");
    // Restore the map, and send it with the verification.
    then("call keep.restore 1 \"fuel\"", "restored");
    then("get FuelMapOut(17)", "back").then("key frmMaps.txtFuel(17) 90 2").then("get FuelMapOut(17)", "not back");
    then("key frmMaps.txtFuel(17) 89 2");
    then("set frmMaps.Verify true").then("click frmMaps.btnWriteFuel").then("wait 1500");
    then("get frmMaps.VerifyResult", "verified").then(image("restored.txt"));
    // A setting, verified, and restored.
    then("click frmSarn2.btnAsetukset").then("type frmMisc.txtIdleAdv(0) 70").then("click frmMisc.btnSaveIdleAdv");
    then("wait 1500").then("get frmMisc.VerifyResult", "setting verified").then(image("setting.txt"));
    then("get keep(1).reason", "why again");
    then("call keep.restore 1 \"settings\"", "settings restored")
        .then(image("end.txt"))
        .then("get keep.notice", "notice");
    run();

    EXPECT_EQ(text("first point"), "\"maps read\"");
    const auto before = text("before");
    const auto edited = std::to_string(number("before") + 2);
    const auto once = std::to_string(number("before") + 1);
    EXPECT_EQ(text("edited"), edited);
    EXPECT_EQ(text("last step"), "\"Fuel: cell 18 from " + once + " to " + edited + "\"");
    EXPECT_EQ(text("unsent"), "\"Not sent: 1 fuel\"");
    EXPECT_EQ(text("read"), before);
    EXPECT_EQ(text("read step"), "\"Fuel: read from the ECU, 1 cell\"");
    EXPECT_EQ(text("undone"), edited);
    EXPECT_EQ(text("note"), "\"Undone: Fuel: read from the ECU, 1 cell\"");
    EXPECT_EQ(text("unsent again"), "\"Not sent: 1 fuel\"");
    EXPECT_THAT(text("stored"), StartsWith("\"Sent fuel: acknowledged, told to store"));
    EXPECT_EQ(inEcu("before.txt", kFuel18), number("before"));
    EXPECT_EQ(inEcu("sent.txt", kFuel18), number("edited"));
    EXPECT_EQ(number("points behind"), number("points before")) << "all of it is in the point before the read";
    EXPECT_EQ(text("why"), "\"before: read\"");
    EXPECT_EQ(text("differs"), "1");
    EXPECT_EQ(text("ecu and maps"), "\"Fuel (0)\"");
    EXPECT_EQ(text("point and maps"), "\"Fuel (1)\"");
    EXPECT_THAT(text("cell"), HasSubstr(before));
    EXPECT_THAT(text("restored"), StartsWith("\"In the working maps now: fuel."));
    EXPECT_EQ(text("back"), before);
    EXPECT_EQ(text("not back"), edited) << "a restore is a step";
    EXPECT_EQ(text("verified"), "\"Fuel: verified\"");
    EXPECT_EQ(inEcu("restored.txt", kFuel18), number("before"));
    EXPECT_EQ(text("setting verified"), "\"Idle Ignition: verified\"");
    EXPECT_EQ(inEcu("setting.txt", kIdleAdvance), 70);
    EXPECT_EQ(text("why again"), "\"before: Idle Ignition\"");
    EXPECT_EQ(text("settings restored"), "\"Restored: 1 setting read back, all agree.\"");
    EXPECT_EQ(folder_.read("end.txt"), folder_.read("before.txt")) << "the whole EEPROM is what it was";
}

}  // namespace
}  // namespace korvane::app
