#include <QImage>
#include <QPainter>
#include <QPolygon>

#include <cmath>
#include <random>

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

// All rows of a plot of 50,000 have the same value but one, in the middle of the rows of a pixel.
TEST_F(PictureViewTest, ASpikeOfOneRowIn50000IsSeen) {
    constexpr int kRows = 50000;
    for (const int spike : {777, 25125, 49000}) {
        for (const std::int16_t height : {std::int16_t{150}, std::int16_t{1350}}) {
            drawing.clear();
            const auto points = drawing.polyline(kRows, controls::kRed);
            for (int row = 0; row < kRows; ++row) {
                points[static_cast<std::size_t>(row)] = {static_cast<std::int16_t>(3000 - row * 3000 / kRows), 750};
            }
            points[static_cast<std::size_t>(spike)].y = height;
            const QPoint tip(points[static_cast<std::size_t>(spike)].x / 15, height / 15);
            const QImage image = painted(3000);
            EXPECT_EQ(image.pixelColor(tip), QColor(255, 0, 0)) << spike;
            EXPECT_EQ(image.pixelColor(tip.x(), (tip.y() + 50) / 2), QColor(255, 0, 0)) << "joined to the line";
            EXPECT_EQ(image.pixelColor(tip.x() - 2, tip.y()), kBackground);
        }
    }
}

// However many points fall on one pixel, the picture is that of all segments.
TEST_F(PictureViewTest, APictureIsThatOfAllItsSegments) {
    std::mt19937 random(7);
    for (const int count : {1, 2, 3, 5, 20, 200, 2000, 20000}) {
        drawing.clear();
        const auto points = drawing.polyline(static_cast<std::size_t>(count), controls::kCyan);
        QPolygon all;
        for (int i = 0; i < count; ++i) {
            auto& point = points[static_cast<std::size_t>(i)];
            point.x = static_cast<std::int16_t>(3000 - i * 2985 / count - static_cast<int>(random() % 7));
            point.y = static_cast<std::int16_t>(random() % 1500);
            all << QPoint(static_cast<int>(std::floor(point.x / 15.0)), static_cast<int>(std::floor(point.y / 15.0)));
        }
        const QImage image = painted(3000);
        QImage expected(image.size(), image.format());
        expected.fill(kBackground);
        QPainter painter(&expected);
        painter.setPen(QPen(QColor(0, 255, 255), 1));
        painter.drawPolyline(all);
        painter.end();
        EXPECT_EQ(image, expected) << count;
        EXPECT_EQ(drawing.pointsOf(drawing.shapes().front()).size(), static_cast<std::size_t>(count));
    }
}

// Lines that fill the picture again and again are painted in another way.
TEST_F(PictureViewTest, APictureFullOfLinesIsThatOfAllItsSegments) {
    constexpr QSize kSize(1500, 170);
    std::mt19937 random(9);
    picture.resize(kSize);
    QImage expected(kSize, QImage::Format_RGB32);
    expected.fill(kBackground);
    QPainter painter(&expected);
    for (const auto& [color, shown] :
         {std::pair(controls::kRed, QColor(255, 0, 0)), {controls::kCyan, {0, 255, 255}}}) {
        const auto points = drawing.polyline(30000, color);
        painter.setPen(QPen(shown, 1));
        QPoint last;
        for (int i = 0; i < 30000; ++i) {
            const QPoint pixel(1499 - i / 20, static_cast<int>(random() % 85) + (color == controls::kRed ? 0 : 85));
            points[static_cast<std::size_t>(i)] = {static_cast<std::int16_t>(pixel.x() * 15 + 7),
                                                   static_cast<std::int16_t>(pixel.y() * 15 + 7)};
            painter.drawLine(i > 0 ? last : pixel, pixel);
            last = pixel;
        }
    }
    painter.end();
    for (const auto y : {std::int16_t{15}, std::int16_t{1275}}) {
        for (int i = 0; i < 200; ++i) {
            drawing.line({0, y}, {22492, y}, controls::kYellow);
        }
        for (int x = 0; x < 1500; ++x) {
            expected.setPixelColor(x, y / 15, QColor(255, 255, 0));
        }
    }
    picture.setDrawing(drawing, 22500, kBackground);
    EXPECT_EQ(picture.grab().toImage(), expected);
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
