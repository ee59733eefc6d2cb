#include <gmock/gmock.h>
#include <limits>

#include "TrendBench.h"

namespace korvane::trend {
namespace {

using testing::IsEmpty;

class SurfaceSizeTest : public TrendBench {};

// Four times this width, in 32 bits, is 40000.
TEST_F(SurfaceSizeTest, AWidthBeyondAnyNumberOfTheDrawDrawsNothing) {
    picture_.Width = 1073751824;
    draw();
    EXPECT_THAT(picture_.drawing().shapes(), IsEmpty());
}

TEST_F(SurfaceSizeTest, TheLowestHeightEndsTheDraw) {
    picture_.Height = std::numeric_limits<int>::min();
    draw();
    EXPECT_THAT(picture_.drawing().shapes(), IsEmpty());
}

}  // namespace
}  // namespace korvane::trend
