#include "trend/MainTrends.h"

#include <array>

namespace korvane::trend {

namespace {

struct SeriesText {
    const char* name;
    const char* unit;
};

constexpr std::array<SeriesText, 5> kFirst{
    {{"Map", " s"}, {"Throttle", " %"}, {"Lambda", " s"}, {"Inj Duty", " %"}, {"RPM/10", " "}}};
constexpr std::array<SeriesText, 5> kSecond{
    {{"voltage", " s"}, {"Temp1", " %"}, {"Temp2", " s"}, {"IdlePid", " %"}, {"BoostPid", " "}}};

void setUp(cTrendline& line, TrendTable& table, controls::PictureBox& picture, const std::array<SeriesText, 5>& texts) {
    line.DrawPoints = 350;
    line.PicBox = &picture;
    line.Resolution = 10;
    line.AutoScale = true;
    for (int i = 0; i < static_cast<int>(texts.size()); ++i) {
        const auto& text = texts[static_cast<std::size_t>(i)];
        table.describe(i, text.name, text.unit);
    }
    line.DrawTrend(table, false);
    picture.Resize = [&line, &table] { line.DrawTrend(table, false); };
}

}  // namespace

MainTrends::MainTrends(live::FrmSarn2& window) {
    setUp(firstLine_, first_, window.picTrend, kFirst);
    setUp(secondLine_, second_, window.picTrend2, kSecond);
}

void MainTrends::drawTrends() {
    firstLine_.DrawTrend(first_, false);
    secondLine_.DrawTrend(second_, false);
}

}  // namespace korvane::trend
