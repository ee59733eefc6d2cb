#include <gmock/gmock.h>
#include <map>

#include "ModelBench.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlTest : public ModelBench {
protected:
    void note(const std::string& event) { window_.events.push_back(event); }

    CommandButton button_{window_, "btnTest"};
};

TEST_F(ControlTest, HasAPathWithItsIndex) {
    const Label single(window_, "lblState");
    const Label element(window_, "lblValue", 11);
    EXPECT_EQ(single.path(), "lblState");
    EXPECT_EQ(element.path(), "lblValue(11)");
}

TEST_F(ControlTest, IsPlacedByItsUpperLeftCornerAndItsSize) {
    button_.place(120, 240, 1500, 435);
    EXPECT_EQ(button_.Left, 120);
    EXPECT_EQ(button_.Top, 240);
    EXPECT_EQ(button_.Width, 1500);
    EXPECT_EQ(button_.Height, 435);
}

TEST_F(ControlTest, StandsInItsWindowsListWhileItLives) {
    const auto before = window_.controls().size();
    {
        const Label label(window_, "lblState");
        EXPECT_EQ(window_.controls().back(), &label);
    }
    EXPECT_EQ(window_.controls().size(), before);
}

TEST_F(ControlTest, StartsEnabledVisibleAndInTheColoursOfAButton) {
    EXPECT_TRUE(button_.Enabled);
    EXPECT_TRUE(button_.Visible);
    EXPECT_EQ(button_.BackColor.get(), kButtonFace);
    const TextBox box(window_, "txtTest");
    EXPECT_EQ(box.BackColor.get(), kWindowBackground);
}

TEST_F(ControlTest, APressRaisesTheClick) {
    button_.press();
    button_.Click = [this] { note("click"); };
    button_.press();
    EXPECT_THAT(window_.events, ElementsAre("click"));
}

TEST_F(ControlTest, AFailingHandlerEndsAtTheDoorWithOneLineInTheLog) {
    button_.Click = [] { throw platform::RuntimeError(platform::kErrorOverflow, "Overflow"); };
    EXPECT_NO_THROW(button_.press());
    EXPECT_THAT(log_.lines, ElementsAre("frmTest.btnTest: Overflow"));
    EXPECT_FALSE(window_.isBusy());
}

TEST_F(ControlTest, AnOrdinaryExceptionEndsThereToo) {
    button_.Click = [] { throw std::out_of_range("vector"); };
    EXPECT_NO_THROW(button_.press());
    EXPECT_EQ(log_.lines.size(), 1U);
}

TEST_F(ControlTest, TheWindowIsBusyWhileAHandlerRuns) {
    bool busy = false;
    button_.Click = [&] { busy = window_.isBusy(); };
    button_.press();
    EXPECT_TRUE(busy);
    EXPECT_FALSE(window_.isBusy());
}

TEST_F(ControlTest, AKeyGoesToTheFormFirst) {
    button_.KeyDown = [this](int code, int shift) {
        note("down " + std::to_string(code) + " " + std::to_string(shift));
    };
    button_.KeyUp = [this](int code, int shift) { note("up " + std::to_string(code) + " " + std::to_string(shift)); };
    button_.keyDown(kKeyPlus, kShiftMask | kControlMask);
    button_.keyUp(kKeyPlus, 0);
    EXPECT_THAT(window_.events, ElementsAre("form 187 3", "down 187 3", "up 187 0"));
}

TEST_F(ControlTest, AKeyPressMayBeChangedOrDropped) {
    EXPECT_EQ(button_.keyPress('a'), 'a');
    button_.KeyPress = [](int& character) { character = character == 'b' ? 0 : character - 32; };
    EXPECT_EQ(button_.keyPress('a'), 'A');
    EXPECT_EQ(button_.keyPress('b'), 0);
}

TEST_F(ControlTest, TheMouseTellsButtonShiftAndPlace) {
    button_.MouseUp = [this](int button, int shift, double x, double y) {
        note(std::to_string(button) + " " + std::to_string(shift) + " " + std::to_string(static_cast<int>(x)) + " " +
             std::to_string(static_cast<int>(y)));
    };
    button_.mouseUp(1, kShiftMask, 15, 30);
    EXPECT_THAT(window_.events, ElementsAre("1 1 15 30"));
}

