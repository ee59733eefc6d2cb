#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "fields/Fields.h"
#include "platform/RuntimeError.h"
#include "support/VirtualMachine.h"

namespace korvane::fields {
namespace {

using A = core::ParameterAddresses;
using testing::HasSubstr;
using testing::StartsWith;

class FieldsTest : public testing::Test {
protected:
    FieldsTest() { core::InitModule(tables_, virtual_.preferences); }

    // The sentence with which the only cell of the row for NTC1 can't be stored.
    static std::string refusal(const Fields& fields) {
        try {
            static_cast<void>(fields.stored(fields.storing(&A::NTC1_OFF), 0));
        } catch (const platform::RuntimeError& error) {
            EXPECT_EQ(error.number(), platform::kErrorOverflow);
            return error.what();
        }
        return {};
    }
    int ntc1() const { return tables_.addresses.NTC1_OFF; }

    support::VirtualMachine virtual_;
    core::SharedTables tables_;
    controls::Window window_{virtual_.machine, "window"};
    controls::TextBox box_{window_, "box"};
    controls::TextBox other_{window_, "other"};
    controls::Label label_{window_, "label"};
    controls::ComboBox list_{window_, "list"};
    controls::ControlArray<controls::TextBox> row_{window_, "row", 3};
};

TEST_F(FieldsTest, AReplyGoesToTheFirstRowThatAnswers) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_}, {&A::NTC1_OFF, other_}});
    EXPECT_TRUE(fields.take(7, ntc1(), false));
    EXPECT_EQ(box_.Text.get(), "7");
    EXPECT_EQ(other_.Text.get(), "");
}

TEST_F(FieldsTest, ARowThatIsOnlyStoredLetsAReplyPass) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_, kByte, {}, kStoredOnly}, {&A::NTC1_OFF, label_}});
    EXPECT_TRUE(fields.take(7, ntc1(), false));
    EXPECT_EQ(box_.Text.get(), "");
    EXPECT_EQ(label_.Caption.get(), "7");
}

TEST_F(FieldsTest, ARowThatIsOnlyShownIsNotTheOneThatStores) {
    box_.Text = "9";
    Fields fields(tables_,
                  {{&A::NTC1_OFF, label_}, {&A::NTC1_OFF, Own{[](std::int32_t) {}, {}}}, {&A::NTC1_OFF, box_}});
    EXPECT_EQ(fields.stored(fields.storing(&A::NTC1_OFF), 0), 9);
    EXPECT_THROW(static_cast<void>(fields.storing(&A::NTC2_OFF)), platform::RuntimeError);
}

TEST_F(FieldsTest, AReplyThatNoRowAnswersToOnlyReachesTheImage) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_}});
    EXPECT_FALSE(fields.take(7, ntc1() + 1, false));
    EXPECT_EQ(tables_.EEImage[static_cast<std::size_t>(ntc1()) + 1], 7);
}

TEST_F(FieldsTest, ARowOfBoxesAnswersToAsManyAddresses) {
    Fields fields(tables_, {{&A::NTC1_OFF, row_}});
    EXPECT_TRUE(fields.take(5, ntc1() + 2, false));
    EXPECT_EQ(row_(2).Text.get(), "5");
    EXPECT_FALSE(fields.take(5, ntc1() + 3, false));
}

TEST_F(FieldsTest, TwoBytesShowTheWordOfTheImageAtEither) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_, kTwoBytes}});
    fields.take(2, ntc1() + 1, false);
    EXPECT_EQ(box_.Text.get(), "512");
    fields.take(1, ntc1(), false);
    EXPECT_EQ(box_.Text.get(), "513");
}

TEST_F(FieldsTest, AListMayStandForTheLowByteOfAWord) {
    for (const char* row : {"nothing", "half", "all"}) {
        list_.AddItem(row);
    }
    Fields fields(tables_, {{&A::NTC1_OFF, lowByteOf(list_)}});
    EXPECT_TRUE(fields.take(0x0502, ntc1(), true));
    EXPECT_EQ(list_.ListIndex.get(), 2);
    EXPECT_EQ(fields.stored(fields.storing(&A::NTC1_OFF), 0), 2);
}

TEST_F(FieldsTest, AFactorHoldsInBothDirections) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_, Codec{Width::Byte, 2.0}}});
    fields.take(20, ntc1(), false);
    EXPECT_EQ(box_.Text.get(), "40");
    EXPECT_EQ(fields.stored(fields.storing(&A::NTC1_OFF), 0), 20);
}

TEST_F(FieldsTest, WhatDoesNotFitIsToldInTheUnitOfTheBox) {
    box_.Text = "-1";
    EXPECT_THAT(refusal({tables_, {{&A::NTC1_OFF, box_, Codec{Width::Byte, 0.5, " V"}}}}),
                HasSubstr("it must be from 0 to 127.5 V."));
    EXPECT_THAT(refusal({tables_, {{&A::NTC1_OFF, list_}}}), StartsWith("list in \"\" holds a value"));
    box_.Text = "32768";
    EXPECT_THAT(refusal({tables_, {{&A::NTC1_OFF, box_, kWord}}}), HasSubstr("from -32768 to 32767"));
}

