#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program/LogViewerBench.h"

namespace korvane::trend {
namespace {

using support::LogText;
using support::numberedLog;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::vector<std::string> rowsOf(const controls::ComboBox& list) {
    std::vector<std::string> rows;
    for (int row = 0; row < list.ListCount(); ++row) {
        rows.push_back(list.List(row));
    }
    return rows;
}

class FrmTrendTest : public LogViewerBench {};

TEST_F(FrmTrendTest, OpensAsDesigned) {
    EXPECT_EQ(viewer().Caption.get(), "Datalog & Simulation");
    EXPECT_EQ(viewer().btnLoad.Caption.get(), "Load  file");
    EXPECT_EQ(viewer().btnNext.Caption.get(), "Next");
    EXPECT_EQ(viewer().btnPrev.Caption.get(), "Prev");
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "Simulate");
    EXPECT_FALSE(viewer().btnSimulate.Enabled);
    EXPECT_EQ(viewer().Frame1.Caption.get(), "Select trendlines");
    EXPECT_EQ(viewer().lblMaxValue.Caption.get(), "Max value");
    EXPECT_EQ(viewer().lblPoints.Caption.get(), "Points:");
    EXPECT_EQ(viewer().chkAutoSetpoint.Caption.get(), "Auto");
    EXPECT_EQ(viewer().CheckWithLimits.Caption.get(), "Show with limits");
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "");
    EXPECT_FALSE(viewer().Timer1.Enabled);
    EXPECT_EQ(viewer().Timer1.Interval, 3000);
    EXPECT_FALSE(viewer().TimerSim.Enabled);
    EXPECT_EQ(viewer().TimerSim.Interval, 50);
    EXPECT_THAT(viewer().Picture1.drawing().shapes(), IsEmpty());
    EXPECT_FALSE(viewer().lblLog.Caption.get().empty()) << "an empty window says what to do";
}

TEST_F(FrmTrendTest, TheListsHoldTheirRows) {
    EXPECT_THAT(rowsOf(viewer().Combo6), ElementsAre("50", "100", "150", "200", "300", "400", "500", "600", "700",
                                                     "800", "900", "1000", "1200", "1500"));
    EXPECT_EQ(viewer().Combo6.Text(), "800");
    EXPECT_THAT(rowsOf(viewer().Combopoints), ElementsAre("500", "1000", "2000", "5000", "10000", "25000", "50000"));
    EXPECT_EQ(viewer().Combopoints.Text(), "10000");
    const std::vector<std::string> names{"none",     "Time",   "RPM",     "Twater",   "Tair",       "Voltage", "MAP",
                                         "Throttle", "Lambda", "InjTime", "idlePID1", "BoostPID2",  "K-type",  "IgnAdv",
                                         "T1",       "T2",     "T3",      "T4",       "V1",         "V2",      "V3",
                                         "V4",       "Accel",  "Kartta",  "Debug",    "updateSpeed"};
    std::vector<std::string> chosen;
    for (const auto* list :
         {&viewer().Combo1, &viewer().Combo2, &viewer().Combo3, &viewer().Combo4, &viewer().Combo5}) {
        EXPECT_EQ(rowsOf(*list), names);
        chosen.push_back(list->Text());
    }
    EXPECT_THAT(chosen, ElementsAre("RPM", "MAP", "Throttle", "Lambda", "InjTime"));
}

TEST_F(FrmTrendTest, ALoadShowsTheFirstPage) {
    load(numberedLog(300));
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "300");
    EXPECT_TRUE(viewer().btnSimulate.Enabled);
    EXPECT_EQ(page(), "from 0 to 300 300");
    EXPECT_THAT(legend(), ElementsAre("RPM", "MAP", "Throttle", "Lambda", "InjTime"));
    EXPECT_EQ(viewer().line().maxY, 800);
    EXPECT_EQ(viewer().line().Resolution, 10);
    EXPECT_TRUE(viewer().line().ToRight);
    const auto dialogs = run.dialogs.takeFileDialogs();
    ASSERT_THAT(dialogs, SizeIs(1));
    EXPECT_EQ(dialogs[0].kind, platform::FileDialog::Kind::Open);
    EXPECT_EQ(dialogs[0].title, "Save Settings");
    EXPECT_EQ(dialogs[0].filter, "All Files (*.txt)|*.txt");
}

TEST_F(FrmTrendTest, AFileThatComesDuringALoadIsLeft) {
    load(numberedLog(10));
    viewer().reader().loading = [](std::uintmax_t, std::uintmax_t) {};
    viewer().open(run.folder.write("other.txt", numberedLog(20)));
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "10");
    viewer().reader().loading = nullptr;
    viewer().open(run.folder / "other.txt");
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "20");
    EXPECT_FALSE(viewer().reader().loading);
}

