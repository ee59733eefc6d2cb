#include "trend/MainTrends.h"

#include <string>

#include "live/ChannelTable.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::trend {

namespace {

void setUp(cTrendline& line, TrendTable& table, controls::PictureBox& picture) {
    line.DrawPoints = static_cast<int>(live::kTrendPoints);
    line.PicBox = &picture;
    line.Resolution = 10;
    line.AutoScale = true;
    table.BeforeMove = [&picture] { picture.settle(); };
    line.DrawTrendLater(table, false);
    picture.Resize = [&line, &table] { line.DrawTrendLater(table, false); };
}

}  // namespace

MainTrends::MainTrends(live::FrmSarn2& window) : window_(window) {
    for (const auto& place : live::kTrendPlaces) {
        table(place.trend).describe(place.series, std::string(place.name), std::string(place.unit));
    }
    setUp(firstLine_, first_, window.picTrend);
    setUp(secondLine_, second_, window.picTrend2);
}

MainTrends::~MainTrends() {
    window_.picTrend.settle();
    window_.picTrend2.settle();
}

// The samples of a frame go to each series once.
void MainTrends::pushTrendSample(double value, int series, int trend) {
    table(trend).push(value, series);
    if (series == 0) {
        (trend == 2 ? window_.trendSpan2 : window_.trendSpan).add(window_.machine().pump.now());
    }
}

void MainTrends::drawTrends() {
    firstLine_.DrawTrendLater(first_, false);
    secondLine_.DrawTrendLater(second_, false);
}

}  // namespace korvane::trend
