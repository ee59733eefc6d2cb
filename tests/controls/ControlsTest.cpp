#include <gmock/gmock.h>

#include "ModelBench.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlsTest : public ModelBench {
protected:
    int clicks_ = 0;
};

class CheckBoxTest : public ControlsTest {
protected:
    CheckBoxTest() {
        box_.Click = [this] { ++clicks_; };
    }
    CheckBox box_{window_, "chkTest"};
};

TEST_F(CheckBoxTest, AnAssignmentRaisesClickOnce) {
    box_.Value = 1;
    EXPECT_EQ(clicks_, 1);
    box_.Value = 1;
    EXPECT_EQ(clicks_, 1);
    box_.Value = 0;
    EXPECT_EQ(clicks_, 2);
}

TEST_F(CheckBoxTest, APressTogglesAndRaisesClickOnce) {
    box_.press();
    EXPECT_EQ(box_.Value.get(), 1);
    EXPECT_EQ(clicks_, 1);
    box_.press();
    EXPECT_EQ(box_.Value.get(), 0);
    EXPECT_EQ(clicks_, 2);
}

TEST_F(CheckBoxTest, TheHandlerSeesTheNewValue) {
    int seen = -1;
    box_.Click = [&] { seen = box_.Value; };
    box_.press();
    EXPECT_EQ(seen, 1);
}

TEST_F(CheckBoxTest, OtherPropertiesRaiseNothing) {
    box_.Caption = "words";
    box_.Enabled = false;
    EXPECT_EQ(clicks_, 0);
}

TEST_F(CheckBoxTest, AHandlerThatFailsLeavesTheValue) {
    box_.Click = [] { throw platform::RuntimeError(platform::kErrorOverflow, "Overflow"); };
    EXPECT_NO_THROW(box_.Value = 1);
    EXPECT_EQ(box_.Value.get(), 1);
    EXPECT_EQ(log_.lines.size(), 1U);
}

class ComboBoxTest : public ControlsTest {
protected:
    ComboBoxTest() {
        for (const auto* row : {"10", "25", "50"}) {
            box_.AddItem(row);
        }
        box_.Click = [this] { ++clicks_; };
    }
    ComboBox box_{window_, "ComboRefresh"};
};

TEST_F(ComboBoxTest, StartsWithNoRowChosen) {
    EXPECT_EQ(box_.ListIndex.get(), -1);
    EXPECT_EQ(box_.Text(), "");
    EXPECT_EQ(box_.ListCount(), 3);
}

TEST_F(ComboBoxTest, AnAssignmentRaisesClickOnce) {
    box_.ListIndex = 1;
    EXPECT_EQ(clicks_, 1);
    EXPECT_EQ(box_.Text(), "25");
    box_.ListIndex = 1;
    EXPECT_EQ(clicks_, 1);
}

TEST_F(ComboBoxTest, ChoosingRaisesClickOnceAndNothingForThePickedRow) {
    box_.choose(2);
    box_.choose(2);
    EXPECT_EQ(clicks_, 1);
    EXPECT_EQ(box_.Text(), "50");
}

TEST_F(ComboBoxTest, ARowThatDoesNotExistCantBeChosen) {
    EXPECT_EQ(errorOf([&] { box_.choose(3); }), 380);
    EXPECT_EQ(errorOf([&] { box_.choose(-1); }), 380);
    EXPECT_EQ(clicks_, 0);
}

TEST_F(ComboBoxTest, ARowThatDoesNotExistHasNoText) {
    EXPECT_EQ(box_.List(0), "10");
    EXPECT_EQ(errorOf([&] { static_cast<void>(box_.List(3)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(box_.List(-1)); }), 9);
}

TEST_F(ComboBoxTest, ClearingTakesRowsAndChoice) {
    box_.choose(1);
    box_.Clear();
    EXPECT_EQ(box_.ListCount(), 0);
    EXPECT_EQ(box_.ListIndex.get(), -1);
    EXPECT_EQ(box_.Text(), "");
}

TEST_F(ComboBoxTest, RowsHaveNotes) {
    NotingObserver observer(box_);
    box_.setItemToolTip(1, "/dev/ttyUSB0");
    box_.setItemToolTip(1, "/dev/ttyUSB0");
    box_.setItemToolTip(7, "nowhere");
    EXPECT_EQ(box_.itemToolTip(1), "/dev/ttyUSB0");
    EXPECT_EQ(box_.itemToolTip(0), "");
    EXPECT_THAT(observer.changes, ElementsAre(box_.rowsProperty()));
}

class TextBoxTest : public ControlsTest {
protected:
    TextBox box_{window_, "txtTest"};
};

TEST_F(TextBoxTest, ALockedBoxTakesAnAssignment) {
    box_.Locked = true;
    box_.Text = "words";
    EXPECT_EQ(box_.Text.get(), "words");
}

TEST_F(TextBoxTest, AKeyPressHandlerFiltersWhatIsTyped) {
    box_.KeyPress = [](int& code) { code = code == ',' ? '.' : 0; };
    EXPECT_EQ(box_.keyPress(','), '.');
    EXPECT_EQ(box_.keyPress('a'), 0);
}

TEST_F(TextBoxTest, AnAssignmentRaisesChangeOnce) {
    int changes = 0;
    box_.Change = [&] { ++changes; };
    box_.Text = "a";
    box_.Text = "a";
    EXPECT_EQ(changes, 1);
}

TEST_F(ControlsTest, AnArrayHasItsElementsAndNoOthers) {
    ControlArray<Label> labels(window_, "lblValue", 12);
    EXPECT_EQ(labels.count(), 12);
    EXPECT_EQ(labels(11).path(), "lblValue(11)");
    EXPECT_EQ(errorOf([&] { static_cast<void>(labels(12)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(labels(-1)); }), 9);
}

}  // namespace
}  // namespace korvane::controls
