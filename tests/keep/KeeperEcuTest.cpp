// Restore points of a whole session with the virtual ECU.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "keep/Keeper.h"
#include "keep/restore/FrmRestore.h"
#include "maps/MapForm.h"
#include "maps/panes/MapStatus.h"
#include "program/Program.h"
#include "support/EcuDevice.h"
#include "support/VirtualMachine.h"

namespace korvane::keep {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

struct Session : support::VirtualMachine {
    explicit Session(support::EcuDevice& ecu) : support::VirtualMachine(&ecu) { program.start(); }

    // Connects, lets the settings be read, and reads the maps.
    maps::FrmMaps& readAll() {
        program.frmSarn2().btnConnect.press();
        pump.wait(60000);
        program.mapWindows().open();
        auto& form = dynamic_cast<maps::FrmMaps&>(*windows.loaded().back());
        pump.wait(10000);
        form.btnReadPWM.press();
        pump.wait(10000);
        return form;
    }
    std::vector<std::string> reasons() {
        std::vector<std::string> reasons;
        program.keeper().refresh();
        for (const auto& point : program.keeper().points()) {
            reasons.push_back(point.reason);
        }
        return reasons;
    }

    program::Program program{machine};
};

TEST(KeeperEcuTest, ASessionKeepsWhatWasReadAndWhatIsOverwritten) {
    support::EcuDevice ecu;
    Session session(ecu);
    auto& form = session.readAll();
    EXPECT_THAT(session.reasons(), ElementsAre("maps read", "settings read"));
    auto& fuel = session.program.tables().FuelMapOut;
    const auto before = fuel[17];
    fuel[17] = static_cast<std::uint8_t>(before + 1);
    form.btnWriteFuel.press();
    session.pump.wait(10000);
    EXPECT_THAT(session.reasons(), ElementsAre("before: fuel map", "maps read", "settings read"));
    const auto& points = session.program.keeper().points();
    const auto point = session.program.keeper().load(points[0].name);
    ASSERT_TRUE(point.content);
    EXPECT_EQ(point.content->fuel.working[17], before);
    EXPECT_EQ(point.content->fuel.edited[17], before + 1);
    EXPECT_EQ(session.program.keeper().differsText(points[0].name), "1");
}

TEST(KeeperEcuTest, AMapComesBackAndIsSent) {
    support::EcuDevice ecu;
    Session session(ecu);
    auto& form = session.readAll();
    auto& fuel = session.program.tables().FuelMapOut;
    const auto before = fuel;
    fuel.fill(33);
    form.btnWriteFuel.press();
    session.pump.wait(10000);
    session.program.restorePoints().open();
    auto& list = dynamic_cast<FrmRestore&>(*session.windows.loaded().back());
    list.lstPoints.choose(0);
    EXPECT_EQ(list.lstPoints.chosen()->reason, "before: fuel map");
    list.chkIgnition.press();
    list.chkPwm.press();
    list.btnRestore.press();
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + 160, fuel.begin()));
    form.btnWriteFuel.press();
    session.pump.wait(10000);
    EXPECT_EQ(session.program.keeper().differsText(list.lstPoints.chosen()->name), "0");
}

// A raw write to an address of a map: the ECU runs on as it did, and has another map stored.
TEST(KeeperEcuTest, ARawWriteIntoAStoredMapIsSaidInTheMapWindow) {
    support::EcuDevice ecu;
    Session session(ecu);
    auto& form = session.readAll();
    EXPECT_EQ(maps::statusOf(form).unsent, "");
    const auto place = session.program.tables().addresses.INJ_OFF + 17;
    auto& window = session.program.frmMisc();
    window.TextOs.Text = std::to_string(place);
    window.TextArvo.Text = std::to_string(ecu.eeprom()[static_cast<std::size_t>(place)] ^ 1);
    window.Command1.press();
    session.pump.wait(1000);
    EXPECT_EQ(maps::statusOf(form).unsent, "Not stored: 1 fuel");
    const auto& fuel = session.program.frmSarn2().ecuMaps.fuel;
    EXPECT_NE(fuel.kept(17), fuel.working(17));
}

TEST(KeeperEcuTest, SettingsComeBack) {
    support::EcuDevice ecu;
    Session session(ecu);
    session.readAll();
    const auto name = session.program.keeper().points()[0].name;
    const auto place = session.program.tables().addresses.CHARGE_TIME_OFF;
    const auto before = ecu.eeprom()[static_cast<std::size_t>(place)];
    session.program.eeprom().WriteEE(static_cast<std::int16_t>(place), before + 1);
    session.pump.wait(1000);
    ASSERT_EQ(ecu.eeprom()[static_cast<std::size_t>(place)], before + 1);
    session.program.restorePoints().open();
    auto& list = dynamic_cast<FrmRestore&>(*session.windows.loaded().back());
    list.lstPoints.choose(0);
    ASSERT_EQ(list.lstPoints.chosen()->name, name);
    for (auto* box : {&list.chkFuel, &list.chkIgnition, &list.chkPwm, &list.chkSettings}) {
        box->press();
    }
    list.btnRestore.press();
    session.pump.wait(60000);
    EXPECT_EQ(ecu.eeprom()[static_cast<std::size_t>(place)], before);
    EXPECT_THAT(list.lblState.Caption.get(), HasSubstr("Restored: "));
}

}  // namespace
}  // namespace korvane::keep
