// The restore points with real widgets, and the line of the main window about them.
#include <QAbstractItemModel>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "keep/PointSamples.h"
#include "keep/restore/FrmRestore.h"
#include "views/ProgramViews.h"
#include "views/keep/PointTable.h"

namespace korvane::views {
namespace {

using testing::HasSubstr;

struct RestoreViewTest : testing::Test, ProgramViews {
    RestoreViewTest() { tables.SWType = 11; }

    void put(int second, const char* reason) {
        auto point = keep::fullPoint();
        point.time.second = second;
        point.reason = reason;
        keep::PointStore(folder / "restore").add(point);
    }
    keep::FrmRestore& open() {
        program.restorePoints().open();
        auto& form = dynamic_cast<keep::FrmRestore&>(*windows.loaded().back());
        lookAt(form);
        frame();
        return form;
    }
    [[nodiscard]] PointTable& table() const { return find<PointTable>("lstPoints"); }
    [[nodiscard]] std::string cell(int row, int column) const {
        return table().model()->index(row, column).data().toString().toStdString();
    }
};

TEST_F(RestoreViewTest, ShowsTheRows) {
    put(1, "maps read");
    put(2, "before: fuel map");
    open();
    EXPECT_EQ(table().model()->rowCount(), 2);
    EXPECT_EQ(cell(0, 0), "2026-05-06 17:08:02");
    EXPECT_EQ(cell(0, 1), "before: fuel map");
    EXPECT_EQ(cell(1, 1), "maps read");
    EXPECT_EQ(cell(1, 2), "type 11, version 3.386");
}

TEST_F(RestoreViewTest, APickedRowIsThePickedPoint) {
    put(1, "maps read");
    put(2, "before: fuel map");
    auto& form = open();
    table().setCurrentIndex(table().model()->index(1, 0));
    EXPECT_EQ(form.lstPoints.ListIndex, 1);
    EXPECT_THAT(find<QLabel>("lblPoint").text().toStdString(), HasSubstr("maps read"));
    form.lstPoints.choose(0);
    frame();
    EXPECT_EQ(table().currentIndex().row(), 0);
}

TEST_F(RestoreViewTest, TheFilterIsTyped) {
    put(1, "maps read");
    put(2, "before: fuel map");
    open();
    find<QLineEdit>("txtFilter").insert("read");
    frame();
    EXPECT_EQ(table().model()->rowCount(), 1);
    EXPECT_EQ(find<QLabel>("lblCount").text().toStdString(), "1 of 2 restore points");
}

TEST_F(RestoreViewTest, ADeleteIsAskedAndMayBeRefused) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    frame();
    dialogs.answerQuestion({.yes = false, .stop = false});
    find<QPushButton>("btnDelete").click();
    EXPECT_EQ(form.lstPoints.rowCount(), 1);
    dialogs.answerQuestion({.yes = true, .stop = false});
    find<QPushButton>("btnDelete").click();
    EXPECT_EQ(form.lstPoints.rowCount(), 0);
    frame();
    EXPECT_EQ(table().model()->rowCount(), 0);
}

// As above with the question before a journal is removed, whose presses scripts make unasked.
TEST_F(RestoreViewTest, LeavingASettingAsItIsIsAskedAndMayBeRefused) {
    keep::RestoreJournal journal;
    journal.ecu = {11, 3386};
    journal.cells = {{600, 1, 2}};
    const keep::JournalFile file(folder / "restore");
    EXPECT_EQ(file.save(journal), "");
    connect();
    receiveFrame('y', {0xFF, 0xFF, 0x0D, 0x3A, 11});
    open();
    dialogs.answerQuestion({.yes = false, .stop = false});
    find<QPushButton>("btnForget").click();
    EXPECT_TRUE(file.load({11, 3386}).journal);
    dialogs.answerQuestion({.yes = true, .stop = false});
    find<QPushButton>("btnForget").click();
    EXPECT_FALSE(file.load({11, 3386}).journal);
}

TEST_F(RestoreViewTest, TheMainWindowLeadsToARestoreThatWasNotCompleted) {
    put(1, "maps read");
    put(2, "before: fuel map");
    lookAt(window);
    window.keepNotice.offer("A restore was not completed.", keep::PointStore(folder / "restore").list()[1].name);
    window.keepNotice.say("The ECU differs", "");
    frame();
    EXPECT_FALSE(find<QGroupBox>("keepNotice").isHidden());
    EXPECT_EQ(find<QGroupBox>("keepNotice").findChild<QLabel*>()->text().toStdString(),
              "A restore was not completed.\nThe ECU differs");
    find<QToolButton>("keepNoticeRestore").click();
    const auto& form = dynamic_cast<keep::FrmRestore&>(*windows.loaded().back());
    EXPECT_EQ(form.lstPoints.chosen()->reason, "maps read");
    window.keepNotice.offer("", "");
    frame();
    EXPECT_TRUE(find<QToolButton>("keepNoticeRestore").isHidden());
}

TEST_F(RestoreViewTest, TheMainWindowLeadsToTheDeskOfARunThatDidNotEnd) {
    put(1, "maps read");
    put(2, "before: fuel map");
    lookAt(window);
    window.keepNotice.unfinished("The program ended.", keep::PointStore(folder / "restore").list()[1].name);
    frame();
    EXPECT_FALSE(find<QGroupBox>("keepNotice").isHidden());
    EXPECT_EQ(find<QGroupBox>("keepNotice").findChild<QLabel*>()->text().toStdString(), "The program ended.");
    EXPECT_TRUE(find<QToolButton>("keepNoticeRestore").isHidden());
    find<QToolButton>("keepNoticeUnfinished").click();
    const auto& form = dynamic_cast<keep::FrmRestore&>(*windows.loaded().back());
    EXPECT_EQ(form.lstPoints.chosen()->reason, "maps read");
    frame();
    EXPECT_TRUE(find<QGroupBox>("keepNotice").isHidden());
}

TEST_F(RestoreViewTest, WhatIsNotThereIsNotShown) {
    put(1, "maps read");
    open();
    for (const char* name : {"btnGoOn", "btnGoBack", "btnForget", "btnStop"}) {
        EXPECT_FALSE(find<QPushButton>(name).isVisible()) << name;
    }
}

TEST_F(RestoreViewTest, EachPartHasAnAccessibleName) {
    open();
    for (const char* name : {"txtFilter", "txtNote"}) {
        EXPECT_FALSE(find<QLineEdit>(name).accessibleName().isEmpty()) << name;
    }
    EXPECT_FALSE(table().accessibleName().isEmpty());
}

TEST_F(RestoreViewTest, ClosingDuringAFrameLeavesNothingBehind) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    static_cast<void>(form.unload());
    frame();
}

