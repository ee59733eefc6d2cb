#include "MiscBench.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;

// The window has not been loaded in any of these.
class RepliesTest : public MiscBench {
protected:
    RepliesTest() { frmMisc_.TextArvo.Text = "untouched"; }

    void update(int addr, int value, bool is16 = false) { frmMisc_.UpdateReadEE(value, addr, is16); }

    void expectText(int addr, int value, controls::TextBox& box, const std::string& text) {
        update(addr, value);
        EXPECT_EQ(box.Text.get(), text) << addr;
        EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "untouched") << addr;
    }
    // A box that shows the byte as it is.
    void expectPlain(int addr, controls::TextBox& box) { expectText(addr, 200, box, "200"); }
    void expectPlain(int addr, controls::ControlArray<controls::TextBox>& boxes) {
        for (int i = 0; i < boxes.count(); ++i) {
            expectText(addr + i, 100 + i, boxes(i), std::to_string(100 + i));
        }
    }
    void expectScaled(int addr, int value, controls::TextBox& box, const std::string& text) {
        expectText(addr, value, box, text);
        EXPECT_EQ(box.Tag.get(), std::to_string(value)) << addr;
    }

    template <class Options>
    static std::vector<int> chosen(Options& options) {
        std::vector<int> indices;
        for (int i = 0; i < options.count(); ++i) {
            if (options(i).Value) {
                indices.push_back(i);
            }
        }
        return indices;
    }

    [[nodiscard]] int image(int addr) const { return tables_.EEImage.at(static_cast<std::size_t>(addr)); }
};

TEST_F(RepliesTest, PlainBoxesShowTheByte) {
    auto& w = frmMisc_;
    expectPlain(1027, w.txtStartHelpLen);
    expectPlain(367, w.txtChokeEnd);
    expectPlain(497, w.txtLoadOffset);
    expectPlain(496, w.txtLoadGain);
    expectPlain(540, w.txtBoostTav);
    expectPlain(346, w.txtIgnEdge);
    expectPlain(345, w.txtInjMode);
    expectPlain(1026, w.txtInjMultiplier);
    expectPlain(516, w.txtNTC1);
    expectPlain(517, w.txtNTC2);
    expectPlain(558, w.txtInjAdv);
    expectPlain(950, w.txtInjIdleMap);
    expectPlain(392, w.txtIdleAdv);
    expectPlain(972, w.txtlaunchdelay);
    expectPlain(977, w.txtflatshiftstartdelay);
    expectPlain(978, w.txtflatshiftstopdelay);
    expectPlain(14, w.txtAccelDelay);
    expectPlain(973, w.txtAccelLimiterMode);
    expectPlain(974, w.txtAccelLimiterValue);
    expectPlain(503, w.txtIdleValveMax);
    expectPlain(502, w.txtIdleValveMin);
    expectPlain(504, w.txtIdleValveSetpoint);
    expectPlain(982, w.txtOilWarning);
    expectPlain(981, w.txtAirWarning);
    expectPlain(980, w.txtWaterWarning);
    expectPlain(983, w.txtTemp4Warning);
    expectPlain(969, w.txtNTC3);
    expectPlain(970, w.txtNTC4);
    expectPlain(979, w.txtNTCMultiplier);
    expectPlain(515, w.txtBoostIgnCut);
}

TEST_F(RepliesTest, ScaledBoxesKeepTheByteAndShowItScaled) {
    auto& w = frmMisc_;
    expectScaled(13, 250, w.txtchargetime, "5");
    expectScaled(361, 36, w.txtVolt(0), "0.5");
    expectScaled(12, 72, w.txtRyyppy, "1");
    expectScaled(11, 200, w.txtStart, "2.7778");
    expectScaled(967, 3, w.txtALS_ign_retard, "13.5");
    expectScaled(968, 3, w.txtALS_fuel, "15");
    EXPECT_TRUE(w.txtStart.Locked);
}

TEST_F(RepliesTest, AccelerationCellsShowMillisecondsAndKeepNoByte) {
    for (int i = 0; i < 10; ++i) {
        expectText(350 + i, 36, frmMisc_.txtAccel(i), "0.5");
        EXPECT_EQ(frmMisc_.txtAccel(i).Tag.get(), "");
    }
}

TEST_F(RepliesTest, VoltageWarningsShowTwiceTheByte) {
    auto& w = frmMisc_;
    int addr = 984;
    for (const auto& [box, value, text] : {std::tuple{&w.txtVolt1Warning, 7, "14"},
                                           {&w.txtVolt2Warning, 8, "16"},
                                           {&w.txtVolt3Warning, 0, "0"},
                                           {&w.txtVolt4Warning, 255, "510"}}) {
        expectText(addr++, value, *box, text);
    }
}

