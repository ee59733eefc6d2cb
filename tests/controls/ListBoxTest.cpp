#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/ListBox.h"

namespace korvane::controls {
namespace {

using testing::Contains;

class ListBoxTest : public ModelBench {
protected:
    ListBoxTest() {
        box_.Click = [this] { ++clicks_; };
    }
    void fill(int rows) {
        for (int row = 0; row < rows; ++row) {
            box_.AddItem(std::to_string(row));
        }
    }

    ListBox box_{window_, "List1"};
    int clicks_ = 0;
};

TEST_F(ListBoxTest, HasItsRowsInTheOrderInWhichTheyCame) {
    fill(3);
    EXPECT_EQ(box_.ListCount(), 3);
    EXPECT_EQ(box_.List(0), "0");
    EXPECT_EQ(box_.List(2), "2");
    EXPECT_EQ(box_.ListIndex.get(), -1) << "a new row is not chosen";
    EXPECT_EQ(errorOf([&] { static_cast<void>(box_.List(3)); }), 9);
}

TEST_F(ListBoxTest, ScriptsReachRowsCountAndChoice) {
    fill(3);
    box_.ListIndex = 1;
    const std::array row{2};
    EXPECT_EQ(box_.indexedProperty("List", row), Value(std::string("2")));
    EXPECT_EQ(box_.findProperty("ListCount")->get(box_), Value(std::int64_t{3}));
    EXPECT_EQ(box_.findProperty("ListIndex")->get(box_), Value(std::int64_t{1}));
    EXPECT_EQ(box_.findProperty("Text")->get(box_), Value(std::string("1")));
    EXPECT_EQ(errorOf([&] { box_.findProperty("ListIndex")->set(box_, Value(std::int64_t{3})); }), 13);
    EXPECT_EQ(box_.choices()->first, 0);
    EXPECT_EQ(box_.choices()->count, 3);
}

TEST_F(ListBoxTest, ChoosingRaisesClickOnceAndNothingForThePickedRow) {
    fill(3);
    box_.choose(2);
    box_.choose(2);
    EXPECT_EQ(clicks_, 1);
    EXPECT_EQ(errorOf([&] { box_.choose(3); }), 380);
}

TEST_F(ListBoxTest, ClearingTakesRowsAndChoice) {
    fill(3);
    box_.ListIndex = 2;
    NotingObserver observer(box_);
    box_.Clear();
    EXPECT_EQ(box_.ListCount(), 0);
    EXPECT_EQ(box_.ListIndex.get(), -1);
    EXPECT_EQ(box_.rowsGone(), 3);
    EXPECT_THAT(observer.changes, Contains(box_.rowsProperty()));
}

TEST_F(ListBoxTest, AFullListLosesItsOldestRow) {
    fill(ListBox::kMostRows);
    EXPECT_EQ(box_.rowsGone(), 0);
    box_.ListIndex = 1;
    box_.AddItem("newest");
    EXPECT_EQ(box_.ListCount(), 32767);
    EXPECT_EQ(box_.rowsGone(), 1);
    EXPECT_EQ(box_.List(0), "1");
    EXPECT_EQ(box_.List(32766), "newest");
    EXPECT_EQ(box_.Text(), "1") << "the choice follows its row";
    box_.AddItem("newer");
    EXPECT_EQ(box_.ListIndex.get(), -1) << "and goes with it";
}

}  // namespace
}  // namespace korvane::controls
