#include <gmock/gmock.h>

#include "keep/Keeper.h"
#include "maps/MapForm.h"
#include "maps/history/MapUndo.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct KeeperTest : testing::Test, support::VirtualProgram {
    void identify(std::uint8_t swType = 11) { receiveFrame('y', {0x34, 0x12, 0x0D, 0x3A, swType}); }
    void readMisc(std::uint8_t byte = 1) { receiveFrame('m', Bytes(9, byte)); }
    void readFuel(std::uint8_t byte = 50) { receiveFrame('f', Bytes(160, byte)); }
    void readIgnition(std::uint8_t byte = 60) { receiveFrame('a', Bytes(160, byte)); }
    void readPwm(int first = 0, int last = 159) {
        for (int cell = first; cell <= last; ++cell) {
            receiveFrame('p', {static_cast<std::uint8_t>(cell), 7});
        }
    }
    void readAll(std::uint8_t fuel = 50) {
        readMisc();
        readFuel(fuel);
        readIgnition();
        readPwm();
    }
    void readCell(std::uint8_t address, std::uint8_t byte) { receiveFrame('T', {byte, address, 0}); }
    void connectAgain() {
        program.disconnect();
        pump.wait(2000);
        connect();
        identify();
    }
    [[nodiscard]] std::vector<std::string> reasons() {
        std::vector<std::string> reasons;
        keeper.refresh();
        for (const auto& point : keeper.points()) {
            reasons.push_back(point.reason);
        }
        return reasons;
    }
    [[nodiscard]] Snapshot newest() {
        keeper.refresh();
        return *keeper.load(keeper.points().at(0).name).content;
    }

    Keeper& keeper = program.keeper();
};

TEST_F(KeeperTest, AFirstReadOfAllMapsMakesAPoint) {
    connect();
    identify();
    readAll();
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
    const auto point = newest();
    EXPECT_EQ(point.ecu.swType, 11);
    EXPECT_EQ(point.fuel.working[159], 50);
    EXPECT_FALSE(point.fuel.working[160]);
    EXPECT_EQ(point.ignition.kept[0], 60);
    EXPECT_EQ(point.pwm.working[64], 7);
    EXPECT_EQ(point.misc, (MiscBytes{1, 1, 1, 1, 1, 1, 1, 1, 1}));
    EXPECT_EQ(point.fuel.edited[0], 50);
}

TEST_F(KeeperTest, NoPointIsMadeWhileAnythingIsMissing) {
    connect();
    identify();
    readFuel();
    readIgnition();
    readPwm(0, 158);
    readMisc();
    EXPECT_THAT(reasons(), IsEmpty());
    readPwm(159, 159);
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
}

TEST_F(KeeperTest, TheIdentityMayComeLast) {
    connect();
    readAll();
    EXPECT_THAT(reasons(), IsEmpty());
    identify(13);
    receiveFrame('m', Bytes(9, 1));
    EXPECT_EQ(newest().ecu.swType, 13);
}

TEST_F(KeeperTest, LargeMapsHaveTwoHalves) {
    connect();
    identify(14);
    readAll();
    EXPECT_THAT(reasons(), IsEmpty());
    receiveFrame(245, Bytes(160, 51));
    receiveFrame(247, Bytes(160, 61));
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
    EXPECT_EQ(newest().fuel.working[319], 51);
}

TEST_F(KeeperTest, AnIgnitionBoxHasOneMap) {
    connect();
    identify(30);
    readIgnition();
    EXPECT_THAT(reasons(), IsEmpty());
    readMisc();
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
}

TEST_F(KeeperTest, ASecondReadMakesNone) {
    connect();
    identify();
    readAll();
    readAll(51);
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
}

TEST_F(KeeperTest, AnUnchangedEcuMakesNoSecondPoint) {
    connect();
    identify();
    readAll();
    connectAgain();
    readAll();
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
    EXPECT_EQ(keeper.notice().Text.get(), "");
}

