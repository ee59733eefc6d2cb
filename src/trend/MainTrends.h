// The two live plots of the main window. Their shapes are made when somebody looks.
#pragma once

#include "live/LiveUpdate.h"
#include "trend/cTrendline.h"

namespace korvane::trend {

class MainTrends : public live::TrendSink {
public:
    // Names the series and draws both plots once.
    explicit MainTrends(live::FrmSarn2& window);
    MainTrends(const MainTrends&) = delete;
    MainTrends& operator=(const MainTrends&) = delete;
    ~MainTrends() override;

    void pushTrendSample(double value, int series, int trend) override;
    void drawTrends() override;

    // Trend 2 is picTrend2; any other number is picTrend.
    [[nodiscard]] TrendTable& table(int trend) { return trend == 2 ? second_ : first_; }
    [[nodiscard]] cTrendline& line(int trend) { return trend == 2 ? secondLine_ : firstLine_; }

private:
    live::FrmSarn2& window_;
    TrendTable first_;
    TrendTable second_;
    cTrendline firstLine_;
    cTrendline secondLine_;
};

}  // namespace korvane::trend
