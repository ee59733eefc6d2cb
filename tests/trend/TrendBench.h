// A trendline on the picture of DrawingBench.
#pragma once

#include "trend/DrawingBench.h"
#include "trend/cTrendline.h"

namespace korvane::trend {

class TrendBench : public DrawingBench {
protected:
    TrendBench() { line_.PicBox = &picture_; }

    void draw(bool rightScale = false) { line_.DrawTrend(table_, rightScale); }
    void pushAll(double value, int count = 1, int series = 0) {
        for (int i = 0; i < count; ++i) {
            table_.push(value, series);
        }
    }

    TrendTable table_;
    cTrendline line_;
};

}  // namespace korvane::trend
