#include "TransferBench.h"
#include "link/Frames.h"
#include "maps/panes/MapStatus.h"
#include "support/PropertyWatch.h"

namespace korvane::maps {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

class Misc : public SmallTransferBench {
protected:
    // 8500 and 9000 rpm (0x2134, 0x2328), bits 0, 5 and 15, offsets of 10 counts and 2.5 degrees, 4.4 ms.
    Misc() { tables_.MiscBlock = {0, 0x34, 0x21, 0x28, 0x23, 0x21, 0x80, 10, 153, 6}; }

    [[nodiscard]] std::vector<int> ticked() {
        std::vector<int> bits;
        for (int bit = 0; bit < window_.CheckMisc.count(); ++bit) {
            if (window_.CheckMisc(bit).Value == 1) {
                bits.push_back(bit);
            }
        }
        return bits;
    }

    void expectIgnitionOffset(std::uint8_t byte, const std::string& text) {
        tables_.MiscBlock[8] = byte;
        window_.showMiscOfFile();
        EXPECT_EQ(window_.txtMisc(3).Text.get(), text);
        EXPECT_EQ(window_.txtMisc(3).ToolTipText.get(), std::to_string(byte));
    }
};

TEST_F(Misc, BlockStandsInTheBoxes) {
    window_.LoadMisc(true);
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "8500");
    EXPECT_EQ(window_.txtMisc(1).Text.get(), "9000");
    EXPECT_EQ(window_.txtMisc(2).Text.get(), "10");
    EXPECT_EQ(window_.txtMisc(3).Text.get(), "2.5");
    EXPECT_EQ(window_.txtMisc(3).ToolTipText.get(), "153");
    EXPECT_TRUE(window_.optINJMaxOpen(0).Value);
    EXPECT_FALSE(window_.optINJMaxOpen(1).Value);
}

// The set bit 15 is a box without a tick, the clear bit 14 one with.
TEST_F(Misc, TwoHighestBitsAreInverted) {
    window_.LoadMisc(true);
    EXPECT_THAT(ticked(), ElementsAre(0, 5, 14));
    tables_.MiscBlock[5] = 0;
    tables_.MiscBlock[6] = 0x60;  // bits 13 and 14
    window_.LoadMisc(true);
    EXPECT_THAT(ticked(), ElementsAre(13, 15));
}

TEST_F(Misc, LimitsAreSigned) {
    tables_.MiscBlock = {0, 0xFF, 0xFF, 0x00, 0x80, 0, 0, 0, 0, 0};
    window_.LoadMisc(true);
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "-1");
    EXPECT_EQ(window_.txtMisc(1).Text.get(), "-32768");
}

TEST_F(Misc, IgnitionOffsetIsInTenthsAround128) {
    expectIgnitionOffset(128, "0");
    expectIgnitionOffset(0, "-12.8");
    expectIgnitionOffset(127, "-0.1");
    expectIgnitionOffset(129, "0.1");
    expectIgnitionOffset(255, "12.7");
}

TEST_F(Misc, InjectorCodeSelectsOneOptionOrNone) {
    const auto options = [this](std::uint8_t code) {
        tables_.MiscBlock[9] = code;
        window_.showMiscOfFile();
        return std::vector<bool>{window_.optINJMaxOpen(0).Value, window_.optINJMaxOpen(1).Value};
    };
    EXPECT_THAT(options(6), ElementsAre(true, false));
    EXPECT_THAT(options(5), ElementsAre(false, true));
    EXPECT_THAT(options(7), ElementsAre(false, false));
    EXPECT_THAT(options(6), ElementsAre(true, false));
    EXPECT_THAT(options(0), ElementsAre(false, false));
}

TEST_F(Misc, ReplyStopsThePollForATenthOfASecond) {
    window_.TimeOutTimer.Enabled = true;
    window_.timeOutCounter = 3;
    bool seen = false;
    whileBlocked(50, [&] {
        seen = true;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(window_.Caption.get(), "Misc datan haku onnistui");
        EXPECT_EQ(window_.txtMisc(0).Text.get(), "8500");
    });
    window_.LoadMisc(false);
    EXPECT_TRUE(seen);
    EXPECT_EQ(now(), 100);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_FALSE(window_.TimeOutTimer.Enabled);
    EXPECT_EQ(window_.timeOutCounter, 0);
}

TEST_F(Misc, ReplyIsAnnouncedFirst) {
    const support::PropertyValues observer(window_, window_.Caption);
    window_.LoadMisc(false);
    EXPECT_THAT(observer.values, ElementsAre("Getting data from Sarnex!", "Misc datan haku onnistui"));
}

TEST_F(Misc, LoadThatSkipsTheTimersLeavesThePollAloneUntilItsEnd) {
    const support::PropertyValues observer(window_, window_.Caption);
    bool seen = false;
    whileBlocked(50, [&] {
        seen = true;
        EXPECT_TRUE(poll().Enabled);
        poll().Enabled = false;
    });
    window_.LoadMisc(true);
    EXPECT_TRUE(seen);
    EXPECT_EQ(now(), 100);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_THAT(observer.values, ElementsAre("Misc datan haku onnistui"));
}

