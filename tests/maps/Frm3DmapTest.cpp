#include "MapsBench.h"

namespace korvane::maps {
namespace {

using testing::IsEmpty;

class Frm3DmapTest : public MapsBench {
protected:
    controls::Chart& chart() { return frm3Dmap_.MSChart1; }
    std::string data(int row, int column) {
        chart().Row = row;
        chart().Column = column;
        return chart().Data();
    }
    // Each table is told by its first cell.
    void markTables() {
        tables_.FuelMapOut[0] = 11;
        tables_.IgnMapOut[0] = 22;
        tables_.PwmMapOut[0] = 33;
    }
    void expectUntouched() {
        EXPECT_EQ(chart().RowCount.get(), 0);
        EXPECT_EQ(chart().ColumnCount.get(), 0);
    }
};

TEST_F(Frm3DmapTest, StartsHiddenWithAnEmptyTag) {
    EXPECT_TRUE(frm3Dmap_.isLoaded());
    EXPECT_FALSE(frm3Dmap_.Visible);
    EXPECT_EQ(frm3Dmap_.Caption.get(), "3D map");
    EXPECT_EQ(frm3Dmap_.Tag.get(), "");
    EXPECT_EQ(frm3Dmap_.Command1.Caption.get(), "update");
    expectUntouched();
}

TEST_F(Frm3DmapTest, BeforeItIsOpenedARefreshChangesNothing) {
    markTables();
    frm3Dmap_.Update3D(1);
    expectUntouched();
    EXPECT_EQ(frm3Dmap_.mapNumber(), 0);
    frm3Dmap_.Command1.press();
    expectUntouched();
    frm3Dmap_.open();
    EXPECT_EQ(data(1, 1), "22");
}

TEST_F(Frm3DmapTest, OpeningShowsTheIgnitionTableFirst) {
    markTables();
    frm3Dmap_.open();
    EXPECT_TRUE(frm3Dmap_.Visible);
    EXPECT_EQ(frm3Dmap_.Tag.get(), "VISIBLE");
    EXPECT_EQ(data(1, 1), "22");
    EXPECT_EQ(frm3Dmap_.mapNumber(), 0);
}

TEST_F(Frm3DmapTest, TheNumberChoosesTheTable) {
    markTables();
    frm3Dmap_.open();
    frm3Dmap_.Update3D(1);
    EXPECT_EQ(data(1, 1), "11");
    frm3Dmap_.Update3D(3);
    EXPECT_EQ(data(1, 1), "33");
    for (const std::int32_t number : {2, 0, 4, 98, -1}) {
        frm3Dmap_.Update3D(3);
        frm3Dmap_.Update3D(number);
        EXPECT_EQ(data(1, 1), "22") << number;
        EXPECT_EQ(frm3Dmap_.mapNumber(), number);
    }
}

TEST_F(Frm3DmapTest, NinetyNineKeepsTheTableOnShow) {
    markTables();
    frm3Dmap_.open();
    frm3Dmap_.Update3D(3);
    tables_.PwmMapOut[0] = 34;
    frm3Dmap_.Update3D(99);
    EXPECT_EQ(data(1, 1), "34");
    tables_.PwmMapOut[0] = 35;
    frm3Dmap_.Command1.press();
    EXPECT_EQ(data(1, 1), "35");
}

// 1 * 500 + 1000 - 500 = 1000; 16 * 500 + 500 = 8500.
TEST_F(Frm3DmapTest, TheLabelsAreTheAxesOfTheGrid) {
    frm3Dmap_.open();
    EXPECT_EQ(chart().RowCount.get(), 10);
    EXPECT_EQ(chart().ColumnCount.get(), 16);
    EXPECT_EQ(chart().columnLabelAt(0), "1000 RPM");
    EXPECT_EQ(chart().columnLabelAt(1), "1500 RPM");
    EXPECT_EQ(chart().columnLabelAt(15), "8500 RPM");
    EXPECT_EQ(chart().rowLabelAt(0), "0 - 10 %");
    EXPECT_EQ(chart().rowLabelAt(1), "10 - 20 %");
    EXPECT_EQ(chart().rowLabelAt(9), "90 - 100 %");
}

TEST_F(Frm3DmapTest, TheLargeLayoutHasLongerAxes) {
    frm3Dmap_.setMapSizes(20, 16);
    frm3Dmap_.open();
    EXPECT_EQ(chart().columnLabelAt(19), "10500 RPM");
    EXPECT_EQ(chart().rowLabelAt(15), "150 - 160 %");
}

TEST_F(Frm3DmapTest, SizesWaitForTheNextRefresh) {
    frm3Dmap_.open();
    frm3Dmap_.setMapSizes(20, 16);
    EXPECT_EQ(chart().ColumnCount.get(), 16);
    frm3Dmap_.Update3D(99);
    EXPECT_EQ(chart().ColumnCount.get(), 20);
    EXPECT_EQ(chart().RowCount.get(), 16);
}

// Cell 17 of 16 columns is row 2, column 2; of 20 columns it is row 1, column 18.
TEST_F(Frm3DmapTest, CellsRunRowByRow) {
    tables_.IgnMapOut[15] = 15;
    tables_.IgnMapOut[16] = 16;
    tables_.IgnMapOut[17] = 17;
    tables_.IgnMapOut[159] = 159;
    tables_.IgnMapOut[319] = 255;
    frm3Dmap_.open();
    EXPECT_EQ(data(1, 16), "15");
    EXPECT_EQ(data(2, 1), "16");
    EXPECT_EQ(data(2, 2), "17");
    EXPECT_EQ(data(10, 16), "159");
    frm3Dmap_.setMapSizes(20, 16);
    frm3Dmap_.Update3D(99);
    EXPECT_EQ(data(1, 18), "17");
    EXPECT_EQ(data(16, 20), "255");
}

TEST_F(Frm3DmapTest, ShowsEditedRawBytes) {
    tables_.FuelMapIn[0] = 100;
    tables_.FuelMapOut[0] = 120;
    frm3Dmap_.open();
    frm3Dmap_.Update3D(1);
    EXPECT_EQ(data(1, 1), "120");
}

TEST_F(Frm3DmapTest, BeforeAReadNoCellHasAValue) {
    frm3Dmap_.open();
    EXPECT_EQ(frm3Dmap_.unreadWords(), "");
    frm3Dmap_.nothingRead();
    EXPECT_EQ(frm3Dmap_.unreadWords(), "160 of 160 cells were never read");
    EXPECT_EQ(frm3Dmap_.marks.Unread.get(), std::vector<bool>(160, true));
    frm3Dmap_.setMapSizes(20, 16);
    frm3Dmap_.Update3D(99);
    EXPECT_EQ(frm3Dmap_.unreadWords(), "320 of 320 cells were never read");
}

TEST_F(Frm3DmapTest, TellsHowManyCellsOfTheTableOnShowWereNeverRead) {
    frm3Dmap_.open();
    std::vector<bool> unread(160);
    unread[0] = unread[5] = unread[159] = true;
    frm3Dmap_.unreadIn(1, unread);
    EXPECT_EQ(frm3Dmap_.unreadWords(), "");
    frm3Dmap_.Update3D(1);
    EXPECT_EQ(frm3Dmap_.unreadWords(), "3 of 160 cells were never read");
    EXPECT_EQ(frm3Dmap_.marks.Unread.get(), unread);
    frm3Dmap_.Update3D(2);
    EXPECT_EQ(frm3Dmap_.unreadWords(), "");
    EXPECT_TRUE(frm3Dmap_.marks.Unread.get().empty());
    frm3Dmap_.Update3D(1);
    frm3Dmap_.unreadIn(1, {});
    EXPECT_EQ(frm3Dmap_.unreadWords(), "");
}

TEST_F(Frm3DmapTest, ACellWithACountHasAValue) {
    frm3Dmap_.nothingRead();
    frm3Dmap_.open();
    tables_.PwmMapOut.fill(7);
    tables_.PwmMapOut[100] = 0;
    frm3Dmap_.Update3D(3);
    EXPECT_EQ(frm3Dmap_.unreadWords(), "1 of 160 cells was never read");
}

TEST_F(Frm3DmapTest, TellsTheViewOncePerRefresh) {
    frm3Dmap_.open();
    struct Counter : controls::Observer {
        void propertyChanged(controls::Object& object, const void* property) override {
            count += property == dynamic_cast<controls::Chart&>(object).dataProperty() ? 1 : 0;
        }
        int count = 0;
    } counter;
    chart().addObserver(counter);
    frm3Dmap_.Update3D(1);
    EXPECT_EQ(counter.count, 1);
    chart().removeObserver(counter);
}

// 20 by 17 cells are 20 more than the image has.
TEST_F(Frm3DmapTest, TheRedrawStopsWhereTheImageEnds) {
    tables_.IgnMapOut[319] = 77;
    frm3Dmap_.setMapSizes(20, 17);
    frm3Dmap_.open();
    EXPECT_EQ(chart().Row.get(), 17);
    EXPECT_EQ(chart().Column.get(), 1);
    EXPECT_EQ(data(16, 20), "77");
    EXPECT_EQ(data(17, 1), "");
    EXPECT_EQ(chart().rowLabelAt(16), "160 - 170 %");
    EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
    EXPECT_EQ(machine_.log.lines.size(), 1U);
}

// 32767 by 32767 has more cells than the image, -1 by -1 has one that the chart has not got; the others have none.
TEST_F(Frm3DmapTest, AbsurdSizesAreTakenAndFilledAsFarAsTheirCellsGo) {
    frm3Dmap_.open();
    for (const auto& [columns, rows, failures] :
         {std::tuple{32767, 32767, 1U}, {0, 0, 0U}, {-1, -1, 1U}, {-32768, 10, 0U}, {16, -32768, 0U}}) {
        machine_.log.lines.clear();
        frm3Dmap_.setMapSizes(static_cast<std::int16_t>(columns), static_cast<std::int16_t>(rows));
        frm3Dmap_.Update3D(1);
        EXPECT_EQ(chart().ColumnCount.get(), columns);
        EXPECT_EQ(chart().RowCount.get(), rows);
        EXPECT_EQ(machine_.log.lines.size(), failures) << columns << ' ' << rows;
        EXPECT_THAT(machine_.log.lines, testing::Each(testing::HasSubstr("Subscript out of range")));
    }
    frm3Dmap_.setMapSizes(16, 10);
    frm3Dmap_.Update3D(1);
    EXPECT_EQ(data(10, 16), "0");
}

TEST_F(Frm3DmapTest, TheCloseBoxHidesItAndRefreshesGoOn) {
    markTables();
    frm3Dmap_.open();
    EXPECT_FALSE(frm3Dmap_.unload());
    EXPECT_TRUE(frm3Dmap_.isLoaded());
    EXPECT_FALSE(frm3Dmap_.Visible);
    frm3Dmap_.Update3D(1);
    EXPECT_EQ(data(1, 1), "11");
    frm3Dmap_.open();
    EXPECT_TRUE(frm3Dmap_.Visible);
    EXPECT_EQ(data(1, 1), "11");
}

TEST_F(Frm3DmapTest, GoesWithTheProgram) {
    frm3Dmap_.open();
    frm3Dmap_.leave();
    EXPECT_FALSE(frm3Dmap_.isLoaded());
    EXPECT_FALSE(frm3Dmap_.Visible);
}

TEST_F(Frm3DmapTest, TheChartFollowsTheWindow) {
    frm3Dmap_.resize(9200, 6200);
    EXPECT_EQ(chart().Width.get(), 9000);
    EXPECT_EQ(chart().Height.get(), 6000);
    frm3Dmap_.resize(150, std::numeric_limits<int>::min());
    EXPECT_EQ(chart().Width.get(), 0);
    EXPECT_EQ(chart().Height.get(), 0);
}

}  // namespace
}  // namespace korvane::maps