TEST_F(ControlTest, IsInSightWhenAllThatItStandsInIs) {
    Frame outer(window_, "FrameOuter");
    Frame inner(window_, "FrameInner");
    inner.setContainer(&outer);
    button_.setContainer(&inner);
    EXPECT_FALSE(button_.inSight()) << "the window is hidden";
    window_.show();
    EXPECT_TRUE(button_.inSight());
    outer.Visible = false;
    EXPECT_FALSE(button_.inSight());
    outer.Visible = true;
    inner.Left = -10000;
    EXPECT_FALSE(button_.inSight()) << "moved out of view";
    inner.Left = -100;
    EXPECT_TRUE(button_.inSight());
    button_.Visible = false;
    EXPECT_FALSE(button_.inSight());
}

TEST_F(ControlTest, IsUsableWhenAllThatItStandsInIsEnabled) {
    Frame frame(window_, "Frame1");
    button_.setContainer(&frame);
    EXPECT_TRUE(button_.usable());
    frame.Enabled = false;
    EXPECT_FALSE(button_.usable());
    frame.Enabled = true;
    button_.Enabled = false;
    EXPECT_FALSE(button_.usable());
}

TEST_F(ControlTest, ALabelCanBeClickedOnlyWithAHandler) {
    Label label(window_, "lblTest");
    EXPECT_FALSE(label.canClick());
    label.Click = [] {};
    EXPECT_TRUE(label.canClick());
    EXPECT_TRUE(button_.canClick());
}

TEST_F(ControlTest, LetterKeysShareOneCodeForBothCases) {
    const std::map<char, int> codes{{'a', 65},  {'A', 65},  {'l', 76},  {'+', 187},
                                    {'-', 189}, {'7', '7'}, {',', 188}, {'.', 190}};
    for (const auto& [character, code] : codes) {
        EXPECT_EQ(keyCodeOf(character), code) << character;
    }
    // The codes 37 to 40 are the arrows.
    for (const char character : {'%', '&', '\'', '('}) {
        EXPECT_EQ(keyCodeOf(character), 0) << character;
    }
}

class FocusTest : public ModelBench {
protected:
    FocusTest() {
        window_.show();
        window_.events.clear();
        for (auto* box : {&one_, &two_}) {
            box->GotFocus = [this, box] { window_.events.push_back("got " + box->path()); };
            box->LostFocus = [this, box] { window_.events.push_back("lost " + box->path()); };
        }
    }
    TextBox one_{window_, "txtOne"};
    TextBox two_{window_, "txtTwo"};
};

TEST_F(FocusTest, MovesWithLostAndThenGot) {
    window_.setFocus(&one_);
    window_.setFocus(&two_);
    EXPECT_THAT(window_.events, ElementsAre("got txtOne", "lost txtOne", "got txtTwo"));
    EXPECT_EQ(window_.activeControl(), &two_);
    EXPECT_EQ(window_.findProperty("ActiveControl")->get(window_), Value(std::string("txtTwo")));
}

TEST_F(FocusTest, OnTheControlThatHasItRaisesNothing) {
    window_.setFocus(&one_);
    window_.setFocus(&one_);
    EXPECT_EQ(window_.events.size(), 1U);
}

TEST_F(FocusTest, MayBeTakenAway) {
    window_.setFocus(&one_);
    window_.setFocus(nullptr);
    EXPECT_EQ(window_.activeControl(), nullptr);
    EXPECT_THAT(window_.events, ElementsAre("got txtOne", "lost txtOne"));
}

TEST_F(FocusTest, StaysWhereItIsWhenTheOtherCantTakeIt) {
    Label label(window_, "lblTest");
    window_.setFocus(&one_);
    two_.Enabled = false;
    window_.setFocus(&two_);
    two_.Enabled = true;
    two_.Visible = false;
    window_.setFocus(&two_);
    window_.setFocus(&label);
    EXPECT_EQ(window_.activeControl(), &one_);
    EXPECT_EQ(window_.events.size(), 1U);
}

TEST_F(FocusTest, AHandlerMayMoveItOn) {
    two_.GotFocus = [this] { window_.setFocus(&one_); };
    window_.setFocus(&two_);
    EXPECT_EQ(window_.activeControl(), &one_);
}

TEST_F(FocusTest, MovedAwayByTheLoserTheOtherNeverGotIt) {
    TextBox three(window_, "txtThree");
    one_.LostFocus = [&] { window_.setFocus(&three); };
    window_.setFocus(&one_);
    window_.events.clear();
    window_.setFocus(&two_);
    EXPECT_EQ(window_.activeControl(), &three);
    EXPECT_THAT(window_.events, testing::Not(testing::Contains("got txtTwo")));
}

TEST_F(FocusTest, GoesWithItsControl) {
    {
        TextBox three(window_, "txtThree");
        window_.setFocus(&three);
    }
    EXPECT_EQ(window_.activeControl(), nullptr);
}

}  // namespace
}  // namespace korvane::controls
