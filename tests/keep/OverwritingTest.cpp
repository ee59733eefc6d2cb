// What is overwritten that nobody has read, and edits that bytes from the ECU replace.
#include <gmock/gmock.h>

#include "PointSamples.h"
#include "keep/Keeper.h"
#include "keep/point/Overwriting.h"
#include "link/Frames.h"
#include "maps/MapForm.h"
#include "maps/panes/MapStatus.h"
#include "settings/SavePlans.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using core::Overwritten;
using support::Bytes;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Part = Overwritten::Part;

constexpr auto kFuelUnread = "The fuel map of the ECU was not read: no restore point has what was overwritten.";

struct OverwritingTest : testing::Test, support::VirtualProgram {
    void begin() {
        connect();
        receiveFrame('y', {0xFF, 0xFF, 0x0D, 0x3A, 11});
    }
    void beginAgain() {
        program.disconnect();
        pump.wait(2000);
        begin();
    }
    void readPwm() {
        for (int cell = 0; cell < 160; ++cell) {
            receiveFrame('p', {static_cast<std::uint8_t>(cell), 7});
        }
    }
    void readFuel() { receiveFrame('f', Bytes(160, 50)); }
    void readAll() {
        receiveFrame('m', Bytes(9, 1));
        readFuel();
        receiveFrame('a', Bytes(160, 60));
        readPwm();
    }
    // Nobody answers the reads with which it opens.
    maps::FrmMaps& openMaps() {
        program.mapWindows().open();
        pump.wait(10000);
        return dynamic_cast<maps::FrmMaps&>(*windows.loaded().back());
    }
    [[nodiscard]] std::vector<std::string> reasons() {
        std::vector<std::string> reasons;
        keeper.refresh();
        for (const auto& point : keeper.points()) {
            reasons.push_back(point.reason);
        }
        return reasons;
    }
    [[nodiscard]] Snapshot point(std::size_t row) { return *keeper.load(keeper.points().at(row).name).content; }
    [[nodiscard]] std::string notice() { return keeper.notice().Text.get(); }

    Keeper& keeper = program.keeper();
};

TEST_F(OverwritingTest, TheMapWindowNamesWhatASendWouldOverwriteUnread) {
    begin();
    auto& form = openMaps();
    EXPECT_EQ(
        maps::statusOf(form).unread,
        "Not read since the last connect or restart: fuel, ignition, PWM, misc; no new restore point would have what "
        "a send overwrites");
    readFuel();
    EXPECT_THAT(maps::statusOf(form).unread, HasSubstr(": ignition, PWM, misc;"));
    readAll();
    EXPECT_EQ(maps::statusOf(form).unread, "");
    EXPECT_EQ(form.findProperty("UnreadStatus")->get(form), controls::Value(std::string()));
}

TEST_F(OverwritingTest, WithoutAConnectionNothingCanBeSent) {
    begin();
    auto& form = openMaps();
    program.disconnect();
    EXPECT_EQ(maps::statusOf(form).unread, "");
}

TEST_F(OverwritingTest, AMapThatIsSentUnreadIsToldUntilTheTunerClosesTheNotice) {
    begin();
    auto& form = openMaps();
    form.btnWriteFuel.press();
    pump.wait(10000);
    EXPECT_EQ(notice(), kFuelUnread);
    EXPECT_THAT(maps::statusOf(form).unread, HasSubstr(kFuelUnread));
    beginAgain();
    EXPECT_EQ(notice(), kFuelUnread);
    keeper.notice().close();
    EXPECT_EQ(notice(), "");
    EXPECT_THAT(maps::statusOf(form).unread, Not(HasSubstr("was overwritten")));
}

TEST_F(OverwritingTest, AMapThatWasReadIsInThePoint) {
    begin();
    auto& form = openMaps();
    readAll();
    for (auto* button : {&form.btnWriteFuel, &form.btnWriteIgn, &form.btnSavePWM, &form.btnSaveMisc}) {
        button->press();
        pump.wait(20000);
    }
    EXPECT_EQ(notice(), "");
}

TEST_F(OverwritingTest, BehindARestartTheOlderPointIsNamed) {
    begin();
    auto& form = openMaps();
    readAll();
    receiveFrame(link::kDeviceStartedFrame, {});
    EXPECT_THAT(maps::statusOf(form).unread, HasSubstr("Not read since the last connect or restart: fuel, "));
    form.btnWriteFuel.press();
    pump.wait(10000);
    EXPECT_THAT(notice(),
                HasSubstr("The fuel map of the ECU was not read: the newest restore point that has one is of "));
    EXPECT_THAT(notice(), EndsWith(" (maps read)."));
}

