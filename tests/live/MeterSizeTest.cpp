#include "LiveBench.h"

namespace korvane::live {
namespace {

class MeterSizeTest : public LiveBench {};

TEST_F(MeterSizeTest, AnAssignedWidthMakesTheDialSquareAndRedrawsIt) {
    auto& meter = window_.SarnMeterRpm;
    const int before = meter.redraws();
    meter.Width = 3000;
    EXPECT_EQ(meter.Height.get(), 3000);
    EXPECT_GT(meter.redraws(), before);
}

TEST_F(MeterSizeTest, AnAssignedHeightGoesBackToTheWidth) {
    auto& meter = window_.SarnMeterRpm;
    meter.Width = 3000;
    meter.Height = 200;
    EXPECT_EQ(meter.Width.get(), 3000);
    EXPECT_EQ(meter.Height.get(), 3000);
}

}  // namespace
}  // namespace korvane::live
