// A tuner at the map window, with real keys and a real mouse: connect, open, select a block, raise it, send, save,
// close, open again, load, compare.
#include <QPushButton>

#include <gmock/gmock.h>

#include "app/RealWindows.h"
#include "maps/MapForm.h"
#include "views/maps/MapGridView.h"

namespace korvane::app {
namespace {

using platform::until;
using testing::StartsWith;

class MapStory : public RealWindows {
protected:
    void openMaps() {
        auto* const before = program_.windows().curMapWindow;
        pressButton(*views_.viewOf(window_), "btnKartat");
        maps_ = dynamic_cast<maps::FrmMaps*>(program_.windows().curMapWindow);
        ASSERT_NE(maps_, nullptr);
        ASSERT_EQ(before, nullptr);
        view_ = views_.viewOf(*maps_);
        ASSERT_NE(view_, nullptr);
        view_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view_));
        grid_ = view_->findChild<views::MapGridView*>("txtFuel");
        ASSERT_NE(grid_, nullptr);
        EXPECT_TRUE(until(pump_, [this] { return caption().starts_with("PWM table Received "); })) << caption();
    }
    static void pressButton(QWidget& view, const char* name) {
        auto* const button = view.findChild<QPushButton*>(name);
        ASSERT_NE(button, nullptr) << name;
        ASSERT_TRUE(button->isVisible()) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    void clickCell(int cell, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(grid_, Qt::LeftButton, modifiers, grid_->cellRect(cell).center());
    }
    [[nodiscard]] std::string caption() const { return maps_->Caption.get(); }
    std::uint8_t& map(int cell) { return program_.tables().FuelMapOut.at(static_cast<std::size_t>(cell)); }
    [[nodiscard]] int sum() {
        int total = 0;
        for (int cell = 0; cell < 160; ++cell) {
            total += map(cell);
        }
        return total;
    }

    maps::FrmMaps* maps_ = nullptr;
    views::WindowView* view_ = nullptr;
    views::MapGridView* grid_ = nullptr;
};

TEST_F(MapStory, ABlockIsRaisedSentSavedAndLoadedBack) {
    program_.connectTo(2);
    ASSERT_TRUE(until(pump_, [this] { return program_.tables().SWType == 11; }));
    openMaps();
    const int before = sum();
    const int first = map(17);
    ASSERT_GT(first, 0);

    // Cells 17 to 35 in reading order: 19 of them.
    clickCell(17, Qt::ShiftModifier);
    clickCell(35, Qt::ShiftModifier);
    EXPECT_EQ(caption(), "alku 18 Loppu 36 ");
    EXPECT_EQ(grid_->cell(34).back, controls::kGreen);
    EXPECT_NE(grid_->cell(20).back, controls::kGreen) << "the block shows as a rectangle";
    QTest::keyClick(grid_, Qt::Key_Plus);
    EXPECT_EQ(sum(), before + 19);
    EXPECT_EQ(grid_->cell(17).fore, controls::kBlue);

    pressButton(*view_, "btnWriteFuel");
    EXPECT_EQ(caption(), "Fuel kartta lähetetty ja talletettu autoon");
    EXPECT_TRUE(window_.TimerRequestData.Enabled);

    const auto file = (folder_.path() / "tune.txt").string();
    dialogs_.answerFile(file);
    pressButton(*view_, "btnSave");
    EXPECT_TRUE(std::filesystem::exists(file));
    const auto sent = program_.tables().FuelMapOut;
    view_->close();
    EXPECT_EQ(program_.windows().curMapWindow, nullptr);

    program_.tables().FuelMapIn.fill(0);
    openMaps();
    EXPECT_EQ(program_.tables().FuelMapIn, sent) << "the ECU has what was sent";
    map(17) = 1;
    dialogs_.answerFile(file);
    pressButton(*view_, "btnLoad");
    EXPECT_EQ(program_.tables().FuelMapOut, sent);
    EXPECT_EQ(grid_->cell(17).fore, controls::kBlack);
    for (const auto& message : dialogs_.takeMessages()) {
        EXPECT_THAT(message.text, StartsWith("Settings_par.ini file not found."));
    }
}

// Selected by keys alone, raised with the numeric pad.
TEST_F(MapStory, ABlockIsSelectedAndRaisedByKeys) {
    program_.connectTo(2);
    ASSERT_TRUE(until(pump_, [this] { return program_.tables().SWType == 11; }));
    openMaps();
    clickCell(17, Qt::NoModifier);
    const int first = map(17);
    QTest::keyPress(grid_, Qt::Key_Shift, Qt::ShiftModifier);
    QTest::keyClick(grid_, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(grid_, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyRelease(grid_, Qt::Key_Shift);
    EXPECT_EQ(maps_->fuel.SelFirst, 18);
    EXPECT_EQ(maps_->fuel.SelLast, 20);
    QTest::keyClick(grid_, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(map(17), first + 1);
}

}  // namespace
}  // namespace korvane::app
