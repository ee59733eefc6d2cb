// The map windows on a screen of 1920 by 1080 at 200 %: 960 by 540, less the panel and the title bar.
#include <QFontInfo>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

#include <gtest/gtest.h>
#include <utility>

#include "maps/MapForm.h"
#include "views/Events.h"
#include "views/ProgramViews.h"
#include "views/widgets/Child.h"
#include "views/widgets/FoldingRow.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

constexpr std::int32_t kAllFeatures = 0xFFFF;
constexpr QSize kLow{960, 480};

struct LowWindow : testing::Test, ProgramViews {
    LowWindow() { tables.Features = kAllFeatures; }

    maps::MapForm& open(bool large, QSize size) {
        large ? program.mapWindows().openLarge() : program.mapWindows().open();
        maps_ = dynamic_cast<maps::MapForm*>(windows.loaded().back());
        lookAt(*maps_);
        pump.wait(1000);
        maps_->resize(size.width() * 15, size.height() * 15);
        view().activateWindow();
        settle();
        return *maps_;
    }
    // All of it, without scrolling.
    [[nodiscard]] bool isInView(const char* name) const {
        const QWidget& widget = find(name);
        return widget.isVisible() &&
               view().rect().contains(QRect(widget.mapTo(&view(), QPoint(0, 0)), widget.size())) &&
               widget.visibleRegion().boundingRect() == widget.rect();
    }
    void expectNothingScrolled() const {
        const auto* const scroll = view().findChild<QScrollArea*>();
        EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    }
    [[nodiscard]] QTabBar& pages() const { return find<QTabBar>("mapPages"); }

    maps::MapForm* maps_ = nullptr;
};

