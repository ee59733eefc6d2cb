// The log viewer's view: keys, wheel, pointer, a dropped log, and what is told.
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LogText.h"
#include "support/VirtualProgram.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/Views.h"
#include "views/trend/LogPlot.h"
#include "views/widgets/DropDown.h"

namespace korvane::views {
namespace {

class TrendViewTest : public testing::Test {
protected:
    TrendViewTest() {
        addViews(host);
        run.window.btnDatalogTrend.press();
        view().resize(1240, 680);
        view().activateWindow();
        settle();
    }

    [[nodiscard]] trend::FrmTrend_txt& model() { return *run.program.logViewer().window(); }
    [[nodiscard]] WindowView& view() { return *host.viewOf(model()); }
    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(const char* name) {
        return findIn<Widget>(view(), name);
    }
    LogPlot& plot() { return find<LogPlot>("Picture1"); }
    void load(int rows) {
        model().open(run.folder.write("log.txt", support::numberedLog(rows)));
        frame();
    }
    void frame() {
        host.clock().tick();
        settle();
    }
    void moveTo(QPoint at) {
        send(plot(), QMouseEvent(QEvent::MouseMove, at, plot().mapToGlobal(at), Qt::NoButton, Qt::NoButton, {}));
        frame();
    }
    void turnWheel(int angle) {
        const QPoint at = plot().rect().center();
        send(plot(),
             QWheelEvent(at, plot().mapToGlobal(at), {}, {0, angle}, Qt::NoButton, {}, Qt::NoScrollPhase, false));
        frame();
    }

    support::VirtualProgram run;
    ViewHost host{run.windows};
};

TEST_F(TrendViewTest, EveryControlOfTheWindowHasItsWidget) {
    for (const auto* control : model().controls()) {
        if (control->kind() != "timer") {
            EXPECT_NE(view().findChild<QWidget*>(QString::fromStdString(control->path())), nullptr) << control->path();
        }
    }
}

TEST_F(TrendViewTest, EveryWidgetThatTakesKeysHasAName) {
    for (auto* const widget : view().findChildren<QWidget*>()) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->objectName().isEmpty()) {
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        }
    }
}

TEST_F(TrendViewTest, ThePictureFillsTheRoomBesideTheLists) {
    EXPECT_GT(plot().width(), view().width() * 3 / 4);
    EXPECT_GT(plot().height(), view().height() * 3 / 4);
    EXPECT_GT(plot().mapTo(&view(), QPoint()).x(), find("Frame1").mapTo(&view(), QPoint()).x());
    EXPECT_NEAR(model().Picture1.Width / 15.0, plot().width(), plot().width() * 0.1);
}

// A laptop's screen at twice the usual size of everything.
TEST_F(TrendViewTest, ALowWindowHasThePlotWholeInSight) {
    view().resize(683, 350);
    settle();
    const QRect place(plot().mapTo(&view(), QPoint()), plot().size());
    EXPECT_TRUE(view().rect().contains(place)) << place.bottom();
    EXPECT_TRUE(view().rect().contains(find("lblCursor").mapTo(&view(), QPoint())));
    EXPECT_GT(plot().width(), 400);
    find("btnNext").setFocus();
    settle();
    key(find("btnPrev"), Qt::Key_Tab);
    settle();
    EXPECT_TRUE(view().rect().contains(find("btnNext").mapTo(&view(), QPoint()))) << "scrolled to";
}

TEST_F(TrendViewTest, TabGoesThroughTheControlsFromTheFileToThePlot) {
    find("btnLoad").setFocus();
    std::vector<std::string> names{"btnLoad"};
    while (names.size() < 20 && names.back() != "Picture1") {
        key(*view().focusWidget(), Qt::Key_Tab);
        names.push_back(view().focusWidget()->objectName().toStdString());
    }
    EXPECT_THAT(names, testing::ElementsAre("btnLoad", "Combo1", "Combo2", "Combo3", "Combo4", "Combo5", "Combo6",
                                            "chkAutoSetpoint", "CheckWithLimits", "Combopoints", "btnPrev", "btnNext",
                                            "Picture1"));
}

