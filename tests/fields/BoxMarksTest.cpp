#include "FieldsBench.h"
#include "fields/BoxMarks.h"

namespace korvane::fields {
namespace {

struct BoxMarksTest : FieldsBench {
    BoxMarksTest() {
        fields_.watch(marks_, report_);
        marks_.addOwn(own_);
    }

    [[nodiscard]] Mark delay() const { return marks_.of(txtDelay_); }
    void hear(int value, From from = From::Ecu) {
        fields_.take(value, tables_.addresses.LAUNCH_DELAY_OFF, false, from);
    }
    void save() {
        static constexpr std::array kSteps{SaveStep{&A::LAUNCH_DELAY_OFF}};
        saver_.run({kSteps}, "Launch");
    }

    BoxMarks marks_;
    SaveReport report_{tables_};
    controls::TextBox own_{window_, "own"};
};

TEST_F(BoxMarksTest, ABoxThatTheEcuHasFilledHasNoMark) {
    EXPECT_EQ(delay(), Mark::None) << "as it is made";
    hear(5);
    EXPECT_EQ(delay(), Mark::None);
    EXPECT_EQ(marks_.note(txtDelay_), "");
    EXPECT_TRUE(marks_.wasHeard(txtDelay_));
}

TEST_F(BoxMarksTest, AnotherTextIsMarkedUntilItIsThatOfTheEcuAgain) {
    hear(5);
    txtDelay_.Text = "7";
    EXPECT_EQ(delay(), Mark::Changed);
    EXPECT_EQ(marks_.note(txtDelay_), "Not saved: the ECU last sent 5");
    txtDelay_.Text = "5";
    EXPECT_EQ(delay(), Mark::None);
}

TEST_F(BoxMarksTest, WhatAFileBringsIsNotInTheEcu) {
    hear(9, From::File);
    EXPECT_EQ(txtDelay_.Text.get(), "9");
    EXPECT_EQ(delay(), Mark::Changed);
    EXPECT_FALSE(marks_.wasHeard(txtDelay_));
    EXPECT_EQ(marks_.note(txtDelay_), "Not saved: the ECU has sent no value");
}

TEST_F(BoxMarksTest, WhatASaveHasSentIsMarkedInAnotherWayUntilItComesBack) {
    hear(5);
    txtDelay_.Text = "7";
    save();
    EXPECT_EQ(delay(), Mark::Sent);
    EXPECT_EQ(marks_.note(txtDelay_), "Saved, not read back: the ECU last sent 5");
    hear(7);
    EXPECT_EQ(delay(), Mark::None);
}

TEST_F(BoxMarksTest, TheOldTextIsNoLongerThatOfTheEcuWhenASaveHasSentAnother) {
    hear(5);
    txtDelay_.Text = "7";
    save();
    txtDelay_.Text = "5";
    EXPECT_EQ(delay(), Mark::Changed);
    EXPECT_EQ(marks_.note(txtDelay_), "Not saved: the last save sent 7");
}

TEST_F(BoxMarksTest, ASaveOfWhatTheEcuHasLeavesNoMark) {
    hear(5);
    save();
    EXPECT_EQ(delay(), Mark::None);
}

TEST_F(BoxMarksTest, ASaveOnAClosedPortSendsNothing) {
    panel_.MSComm1.setPortOpen(false);
    hear(5);
    txtDelay_.Text = "7";
    save();
    EXPECT_EQ(delay(), Mark::Changed);
}

TEST_F(BoxMarksTest, BothBytesOfANumberFillItsBox) {
    const int low = tables_.addresses.LAUNCHCONTROL_LO;
    fields_.take(0x10, low, false);
    fields_.take(0x02, low + 1, false);
    EXPECT_EQ(txtLaunch_.Text.get(), "528");
    EXPECT_EQ(marks_.of(txtLaunch_), Mark::None);
}

TEST_F(BoxMarksTest, ABoxThatTheEcuDoesNotFillIsNeverMarkedAsChanged) {
    own_.Text = "7";
    EXPECT_EQ(marks_.of(own_), Mark::None);
    controls::TextBox unknown(window_, "unknown");
    unknown.Text = "words";
    EXPECT_EQ(marks_.of(unknown), Mark::None);
    EXPECT_FALSE(marks_.isTypedZero(unknown));
}

TEST_F(BoxMarksTest, ATextThatCountsAsZeroIsMarkedOnceItIsTyped) {
    EXPECT_FALSE(marks_.isTypedZero(txtDelay_)) << "empty as it is made";
    hear(5);
    txtDelay_.Text = "";
    EXPECT_TRUE(marks_.isTypedZero(txtDelay_));
    EXPECT_EQ(marks_.note(txtDelay_), "Not saved: the ECU last sent 5. Counts as 0");
    own_.Text = "x";
    EXPECT_TRUE(marks_.isTypedZero(own_));
    EXPECT_EQ(marks_.note(own_), "Counts as 0");
}

TEST_F(BoxMarksTest, ObserversHearOfTheBoxWhoseMarkMayHaveChanged) {
    struct Ear : controls::Observer {
        void propertyChanged(controls::Object&, const void* property) override { heard.push_back(property); }
        std::vector<const void*> heard;
    } ear;
    marks_.addObserver(ear);
    hear(5);
    save();
    marks_.removeObserver(ear);
    EXPECT_THAT(ear.heard, testing::ElementsAre(&txtDelay_, &txtDelay_));
}

TEST_F(BoxMarksTest, ATextThatCountsAsAnotherNumberStaysMarkedBehindASave) {
    hear(5);
    txtDelay_.Text = "12x";
    EXPECT_EQ(delay(), Mark::Changed);
    EXPECT_EQ(marks_.note(txtDelay_), "Not saved: the ECU last sent 5. Counts as 12");
    save();
    EXPECT_EQ(delay(), Mark::Misread);
    EXPECT_EQ(marks_.note(txtDelay_), "Saved, not read back: the ECU last sent 5. Counts as 12");
    marks_.confirmed(txtDelay_);
    EXPECT_EQ(delay(), Mark::Misread);
    EXPECT_EQ(marks_.note(txtDelay_), "Saved and read back. Counts as 12");
    hear(12);
    EXPECT_EQ(delay(), Mark::None);
    EXPECT_EQ(marks_.note(txtDelay_), "");
}

TEST_F(BoxMarksTest, CountsTheBoxesThatAreNotSaved) {
    EXPECT_EQ(marks_.unsaved(), 0) << "as they are made";
    hear(5);
    txtDelay_.Text = "7";
    txtLimit_.Text = "7000";
    own_.Text = "9";
    EXPECT_EQ(marks_.unsaved(), 2);
    save();
    EXPECT_EQ(marks_.unsaved(), 1);
}

struct ComparedMarksTest : BoxMarksTest {
    ComparedMarksTest() { marks_.compareWith(ecu()); }