TEST_F(RepliesTest, ThrottleValuesStandInLabels) {
    update(365, 20);
    update(366, 230);
    EXPECT_EQ(frmMisc_.lblMINTHR.Caption.get(), "20");
    EXPECT_EQ(frmMisc_.lblMAXTHR.Caption.get(), "230");
    EXPECT_EQ(tables_.ThrottleMin, 0);
}

TEST_F(RepliesTest, FlagsTickTheirBoxes) {
    const auto ticked = [&](int value) {
        update(1, value);
        std::vector<int> bits;
        for (auto& box : frmMisc_.chkMisc2) {
            bits.push_back(box.Value);
        }
        return bits;
    };
    EXPECT_THAT(ticked(0x85), ElementsAre(1, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_THAT(ticked(0x7A), ElementsAre(0, 1, 0, 1, 1, 1, 1, 0));
}

TEST_F(RepliesTest, LoadModeIsTheMapOrTheThrottle) {
    update(498, 0);
    EXPECT_THAT(chosen(frmMisc_.optLoadMode), ElementsAre(0));
    update(498, 1);
    EXPECT_THAT(chosen(frmMisc_.optLoadMode), ElementsAre(1));
    update(498, 7);
    EXPECT_THAT(chosen(frmMisc_.optLoadMode), ElementsAre(1));
}

// 1500 is 0xDC and 5.
TEST_F(RepliesTest, EngineBrakeLimitsComeFromTheImage) {
    expectText(507, 0xDC, frmMisc_.txtMotorBrakeLow, "220");
    expectText(508, 5, frmMisc_.txtMotorBrakeLow, "1500");
    expectText(510, 5, frmMisc_.txtMotorBrakeHigh, "1280");
    expectText(509, 0xDC, frmMisc_.txtMotorBrakeHigh, "1500");
}

// A settings file passes the whole word, which is not stored in the image.
TEST_F(RepliesTest, AnEngineBrakeLimitOfAFileLeavesTheImageAndSoTheBox) {
    update(507, 0xDC);
    expectText(507, 1500, frmMisc_.txtMotorBrakeLow, "220");
}

TEST_F(RepliesTest, LaunchLimitComesFromTheImage) {
    expectText(512, 0xFF, frmMisc_.txtLaunchcontrol, "65280");
    expectText(511, 0xFF, frmMisc_.txtLaunchcontrol, "65535");
}

TEST_F(RepliesTest, LaunchLimitOfType30StandsAtItsOwnAddresses) {
    core::InitParams(tables_, 30);
    expectText(500, 0xDC, frmMisc_.txtLaunchcontrol, "220");
    expectText(501, 5, frmMisc_.txtLaunchcontrol, "1500");
    update(511, 9);
    EXPECT_EQ(frmMisc_.txtLaunchcontrol.Text.get(), "1500");
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "9");
}

TEST_F(RepliesTest, LaunchModeIsARowOfTheList) {
    for (int mode = 0; mode < 6; ++mode) {
        update(971, mode);
        EXPECT_EQ(frmMisc_.Combolaunchmode.ListIndex, mode);
    }
    EXPECT_THROW(update(971, 6), platform::RuntimeError);
    EXPECT_EQ(frmMisc_.Combolaunchmode.ListIndex, 5);
}

TEST_F(RepliesTest, PwmModeHasOneBitInEachNibble) {
    update(399, 4 + 16);
    EXPECT_THAT(chosen(frmMisc_.OptionPWM1), ElementsAre(2));
    EXPECT_THAT(chosen(frmMisc_.OptionPWM2), ElementsAre(0));
    update(399, 8 + 64);
    EXPECT_THAT(chosen(frmMisc_.OptionPWM1), ElementsAre(3));
    EXPECT_THAT(chosen(frmMisc_.OptionPWM2), ElementsAre(2));
    update(399, 0);
    EXPECT_TRUE(chosen(frmMisc_.OptionPWM1).empty());
    EXPECT_TRUE(chosen(frmMisc_.OptionPWM2).empty());
}

TEST_F(RepliesTest, LambdaTypeIsWideBandUnlessItIsZero) {
    update(518, 2);
    EXPECT_THAT(chosen(frmMisc_.optLambdaType), ElementsAre(0));
    EXPECT_EQ(frmMisc_.LambdaType, 2);
    update(518, 0);
    EXPECT_THAT(chosen(frmMisc_.optLambdaType), ElementsAre(1));
    EXPECT_EQ(frmMisc_.LambdaType, 0);
}

TEST_F(RepliesTest, IdleSetpointIsPutTogetherFromItsBytes) {
    update(504, 0x84);
    update(505, 3);
    EXPECT_EQ(frmMisc_.txtIdleValveSetpoint.Text.get(), "900");
    update(505, 1);  // with no low byte before it
    EXPECT_EQ(frmMisc_.txtIdleValveSetpoint.Text.get(), "1156");
}

TEST_F(RepliesTest, ColdLimitIsAWord) {
    wordReply(1005, 4500);
    EXPECT_EQ(frmMisc_.txtColdRPMlimit.Text.get(), "4500");
}

TEST_F(RepliesTest, LongestInjectionFollowsModeAndMultiplier) {
    const auto option = [&](core::ParameterValue mode, int multiplier) {
        tables_.EEParams[345].value = mode;
        update(1026, multiplier);
        return chosen(frmMisc_.optInj8ms);
    };
    EXPECT_THAT(option(std::uint8_t{1}, 3), ElementsAre(3));
    EXPECT_THAT(option(std::uint8_t{2}, 3), ElementsAre(2));
    EXPECT_THAT(option(std::uint8_t{2}, 2), ElementsAre(1));
    EXPECT_THAT(option(std::uint8_t{4}, 3), ElementsAre(0));
    EXPECT_THAT(option(std::uint8_t{3}, 3), ElementsAre(1));
    EXPECT_THAT(option(core::ParameterValue{}, 3), ElementsAre(1));
}

TEST_F(RepliesTest, TheModeAloneDoesNotMoveTheLongestInjection) {
    byteReply(345, 1);
    EXPECT_TRUE(chosen(frmMisc_.optInj8ms).empty());
    byteReply(1026, 1);
    EXPECT_THAT(chosen(frmMisc_.optInj8ms), ElementsAre(3));
}

TEST_F(RepliesTest, AnAddressWithNoFieldChangesOnlyTextArvo) {
    const auto texts = [&] {
        std::string all;
        for (const auto* control : frmMisc_.controls()) {
            if (const auto* box = dynamic_cast<const controls::TextBox*>(control); box != &frmMisc_.TextArvo && box) {
                all += box->Text.get() + box->Tag.get();
            }
        }
        return all;
    };
    const auto before = texts();
    for (const int addr :
         {0, 8, 349, 360, 362, 370, 380, 391, 397, 500, 506, 513, 539, 556, 557, 574, 949, 966, 1002, 2999, 3000}) {
        update(addr, addr % 250);
        EXPECT_EQ(frmMisc_.TextArvo.Text.get(), std::to_string(addr % 250)) << addr;
    }
    EXPECT_EQ(texts(), before);
}

TEST_F(RepliesTest, AnAddressOutsideTheEepromIsRefused) {
    for (const int addr : {-1, 3001, 65535}) {
        EXPECT_THROW(update(addr, 1), platform::RuntimeError) << addr;
    }
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "untouched");
}