TEST_F(FrmTrendTest, ACancelledDialogChangesNothing) {
    viewer().btnLoad.press();
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "");
    EXPECT_FALSE(viewer().btnSimulate.Enabled);
    load(numberedLog(10));
    viewer().btnLoad.press();
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "10");
}

TEST_F(FrmTrendTest, AFileWithoutRowsLeavesThePictureAndIsToldOf) {
    load(numberedLog(300));
    load("");
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "0");
    EXPECT_EQ(page(), "from 0 to 300 300");
    EXPECT_FALSE(viewer().lblLog.Caption.get().empty());
}

TEST_F(FrmTrendTest, PagesTurn) {
    load(numberedLog(1200));
    viewer().Combopoints.choose(0);
    EXPECT_EQ(page(), "from 0 to 500 500");
    viewer().btnNext.press();
    EXPECT_EQ(page(), "from 500 to 1000 500");
    viewer().btnNext.press();
    EXPECT_EQ(page(), "from 700 to 1200 500");
    viewer().btnNext.press();
    EXPECT_EQ(page(), "from 700 to 1200 500");
    viewer().btnPrev.press();
    EXPECT_EQ(page(), "from 200 to 700 500");
    viewer().btnPrev.press();
    EXPECT_EQ(page(), "from 0 to 500 500");
    viewer().btnPrev.press();
    EXPECT_EQ(page(), "from 0 to 500 500");
}

TEST_F(FrmTrendTest, AFileShorterThanThePageStaysOnIt) {
    load(numberedLog(300));
    viewer().btnNext.press();
    EXPECT_EQ(page(), "from 2 to 300 298");
    viewer().btnNext.press();
    EXPECT_EQ(page(), "from 2 to 300 298");
    viewer().btnPrev.press();
    EXPECT_EQ(page(), "from 0 to 300 300");
}

TEST_F(FrmTrendTest, ALogOfOneRowHasAPageThatEndsBeforeItBegins) {
    load(numberedLog(1));
    EXPECT_EQ(page(), "from 0 to 1 1");
    viewer().btnNext.press();
    EXPECT_EQ(page(), "from 2 to 1 -1");
    EXPECT_THAT(messages(), IsEmpty());
}

// A page of a single row lets the next one begin before the log.
TEST_F(FrmTrendTest, APageBeforeTheLogIsAMessage) {
    load(numberedLog(3));
    viewer().btnNext.press();
    viewer().btnPrev.press();
    EXPECT_EQ(page(), "from -9998 to 2 10000");
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Subscript out of range"));
}

TEST_F(FrmTrendTest, EachListRedraws) {
    load(numberedLog(300));
    viewer().Combo1.choose(0);
    EXPECT_THAT(legend(), ElementsAre("MAP", "Throttle", "Lambda", "InjTime"));
    viewer().Combo2.choose(3);
    viewer().Combo3.choose(4);
    viewer().Combo4.choose(5);
    viewer().Combo5.choose(25);
    EXPECT_THAT(legend(), ElementsAre("Twater", "Tair", "Voltage", "updatespeed"));
    viewer().Combo6.choose(0);
    EXPECT_EQ(viewer().line().maxY, 50);
    EXPECT_THAT(texts(), testing::Contains("45"));
}