TEST_F(KeeperTest, WhatAnotherConnectionToldIsNotKnown) {
    connect();
    identify();
    readFuel();
    connectAgain();
    readMisc();
    EXPECT_EQ(keeper.addByHand(""), "");
    EXPECT_FALSE(newest().fuel.working[0]);
    EXPECT_EQ(newest().fuel.edited[0], 50);
}

TEST_F(KeeperTest, AChangedEcuIsTold) {
    connect();
    identify();
    readAll();
    connectAgain();
    EXPECT_EQ(keeper.notice().Text.get(), "");
    readAll(51);
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr("The ECU differs from restore point "));
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr(" (maps read): 160 map cells"));
    EXPECT_THAT(reasons(), ElementsAre("maps read", "maps read"));
    EXPECT_EQ(keeper.notice().Point.get(), keeper.points().at(1).name);
}

TEST_F(KeeperTest, TheNoticeGoesWithTheNextConnect) {
    connect();
    identify();
    readAll();
    connectAgain();
    readAll(51);
    connectAgain();
    EXPECT_EQ(keeper.notice().Text.get(), "");
    EXPECT_EQ(keeper.notice().Point.get(), "");
}

TEST_F(KeeperTest, WhatAnUploadHasNotSentOutlastsConnectsAndComparisons) {
    connect();
    identify();
    readAll();
    const std::string told = "EEPROM upload: a gap";
    keeper.notice().tell(link::ImageRun::Upload, told);
    connectAgain();
    EXPECT_EQ(keeper.notice().words(), told);
    readAll(51);
    EXPECT_THAT(keeper.notice().words(), testing::StartsWith(told + "\nThe ECU differs from restore point "));
    connectAgain();
    EXPECT_EQ(keeper.notice().words(), told);
    keeper.notice().close();
    EXPECT_EQ(keeper.notice().words(), "");
}

TEST_F(KeeperTest, AnEcuOfAnotherTypeIsNotCompared) {
    connect();
    identify(11);
    readAll();
    program.disconnect();
    pump.wait(2000);
    connect();
    identify(13);
    readAll(51);
    EXPECT_EQ(keeper.notice().Text.get(), "");
    EXPECT_THAT(reasons(), ElementsAre("maps read", "maps read"));
}

// A point of this connection has what the ECU has: the older one is what it is compared with.
TEST_F(KeeperTest, APointOfThisConnectionIsNotCompared) {
    connect();
    identify();
    readAll();
    connectAgain();
    readFuel(51);
    EXPECT_EQ(keeper.addByHand(""), "");
    readMisc();
    readIgnition();
    readPwm();
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr(": 160 map cells"));
}

TEST_F(KeeperTest, AReadOfTheSettingsMakesAPointOfItsOwn) {
    connect();
    identify();
    readCell(11, 5);
    keeper.settingsRead();
    EXPECT_THAT(reasons(), ElementsAre("settings read"));
    EXPECT_EQ(newest().eeprom[11], (link::EepromCell{5, link::Known::Told}));
    readCell(11, 6);
    keeper.settingsRead();
    EXPECT_THAT(reasons(), ElementsAre("settings read"));
    connectAgain();
    readCell(11, 7);
    keeper.settingsRead();
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr(" (disconnect): 1 setting"));
}

TEST_F(KeeperTest, AReadWithoutAnswersMakesNone) {
    connect();
    keeper.settingsRead();
    program.disconnect();
    keeper.settingsRead();
    EXPECT_THAT(reasons(), IsEmpty());
}

TEST_F(KeeperTest, AStoreOfWhatIsKeptAlreadyMakesNone) {
    connect();
    identify();
    readFuel();
    keeper.beforeStore("fuel map");
    keeper.beforeStore("fuel map");
    keeper.beforeStore("misc block");
    EXPECT_THAT(reasons(), ElementsAre("before: fuel map"));
    tables.FuelMapOut[3] = 51;
    keeper.beforeStore("fuel map");
    EXPECT_THAT(reasons(), ElementsAre("before: fuel map", "before: fuel map"));
}