TEST_F(LowWindow, ShowsAMapAndTheSendButtons) {
    open(false, kLow);
    expectNothingScrolled();
    for (const char* name :
         {"txtFuel", "btnReadFuel", "btnWriteFuel", "btnReadIgn", "btnWriteIgn", "btnLoad", "btnHelp", "status"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
}

TEST_F(LowWindow, DoesNotScrollOnceTheAnalyserHasBeenShown) {
    tables.SWType = 11;
    auto& form = open(false, kLow);
    dynamic_cast<maps::FrmMaps&>(form).chkInjAnal.Value = 1;
    pages().setCurrentIndex(1);
    pump.wait(1000);
    frame();
    expectNothingScrolled();
    for (const char* name : {"chkModifyInjSetpoint", "chkSimplemode", "chkSteadyAgent", "steadyDetails"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
}

TEST_F(LowWindow, BeginsInTheMap) {
    open(false, kLow);
    EXPECT_TRUE(find("txtFuel").hasFocus());
    key(find("txtFuel"), Qt::Key_Tab);
    EXPECT_TRUE(pages().hasFocus());
}

// Arrow keys move in it and do not turn the page.
TEST_F(LowWindow, OfLargeMapsBeginsInTheMap) {
    open(true, kLow);
    EXPECT_TRUE(find("txtFuel").hasFocus());
    key(find("txtFuel"), Qt::Key_Tab);
    EXPECT_TRUE(find("TabStrip1").hasFocus());
}

TEST_F(LowWindow, HasTheOtherMapOnASecondPage) {
    open(false, kLow);
    EXPECT_TRUE(pages().isVisible());
    EXPECT_FALSE(find("txtIgn").isVisible());
    pages().setCurrentIndex(1);
    settle();
    EXPECT_TRUE(isInView("txtIgn"));
    EXPECT_FALSE(find("txtFuel").isVisible());
    EXPECT_TRUE(isInView("btnWriteIgn"));
}

TEST_F(LowWindow, ShowsThePageOfTheCellThatGetsTheFocus) {
    auto& form = open(false, kLow);
    form.setFocus(&form.ign(17));
    settle();
    EXPECT_TRUE(isInView("txtIgn"));
    EXPECT_TRUE(find("txtIgn").hasFocus());
    form.setFocus(&form.fuel(17));
    settle();
    EXPECT_TRUE(isInView("txtFuel"));
}

TEST_F(LowWindow, ShowsThePageOfAMapThatIsSwitchedOn) {
    tables.SWType = 11;
    open(false, kLow);
    for (const auto& [box, map] : {std::pair{"chkShowPwm", "txtPWM"}, std::pair{"chkInjAnal", "txtInjAnalys"}}) {
        click(find(box));
        frame();
        EXPECT_TRUE(isInView(map)) << box;
        pages().setCurrentIndex(0);
        click(find(box));
        frame();
        EXPECT_TRUE(isInView("txtFuel")) << "switching it off leaves the page";
    }
}

TEST_F(LowWindow, OfLargeMapsShowsOneAndTheSendButtons) {
    open(true, kLow);
    expectNothingScrolled();
    for (const char* name : {"txtFuel", "btnReadFuel", "btnWriteFuel", "btnWriteIgn", "btnSavePWM", "btnHelp"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
}

// Below the maps alone it would have too little room for its words.
TEST_F(LowWindow, ShowsTheStatusLineAcrossTheWindow) {
    for (const bool large : {false, true}) {
        open(large, kLow);
        EXPECT_TRUE(isInView("cellStatus"));
        EXPECT_TRUE(isInView("alignNumbers"));
        const auto leftOf = [this](const char* name) { return find(name).mapTo(&view(), QPoint(0, 0)).x(); };
        EXPECT_GT(leftOf("alignNumbers"), leftOf("btnReadFuel"));
    }
}

TEST_F(LowWindow, IsNotMadeWiderByALongStatusLine) {
    open(false, kLow);
    auto& status = find<Readout>("cellStatus");
    status.setText(QStringLiteral("Fuel, 1000 RPM, 0-10 %: 0.527 ms, count 19, 3 hp with 550 cc; ").repeated(3));
    status.updateGeometry();
    settle();
    expectNothingScrolled();
}

// Of the warning every line is shown, and the grid has what is left.
TEST_F(LowWindow, ShowsTheGridBelowTheWarningThatItsMapsHaveAnotherSize) {
    tables.SWType = 11;
    open(true, {960, 500});
    expectNothingScrolled();
    EXPECT_GE(find("sizeNote").height(), find("sizeNote").heightForWidth(find("sizeNote").width()));
    for (const char* name : {"sizeNote", "txtFuel", "cellStatus"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
}

TEST_F(LowWindow, BecomesTwoMapsAgainWhereThereIsRoom) {
    auto& form = open(false, kLow);
    form.resize(1340 * 15, 690 * 15);
    settle();
    EXPECT_FALSE(pages().isVisible());
    EXPECT_TRUE(isInView("txtFuel"));
    EXPECT_TRUE(isInView("txtIgn"));
}

// 80 % at least; a window of the usual width has texts of the usual size.
TEST_F(LowWindow, HasSmallerTexts) {
    auto& form = open(false, kLow);
    const auto textSize = [this] { return QFontInfo(find("chkTrace").font()).pixelSize(); };
    const int usual = QFontInfo(view().font()).pixelSize();
    EXPECT_LT(textSize(), usual);
    EXPECT_GE(textSize(), usual * 0.8 - 1);
    form.resize(1340 * 15, 690 * 15);
    settle();
    EXPECT_EQ(textSize(), usual);
}

TEST(FoldingRow, IsFoldedWhereTheGroupsHaveNoRoomSideBySide) {
    QWidget window;
    auto& row = child<FoldingRow>(&window, 10);
    auto& first = child<QWidget>(&row);
    auto& second = child<QWidget>(&row);
    first.setFixedSize(200, 20);
    second.setFixedSize(100, 30);
    row.first().addWidget(&first);
    row.second().addWidget(&second);
    EXPECT_EQ(row.minimumSizeHint().width(), 200);
    window.show();
    row.resize(310, 100);
    EXPECT_FALSE(row.isFolded());
    row.resize(309, 100);
    EXPECT_TRUE(row.isFolded());
}

TEST(FoldingRow, IsFoldedOnceAWidgetIsShownForWhichThereIsNoRoom) {
    QWidget window;
    auto& row = child<FoldingRow>(&window, 10);
    auto& first = child<QWidget>(&row);
    auto& second = child<QWidget>(&row);
    first.setFixedSize(200, 20);
    second.setFixedSize(100, 30);
    row.first().addWidget(&first);
    row.second().addWidget(&second);
    second.hide();
    window.show();
    row.resize(309, 100);
    settle();
    EXPECT_FALSE(row.isFolded());
    second.show();
    settle();
    EXPECT_TRUE(row.isFolded());
}

}  // namespace
}  // namespace korvane::views
