// Controls of which one of several is chosen, and the bar that shows how far something has come.
#include <gmock/gmock.h>

#include "ModelBench.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OptionButtonTest : public ModelBench {
protected:
    OptionButtonTest() {
        for (auto* option : {&first_, &second_}) {
            option->setContainer(&frame_);
            option->Click = [this, option] { clicks_.push_back(option->path()); };
        }
        elsewhere_.Click = [this] { clicks_.push_back(elsewhere_.path()); };
    }

    Frame frame_{window_, "fraGroup"};
    OptionButton first_{window_, "optGroup", 0};
    OptionButton second_{window_, "optGroup", 1};
    OptionButton elsewhere_{window_, "optOther"};
    std::vector<std::string> clicks_;
};

TEST_F(OptionButtonTest, StartsSwitchedOff) {
    EXPECT_FALSE(first_.Value);
    EXPECT_FALSE(second_.Value);
}

TEST_F(OptionButtonTest, SwitchingOneOnSwitchesTheOtherOff) {
    first_.press();
    EXPECT_TRUE(first_.Value);
    second_.press();
    EXPECT_FALSE(first_.Value);
    EXPECT_TRUE(second_.Value);
    EXPECT_THAT(clicks_, ElementsAre("optGroup(0)", "optGroup(1)"));
}

TEST_F(OptionButtonTest, AnAssignmentDoesAsAPressDoes) {
    first_.Value = true;
    second_.Value = true;
    EXPECT_FALSE(first_.Value);
    EXPECT_THAT(clicks_, ElementsAre("optGroup(0)", "optGroup(1)"));
}

TEST_F(OptionButtonTest, OnlyTheSameContainerExcludesEachOther) {
    elsewhere_.press();
    first_.press();
    EXPECT_TRUE(elsewhere_.Value);
    EXPECT_TRUE(first_.Value);
}

TEST_F(OptionButtonTest, OneThatIsOnIsNotClickedAgain) {
    first_.press();
    first_.press();
    EXPECT_TRUE(first_.Value);
    EXPECT_THAT(clicks_, ElementsAre("optGroup(0)"));
}

TEST_F(OptionButtonTest, TheProgramCanSwitchAllOff) {
    first_.press();
    clicks_.clear();
    first_.Value = false;
    EXPECT_FALSE(first_.Value);
    EXPECT_FALSE(second_.Value);
    EXPECT_THAT(clicks_, IsEmpty());
}

TEST_F(OptionButtonTest, TheHandlerSeesTheOthersOff) {
    first_.press();
    bool seen = true;
    second_.Click = [&] { seen = first_.Value; };
    second_.press();
    EXPECT_FALSE(seen);
}

TEST_F(OptionButtonTest, AHandlerThatFailsLeavesTheChoice) {
    first_.Click = [] { throw platform::RuntimeError(platform::kErrorOverflow, "Overflow"); };
    EXPECT_NO_THROW(first_.press());
    EXPECT_TRUE(first_.Value);
    EXPECT_EQ(log_.lines.size(), 1U);
}

TEST_F(OptionButtonTest, ScriptsSwitchItByName) {
    first_.findProperty("Value")->set(first_, true);
    EXPECT_TRUE(first_.Value);
    EXPECT_EQ(errorOf([&] { first_.findProperty("Value")->set(first_, std::int64_t{1}); }), 13);
}

class TabStripTest : public ModelBench {
protected:
    TabStripTest() {
        for (const char* caption : {"Fuel", "Ignition", "PWM"}) {
            strip_.addTab(caption);
        }
        strip_.Click = [this] { ++clicks_; };
    }
    void assign(std::int64_t tab) { strip_.findProperty("SelectedItem")->set(strip_, tab); }

    TabStrip strip_{window_, "TabStrip1"};
    int clicks_ = 0;
};

TEST_F(TabStripTest, StartsWithNoTabChosen) {
    EXPECT_EQ(strip_.SelectedItem.get(), 0);
    EXPECT_EQ(strip_.tabCount(), 3);
}