TEST_F(FrmTrendTest, TimeIsNoSeries) {
    load(numberedLog(300));
    viewer().Combo1.choose(1);
    EXPECT_THAT(legend(), ElementsAre("MAP", "Throttle", "Lambda", "InjTime"));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(FrmTrendTest, AllListsOnNoneDrawOnlyGridAndFrame) {
    load(numberedLog(300));
    for (auto* list : {&viewer().Combo1, &viewer().Combo2, &viewer().Combo3, &viewer().Combo4, &viewer().Combo5}) {
        list->choose(0);
    }
    EXPECT_THAT(legend(), IsEmpty());
    EXPECT_EQ(page(), "from 0 to 300 300");
}

TEST_F(FrmTrendTest, TheScaleFollowsTheDataOnlyWhenAsked) {
    load(numberedLog(300));
    EXPECT_EQ(viewer().line().maxY, 800);
    viewer().chkAutoSetpoint.press();
    EXPECT_EQ(viewer().line().maxY, 308);  // rows to 298
    viewer().Combo6.choose(0);
    EXPECT_EQ(viewer().line().maxY, 308) << "each draw starts from the list";
    viewer().chkAutoSetpoint.press();
    EXPECT_EQ(viewer().line().maxY, 50);
}

TEST_F(FrmTrendTest, LimitsLeaveTheFirstSeriesAlone) {
    load(numberedLog(300));
    viewer().CheckWithLimits.press();
    EXPECT_TRUE(viewer().line().ShowLimits);
    EXPECT_TRUE(viewer().Combo1.Enabled);
    for (auto* list : {&viewer().Combo2, &viewer().Combo3, &viewer().Combo4, &viewer().Combo5}) {
        EXPECT_FALSE(list->Enabled);
    }
    EXPECT_THAT(legend(), SizeIs(5)) << "the box itself redraws nothing";
    viewer().Combo1.choose(3);
    EXPECT_THAT(legend(), ElementsAre("Twater"));
    viewer().CheckWithLimits.press();
    EXPECT_TRUE(viewer().Combo5.Enabled);
    EXPECT_FALSE(viewer().line().ShowLimits);
    viewer().Combo1.choose(2);
    EXPECT_THAT(legend(), ElementsAre("RPM", "MAP", "Throttle", "Lambda", "InjTime"));
}

TEST_F(FrmTrendTest, AListWithoutAChoiceEndsTheRedrawSilently) {
    load(numberedLog(300));
    viewer().Combo2.ListIndex = -1;
    viewer().Combo6.choose(0);
    EXPECT_EQ(viewer().line().maxY, 800);
    EXPECT_THAT(messages(), IsEmpty());
    EXPECT_THAT(run.log.lines, IsEmpty());
}

TEST_F(FrmTrendTest, TheTimerOfTheDesignRedrawsOnceStarted) {
    load(numberedLog(300));
    viewer().lblMaxpoints.Caption = "0";
    viewer().Combo6.choose(0);
    viewer().lblMaxpoints.Caption = "300";
    EXPECT_THAT(texts(), testing::Contains("720")) << "of 800";
    viewer().Timer1.Enabled = true;
    wait(2999);
    EXPECT_THAT(texts(), testing::Contains("720"));
    wait(1);
    EXPECT_THAT(texts(), Not(testing::Contains("720")));
}

TEST_F(FrmTrendTest, ADifferentSizeRedraws) {
    load(numberedLog(300));
    viewer().Picture1.Width = 9000;
    viewer().Picture1.Height = 3600;
    EXPECT_EQ(viewer().line().frame().right, 7200);
    EXPECT_EQ(viewer().line().frame().bottom, 3300);
}

TEST_F(FrmTrendTest, ADifferentSizeTellsNoFailureAnew) {
    LogText log;
    for (int n = 0; n < 9; ++n) {
        log.row(n, {{6, "none"}});
    }
    load(log.text());
    static_cast<void>(messages());
    viewer().Picture1.Width = 9000;
    EXPECT_EQ(viewer().line().frame().right, 7200);
    EXPECT_THAT(messages(), IsEmpty());
    viewer().Combo6.choose(0);
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Type mismatch"));
}

TEST_F(FrmTrendTest, OneViewerAtATimeAndEachOpeningStartsEmpty) {
    load(numberedLog(300));
    auto* const first = &viewer();
    main.btnDatalogTrend.press();
    EXPECT_EQ(&viewer(), first);
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "300");
    EXPECT_TRUE(viewer().unload());
    EXPECT_EQ(run.program.logViewer().window(), nullptr);
    main.btnDatalogTrend.press();
    EXPECT_EQ(viewer().lblMaxpoints.Caption.get(), "");
    EXPECT_EQ(viewer().reader().ItemCount(), 0);
    EXPECT_FALSE(viewer().btnSimulate.Enabled);
}

TEST_F(FrmTrendTest, GoesWithTheMainWindow) {
    EXPECT_TRUE(main.unload());
    EXPECT_EQ(run.program.logViewer().window(), nullptr);
}

class TheMarkedRow : public LogViewerBench {
protected:
    TheMarkedRow() { load(numberedLog(100)); }

    // The middle of a row on the surface.
    double placeOf(int row) {
        const auto& frame = viewer().line().frame();
        return frame.right - row * frame.width() / 100.0;
    }
};

