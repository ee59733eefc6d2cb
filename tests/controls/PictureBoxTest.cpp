#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/PictureBox.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PictureBoxTest : public ModelBench {
protected:
    PictureBox picture_{window_, "picTrend"};
};

TEST_F(PictureBoxTest, KeepsWhatIsDrawnInOrder) {
    auto& surface = picture_.surface();
    surface.line({1, 2}, {3, 4}, kRed);
    surface.box({5, 6}, {7, 8}, kGreen);
    surface.text({9, 10}, "words", kBlue);
    const auto shapes = picture_.drawing().shapes();
    ASSERT_EQ(shapes.size(), 3U);
    EXPECT_EQ(shapes[0].kind, Drawing::Kind::Polyline);
    EXPECT_EQ(shapes[0].color, kRed);
    EXPECT_THAT(picture_.drawing().pointsOf(shapes[0]), ElementsAre(Point{1, 2}, Point{3, 4}));
    EXPECT_EQ(shapes[1].kind, Drawing::Kind::Box);
    EXPECT_THAT(picture_.drawing().pointsOf(shapes[1]), ElementsAre(Point{5, 6}, Point{7, 8}));
    EXPECT_EQ(shapes[2].kind, Drawing::Kind::Text);
    EXPECT_EQ(shapes[2].color, kBlue);
    EXPECT_EQ(picture_.drawing().textOf(shapes[2]).words, "words");
    EXPECT_EQ(picture_.drawing().textOf(shapes[2]).at, (Point{9, 10}));
}

TEST_F(PictureBoxTest, APolylineHasThePointsThatWereFilledIn) {
    const auto points = picture_.surface().polyline(3, kWhite);
    points[0] = {1, 1};
    points[1] = {2, 2};
    points[2] = {3, 3};
    picture_.surface().line({7, 7}, {8, 8}, kWhite);
    const auto shapes = picture_.drawing().shapes();
    EXPECT_THAT(picture_.drawing().pointsOf(shapes[0]), ElementsAre(Point{1, 1}, Point{2, 2}, Point{3, 3}));
    EXPECT_THAT(picture_.drawing().pointsOf(shapes[1]), ElementsAre(Point{7, 7}, Point{8, 8}));
}

TEST_F(PictureBoxTest, ClearingForgetsEverything) {
    picture_.surface().text({0, 0}, "old", kWhite);
    picture_.surface().line({1, 2}, {3, 4}, kRed);
    picture_.surface().clear();
    EXPECT_THAT(picture_.drawing().shapes(), IsEmpty());
    picture_.surface().text({0, 0}, "new", kWhite);
    EXPECT_EQ(picture_.drawing().textOf(picture_.drawing().shapes()[0]).words, "new");
}

TEST_F(PictureBoxTest, TellsWhenTheDrawingIsDone) {
    NotingObserver observer(picture_);
    picture_.surface().line({1, 2}, {3, 4}, kRed);
    EXPECT_THAT(observer.changes, IsEmpty());
    picture_.drawn();
    EXPECT_THAT(observer.changes, ElementsAre(picture_.drawingProperty()));
}

TEST_F(PictureBoxTest, ADrawThatWaitsIsMadeOnceWhenSomebodyLooks) {
    int draws = 0;
    picture_.drawLater([&] {
        ++draws;
        picture_.surface().line({1, 2}, {3, 4}, kRed);
    });
    EXPECT_EQ(draws, 0);
    EXPECT_EQ(picture_.drawing().shapes().size(), 1U);
    EXPECT_EQ(picture_.drawing().shapes().size(), 1U);
    EXPECT_EQ(draws, 1);
}

TEST_F(PictureBoxTest, ALaterDrawTakesThePlaceOfOneThatWaits) {
    picture_.drawLater([&] { picture_.surface().line({1, 2}, {3, 4}, kRed); });
    picture_.drawLater([&] { picture_.surface().text({5, 6}, "words", kBlue); });
    ASSERT_EQ(picture_.drawing().shapes().size(), 1U);
    EXPECT_EQ(picture_.drawing().shapes()[0].kind, Drawing::Kind::Text);
}

TEST_F(PictureBoxTest, WhoDrawsOnTheSurfaceDrawsBehindADrawThatWaits) {
    picture_.drawLater([&] { picture_.surface().line({1, 2}, {3, 4}, kRed); });
    picture_.surface().text({5, 6}, "words", kBlue);
    ASSERT_EQ(picture_.drawing().shapes().size(), 2U);
    EXPECT_EQ(picture_.drawing().shapes()[0].kind, Drawing::Kind::Polyline);
}

TEST_F(PictureBoxTest, ANewWidthOrHeightRaisesResize) {
    int resizes = 0;
    picture_.Resize = [&] { ++resizes; };
    picture_.Width = 100;
    picture_.Height = 100;
    picture_.Width = 100;
    picture_.Left = 5;
    EXPECT_EQ(resizes, 2);
}

}  // namespace
}  // namespace korvane::controls
