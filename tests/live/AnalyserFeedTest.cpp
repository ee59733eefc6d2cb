#include <gmock/gmock.h>
#include <limits>

#include "LiveBench.h"

namespace korvane::live {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class AnalyserFeedTest : public LiveBench {
protected:
    AnalyserFeedTest() {
        live_.setAnalyser(&analyser_);
        channel(0).value = 1500;
        channel(4).value = 0.85;
        channel(5).value = 30;
        channel(6).value = 12.5;
    }
};

TEST_F(AnalyserFeedTest, ALabelThatShowsNoNumberFeedsNothing) {
    for (const std::size_t label : {0U, 4U, 6U}) {
        const double before = channel(label).value;
        channel(label).value = std::numeric_limits<double>::infinity();
        update();
        EXPECT_THAT(analyser_.samples, IsEmpty()) << label;
        channel(label).value = before;
    }
    update();
    EXPECT_THAT(analyser_.samples, SizeIs(1));
}

TEST_F(AnalyserFeedTest, AStepThatFeedsNothingStopsNoOther) {
    windows_.curMapWindow = &map_;
    channel(6).value = std::numeric_limits<double>::infinity();
    update();
    EXPECT_EQ(map_.places, 1);
}

TEST_F(AnalyserFeedTest, ANumberBeyondSinglePrecisionFeedsNothing) {
    channel(6).value = 1e300;
    update();
    EXPECT_THAT(analyser_.samples, IsEmpty());
}

TEST_F(AnalyserFeedTest, TextsInExponentFormAreNumbers) {
    channel(4).value = 1.5e-20;
    channel(6).value = 1e15;
    update();
    ASSERT_THAT(analyser_.samples, SizeIs(1));
    EXPECT_FLOAT_EQ(analyser_.samples[0][0], 1e15F);
    EXPECT_FLOAT_EQ(analyser_.samples[0][3], 1.5e-20F);
}

}  // namespace
}  // namespace korvane::live
