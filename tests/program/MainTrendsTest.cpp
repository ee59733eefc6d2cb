#include <gmock/gmock.h>

#include "support/PropertyWatch.h"
#include "support/VirtualProgram.h"
#include "trend/MainTrends.h"

namespace korvane::trend {
namespace {

using support::VirtualProgram;
using testing::ElementsAre;

class MainTrendsTest : public testing::Test {
protected:
    [[nodiscard]] std::vector<std::string> names(int trend) {
        std::vector<std::string> all;
        for (int i = 0; i < 6; ++i) {
            all.push_back(trends_.table(trend).name(i));
        }
        return all;
    }
    [[nodiscard]] std::vector<std::string> units(int trend) {
        std::vector<std::string> all;
        for (int i = 0; i < 5; ++i) {
            all.push_back(trends_.table(trend).unit(i));
        }
        return all;
    }
    // How often a picture is drawn anew while `what` runs.
    template <class What>
    int drawsOf(controls::PictureBox& picture, What what) {
        int count = 0;
        const support::PropertyWatch watch(picture, picture.drawingProperty(), [&] { ++count; });
        what();
        return count;
    }
    // Each shape in words: a text, or the points of a line.
    [[nodiscard]] static std::vector<std::string> shapesOf(const controls::Drawing& drawing) {
        std::vector<std::string> all;
        for (const auto& shape : drawing.shapes()) {
            std::string words;
            if (shape.kind == controls::Drawing::Kind::Text) {
                words = drawing.textOf(shape).words;
            } else {
                for (const auto& point : drawing.pointsOf(shape)) {
                    words += std::to_string(point.x) + ',' + std::to_string(point.y) + ' ';
                }
            }
            all.push_back(words);
        }
        return all;
    }
    void liveFrame() { program_.receiveFrame('R', {9, 196, 130, 75, 138, 120, 50, 128, 55, 7, 33, 0, 0, 100, 200}); }

    VirtualProgram program_;
    live::FrmSarn2& window_ = program_.window;
    MainTrends& trends_ = program_.program.trends();
};

TEST_F(MainTrendsTest, SeriesHaveTheirNamesAndUnits) {
    EXPECT_THAT(names(0), ElementsAre("Map", "Throttle", "Lambda", "Inj Duty", "RPM/10", ""));
    EXPECT_THAT(units(0), ElementsAre(" s", " %", " s", " %", " "));
    EXPECT_THAT(names(2), ElementsAre("voltage", "Temp1", "Temp2", "IdlePid", "BoostPid", ""));
    EXPECT_THAT(units(2), ElementsAre(" s", " %", " s", " %", " "));
}

TEST_F(MainTrendsTest, AreSetUpAsTheMainWindowWantsThem) {
    for (const int trend : {0, 2}) {
        auto& line = trends_.line(trend);
        EXPECT_EQ(line.DrawPoints, 350);
        EXPECT_EQ(line.Resolution, 10);
        EXPECT_TRUE(line.AutoScale);
        EXPECT_EQ(line.maxX, 300);
        EXPECT_EQ(line.minY, 0);
    }
    EXPECT_EQ(trends_.line(0).PicBox, &window_.picTrend);
    EXPECT_EQ(trends_.line(2).PicBox, &window_.picTrend2);
}

TEST_F(MainTrendsTest, BothAreDrawnOnceAtTheStart) {
    EXPECT_FALSE(window_.picTrend.drawing().shapes().empty());
    EXPECT_FALSE(window_.picTrend2.drawing().shapes().empty());
    EXPECT_EQ(trends_.line(0).maxY, 10) << "an empty table shrinks the scale";
}

TEST_F(MainTrendsTest, TrendTwoIsTheSecondPictureAndAnyOtherNumberTheFirst) {
    trends_.pushTrendSample(7, 0, 2);
    EXPECT_EQ(trends_.table(2).value(0, 2), 7);
    EXPECT_EQ(trends_.table(0).value(0, 2), 0);
    for (const int trend : {0, 1, 3, -1, 99}) {
        trends_.pushTrendSample(10 + trend, 0, trend);
        EXPECT_EQ(trends_.table(0).value(0, 2), 10 + trend);
    }
    EXPECT_EQ(trends_.table(2).value(0, 2), 7);
}

TEST_F(MainTrendsTest, ALiveFrameFillsTheNewestRowOfAllTenSeries) {
    program_.connect();
    liveFrame();
    EXPECT_EQ(trends_.table(0).value(0, 2), 1.28);
    EXPECT_EQ(trends_.table(0).value(1, 2), 50);
    EXPECT_EQ(trends_.table(0).value(2, 2), 15);
    EXPECT_EQ(trends_.table(0).value(3, 2), 21.4844);
    EXPECT_EQ(trends_.table(0).value(4, 2), 250);
    EXPECT_EQ(trends_.table(2).value(0, 2), 13.8);
    EXPECT_EQ(trends_.table(2).value(1, 2), 80);
    EXPECT_EQ(trends_.table(2).value(2, 2), 25);
    EXPECT_EQ(trends_.table(2).value(3, 2), 100);
    EXPECT_EQ(trends_.table(2).value(4, 2), 200);
}

TEST_F(MainTrendsTest, BothPicturesAreDrawnAtEverySixthFrame) {
    program_.connect();
    for (auto* picture : {&window_.picTrend, &window_.picTrend2}) {
        EXPECT_EQ(drawsOf(*picture,
                          [&] {
                              for (int i = 0; i < 60; ++i) {
                                  liveFrame();
                              }
                          }),
                  picture == &window_.picTrend ? 9 : 10)
            << "the first of all comes at the seventh frame";
    }
}

TEST_F(MainTrendsTest, ValuesStayWhenTheConnectionCloses) {
    program_.connect();
    liveFrame();
    program_.connect();
    program_.pump.wait(10000);
    EXPECT_EQ(trends_.table(0).value(4, 2), 250);
}

// Nobody looks for thousands of samples; the picture is that of the last draw all the same.
TEST_F(MainTrendsTest, APictureIsThatOfItsLastDrawHoweverLateSomebodyLooks) {
    for (int i = 1; i <= 500; ++i) {
        trends_.pushTrendSample(i, 4, 0);
    }
    trends_.drawTrends();
    const auto drawn = shapesOf(window_.picTrend.drawing());
    EXPECT_THAT(drawn, testing::Contains("500 (   )"));
    for (int i = 1; i <= 500; ++i) {
        trends_.pushTrendSample(i, 4, 0);
    }
    trends_.drawTrends();
    for (int i = 1; i <= 10000; ++i) {
        trends_.pushTrendSample(700 + i % 100, 4, 0);
    }
    EXPECT_EQ(shapesOf(window_.picTrend.drawing()), drawn);
    trends_.drawTrends();
    EXPECT_NE(shapesOf(window_.picTrend.drawing()), drawn);
}

TEST_F(MainTrendsTest, ANewSizeIsDrawnAtOnce) {
    EXPECT_GT(drawsOf(window_.picTrend, [&] { window_.picTrend.Width = 12000; }), 0);
    EXPECT_EQ(drawsOf(window_.picTrend2, [&] { window_.picTrend.Width = 13000; }), 0);
}

}  // namespace
}  // namespace korvane::trend
