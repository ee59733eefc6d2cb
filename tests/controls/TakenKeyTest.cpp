// Keys that a window takes for itself, before the control with the focus gets them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/ModelBench.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kZ = 90;

class TakingWindow : public NotingWindow {
public:
    using NotingWindow::NotingWindow;

    bool failsToTake = false;

protected:
    bool takesKey(int keyCode, int shift) override {
        if (failsToTake) {
            throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
        }
        return keyCode == kZ && shift == kControlMask;
    }
};

struct TakenKeyTest : ModelBench {
    TakenKeyTest() {
        box_.KeyDown = [this](int keyCode, int) { keys_.push_back(keyCode); };
        box_.KeyUp = [this](int keyCode, int) { keys_.push_back(-keyCode); };
    }

    TakingWindow taking_{machine_, "frmTaking"};
    TextBox box_{taking_, "txtBox"};
    std::vector<int> keys_;
};

TEST_F(TakenKeyTest, NeitherTheFormNorTheControlGetsItOrItsRelease) {
    EXPECT_FALSE(box_.keyDown(kZ, kControlMask));
    box_.keyUp(kZ, kControlMask);
    EXPECT_THAT(keys_, IsEmpty());
    EXPECT_THAT(taking_.events, IsEmpty());
}

TEST_F(TakenKeyTest, AllOthersGoOn) {
    EXPECT_TRUE(box_.keyDown(kZ, 0));
    box_.keyUp(kZ, 0);
    EXPECT_THAT(keys_, ElementsAre(kZ, -kZ));
    EXPECT_THAT(taking_.events, ElementsAre("form 90 0"));
}

TEST_F(TakenKeyTest, OnlyOneReleaseGoesWithIt) {
    EXPECT_FALSE(box_.keyDown(kZ, kControlMask));
    box_.keyUp(kZ, 0);
    box_.keyUp(kZ, 0);
    EXPECT_THAT(keys_, ElementsAre(-kZ));
}

TEST_F(TakenKeyTest, TheSameKeyThatIsNotTakenKeepsItsRelease) {
    EXPECT_FALSE(box_.keyDown(kZ, kControlMask));
    EXPECT_TRUE(box_.keyDown(kZ, 0));
    box_.keyUp(kZ, 0);
    EXPECT_THAT(keys_, ElementsAre(kZ, -kZ));
}

TEST_F(TakenKeyTest, AFailureIsLoggedAndTheKeyGoesOn) {
    taking_.failsToTake = true;
    EXPECT_TRUE(box_.keyDown(kZ, kControlMask));
    EXPECT_THAT(log_.lines, ElementsAre("frmTaking.frmTaking: Overflow"));
}

}  // namespace
}  // namespace korvane::controls