// Somebody may have removed the file that the skipped point would have been equal to.
TEST_F(KeeperTest, APointThatHasGoneIsMadeAgain) {
    connect();
    identify();
    readFuel();
    keeper.beforeStore("fuel map");
    std::filesystem::remove_all(folder / "restore");
    keeper.beforeStore("misc block");
    EXPECT_THAT(reasons(), ElementsAre("before: misc block"));
}

TEST_F(KeeperTest, APointByHandIsMadeInAnyCase) {
    EXPECT_EQ(keeper.addByHand("on the road"), "");
    EXPECT_EQ(keeper.addByHand(""), "");
    EXPECT_THAT(reasons(), ElementsAre("by hand", "by hand"));
    EXPECT_EQ(keeper.points().at(1).note, "on the road");
}

TEST_F(KeeperTest, AFailureIsToldAndStopsNothing) {
    folder.write("restore", "a file");
    connect();
    identify();
    readAll();
    EXPECT_THAT(keeper.notice().Text.get(), testing::AllOf(HasSubstr("can't be made"), HasSubstr("(maps read)")));
    EXPECT_EQ(keeper.notice().Point.get(), "");
    EXPECT_NE(keeper.addByHand(""), "");
}

TEST_F(KeeperTest, AFailureIsToldUntilAPointIsWritten) {
    folder.write("restore", "a file");
    connect();
    identify();
    readAll();
    connectAgain();
    keeper.notice().close();
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr("can't be made"));
    std::filesystem::remove(folder / "restore");
    EXPECT_EQ(keeper.addByHand(""), "");
    EXPECT_EQ(keeper.notice().Text.get(), "");
}

TEST_F(KeeperTest, WhatTheTunerHasSentIsNotTold) {
    connect();
    identify();
    readAll();
    tables.FuelMapOut.fill(51);
    keeper.beforeStore("fuel map");
    connectAgain();
    readAll(51);
    EXPECT_EQ(keeper.notice().Text.get(), "");
    connectAgain();
    readAll(52);
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr(": 160 map cells"));
}

TEST_F(KeeperTest, ADisconnectMakesAPointIfAnythingIsNew) {
    connect();
    identify();
    readAll();
    program.disconnect();
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
    connect();
    identify();
    readAll();
    tables.FuelMapOut[3] = 99;
    program.disconnect();
    EXPECT_THAT(reasons(), ElementsAre("disconnect", "maps read"));
    EXPECT_EQ(newest().fuel.edited[3], 99);
    EXPECT_EQ(newest().fuel.working[3], 50);
}

TEST_F(KeeperTest, ALostLineMakesAPointToo) {
    connect();
    identify();
    readCell(11, 5);
    window.MSComm1.LineLost("gone");
    pump.wait(1000);
    EXPECT_FALSE(window.MSComm1.PortOpen());
    EXPECT_THAT(reasons(), ElementsAre("disconnect"));
}

TEST_F(KeeperTest, TheEndOfTheProgramMakesAPointIfAnythingIsNew) {
    connect();
    identify();
    readFuel();
    program.quit();
    EXPECT_TRUE(program.ended());
    EXPECT_THAT(reasons(), ElementsAre("end of the program"));
}

// A folder of many points takes time.
TEST_F(KeeperTest, TheEndOfTheProgramLooksThroughTheFolderOnce) {
    connect();
    identify();
    readFuel();
    keeper.programEnds();
    EXPECT_THAT(reasons(), ElementsAre("end of the program"));
    std::filesystem::remove_all(folder / "restore");
    program.disconnect();
    keeper.programEnds();
    EXPECT_FALSE(folder.has("restore"));
}

TEST_F(KeeperTest, WhatWasEditedBehindADisconnectIsKeptAtTheEnd) {
    connect();
    identify();
    readAll();
    program.disconnect();
    tables.FuelMapOut[3] = 99;
    program.quit();
    EXPECT_THAT(reasons(), ElementsAre("end of the program", "maps read"));
    EXPECT_EQ(newest().fuel.edited[3], 99);
}