    link::EcuEeprom& ecu() { return panel_.ecuEeprom; }
    void tell(int value) { ecu().told(tables_.addresses.LAUNCH_DELAY_OFF, static_cast<std::uint8_t>(value)); }
    void tellAndHear(int value) {
        tell(value);
        hear(value);
    }
    void saveAndSend(int value) {
        txtDelay_.Text = std::to_string(value);
        ecu().sent(tables_.addresses.LAUNCH_DELAY_OFF, static_cast<std::uint8_t>(value));
        save();
    }
};

TEST_F(ComparedMarksTest, AnotherValueThatTheEcuHasToldPastTheBoxIsMarked) {
    tellAndHear(92);
    EXPECT_EQ(delay(), Mark::None);
    tell(85);
    EXPECT_EQ(txtDelay_.Text.get(), "92");
    EXPECT_EQ(delay(), Mark::Changed);
    EXPECT_EQ(marks_.note(txtDelay_), "The ECU has another value: 85");
    EXPECT_EQ(marks_.unsaved(), 1);
    tellAndHear(85);
    EXPECT_EQ(delay(), Mark::None);
}

TEST_F(ComparedMarksTest, AnotherValueThatWasSentPastTheBoxIsMarked) {
    tellAndHear(5);
    ecu().sent(tables_.addresses.LAUNCH_DELAY_OFF, 77);
    EXPECT_EQ(delay(), Mark::Changed);
    EXPECT_EQ(marks_.note(txtDelay_), "Another value was sent: 77");
    txtDelay_.Text = "77";
    EXPECT_EQ(delay(), Mark::Sent);
    EXPECT_EQ(marks_.note(txtDelay_), "Saved, not read back: the ECU last sent 5");
}

TEST_F(ComparedMarksTest, TheValueThatTheEcuHasIsNoOtherOne) {
    tellAndHear(92);
    tell(85);
    txtDelay_.Text = "85";
    EXPECT_EQ(delay(), Mark::None);
}

TEST_F(ComparedMarksTest, ASaveSendsTheValueOfTheBox) {
    tellAndHear(92);
    tell(85);
    saveAndSend(90);
    EXPECT_EQ(delay(), Mark::Sent);
    EXPECT_EQ(marks_.note(txtDelay_), "Saved, not read back: the ECU last sent 85");
    tell(90);
    EXPECT_EQ(delay(), Mark::None);
    tell(85);
    EXPECT_EQ(delay(), Mark::Changed);
}

TEST_F(ComparedMarksTest, ABoxThatNothingHasFilledHasNoMark) {
    tell(85);
    EXPECT_EQ(delay(), Mark::None);
    txtDelay_.Text = "7";
    EXPECT_EQ(marks_.note(txtDelay_), "The ECU has another value: 85");
}

TEST_F(ComparedMarksTest, AnEcuOfWhichNothingIsKnownHasNoOtherValue) {
    tellAndHear(92);
    tell(85);
    ecu().forget();
    EXPECT_EQ(delay(), Mark::None);
}

TEST_F(ComparedMarksTest, BothCellsOfANumberAreCompared) {
    const int low = tables_.addresses.LAUNCHCONTROL_LO;
    ecu().told(low, 0x10);
    ecu().told(low + 1, 0x02);
    fields_.take(0x10, low, false);
    fields_.take(0x02, low + 1, false);
    EXPECT_EQ(marks_.of(txtLaunch_), Mark::None);
    ecu().told(low + 1, 0x03);
    EXPECT_EQ(marks_.note(txtLaunch_), "The ECU has another value: 784");
    EXPECT_EQ(delay(), Mark::None) << "a box of other cells";
}

TEST_F(ComparedMarksTest, ObserversHearOfTheBoxOfTheCell) {
    struct Ear : controls::Observer {
        void propertyChanged(controls::Object&, const void* property) override { heard.push_back(property); }
        std::vector<const void*> heard;
    } ear;
    tellAndHear(5);
    marks_.addObserver(ear);
    tell(7);
    marks_.removeObserver(ear);
    EXPECT_THAT(ear.heard, testing::ElementsAre(&txtDelay_));
}

TEST(IsPlainNumber, IsANumberAndNothingElse) {
    for (const char* text : {"0", "12", " 12 ", "-3", "+4.5", ".5", "5.", "007"}) {
        EXPECT_TRUE(isPlainNumber(text)) << text;
    }
    for (const char* text : {"", " ", "12x", "1 2", "7,9", "1.2.3", "-", ".", "--1", "12 rpm", "1e3"}) {
        EXPECT_FALSE(isPlainNumber(text)) << text;
    }
}

TEST(CountsAsZero, IsWhatIsNoNumberAndNoZero) {
    for (const char* text : {"", " ", "words", "-", ".", ",5", "0,5", "e9", "x1", "0x10"}) {
        EXPECT_TRUE(countsAsZero(text)) << text;
    }
    for (const char* text : {"0", "0.0", "-0", " 00 ", "7,9", "12 rpm", "0.5", "-3"}) {
        EXPECT_FALSE(countsAsZero(text)) << text;
    }
}

}  // namespace
}  // namespace korvane::fields