TEST_F(TheMarkedRow, IsThatUnderThePointer) {
    EXPECT_EQ(viewer().Cursor.Row, 0);
    EXPECT_FALSE(viewer().Cursor.Visible);
    EXPECT_EQ(viewer().lblCursor.Caption.get(), "");
    viewer().pointAt(placeOf(25));
    EXPECT_EQ(viewer().Cursor.Row, 25);
    EXPECT_TRUE(viewer().Cursor.Visible);
    EXPECT_NEAR(viewer().Cursor.Left, placeOf(25), 1);
    EXPECT_EQ(viewer().lblCursor.Caption.get(),
              "Row 25   00:00:02   RPM 25   MAP 0   Throttle 0   Lambda 0   InjTime 0");
    viewer().pointAway();
    EXPECT_FALSE(viewer().Cursor.Visible);
    EXPECT_EQ(viewer().lblCursor.Caption.get(), "");
}

// Of the 20 characters of two bytes in the first 40 bytes behind the one of one byte, 19 are whole.
TEST_F(TheMarkedRow, TellsTheBeginningOfACellThatRunsOn) {
    std::string whole;
    std::string shown = "a";
    for (int i = 0; i < 19; ++i) {
        shown += "\u00e4";
    }
    for (int i = 0; i < 1'000'000; ++i) {
        whole += "\u00e4";
    }
    viewer().Combo1.choose(3);
    support::LogText log;
    for (int row = 0; row < 6; ++row) {
        log.line("12:00:00 0 a" + whole + " " + std::string(40, 'b') + " 0 0 " + std::string(41, 'c'));
    }
    load(log.text());
    viewer().Combo2.choose(4);
    viewer().pointAt(0);
    EXPECT_EQ(viewer().lblCursor.Caption.get(), "Row 5   12:00:00   Twater " + shown + "...   Tair " +
                                                    std::string(40, 'b') + "   Throttle " + std::string(40, 'c') +
                                                    "...   Lambda 0   InjTime 0");
}

TEST_F(TheMarkedRow, TellsOfTheSeriesOnShowAlone) {
    viewer().pointAt(placeOf(25));
    viewer().Combo1.choose(3);
    viewer().Combo2.choose(0);
    viewer().Combo3.choose(1);
    EXPECT_EQ(viewer().lblCursor.Caption.get(), "Row 25   00:00:02   Twater 25   Lambda 0   InjTime 0");
}

TEST_F(TheMarkedRow, MovesByTheArrows) {
    viewer().setFocus(&viewer().Picture1);
    ASSERT_EQ(viewer().activeControl(), &viewer().Picture1);
    viewer().pointAt(placeOf(25));
    viewer().Picture1.keyDown(controls::kKeyLeft, 0);
    EXPECT_EQ(viewer().Cursor.Row, 26);
    viewer().Picture1.keyDown(controls::kKeyRight, 0);
    viewer().Picture1.keyDown(controls::kKeyRight, 0);
    EXPECT_EQ(viewer().Cursor.Row, 24);
    EXPECT_THAT(viewer().lblCursor.Caption.get(), HasSubstr("RPM 24 "));
}

TEST_F(TheMarkedRow, GoesWithALoad) {
    viewer().pointAt(placeOf(25));
    load(numberedLog(50));
    EXPECT_EQ(viewer().Cursor.Row, 0);
    EXPECT_EQ(viewer().lblCursor.Caption.get(), "");
}

TEST_F(TheMarkedRow, PagesTurnByKeysUnlessAListHasThem) {
    load(numberedLog(1200));
    viewer().Combopoints.choose(0);
    viewer().Picture1.keyDown(34, 0);
    EXPECT_EQ(page(), "from 500 to 1000 500");
    viewer().Picture1.keyDown(33, 0);
    EXPECT_EQ(page(), "from 0 to 500 500");
    viewer().setFocus(&viewer().btnLoad);
    viewer().btnLoad.keyDown(34, 0);
    EXPECT_EQ(page(), "from 500 to 1000 500");
    viewer().setFocus(&viewer().Combopoints);
    viewer().Combopoints.keyDown(33, 0);
    EXPECT_EQ(page(), "from 500 to 1000 500");
}

TEST_F(TheMarkedRow, TheWheelPicksTheNextLengthOfAPage) {
    load(numberedLog(1200));
    viewer().changePoints(-3);
    EXPECT_EQ(viewer().Combopoints.Text(), "1000");
    EXPECT_EQ(page(), "from 0 to 1000 1000");
    viewer().changePoints(-5);
    EXPECT_EQ(viewer().Combopoints.Text(), "500");
    viewer().changePoints(1);
    EXPECT_EQ(viewer().Combopoints.Text(), "1000");
    viewer().changePoints(100);
    EXPECT_EQ(viewer().Combopoints.Text(), "50000");
}

}  // namespace
}  // namespace korvane::trend