TEST_F(FieldsTest, ACountKeptBehindTheTextIsWhatIsStored) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_, Codec{Width::Byte, 0.02}, Stepping{250}}});
    fields.show(&A::NTC1_OFF, 175);
    EXPECT_EQ(box_.Text.get(), "3.5");
    EXPECT_EQ(box_.Tag.get(), "175");
    EXPECT_TRUE(box_.Locked);
    EXPECT_EQ(fields.stored(fields.storing(&A::NTC1_OFF), 0), 175);
    box_.Tag = "300";
    EXPECT_THAT(refusal(fields), HasSubstr("from 0 to 255 steps"));
}

TEST_F(FieldsTest, ACountThatNothingKeepsIsTurnedBackFromTheText) {
    Fields fields(tables_, {{&A::NTC1_OFF, row_, Codec{Width::Byte, 0.5}, Stepping{4, nullptr}}});
    fields.show(&A::NTC1_OFF, 3, 1);
    EXPECT_EQ(row_(1).Text.get(), "1.5");
    for (const char* text : {"2", "2"}) {
        row_(1).keyDown(controls::kKeyUp, 0);
        EXPECT_EQ(row_(1).Text.get(), text);
    }
    EXPECT_EQ(row_(1).Tag.get(), "");
    EXPECT_EQ(fields.stored(fields.storing(&A::NTC1_OFF), 1), 4);
}

TEST_F(FieldsTest, WhatIsPutIntoABoxIsWhatItHoldsAndTheImageStays) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_, Codec{Width::Byte, 0.5}}});
    const int address = tables_.addresses.NTC1_OFF;
    EXPECT_TRUE(fields.held().empty());
    EXPECT_TRUE(fields.put(5, address));
    EXPECT_EQ(box_.Text.get(), "2.5");
    EXPECT_EQ(tables_.EEImage.at(static_cast<std::size_t>(address)), 0);
    ASSERT_EQ(fields.held().size(), 1U);
    EXPECT_EQ(fields.held().front().address, address);
    EXPECT_EQ(fields.held().front().value, 5);
    EXPECT_FALSE(fields.held().front().isWord);
    EXPECT_FALSE(fields.put(5, address + 1));
}

TEST_F(FieldsTest, AWordIsPutAtItsLowByte) {
    Fields fields(tables_, {{&A::NTC1_OFF, row_, kTwoBytes}});
    const int address = tables_.addresses.NTC1_OFF;
    EXPECT_FALSE(fields.put(300, address + 1));
    EXPECT_TRUE(fields.put(300, address + 2));
    EXPECT_EQ(row_(1).Text.get(), "300");
    ASSERT_EQ(fields.held().size(), 1U);
    EXPECT_EQ(fields.held().front().address, address + 2);
    EXPECT_TRUE(fields.held().front().isWord);
}

TEST_F(FieldsTest, ASteppingBoxTakesWhatIsPutIntoIt) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_, Codec{Width::Byte, 0.02}, Stepping{250}}});
    EXPECT_TRUE(fields.put(175, tables_.addresses.NTC1_OFF));
    EXPECT_EQ(box_.Text.get(), "3.5");
    EXPECT_EQ(fields.held().front().value, 175);
}

TEST_F(FieldsTest, ATextThatDoesNotFitIsNotHeld) {
    Fields fields(tables_, {{&A::NTC1_OFF, box_}});
    box_.Text = "256";
    EXPECT_TRUE(fields.held().empty());
}

TEST_F(FieldsTest, OptionsHoldSomethingOnceTheyWereShownAValue) {
    int option = 0;
    const Own own{[&](std::int32_t value) { option = value; }, [&] { return option; }};
    Fields fields(tables_, {{&A::NTC1_OFF, own}});
    EXPECT_TRUE(fields.held().empty());
    EXPECT_TRUE(fields.put(3, tables_.addresses.NTC1_OFF));
    EXPECT_EQ(fields.held().front().value, 3);
}

TEST_F(FieldsTest, AListHoldsItsRowOnceItWasShownAValue) {
    list_.AddItem("first");
    list_.AddItem("second");
    list_.ListIndex = 0;
    Fields fields(tables_, {{&A::NTC1_OFF, list_}});
    EXPECT_TRUE(fields.held().empty());
    EXPECT_TRUE(fields.put(1, tables_.addresses.NTC1_OFF));
    ASSERT_EQ(fields.held().size(), 1U);
    EXPECT_EQ(fields.held().front().value, 1);
}

TEST_F(FieldsTest, WhatIsShownOnlyTakesNothing) {
    const Own shown{[](std::int32_t) {}, {}};
    Fields fields(tables_, {{&A::NTC1_OFF, shown}});
    EXPECT_FALSE(fields.put(3, tables_.addresses.NTC1_OFF));
}

}  // namespace
}  // namespace korvane::fields
