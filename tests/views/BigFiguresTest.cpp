#include <QImage>

#include <gtest/gtest.h>

#include "views/Events.h"
#include "views/widgets/values/BigFigures.h"

namespace korvane::views {
namespace {

struct BigFiguresTest : testing::Test {
    BigFiguresTest() { place(600, 200); }

    void place(int width, int height) {
        figures.resize(width, height);
        figures.show();
        settle();
    }
    // Of the widget, whichever side is the tighter one.
    [[nodiscard]] double filled() const {
        const QRectF ink = figures.inkPlace();
        return std::max(ink.width() / figures.width(), ink.height() / figures.height());
    }

    BigFigures figures{nullptr};
};

TEST_F(BigFiguresTest, FourFiguresFillAnyWidget) {
    figures.setText("9999");
    for (const QSize size : {QSize(600, 200), QSize(1800, 600), QSize(300, 600), QSize(900, 100), QSize(150, 50)}) {
        place(size.width(), size.height());
        EXPECT_GT(filled(), 0.86) << size.width();
        EXPECT_TRUE(QRectF(figures.rect()).contains(figures.inkPlace())) << size.width();
        EXPECT_NEAR(figures.inkPlace().center().x(), size.width() / 2.0, 1);
        EXPECT_NEAR(figures.inkPlace().center().y(), size.height() / 2.0, 1);
    }
}

TEST_F(BigFiguresTest, ALongTextIsSmallerAndStandsWhole) {
    figures.setText("9999");
    const int usual = figures.fontPixels();
    for (const char* text : {"14.7265625", "-123456.789012345", "1.79769313486232E+308", "no number at all"}) {
        figures.setText(text);
        EXPECT_LT(figures.fontPixels(), usual) << text;
        EXPECT_TRUE(QRectF(figures.rect()).contains(figures.inkPlace())) << text;
    }
}

TEST_F(BigFiguresTest, AShortTextIsNotLargerThanFourFigures) {
    figures.setText("9999");
    const int usual = figures.fontPixels();
    figures.setText("1");
    EXPECT_EQ(figures.fontPixels(), usual);
}

TEST_F(BigFiguresTest, DecimalsThatComeAndGoLeaveTheSizeAlone) {
    figures.setText("14.7265");
    const int size = figures.fontPixels();
    for (const char* text : {"14.7", "15", "14.75", "14.7265", "13"}) {
        figures.setText(text);
        EXPECT_EQ(figures.fontPixels(), size) << text;
    }
}

TEST_F(BigFiguresTest, TextsThatStayShortAreLargeAgain) {
    figures.setText("9999");
    const int usual = figures.fontPixels();
    figures.setText("14.7265");
    for (int value = 1; value <= 24; ++value) {
        figures.setText(QString::number(value));
        EXPECT_LT(figures.fontPixels(), usual) << value;
    }
    figures.setText("25");
    EXPECT_EQ(figures.fontPixels(), usual);
}

TEST_F(BigFiguresTest, AnotherKindOfTextCountsAtOnce) {
    figures.setText("9999");
    const int usual = figures.fontPixels();
    figures.setText("14.7265");
    figures.forget();
    place(600, 200);
    EXPECT_TRUE(QRectF(figures.rect()).contains(figures.inkPlace()));
    figures.setText("850");
    EXPECT_EQ(figures.fontPixels(), usual);
}

// From the ground to the ink in two pixels of the display at the most, whatever its scale: the upright of a one is
// crossed in the middle of its height.
TEST_F(BigFiguresTest, EdgesAreSharpAtAnyScale) {
    figures.setText("1");
    for (const double ratio : {1.0, 1.25, 2.0, 3.0}) {
        QImage picture(figures.size() * ratio, QImage::Format_RGB32);
        picture.setDevicePixelRatio(ratio);
        figures.render(&picture);
        int between = 0;
        int ink = 0;
        for (int x = 0; x < picture.width(); ++x) {
            const int grey = qGray(picture.pixel(x, picture.height() / 2));
            ink += grey < 40 ? 1 : 0;
            between += grey >= 40 && grey < 200 ? 1 : 0;
        }
        EXPECT_GT(ink, 10 * ratio) << ratio;
        EXPECT_LE(between, 4) << ratio;
    }
}

TEST_F(BigFiguresTest, TheSameTextPaintsNothing) {
    figures.setText("850");
    settle();
    const PaintCounter counter(figures);
    figures.setText("850");
    settle();
    EXPECT_EQ(counter.count(), 0);
    figures.setText("851");
    settle();
    EXPECT_EQ(counter.count(), 1);
}

}  // namespace
}  // namespace korvane::views
