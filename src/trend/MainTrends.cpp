#include "trend/MainTrends.h"

#include <string>

#include "live/ChannelTable.h"

namespace korvane::trend {

namespace {

void setUp(cTrendline& line, TrendTable& table, controls::PictureBox& picture) {
    line.DrawPoints = 350;
    line.PicBox = &picture;
    line.Resolution = 10;
    line.AutoScale = true;
    line.DrawTrend(table, false);
    picture.Resize = [&line, &table] { line.DrawTrend(table, false); };
}

}  // namespace

MainTrends::MainTrends(live::FrmSarn2& window) {
    for (const auto& place : live::kTrendPlaces) {
        table(place.trend).describe(place.series, std::string(place.name), std::string(place.unit));
    }
    setUp(firstLine_, first_, window.picTrend);
    setUp(secondLine_, second_, window.picTrend2);
}

void MainTrends::drawTrends() {
    firstLine_.DrawTrend(first_, false);
    secondLine_.DrawTrend(second_, false);
}

}  // namespace korvane::trend