TEST_F(OverwritingTest, EachPartHasItsLine) {
    begin();
    auto& form = openMaps();
    form.btnWriteIgn.press();
    pump.wait(10000);
    form.btnSavePWM.press();
    pump.wait(20000);
    form.btnSaveMisc.press();
    pump.wait(3000);
    EXPECT_THAT(notice(), HasSubstr("The ignition map of the ECU was not read: "));
    EXPECT_THAT(notice(), HasSubstr("The PWM table of the ECU was not read: "));
    EXPECT_THAT(notice(), HasSubstr("The misc block of the ECU was not read: "));
}

TEST_F(OverwritingTest, AGroupOfSettingsIsKnownByItsCells) {
    begin();
    program.frmMisc().load();
    pump.wait(60000);
    (program.frmMisc().*settings::saveButtons()[0].button).press();
    pump.wait(5000);
    EXPECT_THAT(notice(), HasSubstr("What the ECU had of \""));
    EXPECT_THAT(notice(), HasSubstr("\" was not read: no restore point has what was overwritten."));
    keeper.notice().close();
    window.ecuEeprom.forget();
    receiveFrame('T', {5, 11, 0});
    program.eeprom().announceStore("Boost", {Part::Settings, {11, 12}});
    EXPECT_EQ(notice(), "What the ECU had of \"Boost\" was not all read: no restore point has what was overwritten.");
    keeper.notice().close();
    receiveFrame('T', {5, 12, 0});
    program.eeprom().announceStore("Boost", {Part::Settings, {11, 12, -1, 99999}});
    EXPECT_EQ(notice(), "");
}

TEST_F(OverwritingTest, ARawWriteAndAThrottleEndAreSettings) {
    begin();
    program.frmMisc().load();
    pump.wait(60000);
    program.frmMisc().TextOs.Text = "17";
    program.frmMisc().TextArvo.Text = "5";
    program.frmMisc().Command1.press();
    pump.wait(1000);
    EXPECT_THAT(notice(), HasSubstr("What the ECU had of \"EEPROM address 17\" was not read: "));
    program.frmMisc().btn0thr.press();
    EXPECT_THAT(notice(), HasSubstr("What the ECU had of \"throttle end\" was not read: "));
}

TEST(Overwriting, ThePartsOfAPoint) {
    const auto full = fullPoint();
    for (const auto part : {Part::Fuel, Part::Ignition, Part::Pwm, Part::Misc, Part::Settings, Part::Other}) {
        EXPECT_EQ(knownOf({part, {11}}, full), HowMuch::All);
    }
    auto large = full;
    large.ecu.swType = 14;
    large.fuel.working[319].reset();
    large.pwm.working[160].reset();
    EXPECT_EQ(knownOf({Part::Fuel}, large), HowMuch::Some);
    EXPECT_EQ(knownOf({Part::Pwm}, large), HowMuch::All);
    auto small = full;
    small.fuel.working[160].reset();
    small.pwm.working[63].reset();
    EXPECT_EQ(knownOf({Part::Fuel}, small), HowMuch::All);
    EXPECT_EQ(knownOf({Part::Pwm}, small), HowMuch::All) << "the ECU does not keep it";
    EXPECT_EQ(knownOf({Part::Ignition}, partPoint()), HowMuch::Nothing);
}

// What the ECU runs on of the misc block is what its EEPROM has.
TEST(Overwriting, TheMiscBlockIsKnownByItsCellsToo) {
    auto point = fullPoint();
    point.misc.reset();
    EXPECT_EQ(knownOf({Part::Misc}, point), HowMuch::All);
    point.eeprom[10].known = link::Known::No;
    EXPECT_EQ(knownOf({Part::Misc}, point), HowMuch::Some);
}

TEST_F(OverwritingTest, EditsThatALateAnswerReplacesAreInAPoint) {
    begin();
    readAll();
    tables.FuelMapOut[3] = 99;
    readFuel();
    EXPECT_THAT(reasons(), ElementsAre("before: read", "maps read"));
    EXPECT_EQ(point(0).fuel.edited[3], 99);
    EXPECT_EQ(tables.FuelMapOut[3], 50);
    tables.IgnMapOut[3] = 98;
    receiveFrame('a', Bytes(160, 60));
    EXPECT_THAT(reasons(), ElementsAre("before: read", "before: read", "maps read"));
    EXPECT_EQ(point(0).ignition.edited[3], 98);
}

TEST_F(OverwritingTest, ARowOfArrivalsMakesOnePoint) {
    begin();
    readAll();
    tables.PwmMapOut[70] = 9;
    tables.PwmMapOut[71] = 10;
    readPwm();
    EXPECT_THAT(reasons(), ElementsAre("before: read", "maps read"));
    EXPECT_EQ(point(0).pwm.edited[71], 10);
    tables.PwmMapOut[72] = 11;
    readPwm();
    EXPECT_THAT(reasons(), ElementsAre("before: read", "before: read", "maps read"));
    EXPECT_EQ(point(0).pwm.edited[72], 11);
}

