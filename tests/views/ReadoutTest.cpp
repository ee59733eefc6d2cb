#include <gtest/gtest.h>

#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

// As large as it asks for.
struct ReservedReadout : testing::Test {
    ReservedReadout() {
        readout.setReserve("14.7266");
        readout.resize(readout.sizeHint());
    }

    Readout readout{nullptr};
};

TEST(Readout, ItsSizeNeverFollowsTheText) {
    Readout readout(nullptr);
    readout.setReserve("14.7266");
    const QSize size = readout.sizeHint();
    readout.setText("1");
    EXPECT_EQ(readout.sizeHint(), size);
    readout.setText("0.123456789012345");
    EXPECT_EQ(readout.sizeHint(), size);
}

TEST_F(ReservedReadout, HasRoomForTheText) {
    readout.setText("14.7266");
    EXPECT_EQ(readout.shrink(), 1);
    EXPECT_FALSE(readout.isCut());
}

TEST_F(ReservedReadout, DrawsALongerTextSmallerAndThenCut) {
    readout.setText("14.7266123");
    EXPECT_LT(readout.shrink(), 1);
    EXPECT_FALSE(readout.isCut());
    readout.setText("0.123456789012345678901234567890");
    EXPECT_TRUE(readout.isCut());
}

TEST(Readout, DigitsAreOfOneWidth) {
    TabularText digits;
    QFont font;
    font.setPixelSize(20);
    digits.setFont(font);
    EXPECT_DOUBLE_EQ(digits.width("1111"), digits.width("8888"));
    EXPECT_DOUBLE_EQ(digits.width("1.1"), digits.width("0.7"));
}

TEST(Readout, OnlyNumbersAreNumbers) {
    EXPECT_TRUE(TabularText::isNumber("-14.7266"));
    EXPECT_TRUE(TabularText::isNumber("1.5E-20"));
    EXPECT_FALSE(TabularText::isNumber("Not connected"));
    EXPECT_FALSE(TabularText::isNumber(QStringLiteral("12 ä")));
}

TEST(Readout, AGrowingReadoutFillsItsRoom) {
    Readout small({.growing = true}, nullptr);
    small.setReserve("888");
    small.resize(small.sizeHint());
    small.setText("888");
    Readout large({.growing = true}, nullptr);
    large.setReserve("888");
    large.resize(small.sizeHint() * 3);
    large.setText("888");
    const auto ink = [](Readout& readout) {
        const QImage image = readout.grab().toImage();
        const QColor ground = image.pixelColor(image.width() - 1, 0);
        int highest = image.height();
        int lowest = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (std::abs(image.pixelColor(x, y).lightness() - ground.lightness()) > 100) {
                    highest = std::min(highest, y);
                    lowest = std::max(lowest, y);
                }
            }
        }
        return lowest - highest;
    };
    EXPECT_GT(ink(large), 2 * ink(small));
}

}  // namespace
}  // namespace korvane::views
