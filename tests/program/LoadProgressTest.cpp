#include <gtest/gtest.h>

#include "program/LogViewerBench.h"
#include "trend/LoadProgress.h"

namespace korvane::trend {
namespace {

class LoadProgressTest : public LogViewerBench {
protected:
    controls::ProgressBar& bar() { return viewer().prgLoad; }
    void pass(int milliseconds) { run.pump.sleep(milliseconds); }
};

TEST_F(LoadProgressTest, AShortLoadShowsNothing) {
    LoadProgress progress(bar(), run.pump);
    progress.report(1, 10);
    pass(100);
    progress.report(5, 10);
    EXPECT_FALSE(bar().Visible);
}

TEST_F(LoadProgressTest, ALongOneShowsHowFarItIsUntilItsEnd) {
    {
        LoadProgress progress(bar(), run.pump);
        pass(101);
        progress.report(250, 1000);
        EXPECT_TRUE(bar().Visible);
        EXPECT_EQ(bar().Value * 4, bar().Max);
        pass(40);
        progress.report(500, 1000);
        EXPECT_EQ(bar().Value * 4, bar().Max) << "it moves twenty times a second";
        pass(20);
        progress.report(500, 1000);
        EXPECT_EQ(bar().Value * 2, bar().Max);
    }
    EXPECT_FALSE(bar().Visible);
}

TEST_F(LoadProgressTest, AFileThatGrowsOrHasNoSizeStaysWithinTheBar) {
    LoadProgress progress(bar(), run.pump);
    pass(200);
    progress.report(2000, 1000);
    EXPECT_EQ(bar().Value, bar().Max);
    pass(200);
    progress.report(2000, 0);
    EXPECT_EQ(bar().Value, 0);
}

}  // namespace
}  // namespace korvane::trend