TEST_F(OverwritingTest, ArrivalsThatReplaceNoEditMakeNoPoint) {
    begin();
    readAll();
    tables.FuelMapOut[3] = 99;
    auto bytes = Bytes(160, 51);
    bytes[3] = 99;
    receiveFrame('f', bytes);
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
    receiveFrame('f', Bytes(160, 52));
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
}

TEST_F(OverwritingTest, EditsThatAReadOfThePwmTableReplacesAreKeptWhenItIsAsked) {
    begin();
    auto& form = openMaps();
    readAll();
    tables.PwmMapOut[70] = 9;
    form.btnReadPWM.press();
    pump.wait(1000);
    ASSERT_THAT(reasons(), ElementsAre("before: read", "maps read"));
    EXPECT_EQ(point(0).pwm.edited[70], 9);
}

TEST_F(OverwritingTest, EditsThatATuneOfAFileReplacesAreKept) {
    begin();
    auto& form = openMaps();
    readAll();
    const auto file = folder / "tune.txt";
    dialogs.answerFile(file.string());
    form.btnSave.press();
    tables.FuelMapOut[3] = 99;
    dialogs.answerFile(file.string());
    form.btnLoad.press();
    pump.wait(1000);
    ASSERT_THAT(reasons(), ElementsAre("before: file loaded", "maps read"));
    EXPECT_EQ(point(0).fuel.edited[3], 99);
}

TEST_F(OverwritingTest, TheTestOrderToStoreThePwmTableCountsAsOne) {
    begin();
    readPwm();
    auto& pwm = window.ecuMaps.pwm;
    pwm.changed(70, 9);
    ASSERT_EQ(pwm.store(), link::Store::NotOrdered);
    window.Command4.press();
    EXPECT_EQ(pwm.store(), link::Store::Acknowledged);
    EXPECT_EQ(pwm.kept(70), 9);
    receiveFrame(link::kDeviceStartedFrame, {});
    readPwm();
    EXPECT_NE(pwm.store(), link::Store::Lost);
}

TEST_F(OverwritingTest, AThrottleEndThatTheEcuHasMeasuredIsNotKnown) {
    begin();
    program.frmMisc().load();
    pump.wait(60000);
    const auto place = static_cast<std::size_t>(tables.addresses.MINTHR_OFF);
    window.ecuEeprom.told(tables.addresses.MINTHR_OFF, 40);
    ASSERT_EQ(window.ecuEeprom.cells().at(place).known, link::Known::Told);
    program.frmMisc().btn0thr.press();
    EXPECT_EQ(window.ecuEeprom.cells().at(place).known, link::Known::No);
}

TEST_F(OverwritingTest, TheMiscBlockOfAnotherConnectionIsNotKnown) {
    begin();
    receiveFrame('m', Bytes(9, 1));
    ASSERT_TRUE(window.ecuMisc.bytes());
    beginAgain();
    EXPECT_FALSE(window.ecuMisc.bytes());
}

// A point that was made by hand may know one map and no setting.
TEST_F(OverwritingTest, EachPartIsComparedWithTheNewestPointThatKnowsIt) {
    begin();
    receiveFrame('T', {5, 11, 0});
    keeper.settingsRead();
    beginAgain();
    readFuel();
    EXPECT_EQ(keeper.addByHand(""), "");
    beginAgain();
    receiveFrame('T', {7, 11, 0});
    keeper.settingsRead();
    EXPECT_THAT(notice(), EndsWith(" (settings read): 1 setting"));
    EXPECT_EQ(keeper.notice().Point.get(), keeper.points().back().name);
    readAll();
    EXPECT_THAT(notice(), EndsWith(" (settings read): 1 setting"));
    beginAgain();
    receiveFrame('T', {7, 11, 0});
    receiveFrame('T', {1, 12, 0});
    keeper.settingsRead();
    EXPECT_EQ(notice(), "");
}

TEST_F(OverwritingTest, AnEcuThatDiffersFromTwoPointsIsToldOfBoth) {
    begin();
    receiveFrame('T', {5, 11, 0});
    keeper.settingsRead();
    beginAgain();
    receiveFrame('f', Bytes(160, 51));
    EXPECT_EQ(keeper.addByHand(""), "");
    beginAgain();
    receiveFrame('T', {7, 11, 0});
    readAll();
    EXPECT_THAT(notice(), HasSubstr(" (by hand): 160 map cells; from restore point "));
    EXPECT_THAT(notice(), EndsWith(" (settings read): 1 setting"));
}

}  // namespace
}  // namespace korvane::keep