TEST_F(TrendViewTest, ThePointerMarksTheRowBelowIt) {
    load(100);
    moveTo({plot().width() / 2, plot().height() / 2});
    EXPECT_GT(model().Cursor.Row, 2);
    EXPECT_TRUE(plot().mark().isVisible());
    EXPECT_NEAR(plot().mark().x(), plot().width() / 2, plot().width() / 100);
    EXPECT_EQ(plot().mark().height(), plot().height());
    EXPECT_THAT(model().lblCursor.Caption.get(), testing::StartsWith("Row "));
    send(plot(), QEvent(QEvent::Leave));
    frame();
    EXPECT_FALSE(plot().mark().isVisible());
}

TEST_F(TrendViewTest, ArrowsMoveTheMarkOnceThePlotHasTheFocus) {
    load(100);
    click(plot());
    plot().setFocus();
    ASSERT_EQ(model().activeControl(), &model().Picture1);
    frame();
    const int row = model().Cursor.Row;
    const int x = plot().mark().x();
    key(plot(), Qt::Key_Left);
    key(plot(), Qt::Key_Left);
    EXPECT_EQ(model().Cursor.Row, row + 2);
    EXPECT_LT(plot().mark().x(), x) << "to the left on the screen";
    key(plot(), Qt::Key_Right);
    EXPECT_EQ(model().Cursor.Row, row + 1);
}

TEST_F(TrendViewTest, PageKeysPressTheButtons) {
    load(1200);
    model().Combopoints.choose(0);
    plot().setFocus();
    key(plot(), Qt::Key_PageDown);
    EXPECT_EQ(model().line().firstRow, 500);
    key(plot(), Qt::Key_PageUp);
    EXPECT_EQ(model().line().firstRow, 0);
}

TEST_F(TrendViewTest, TheWheelChoosesTheLengthOfThePage) {
    load(1200);
    turnWheel(120);
    EXPECT_EQ(model().Combopoints.Text(), "5000");
    EXPECT_EQ(find<DropDown>("Combopoints").currentText(), "5000");
    turnWheel(-60);
    EXPECT_EQ(model().Combopoints.Text(), "5000") << "half a notch";
    turnWheel(-60);
    EXPECT_EQ(model().Combopoints.Text(), "10000");
}

TEST_F(TrendViewTest, ADroppedLogOpens) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(
        QString::fromStdString(run.folder.write("dropped.txt", support::numberedLog(42)).string()))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view(), &drop);
    EXPECT_EQ(model().lblMaxpoints.Caption.get(), "42");
    EXPECT_THAT(find<QLabel>("lblLog").text().toStdString(), testing::HasSubstr("dropped.txt"));
}

TEST_F(TrendViewTest, WhatIsNoFileIsNotTaken) {
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("https://localhost/log.txt"))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&view(), &enter);
    EXPECT_FALSE(enter.isAccepted());
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view(), &drop);
    EXPECT_EQ(model().lblMaxpoints.Caption.get(), "");
}

TEST_F(TrendViewTest, ALongLoadHasABusyPointerAndALine) {
    EXPECT_FALSE(find("prgLoad").isVisible());
    model().prgLoad.start(1000);
    frame();
    EXPECT_TRUE(find("prgLoad").isVisible());
    EXPECT_EQ(view().cursor().shape(), Qt::BusyCursor);
    model().prgLoad.stop();
    frame();
    EXPECT_NE(view().cursor().shape(), Qt::BusyCursor);
}

TEST_F(TrendViewTest, LongTextsLeaveThePlotWhereItIs) {
    load(100);
    const QRect place(plot().mapTo(&view(), QPoint()), plot().size());
    model().lblCursor.Caption = std::string(400, 'm');
    model().open(run.folder.write(std::string(240, 'm') + ".txt", support::numberedLog(100)));
    frame();
    const QRect now(plot().mapTo(&view(), QPoint()), plot().size());
    EXPECT_EQ(now.left(), place.left());
    EXPECT_EQ(now.width(), place.width());
    EXPECT_TRUE(view().rect().contains(now)) << now.right();
    model().lblCursor.Caption = std::string(400, 'm');
    frame();
    view().resize(view().size() + QSize(0, 10));
    settle();
    EXPECT_EQ(plot().width(), place.width());
}

TEST_F(TrendViewTest, AnEmptyWindowSaysWhatToDo) {
    EXPECT_THAT(find<QLabel>("lblLog").text().toStdString(), testing::HasSubstr("Load  file"));
}

}  // namespace
}  // namespace korvane::views
