#include <QPainter>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "views/widgets/charts/LineRaster.h"

namespace korvane::views {
namespace {

constexpr QRgb kGround = 0xFF000000;
constexpr QRgb kRed = 0xFFFF0000;
constexpr QRgb kCyan = 0xFF00FFFF;

struct LineRasterTest : testing::Test {
    LineRasterTest() { raster.clear(size); }

    [[nodiscard]] QImage painted() {
        QImage image(size, QImage::Format_RGB32);
        raster.paint(image, kGround);
        return image;
    }

    QSize size{170, 150};  // no multiple of what is painted at a time
    LineRaster raster;
};

TEST_F(LineRasterTest, WithoutLinesThereIsTheGround) {
    QImage expected(size, QImage::Format_RGB32);
    expected.fill(kGround);
    EXPECT_EQ(painted(), expected);
}

std::vector<QPoint> covered(const QImage& image) {
    std::vector<QPoint> points;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != kGround) {
                points.emplace_back(x, y);
            }
        }
    }
    return points;
}

bool areOneApart(const std::vector<QPoint>& ours, const std::vector<QPoint>& theirs) {
    return ours.size() == theirs.size() && std::ranges::all_of(ours, [&](QPoint point) {
               return std::ranges::any_of(theirs, [&](QPoint other) { return (point - other).manhattanLength() <= 1; });
           });
}

// Where a segment passes between two pixels exactly, the toolkit takes one or the other, depending on its direction.
TEST_F(LineRasterTest, ASegmentIsPaintedAsTheToolkitPaintsItButForPixelsInTheMiddle) {
    std::mt19937 random(11);
    int different = 0;
    const auto place = [&] { return QPoint(static_cast<int>(random() % 170), static_cast<int>(random() % 150)); };
    for (int i = 0; i < 2000; ++i) {
        const QPolygon line{QList<QPoint>{place(), place()}};
        raster.clear(size);
        raster.add(line, kRed);
        QImage expected(size, QImage::Format_RGB32);
        expected.fill(kGround);
        QPainter painter(&expected);
        painter.setPen(QPen(Qt::red, 1));
        painter.drawPolyline(line);
        painter.end();
        const QImage ours = painted();
        different += ours != expected ? 1 : 0;
        ASSERT_TRUE(areOneApart(covered(ours), covered(expected)))
            << line[0].x() << ',' << line[0].y() << ' ' << line[1].x() << ',' << line[1].y();
    }
    EXPECT_LT(different, 40);  // of 2000
}

TEST_F(LineRasterTest, LaterLinesCoverEarlierOnes) {
    raster.add(QList<QPoint>{{10, 20}, {10, 60}}, kRed);
    raster.add(QList<QPoint>{{0, 40}, {100, 40}}, kCyan);
    raster.add(QList<QPoint>{{10, 50}, {10, 55}}, kRed);
    const QImage image = painted();
    EXPECT_EQ(image.pixel(10, 39), kRed);
    EXPECT_EQ(image.pixel(10, 40), kCyan);
    EXPECT_EQ(image.pixel(10, 41), kRed);
    EXPECT_EQ(image.pixel(10, 61), kGround);
}

TEST_F(LineRasterTest, WhatLiesOutsideIsCut) {
    raster.add(QList<QPoint>{{-2000000, 75}, {2000000, 75}}, kRed);
    raster.add(QList<QPoint>{{80, -2000000}, {80, 2000000}}, kCyan);
    raster.add(QList<QPoint>{{-2000100, -2000000}, {-2000, 2000000}}, kRed);
    raster.add(QList<QPoint>{{-5, 10}, {-5, 20}}, kRed);
    raster.add(QList<QPoint>{{175, 10}, {175, 20}}, kRed);
    raster.add(QList<QPoint>{{30, -50}, {30, -20}}, kRed);
    raster.add(QList<QPoint>{{30, 170}, {30, 190}}, kRed);
    const QImage image = painted();
    QImage expected(size, QImage::Format_RGB32);
    expected.fill(kGround);
    for (int x = 0; x < size.width(); ++x) {
        expected.setPixel(x, 75, kRed);
    }
    for (int y = 0; y < size.height(); ++y) {
        expected.setPixel(80, y, kCyan);
    }
    EXPECT_EQ(image, expected);
}

TEST_F(LineRasterTest, ASteepLineGoesOnAtTheEdgeAsItCame) {
    const QList<QPoint> rising{{-40, 140}, {60, 5}};
    const QList<QPoint> falling{{110, 5}, {210, 140}};
    QImage expected(size, QImage::Format_RGB32);
    expected.fill(kGround);
    QPainter painter(&expected);
    for (const auto& line : {rising, falling}) {
        raster.add(line, kRed);
        LineRaster wide;
        wide.clear({300, 150});
        wide.add(QPolygon(line).translated(60, 0), kRed);
        QImage whole(300, 150, QImage::Format_RGB32);
        wide.paint(whole, kGround);
        painter.setCompositionMode(QPainter::CompositionMode_Lighten);
        painter.drawImage(-60, 0, whole);
    }
    painter.end();
    EXPECT_EQ(painted(), expected);
}

TEST_F(LineRasterTest, AnotherSizeStartsAnew) {
    raster.add(QList<QPoint>{{10, 20}, {10, 60}}, kRed);
    size = {33, 12};
    raster.clear(size);
    QImage expected(size, QImage::Format_RGB32);
    expected.fill(kGround);
    EXPECT_EQ(painted(), expected);
}

}  // namespace
}  // namespace korvane::views
