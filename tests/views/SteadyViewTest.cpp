// The steady agent's box, button and window, by real widgets.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

#include "maps/MapForm.h"
#include "maps/steady/FrmSteady.h"
#include "views/ProgramViews.h"
#include "views/widgets/TextList.h"

namespace korvane::views {
namespace {

struct SteadyViewTest : testing::Test, ProgramViews {
    SteadyViewTest() {
        tables.Features = 0xFFFF;
        tables.SWType = 11;
        program.mapWindows().open();
        form_ = dynamic_cast<maps::FrmMaps*>(windows.loaded().back());
        lookAt(*form_);
        form_->chkInjAnal.Value = 1;
        view().activateWindow();
        frame();
    }

    maps::FrmSteady& openDetails() {
        find<QPushButton>("steadyDetails").click();
        auto& details = dynamic_cast<maps::FrmSteady&>(*windows.loaded().back());
        lookAt(details);
        view().activateWindow();
        frame();
        return details;
    }

    maps::FrmMaps* form_ = nullptr;
};

TEST_F(SteadyViewTest, BoxAndButtonAreShownWithTheAnalyser) {
    EXPECT_TRUE(find<QCheckBox>("chkSteadyAgent").isVisible());
    EXPECT_TRUE(find<QPushButton>("steadyDetails").isVisible());
    form_->chkInjAnal.Value = 0;
    frame();
    EXPECT_FALSE(find<QCheckBox>("chkSteadyAgent").isVisible());
    EXPECT_FALSE(find<QPushButton>("steadyDetails").isVisible());
}

TEST_F(SteadyViewTest, ATickThatIsRefusedIsGoneAgainAndTheWindowSaysWhy) {
    find<QCheckBox>("chkSteadyAgent").click();
    frame();
    EXPECT_FALSE(find<QCheckBox>("chkSteadyAgent").isChecked());
    openDetails();
    EXPECT_EQ(find<QLabel>("lblState").text(), "stopped");
    EXPECT_EQ(find<QLabel>("lblReason").text(), "port closed");
}

TEST_F(SteadyViewTest, TheAuthorityIsTypedAndTheDelayIsShown) {
    openDetails();
    auto& rich = find<QLineEdit>("txtRich");
    EXPECT_EQ(rich.text(), "15");
    rich.setFocus();
    rich.selectAll();
    type(rich, "12");
    EXPECT_EQ(program.steadyAgent().choices().RichAuthority.get(), 15.0);
    key(rich, Qt::Key_Return, Qt::NoModifier);
    EXPECT_EQ(program.steadyAgent().choices().RichAuthority.get(), 12.0);
    EXPECT_EQ(find<QLabel>("lblZone(1)").text(), "40 to 60 %: not known yet");
}

TEST_F(SteadyViewTest, ItsLeastHeightFitsALowScreen) {
    openDetails();
    EXPECT_LE(view().minimumSize().expandedTo(view().minimumSizeHint()).height(), 480);
}

TEST_F(SteadyViewTest, LongLinesOfTheStateDoNotMakeTheWindowHigher) {
    auto& details = openDetails();
    details.resize(520 * 15, 340 * 15);
    settle();
    std::string words;
    for (int i = 0; i < 100; ++i) {
        words += "some words ";
    }
    details.lblReasons.Caption = words;
    frame();
    EXPECT_EQ(view().height(), 340);
    EXPECT_EQ(view().width(), 520);
    EXPECT_GT(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

TEST_F(SteadyViewTest, F8OnTheGridPutsBack) {
    program.steadyAgent().newBaseline(maps::kOrdinaryMaps);
    tables.FuelMapOut.at(17) = 77;
    auto& grid = find("txtFuel");
    grid.setFocus();
    key(grid, Qt::Key_F8, Qt::NoModifier);
    pump.wait(1000);
    EXPECT_EQ(tables.FuelMapOut.at(17), 77) << "farther than the agent goes: asked for twice";
    key(grid, Qt::Key_F8, Qt::NoModifier);
    pump.wait(1000);
    EXPECT_EQ(tables.FuelMapOut.at(17), 0);
}

}  // namespace
}  // namespace korvane::views
