// A tuner at the window of the large maps, with real widgets, keys and clicks.
#include <gmock/gmock.h>

#include "app/SettingsStory.h"
#include "maps/MapForm.h"
#include "views/maps/MapGridView.h"

namespace korvane::app {
namespace {

using testing::IsEmpty;

ecu::EcuSettings largeMaps() {
    ecu::EcuSettings settings = halfLoad();
    settings.type = 14;
    return settings;
}

// Where cell i of the ignition map lies in the EEPROM: the first half from 180 on, the second from 1260 on.
constexpr int addressOf(int cell) {
    return cell < 160 ? 180 + cell : 1260 + cell - 160;
}

class LargeMapStory : public SettingsStory {
protected:
    LargeMapStory() : SettingsStory(largeMaps()) {}

    void connectAndOpenWindow() {
        press(main_, "btnConnect");
        host_.pump.wait(30000);
        press(main_, "btnKartat");
        host_.pump.wait(8000);
        maps_ = dynamic_cast<maps::FrmMaps_Large*>(host_.windows.loaded().back());
        ASSERT_NE(maps_, nullptr);
        auto* const view = views_.viewOf(*maps_);
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view));
    }
    void chooseTab(int tab) {
        auto& tabs = find<QTabBar>(*maps_, "TabStrip1");
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab - 1).center());
    }
    [[nodiscard]] views::MapGridView& grid() const { return find<views::MapGridView>(*maps_, "txtIgn"); }
    void clickCell(int cell, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(&grid(), Qt::LeftButton, modifiers, grid().cellRect(cell).center());
    }

    maps::FrmMaps_Large* maps_ = nullptr;
};

// Cells 150 to 170, ten of them in the first half.
TEST_F(LargeMapStory, AnIgnitionBlockIsChosenWithTheMouseRaisedAndStoredInBothHalves) {
    connectAndOpenWindow();
    const auto before = eeprom();
    chooseTab(2);
    ASSERT_TRUE(grid().isVisible());
    clickCell(150, Qt::ShiftModifier);
    clickCell(170, Qt::ShiftModifier);
    EXPECT_EQ(grid().cell(160).back, controls::kGreen);
    QTest::keyClick(&grid(), Qt::Key_Plus);
    press(*maps_, "btnWriteIgn");
    host_.pump.wait(500);
    EXPECT_EQ(maps_->Caption.get(), "Ignition kartta lähetetty ja talletettu autoon");
    std::map<int, int> expected;
    for (int cell = 150; cell <= 170; ++cell) {
        expected[addressOf(cell)] = before.at(static_cast<std::size_t>(addressOf(cell))) + 1;
    }
    EXPECT_EQ(changedSince(before), expected);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(LargeMapStory, TheLockedFocusFollowsTheEngineOnThePageInSight) {
    connectAndOpenWindow();
    const int place = program_.tables().MapPlace;
    ASSERT_GT(place, 0);
    chooseTab(2);
    press(*maps_, "chkFocusOnMAP");
    host_.pump.wait(400);
    EXPECT_EQ(maps_->activeControl(), &maps_->ign(place));
    const int before = program_.tables().IgnMapOut.at(static_cast<std::size_t>(place));
    key(Qt::Key_Plus);
    EXPECT_EQ(program_.tables().IgnMapOut.at(static_cast<std::size_t>(place)), before + 1);
    chooseTab(1);
    host_.pump.wait(400);
    EXPECT_EQ(maps_->activeControl(), &maps_->fuel(place));
}

}  // namespace
}  // namespace korvane::app
