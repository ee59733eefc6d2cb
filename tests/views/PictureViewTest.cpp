#include <QImage>

#include "views/FormBench.h"

namespace korvane::views {
namespace {

constexpr QColor kBackground{0, 0, 0};

struct PictureViewTest : testing::Test, FormBench {
    [[nodiscard]] QImage painted(int width) {
        picture.resize(200, 100);
        picture.setDrawing(drawing, width, kBackground);
        return picture.grab().toImage();
    }

    PictureView picture{nullptr};
    controls::Drawing drawing;
};

TEST_F(PictureViewTest, APolylineStandsWhereTheDrawingSays) {
    const auto points = drawing.polyline(3, controls::kRed);
    points[0] = {300, 750};
    points[1] = {1500, 750};
    points[2] = {1500, 150};
    const QImage image = painted(3000);
    EXPECT_EQ(image.pixelColor(50, 50), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(100, 30), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(50, 48), kBackground);
    EXPECT_EQ(image.pixelColor(50, 52), kBackground);
    EXPECT_EQ(image.pixelColor(15, 50), kBackground);
    EXPECT_EQ(image.pixelColor(110, 50), kBackground);
}

TEST_F(PictureViewTest, ABoxIsItsFourSides) {
    drawing.box({150, 150}, {1500, 900}, controls::kYellow);
    const QImage image = painted(3000);
    for (const auto& at : {QPoint(50, 10), QPoint(50, 60), QPoint(10, 30), QPoint(100, 30)}) {
        EXPECT_EQ(image.pixelColor(at), QColor(255, 255, 0)) << at.x() << ' ' << at.y();
    }
    EXPECT_EQ(image.pixelColor(50, 30), kBackground);
}

TEST_F(PictureViewTest, LaterShapesCoverEarlierOnes) {
    drawing.line({0, 750}, {3000, 750}, controls::kRed);
    drawing.line({0, 750}, {3000, 750}, controls::kCyan);
    EXPECT_EQ(painted(3000).pixelColor(50, 50), QColor(0, 255, 255));
}

TEST_F(PictureViewTest, TheDrawingIsScaledToTheWidget) {
    drawing.line({0, 1000}, {6000, 1000}, controls::kRed);
    const QImage image = painted(4000);
    EXPECT_EQ(image.pixelColor(100, 50), QColor(255, 0, 0));
}

TEST_F(PictureViewTest, ATextBeginsAtItsLeftAndTop) {
    drawing.text({1500, 600}, "HHH", controls::kWhite);
    const QImage image = painted(3000);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ink |= image.pixelColor(x, y).lightness() > 128 ? QRect(x, y, 1, 1) : QRect();
        }
    }
    EXPECT_NEAR(ink.left(), 100, 2);
    EXPECT_GE(ink.top(), 40);
    EXPECT_LE(ink.bottom(), 55);
}

TEST_F(PictureViewTest, ATextAtTheRightEdgeIsNotCut) {
    drawing.text({2400, 600}, "13.9453 ( s )", controls::kWhite);
    const QImage image = painted(3000);
    int edge = 0;
    for (int y = 0; y < image.height(); ++y) {
        edge += image.pixelColor(image.width() - 1, y).lightness() > 128 ? 1 : 0;
    }
    EXPECT_EQ(edge, 0);
}

TEST_F(PictureViewTest, ANewDrawingReplacesTheOldOne) {
    drawing.line({0, 750}, {3000, 750}, controls::kRed);
    EXPECT_EQ(painted(3000).pixelColor(50, 50), QColor(255, 0, 0));
    drawing.clear();
    EXPECT_EQ(painted(3000).pixelColor(50, 50), kBackground);
}

TEST_F(PictureViewTest, TheModelKnowsTheSizeInTwips) {
    QFont small = picture.font();
    small.setPixelSize(11);
    picture.setFont(small);
    picture.resize(400, 200);
    EXPECT_EQ(picture.surfaceSize(), QSize(400 * 15, 200 * 15));
}

TEST_F(PictureViewTest, APictureTooLargeForADrawingIsScaledUniformly) {
    picture.resize(4000, 1000);
    EXPECT_EQ(picture.surfaceSize(), QSize(32000, 8000));
}

TEST_F(PictureViewTest, LargerTextsGetMoreRoom) {
    QFont large = picture.font();
    large.setPixelSize(40);
    picture.setFont(large);
    picture.resize(1000, 500);
    EXPECT_LT(picture.surfaceSize().width(), 1000 * 15 / 2);
}

TEST_F(PictureViewTest, AResizedPictureIsDrawnAnew) {
    int redraws = 0;
    form.picPlot.Resize = [&] {
        ++redraws;
        form.picPlot.surface().clear();
        form.picPlot.surface().line({0, 0}, {static_cast<std::int16_t>(form.picPlot.Width.get() - 15), 0},
                                    controls::kRed);
        form.picPlot.drawn();
    };
    show();
    EXPECT_GT(redraws, 0);
    form.Width = 700 * 15;
    settle();
    frame();
    auto& plot = find("picPlot");
    const QImage image = plot.grab().toImage();
    EXPECT_EQ(image.pixelColor(plot.width() - 3, 0), QColor(255, 0, 0));
}

}  // namespace
}  // namespace korvane::views