TEST_F(TabStripTest, TabsCountFromOne) {
    EXPECT_EQ(strip_.tabCaption(1), "Fuel");
    EXPECT_EQ(strip_.tabCaption(3), "PWM");
    EXPECT_EQ(errorOf([&] { static_cast<void>(strip_.tabCaption(0)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(strip_.tabCaption(4)); }), 9);
    ASSERT_TRUE(strip_.choices());
    EXPECT_EQ(strip_.choices()->first, 1);
    EXPECT_EQ(strip_.choices()->count, 3);
}

TEST_F(TabStripTest, ChoosingAnotherTabRaisesClickOnce) {
    strip_.choose(2);
    EXPECT_EQ(strip_.SelectedItem.get(), 2);
    EXPECT_EQ(clicks_, 1);
    strip_.choose(2);
    EXPECT_EQ(clicks_, 1);
    strip_.SelectedItem = 1;
    EXPECT_EQ(clicks_, 2);
}

TEST_F(TabStripTest, TheHandlerSeesTheNewTab) {
    int seen = 0;
    strip_.Click = [&] { seen = strip_.SelectedItem; };
    strip_.choose(3);
    EXPECT_EQ(seen, 3);
}

TEST_F(TabStripTest, ScriptsReadCaptionsByTab) {
    const std::vector<int> second{2};
    const std::vector<int> none;
    const std::vector<int> outside{4};
    EXPECT_EQ(strip_.indexedProperty("Caption", second), Value("Ignition"));
    EXPECT_FALSE(strip_.indexedProperty("Caption", none));
    EXPECT_FALSE(strip_.indexedProperty("Text", second));
    EXPECT_EQ(errorOf([&] { static_cast<void>(strip_.indexedProperty("Caption", outside)); }), 9);
}

TEST_F(TabStripTest, ACaptionMayChange) {
    struct Count : Observer {
        void propertyChanged(Object&, const void*) override { ++changes; }
        int changes = 0;
    } watch;
    strip_.addObserver(watch);
    strip_.setTabCaption(2, "Ignition (3)");
    EXPECT_EQ(strip_.tabCaption(2), "Ignition (3)");
    EXPECT_EQ(watch.changes, 1);
    strip_.setTabCaption(2, "Ignition (3)");
    EXPECT_EQ(watch.changes, 1);
    EXPECT_THROW(strip_.setTabCaption(99, ""), platform::RuntimeError);
    strip_.removeObserver(watch);
}

TEST_F(TabStripTest, ScriptsChooseATabOfTheStrip) {
    assign(3);
    EXPECT_EQ(strip_.SelectedItem.get(), 3);
    EXPECT_EQ(errorOf([&] { assign(0); }), 13);
    EXPECT_EQ(errorOf([&] { assign(4); }), 13);
    EXPECT_EQ(strip_.SelectedItem.get(), 3);
    EXPECT_EQ(clicks_, 1);
}

class ProgressBarTest : public ModelBench {
protected:
    ProgressBar bar_{window_, "prgTransfer"};
};

TEST_F(ProgressBarTest, IsOutOfViewUntilSomethingGoesOn) {
    EXPECT_FALSE(bar_.Visible);
    bar_.start(10);
    EXPECT_TRUE(bar_.Visible);
    EXPECT_EQ(bar_.Max.get(), 10);
    bar_.stop();
    EXPECT_FALSE(bar_.Visible);
}

TEST_F(ProgressBarTest, StartsFromTheBeginningEachTime) {
    bar_.start(10);
    bar_.Value = 7;
    bar_.stop();
    bar_.start(20);
    EXPECT_EQ(bar_.Value.get(), 0);
    EXPECT_EQ(bar_.Max.get(), 20);
}

TEST_F(ProgressBarTest, ScriptsReadItByName) {
    bar_.start(10);
    bar_.Value = 4;
    EXPECT_EQ(bar_.findProperty("Value")->get(bar_), Value(std::int64_t{4}));
    EXPECT_EQ(bar_.findProperty("Max")->get(bar_), Value(std::int64_t{10}));
}

}  // namespace
}  // namespace korvane::controls