TEST_F(RepliesTest, AByteGoesIntoTheImage) {
    update(540, 300);
    EXPECT_EQ(image(540), 44);
    EXPECT_EQ(frmMisc_.txtBoostTav(0).Text.get(), "300");
}

TEST_F(RepliesTest, AWordGoesIntoTheImageOnlyIfItFitsAByte) {
    tables_.EEImage[1005] = 9;
    update(1005, 4500);
    EXPECT_EQ(image(1005), 9);
    EXPECT_EQ(frmMisc_.txtColdRPMlimit.Text.get(), "4500");
    update(1005, 255);
    EXPECT_EQ(image(1005), 255);
    tables_.EEImage[540] = 9;
    update(540, 300, true);
    EXPECT_EQ(image(540), 9) << "44 would be its low byte";
    update(540, 200, true);
    EXPECT_EQ(image(540), 200);
    EXPECT_THROW(update(1005, -1), platform::RuntimeError);
}

TEST_F(RepliesTest, EveryReplyOfTheEcuEndsInTextArvo) {
    byteReply(540, 17);
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "17");
    wordReply(1005, 4500);
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "4500");
}

TEST_F(RepliesTest, AReplyInTheWrongWidthStandsInTheFieldOfItsAddress) {
    wordReply(540, 4500);
    EXPECT_EQ(frmMisc_.txtBoostTav(0).Text.get(), "4500");
    EXPECT_EQ(image(540), 4500 % 256);
    EXPECT_EQ(image(541), 4500 / 256);
    byteReply(1005, 200);
    EXPECT_EQ(frmMisc_.txtColdRPMlimit.Text.get(), "200");
}

TEST_F(RepliesTest, RepliesFrom3000OnChangeNoField) {
    byteReply(3000, 5);
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "5");
    byteReply(3001, 6);
    wordReply(3000, 7);
    EXPECT_EQ(frmMisc_.TextArvo.Text.get(), "5");
}

TEST_F(RepliesTest, LambdaBlockFillsBothRowsThoughTheyAreDisabled) {
    tables_.Features = 0;
    show();
    EXPECT_FALSE(frmMisc_.txtLambdaTav(0).Enabled);
    std::vector<int> payload;
    for (int i = 0; i < 20; ++i) {
        payload.push_back(100 + i);
    }
    reply('l', payload);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(frmMisc_.txtLambdaTav(i).Text.get(), std::to_string(100 + i));
        EXPECT_EQ(frmMisc_.txtLambdaVaik(i).Text.get(), std::to_string(110 + i));
    }
}

}  // namespace
}  // namespace korvane::settings