// The history of the maps has them too, but it ends with the program, and nobody is asked then: nothing is unsent.
TEST_F(KeeperTest, EditsThatAReadReplacesAreKept) {
    connect();
    identify();
    readAll();
    program.mapWindows().open();
    auto& form = dynamic_cast<maps::FrmMaps&>(*windows.loaded().back());
    pump.wait(1000);
    EXPECT_THAT(reasons(), ElementsAre("maps read"));
    tables.FuelMapOut[3] = 99;
    form.btnReadFuel.press();
    readAll();
    program.quit();
    ASSERT_THAT(reasons(), ElementsAre("end of the program", "before: read", "maps read"));
    EXPECT_EQ(keeper.load(keeper.points().at(1).name).content->fuel.edited[3], 99);
}

TEST_F(KeeperTest, EditsThatARestoreReplacesAreKeptOnce) {
    connect();
    identify();
    readAll();
    tables.FuelMapOut[3] = 99;
    const auto name = keeper.points().at(0).name;
    const RestoreChoice choice{.maps = {&Snapshot::fuel}};
    static_cast<void>(restore(program.restorePoints().context(), name, choice));
    EXPECT_EQ(tables.FuelMapOut[3], 50);
    EXPECT_THAT(reasons(), ElementsAre("before: maps restored", "maps read"));
    static_cast<void>(program.undo().undo(nullptr));
    static_cast<void>(restore(program.restorePoints().context(), name, choice));
    EXPECT_THAT(reasons(), ElementsAre("before: maps restored", "maps read"));
}

TEST_F(KeeperTest, AnEndWithoutDataOfAnEcuMakesNone) {
    tables.FuelMapOut.fill(7);
    connect();
    program.disconnect();
    connect();
    identify();
    program.disconnect();
    EXPECT_FALSE(folder.has("restore")) << "an identity alone is nothing to keep";
    tables.FuelMapOut.fill(0);  // else the read would replace edits
    connect();
    readFuel();
    program.disconnect();
    program.quit();
    EXPECT_FALSE(folder.has("restore")) << "nobody knows whose map it is";
}

// A frame that was fed in with no port open is no ECU.
TEST_F(KeeperTest, AnEndWithoutAConnectionMakesNone) {
    identify();
    readAll();
    program.quit();
    EXPECT_FALSE(folder.has("restore"));
}

TEST_F(KeeperTest, FindsItsPointAmongThoseOfOthers) {
    connect();
    identify();
    readAll();
    auto other = newest();
    other.ecu.swType = 13;
    other.fuel.working.fill(1);
    for (int i = 0; i < 5; ++i) {
        ++other.time.year;
        EXPECT_EQ(keeper.store().folder(), folder / "restore");
        EXPECT_NE(PointStore(folder / "restore").add(other).name, "");
    }
    connectAgain();
    readAll(51);
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr(" (maps read): 160 map cells"));
}

TEST_F(KeeperTest, SendsNothing) {
    connect();
    window.TimerRequestData.Enabled = false;
    window.TimerGetSettings.Enabled = false;
    static_cast<void>(sent());
    identify();
    readAll();
    keeper.settingsRead();
    keeper.beforeStore("fuel map");
    EXPECT_EQ(keeper.addByHand("x"), "");
    EXPECT_THAT(sent(), IsEmpty());
}

// A clock that was wrong for a day must not hide every later point.
TEST_F(KeeperTest, ComparesWithThePointThatWasMadeLastWhateverItsDate) {
    connect();
    identify();
    readAll();
    auto other = newest();
    other.time.year += 50;
    other.fuel.working.fill(1);
    other.fuel.edited.fill(1);
    EXPECT_NE(PointStore(folder / "restore").add(other).name, "");
    tables.FuelMapOut[3] = 99;
    program.disconnect();
    connect();
    identify();
    readAll(51);
    EXPECT_THAT(keeper.notice().Text.get(), HasSubstr(" (disconnect): 160 map cells"));
}

}  // namespace
}  // namespace korvane::keep
