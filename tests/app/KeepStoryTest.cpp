// A tuner who loses nothing, with real windows, keys and a real mouse: edit, read by mistake, undo, send, compare,
// restore, verify; then a setting that is saved and comes back.
#include <gmock/gmock.h>

#include "app/SettingsStory.h"
#include "keep/compare/FrmCompare.h"
#include "keep/restore/FrmRestore.h"
#include "maps/MapForm.h"
#include "maps/panes/MapStatus.h"
#include "views/keep/DiffTable.h"
#include "views/keep/PointTable.h"
#include "views/maps/MapGridView.h"

namespace korvane::app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

constexpr int kCell = 17;
constexpr int kFuel = 16;  // where the EEPROM keeps the first fuel cell
constexpr int kIdleAdvance = 392;

class KeepStory : public SettingsStory {
protected:
    // Connected, the settings read, and the map window open and read.
    KeepStory() {
        press(main_, "btnConnect");
        host_.pump.wait(30000);
        press(main_, "btnKartat");
        host_.pump.wait(5000);
        maps_ = dynamic_cast<maps::FrmMaps*>(program_.windows().curMapWindow);
        show(*maps_);
        stored_ = eeprom();
        before_ = fuel();
    }

    void show(controls::Window& window) {
        auto* const view = views_.viewOf(window);
        ASSERT_NE(view, nullptr);
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view));
    }
    template <class Window>
    Window& newest() {
        host_.pump.wait(2 * kBeat);
        return dynamic_cast<Window&>(*host_.windows.loaded().back());
    }
    void keyInMap(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        auto& grid = find<views::MapGridView>(*maps_, "txtFuel");
        QTest::mouseClick(&grid, Qt::LeftButton, {}, grid.cellRect(kCell).center());
        QTest::keyClick(&grid, key, modifiers);
    }
    void pressInMap(const char* button) {
        show(*maps_);
        press(*maps_, button);
        host_.pump.wait(3000);
    }
    [[nodiscard]] int fuel() { return program_.tables().FuelMapOut.at(kCell); }
    [[nodiscard]] std::string unsent() { return maps::statusOf(*maps_).unsent; }

    void editReadByMistakeAndUndo() {
        keyInMap(Qt::Key_Plus);
        keyInMap(Qt::Key_Plus);
        EXPECT_EQ(fuel(), before_ + 2);
        EXPECT_EQ(unsent(), "Not sent: 1 fuel");
        pressInMap("btnReadFuel");
        EXPECT_EQ(fuel(), before_) << "the edits are gone";
        keyInMap(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(fuel(), before_ + 2);
        EXPECT_EQ(maps_->HistoryNote.get(), "Undone: Fuel: read from the ECU, 1 cell");
        EXPECT_EQ(unsent(), "Not sent: 1 fuel");
    }
    void send() {
        pressInMap("btnWriteFuel");
        EXPECT_EQ(maps::statusOf(*maps_).store, "Sent fuel: acknowledged, told to store");
        EXPECT_EQ(unsent(), "");
        EXPECT_THAT(changedSince(stored_), ElementsAre(Pair(kFuel + kCell, before_ + 2)));
    }
    // The newest point, by a click on its row.
    keep::FrmRestore& pickPoint(const char* reason) {
        keyInMap(Qt::Key_R, Qt::ControlModifier);
        host_.pump.wait(2 * kBeat);
        auto& points = window<keep::FrmRestore>();
        show(points);
        auto& table = find<views::PointTable>(points, "lstPoints");
        const auto row = table.model()->index(0, 1);
        EXPECT_EQ(row.data().toString().toStdString(), reason);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(row).center());
        host_.pump.wait(2 * kBeat);
        EXPECT_THAT(points.lblPoint.Caption.get(), HasSubstr("cells that differ now: 1"));
        return points;
    }
    template <class Window>
    Window& window() {
        for (auto* const loaded : host_.windows.loaded()) {
            if (auto* const found = dynamic_cast<Window*>(loaded)) {
                return *found;
            }
        }
        throw std::runtime_error("no such window");
    }
    void compare(keep::FrmRestore& points) {
        press(points, "btnCompare");
        host_.pump.wait(2 * kBeat);
        auto& comparison = window<keep::FrmCompare>();
        show(comparison);
        EXPECT_EQ(comparison.lblSummary.Caption.get(), "Fuel: 1 of 160 cells differ.");
        auto& table = find<views::DiffTable>(comparison, "grdCells");
        const auto cell = table.model()->index(kCell / 16, kCell % 16);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(cell).center());
        EXPECT_THAT(comparison.lblOne.Caption.get(), HasSubstr("(" + std::to_string(before_) + ")"));
        EXPECT_THAT(comparison.lblOne.Caption.get(), HasSubstr("(" + std::to_string(before_ + 2) + ")"));
        static_cast<void>(views_.viewOf(comparison)->close());
    }
    void restore(keep::FrmRestore& points, const char* words) {
        show(points);
        press(points, "btnRestore");
        host_.pump.wait(1000);
        EXPECT_THAT(points.lblState.Caption.get(), HasSubstr(words));
        static_cast<void>(views_.viewOf(points)->close());
    }
    void verify() {
        show(*maps_);
        press(*maps_, "verify");
        pressInMap("btnWriteFuel");
        EXPECT_EQ(maps_->verifyReport().Text.get(), "Fuel: verified");
        EXPECT_TRUE(find(*maps_, "verifyLine").isVisible());
        EXPECT_THAT(changedSince(stored_), IsEmpty()) << "the ECU has what it had";
    }

    maps::FrmMaps* maps_ = nullptr;
    std::vector<int> stored_;
    int before_ = 0;
};

TEST_F(KeepStory, EditReadByMistakeUndoSendCompareRestoreVerify) {
    editReadByMistakeAndUndo();
    send();
    auto& points = pickPoint("before: read");
    compare(points);
    restore(points, "In the working maps now: ");
    EXPECT_EQ(fuel(), before_);
    keyInMap(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fuel(), before_ + 2) << "a restore is a step";
    keyInMap(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(fuel(), before_);
    verify();
    EXPECT_THAT(messages(), IsEmpty());
}

// The newest point has all that is known before the save: no other one is made.
TEST_F(KeepStory, ASettingThatWasSavedComesBack) {
    openSettings();
    press("verify");
    type("txtIdleAdv(0)", "70");
    save("btnSaveIdleAdv");
    host_.pump.wait(3000);
    EXPECT_EQ(misc_.verifyReport().Text.get(), "Idle Ignition: verified");
    EXPECT_THAT(changedSince(stored_), ElementsAre(Pair(kIdleAdvance, 70)));
    show(*maps_);
    auto& points = pickPoint("maps read");
    press(points, "chkSettings");
    restore(points, "Restored: 1 setting read back, all agree.");
    EXPECT_THAT(changedSince(stored_), IsEmpty());
    EXPECT_THAT(messages(), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