// In a pause in which events run the next reply could begin, and the end of this handler would break it.
TEST_F(Misc, NothingRunsInThePause) {
    bool ran = false;
    at(50, [&] { ran = true; });
    window_.LoadMisc(false);
    EXPECT_EQ(now(), 100);
    EXPECT_FALSE(ran);
}

TEST_F(Misc, BlockOfAFileShowsAtOnceAndTouchesNoTimer) {
    poll().Enabled = false;
    window_.TimeOutTimer.Enabled = true;
    window_.timeOutCounter = 3;
    window_.showMiscOfFile();
    EXPECT_EQ(now(), 0);
    EXPECT_EQ(window_.Caption.get(), "Misc data received.. ");
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "8500");
    EXPECT_FALSE(poll().Enabled);
    EXPECT_TRUE(window_.TimeOutTimer.Enabled);
    EXPECT_EQ(window_.timeOutCounter, 3);
}

TEST_F(Misc, TimeOutTimerCountsSeconds) {
    window_.TimeOutTimer.Enabled = true;
    machine_.pump.wait(3500);
    EXPECT_EQ(window_.timeOutCounter, 3);
}

using MiscSend = Misc;

TEST_F(MiscSend, SendsBackWhatWasRead) {
    openPort();
    window_.showMiscOfFile();
    window_.btnSaveMisc.press();
    EXPECT_THAT(sent(), ElementsAre('M', 0x34, 0x21, 0x28, 0x23, 0x21, 0x80, 10, 153, 6, 0xB2, 'd'));
}

TEST_F(MiscSend, SendsBackEveryEnableBit) {
    openPort();
    for (int bit = 0; bit < 16; ++bit) {
        tables_.MiscBlock[5] = static_cast<std::uint8_t>((1 << bit) & 0xFF);
        tables_.MiscBlock[6] = static_cast<std::uint8_t>((1 << bit) >> 8);
        window_.showMiscOfFile();
        window_.btnSaveMisc.press();
        const Bytes bytes = sent();
        ASSERT_EQ(bytes.size(), 12U);
        EXPECT_EQ(bytes[5] + 256 * bytes[6], 1 << bit) << bit;
    }
}

TEST_F(MiscSend, SendsNegativeLimitsInTwosComplement) {
    openPort();
    window_.txtMisc(0).Text = "-2";
    window_.txtMisc(1).Text = "-32768";
    window_.btnSaveMisc.press();
    const Bytes bytes = sent();
    ASSERT_EQ(bytes.size(), 12U);
    EXPECT_THAT(Bytes(bytes.begin() + 1, bytes.begin() + 5), ElementsAre(0xFE, 0xFF, 0x00, 0x80));
}

// Nothing read yet: no text is a number, no box is ticked, no option is on.
TEST_F(MiscSend, TakesWhatIsNoNumberForZero) {
    openPort();
    window_.txtMisc(0).Text = "abc";
    window_.txtMisc(2).Text = "-";
    window_.btnSaveMisc.press();
    EXPECT_THAT(sent(), ElementsAre('M', 0, 0, 0, 0, 0, 0xC0, 0, 0, 5, 0xB2, 'd'));
}

TEST_F(MiscSend, TakesTheIgnitionOffsetFromTheToolTip) {
    openPort();
    window_.showMiscOfFile();
    window_.txtMisc(3).Text = "9";
    window_.txtMisc(3).ToolTipText = "138";
    window_.btnSaveMisc.press();
    EXPECT_EQ(sent().at(8), 138);
}

