// What the settings window knows of its boxes and of its last save.
#include "SaveBench.h"

namespace korvane::settings {
namespace {

using fields::Mark;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct MarkedBoxesTest : SaveBench {
    [[nodiscard]] Mark mark(const controls::TextBox& box) { return frmMisc_.boxMarks().of(box); }
    std::string saved(controls::CommandButton& button) {
        button.press();
        return frmMisc_.saveReport().Text;
    }
    void lambdaBlock(int bytes) {
        std::vector<int> payload;
        for (int i = 0; i < bytes; ++i) {
            payload.push_back(100 + i);
        }
        reply('l', payload);
    }
};

TEST_F(MarkedBoxesTest, EachBoxOfTheEcuIsKnownAndHasALabel) {
    int boxes = 0;
    for (const auto* control : frmMisc_.controls()) {
        const auto* const box = dynamic_cast<const controls::TextBox*>(control);
        if (box == nullptr || box->path() == "txtParName" || box->path() == "txtParDesc") {
            continue;
        }
        EXPECT_TRUE(frmMisc_.boxMarks().knows(*box)) << box->path();
        EXPECT_FALSE(box->label().empty()) << box->path();
        ++boxes;
    }
    EXPECT_EQ(boxes, 5 + 4 + 2 + 16 + 4 + 4 + 11 + 3 + 16 + 20 + 16 + 7 + 10 + 8 + 5);
}

TEST_F(MarkedBoxesTest, ABoxOfItsOwnKindIsMarkedToo) {
    byteReply(tables_.addresses.INJ_MODE_OFFSET, 2);
    byteReply(tables_.addresses.INJ_MULTIPLIER_OFF, 3);
    byteReply(tables_.addresses.IGN_EDGE_OFFSET, 1);
    for (auto* box : {&frmMisc_.txtInjMode, &frmMisc_.txtInjMultiplier, &frmMisc_.txtIgnEdge}) {
        EXPECT_EQ(mark(*box), Mark::None) << box->path();
        box->Text = "4";
        EXPECT_EQ(mark(*box), Mark::Changed) << box->path();
    }
}

TEST_F(MarkedBoxesTest, TheSettingsBlockCountsAsSentByTheEcu) {
    std::vector<int> block(19, 7);
    reply('e', block);
    for (auto* box : {&frmMisc_.txtAccel(9), &frmMisc_.txtStart, &frmMisc_.txtVolt(3), &frmMisc_.txtchargetime}) {
        EXPECT_TRUE(frmMisc_.boxMarks().wasHeard(*box)) << box->path();
        EXPECT_EQ(mark(*box), Mark::None) << box->path();
    }
}

TEST_F(MarkedBoxesTest, AStepOfAScaledBoxIsMarked) {
    byteReply(tables_.addresses.CHARGE_TIME_OFF, 50);
    frmMisc_.txtchargetime.keyDown(controls::kKeyPlus, 0);
    EXPECT_EQ(mark(frmMisc_.txtchargetime), Mark::Changed);
}

TEST_F(MarkedBoxesTest, TheLambdaBoxesWaitUntilAllTwentyAreFilled) {
    EXPECT_TRUE(frmMisc_.awaitsLambda());
    frmMisc_.txtLambdaTav(0).Text = "5";
    EXPECT_TRUE(frmMisc_.awaitsLambda()) << "typed";
    frmMisc_.setLambdaSetpoint(0, 12);
    EXPECT_TRUE(frmMisc_.awaitsLambda()) << "one of twenty";
    lambdaBlock(20);
    EXPECT_FALSE(frmMisc_.awaitsLambda());
    EXPECT_EQ(mark(frmMisc_.txtLambdaVaik(9)), Mark::None);
}

TEST_F(MarkedBoxesTest, WhatIsReadPastTheWindowIsComparedWithItsBoxes) {
    const int address = tables_.addresses.IDLE_ADV0;
    byteReply(address, 92);
    EXPECT_EQ(mark(frmMisc_.txtIdleAdv(0)), Mark::None);
    struct Taker : link::ReplyTaker {
        void replyTaken(std::uint8_t, std::span<const std::uint8_t>) override {}
    } taker;
    main_.diversion.expect({'T', address}, 1, taker);
    byteReply(address, 85);
    EXPECT_EQ(frmMisc_.txtIdleAdv(0).Text.get(), "92");
    EXPECT_EQ(mark(frmMisc_.txtIdleAdv(0)), Mark::Changed);
    EXPECT_EQ(frmMisc_.boxMarks().note(frmMisc_.txtIdleAdv(0)), "The ECU has another value: 85");
    EXPECT_EQ(mark(frmMisc_.txtIdleAdv(1)), Mark::None);
}

TEST_F(MarkedBoxesTest, AScaledBoxIsComparedInItsUnit) {
    byteReply(tables_.addresses.CHARGE_TIME_OFF, 50);
    main_.ecuEeprom.told(tables_.addresses.CHARGE_TIME_OFF, 75);
    EXPECT_EQ(frmMisc_.boxMarks().note(frmMisc_.txtchargetime), "The ECU has another value: 1.5");
}

TEST_F(MarkedBoxesTest, AnOwnBoxOfTwoCellsIsComparedWithBoth) {
    const int low = tables_.addresses.IDLEPID_SETPOINT_LO;
    byteReply(low, 0x10);
    byteReply(low + 1, 0x02);
    EXPECT_EQ(mark(frmMisc_.txtIdleValveSetpoint), Mark::None);
    main_.ecuEeprom.told(low + 1, 0x03);
    EXPECT_EQ(frmMisc_.boxMarks().note(frmMisc_.txtIdleValveSetpoint), "The ECU has another value: 784");
}

TEST_F(MarkedBoxesTest, TheLambdaBlockFillsItsBoxesAndDoesNotComePastThem) {
    auto& box = frmMisc_.txtLambdaTav(0);
    main_.ecuEeprom.sent(tables_.addresses.LAMBDATAV_OFF, 99);
    lambdaBlock(20);
    EXPECT_EQ(mark(box), Mark::None);
    box.Text = "5";
    EXPECT_EQ(frmMisc_.boxMarks().note(box), "Not saved: the ECU last sent 100");
}

TEST_F(MarkedBoxesTest, ASaveIsNamedByItsFrame) {
    EXPECT_THAT(saved(frmMisc_.btnSaveIdleAdv), HasSubstr("Idle Ignition: 5 values sent"));
    frmMisc_.OptionPWM1(0).Value = true;
    EXPECT_THAT(saved(frmMisc_.btnPWMmode), HasSubstr("PWM outputs: 1 value sent"));
    EXPECT_THAT(saved(frmMisc_.btnSaveALSsettings), HasSubstr("Launch / Antilag settings: 9 values sent"));
}

TEST_F(MarkedBoxesTest, AFullReadTellsWhatCameBack) {
    number(frmMisc_.txtIdleAdv, 10);
    saved(frmMisc_.btnSaveIdleAdv);
    const int first = tables_.addresses.IDLE_ADV0;
    byteReply(first, 10);
    byteReply(first + 1, 99);
    EXPECT_EQ(frmMisc_.saveReport().Text.get(),
              "Idle Ignition: 5 values sent; 1 came back the same, 1 value differs: 600 RPM is 99, not 11");
}

TEST_F(MarkedBoxesTest, ValuesThatCameBackAreToldInTheUnitOfTheirBox) {
    byteReply(tables_.addresses.CHARGE_TIME_OFF, 50);
    saved(frmMisc_.btnSaveChargeTime);
    byteReply(tables_.addresses.CHARGE_TIME_OFF, 75);
    EXPECT_THAT(frmMisc_.saveReport().Text.get(), HasSubstr("Latausaika 13.5 Voltilla is 1.5, not 1"));
}

TEST_F(MarkedBoxesTest, TheMessageOfAValueThatDoesNotFitNamesNoControl) {
    frmMisc_.txtIdleAdv(0).Text = "999";
    frmMisc_.btnSaveIdleAdv.press();
    EXPECT_THAT(onlyMessage(), AllOf(HasSubstr("500 RPM in \"Idle Ignition\" holds a value that does not fit"),
                                     Not(HasSubstr("txt"))));
}

}  // namespace
}  // namespace korvane::settings