TEST_F(RestoreViewTest, TheMainWindowHasALineOnlyWhenThereIsSomethingToSay) {
    lookAt(window);
    frame();
    EXPECT_TRUE(find<QGroupBox>("keepNotice").isHidden());
    window.keepNotice.say("The ECU differs", "a.point");
    frame();
    EXPECT_FALSE(find<QGroupBox>("keepNotice").isHidden());
    EXPECT_FALSE(find<QToolButton>("keepNoticeCompare").isHidden());
    window.keepNotice.say("No space left", {});
    frame();
    EXPECT_TRUE(find<QToolButton>("keepNoticeCompare").isHidden());
    window.keepNotice.say({}, {});
    frame();
    EXPECT_TRUE(find<QGroupBox>("keepNotice").isHidden());
}

TEST_F(RestoreViewTest, TheLineCanBeClosed) {
    lookAt(window);
    window.keepNotice.tell(link::ImageRun::Upload, "EEPROM upload: a gap");
    window.keepNotice.say("The ECU differs", "a.point");
    frame();
    find<QToolButton>("keepNoticeClose").click();
    frame();
    EXPECT_EQ(window.keepNotice.words(), "");
    EXPECT_TRUE(find<QGroupBox>("keepNotice").isHidden());
    window.keepNotice.offer("A restore was not completed.", "a.point");
    frame();
    EXPECT_TRUE(find<QToolButton>("keepNoticeClose").isHidden());
}

// 1280 by 690 less a title bar and a frame.
TEST_F(RestoreViewTest, TheLineOfTheMainWindowNeedsNoScrollBars) {
    lookAt(window);
    window.resize(1278 * 15, 664 * 15);
    window.keepNotice.offer(std::string(200, 'x'), "a.point");
    window.keepNotice.tell(link::ImageRun::Upload, "EEPROM upload: a gap");
    window.keepNotice.say(std::string(200, 'y'), "a.point");
    frame();
    const auto* const scroll = view().findChild<QScrollArea*>();
    EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
}

TEST_F(RestoreViewTest, WordsThatDoNotFitIntoTheLineAreInItsToolTip) {
    lookAt(window);
    const auto* const words = find<QGroupBox>("keepNotice").findChild<QLabel*>();
    window.keepNotice.say("The ECU differs", {});
    frame();
    EXPECT_EQ(words->toolTip(), "");
    window.keepNotice.say(std::string(400, 'x'), {});
    frame();
    EXPECT_EQ(words->toolTip(), QString(400, QLatin1Char('x')));
}

TEST_F(RestoreViewTest, TheLineOpensTheComparison) {
    put(1, "maps read");
    lookAt(window);
    window.keepNotice.say("The ECU differs", keep::PointStore(folder / "restore").list()[0].name);
    frame();
    find<QToolButton>("keepNoticeCompare").click();
    EXPECT_EQ(windows.loaded().back()->name(), "frmCompare");
}

TEST_F(RestoreViewTest, TheMainWindowHasAButton) {
    lookAt(window);
    frame();
    find<QToolButton>("restore").click();
    EXPECT_EQ(windows.loaded().back()->name(), "frmRestore");
}

}  // namespace
}  // namespace korvane::views