TEST_F(MiscSend, HappensInAPauseOfThePoll) {
    openPort();
    window_.showMiscOfFile();
    int seen = 0;
    for (const int moment : {50, 150}) {
        at(moment, [&] {
            ++seen;
            EXPECT_FALSE(poll().Enabled);
        });
    }
    window_.btnSaveMisc.press();
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(now(), 200);
    EXPECT_TRUE(poll().Enabled);
    EXPECT_EQ(arrivalOf(0), 100'000 + 173);
}

TEST_F(MiscSend, OnAClosedPortEndsWithThePortsError) {
    window_.btnSaveMisc.press();
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_FALSE(poll().Enabled);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(MiscSend, ThatLosesThePortBeforeItSendsEndsWithThePortsError) {
    openPort();
    at(50, [this] { machine_.line.pullOut(); });
    window_.btnSaveMisc.press();
    EXPECT_EQ(window_.Caption.get(), kPortClosed);
    EXPECT_FALSE(poll().Enabled);
}

TEST_F(MiscSend, EndsAtALimitThatDoesNotFitSixteenBits) {
    openPort();
    window_.showMiscOfFile();
    window_.txtMisc(0).Text = "32768";
    window_.btnSaveMisc.press();
    EXPECT_EQ(window_.Caption.get(), "Overflow");
    EXPECT_FALSE(poll().Enabled);
    EXPECT_THAT(sent(), ElementsAre('M'));
}

TEST_F(MiscSend, EndsAtAnOffsetThatIsNoByte) {
    openPort();
    window_.showMiscOfFile();
    for (const char* text : {"256", "-1"}) {
        window_.Caption = "";
        window_.txtMisc(2).Text = text;
        window_.btnSaveMisc.press();
        EXPECT_EQ(window_.Caption.get(), "Overflow");
        EXPECT_THAT(sent(), ElementsAre('M', 0x34, 0x21, 0x28, 0x23, 0x21, 0x80));
    }
}

class MarkedMisc : public Misc {
protected:
    MarkedMisc() {
        link::MiscBytes block{};
        std::copy(tables_.MiscBlock.begin() + 1, tables_.MiscBlock.begin() + 10, block.begin());
        main_.ecuMisc.has(block);
    }
    void hearLiveData() { main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now()); }
    [[nodiscard]] MiscMarks& marks() { return window_.miscMarks(); }
    [[nodiscard]] std::string unsent() { return statusOf(window_).unsent; }
};

TEST_F(MarkedMisc, BoxesThatWereNeverFilledHaveNoMark) {
    EXPECT_EQ(marks().count(), 0);
}

TEST_F(MarkedMisc, ABoxThatDiffersFromTheEcuIsMarkedAndCounted) {
    window_.LoadMisc(true);
    EXPECT_EQ(marks().count(), 0);
    EXPECT_EQ(unsent(), "");
    window_.txtMisc(0).Text = "8000";
    window_.CheckMisc(5).Value = 0;
    window_.CheckMisc(15).Value = 1;
    window_.optINJMaxOpen(1).Value = true;
    window_.optINJMaxOpen(0).Value = false;
    EXPECT_EQ(marks().numberNote(0), "Not sent: the ECU has 8500");
    EXPECT_EQ(marks().numberNote(1), "");
    EXPECT_EQ(marks().bitNote(5), "Not sent: ticked in the ECU");
    EXPECT_EQ(marks().bitNote(15), "Not sent: not ticked in the ECU");
    EXPECT_EQ(marks().openingNote(), "Not sent: the ECU has 4.4ms");
    EXPECT_EQ(unsent(), "Not sent: 4 misc");
    window_.txtMisc(0).Text = "8500";
    EXPECT_EQ(marks().numberNote(0), "");
}

// The tool-tip has the count that is sent.
TEST_F(MarkedMisc, TheIgnitionOffsetIsMarkedByItsCountAndByItsText) {
    window_.LoadMisc(true);
    window_.txtMisc(3).ToolTipText = "150";
    EXPECT_EQ(marks().numberNote(3), "Not sent: the ECU has 2.5");
    window_.txtMisc(3).ToolTipText = "153";
    EXPECT_EQ(marks().numberNote(3), "");
    window_.txtMisc(3).Text = "3";
    EXPECT_EQ(marks().count(), 1);
}

TEST_F(MarkedMisc, ASendTakesTheMarksAway) {
    openPort();
    hearLiveData();
    window_.LoadMisc(true);
    window_.txtMisc(0).Text = "8000";
    int told = 0;
    const support::PropertyWatch watch(marks(), &marks(), [&] { ++told; });
    window_.btnSaveMisc.press();
    EXPECT_EQ(marks().count(), 0);
    EXPECT_EQ(told, 1);
}

// It does not acknowledge the block.
TEST_F(MarkedMisc, ASendToAnEcuThatIsNotHeardTakesNoMarkAway) {
    openPort();
    window_.LoadMisc(true);
    window_.txtMisc(0).Text = "8000";
    window_.btnSaveMisc.press();
    EXPECT_EQ(unsent(), "Not sent: 1 misc") << "silent";
    hearLiveData();
    machine_.pump.wait(5000);
    ASSERT_EQ(main_.linkState.state(), link::LinkState::State::Late);
    window_.btnSaveMisc.press();
    EXPECT_EQ(unsent(), "Not sent: 1 misc") << "late";
    window_.btnSaveMisc.press();
    EXPECT_EQ(unsent(), "Not sent: 1 misc") << "the poll has begun again, and nothing has come";
    const auto cell = static_cast<std::size_t>(tables_.addresses.RPM_LIMIT_LOW_OFF);
    EXPECT_EQ(main_.ecuEeprom.cells().at(cell).known, link::Known::Sent) << "it may have taken it";
}

TEST_F(MarkedMisc, WhatTheEcuTellsOfALimitAloneCounts) {
    window_.LoadMisc(true);
    window_.UpdateReadEE(7000, tables_.addresses.RPM_LIMIT_LOW_OFF, true);
    EXPECT_EQ(window_.txtMisc(0).Text.get(), "7000");
    EXPECT_EQ(marks().count(), 0);
}

TEST_F(MarkedMisc, WhatWasKnownStaysWithAnotherConnection) {
    window_.LoadMisc(true);
    window_.txtMisc(0).Text = "8000";
    main_.ecuMisc.forget();
    EXPECT_EQ(marks().count(), 1);
}

}  // namespace
}  // namespace korvane::maps
