// The viewer's other draw, from a table: as the live trends', with settings of its own.
#include <gmock/gmock.h>

#include "trend/TrendBench.h"
#include "trend/cTrendline_New.h"

namespace korvane::trend {
namespace {

using controls::kWhite;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class ArrayTrendTest : public TrendBench {
protected:
    ArrayTrendTest() {
        new_.PicBox = &picture_;
        table_.describe(0, "Map", " s");
        for (int i = 400; i >= 1; --i) {
            table_.push(i % 90, 0);
        }
    }
    void drawNew(bool rightScale = false) { new_.DrawTrend(table_, rightScale); }

    cTrendline_New new_{dialogs_};
};

TEST_F(ArrayTrendTest, DrawsWhatTheLiveTrendDraws) {
    draw();
    const auto words = texts();
    const auto lines = shapesOf(Drawing::Kind::Polyline);
    drawNew();
    EXPECT_EQ(texts(), words);
    EXPECT_EQ(shapesOf(Drawing::Kind::Polyline), lines);
}

TEST_F(ArrayTrendTest, ItsScaleFollowsTheTableWhenAsked) {
    new_.AutoScale = true;
    new_.maxY = 300;
    drawNew();
    EXPECT_EQ(new_.maxY, 99);
}

TEST_F(ArrayTrendTest, RunsFromTheLeftWhenAsked) {
    new_.ToRight = true;
    drawNew();
    EXPECT_EQ(series()[0].points[0], (Point{500, 3268}));  // row 2 holds 1
    EXPECT_EQ(series()[0].points[3], (Point{567, 3172}));  // 6700 / 300 a row
    EXPECT_THAT(texts(), Contains(Words{{415, 3385}, "0 min", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{{1755, 3385}, "1 min", kWhite}));
}

TEST_F(ArrayTrendTest, LeavesOutTheValueAndTheTimesWhenAsked) {
    new_.ShowValue = false;
    new_.XTitleShow = false;
    drawNew();
    EXPECT_THAT(texts(), SizeIs(11)) << "ten of the value grid and the name";
    EXPECT_THAT(vertical(), SizeIs(6));
}

TEST_F(ArrayTrendTest, NamesTheTimesAsAsked) {
    new_.XTitleScale = 30;
    new_.XTitleKerroin = 0.5F;
    new_.XTitleEnd = " h";
    drawNew();
    EXPECT_THAT(texts(), Contains(Words{{7115, 3385}, "0 h", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{{5775, 3385}, "1 h", kWhite}));  // 60 / 30 * 0.5
}

TEST_F(ArrayTrendTest, AFailureIsAMessage) {
    new_.maxX = 402;
    drawNew();
    const auto messages = dialogs_.takeMessages();
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].text, "Error: cDrawTrend Subscript out of range");
}

}  // namespace
}  // namespace korvane::trend
