#include "MiscBench.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;

class SettingsBlock : public MiscBench {
protected:
    const std::vector<int> block_{0, 36, 72, 3, 4, 5, 6, 7, 8, 255, 200, 72, 36, 37, 38, 39, 250, 20, 230};
};

TEST_F(SettingsBlock, FillsItsFields) {
    auto& w = frmMisc_;
    reply('e', block_);
    EXPECT_EQ(w.txtAccel(0).Text.get(), "0");
    EXPECT_EQ(w.txtAccel(1).Text.get(), "0.5");
    EXPECT_EQ(w.txtAccel(2).Text.get(), "1");
    EXPECT_EQ(w.txtAccel(9).Text.get(), "3.5417");
    EXPECT_EQ(w.txtStart.Text.get(), "2.7778");
    EXPECT_EQ(w.txtStart.Tag.get(), "200");
    EXPECT_EQ(w.txtRyyppy.Text.get(), "1");
    EXPECT_EQ(w.txtRyyppy.Tag.get(), "72");
    EXPECT_EQ(w.txtVolt(0).Tag.get(), "36");
    EXPECT_EQ(w.txtVolt(3).Tag.get(), "39");
    EXPECT_EQ(w.txtVolt(3).Text.get(), "0.5417");
    EXPECT_EQ(w.txtchargetime.Tag.get(), "250");
    EXPECT_EQ(w.txtchargetime.Text.get(), "5");
    EXPECT_EQ(w.lblMINTHR.Caption.get(), "20");
    EXPECT_EQ(w.lblMAXTHR.Caption.get(), "230");
    EXPECT_EQ(tables_.ThrottleMin, 20);
    EXPECT_EQ(tables_.ThrottleMax, 230);
}

TEST_F(SettingsBlock, StopsThePollForTwoPauses) {
    poll().Enabled = true;
    frmMisc_.TimeOutCount = 5;
    int seen = 0;
    at(299, [&] {
        ++seen;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_EQ(frmMisc_.TimeOutCount, 0);
        EXPECT_TRUE(frmMisc_.TimeOutTimer.Enabled);
        EXPECT_EQ(frmMisc_.txtStart.Text.get(), "");
        frmMisc_.TimeOutCount = 3;
    });
    at(301, [&] {
        ++seen;
        EXPECT_FALSE(poll().Enabled);
        EXPECT_FALSE(frmMisc_.TimeOutTimer.Enabled);
        EXPECT_EQ(frmMisc_.TimeOutCount, 0);
        EXPECT_EQ(frmMisc_.txtStart.Text.get(), "2.7778");
    });
    reply('e', block_);
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(now(), 600);
    EXPECT_TRUE(poll().Enabled);
}

TEST_F(SettingsBlock, SaysThatItIsHandled) {
    support::Bytes bytes(19);
    bool handled = false;
    frmMisc_.LoadMisc2(bytes, handled);
    EXPECT_TRUE(handled);
    bytes.pop_back();
    handled = false;
    EXPECT_THROW(frmMisc_.LoadMisc2(bytes, handled), platform::RuntimeError);
    EXPECT_FALSE(handled);
}

TEST_F(SettingsBlock, TooShortFillsWhatItHasAndLeavesThePollStopped) {
    poll().Enabled = true;
    reply('e', {0, 36, 72, 3, 4, 5, 6, 7, 8, 255, 200});
    EXPECT_EQ(frmMisc_.txtAccel(9).Text.get(), "3.5417");
    EXPECT_EQ(frmMisc_.txtStart.Text.get(), "2.7778");
    EXPECT_EQ(frmMisc_.txtRyyppy.Text.get(), "");
    EXPECT_FALSE(poll().Enabled);
    EXPECT_EQ(virtual_.log.lines.size(), 1U);
}

TEST_F(SettingsBlock, ThatNeverStopsComingDoesNotPileUp) {
    std::unique_ptr<platform::Alarm> next;
    next = virtual_.pump.makeAlarm([&] {
        next->callAt(virtual_.pump.now() + platform::kMicrosPerMilli);
        reply('e', block_);
    });
    next->callAt(0);
    reply('e', block_);
    EXPECT_LE(now(), 3000);
    EXPECT_TRUE(poll().Enabled);
}

class AccelerationMark : public MiscBench {
protected:
    [[nodiscard]] std::vector<int> coloured(controls::Color color) {
        std::vector<int> cells;
        for (int i = 0; i < 10; ++i) {
            if (frmMisc_.txtAccel(i).BackColor == color) {
                cells.push_back(i);
            }
        }
        return cells;
    }
};

TEST_F(AccelerationMark, MovesFromCellToCell) {
    frmMisc_.MarkAccelCell(3);
    EXPECT_THAT(coloured(controls::kRed), ElementsAre(3));
    frmMisc_.MarkAccelCell(9);
    EXPECT_THAT(coloured(controls::kRed), ElementsAre(9));
    EXPECT_THAT(coloured(controls::kWhite), ElementsAre(3));
    frmMisc_.MarkAccelCell(9);
    EXPECT_THAT(coloured(controls::kRed), ElementsAre(9));
    frmMisc_.MarkAccelCell(0);
    EXPECT_THAT(coloured(controls::kWhite), ElementsAre(3, 9));
}

TEST_F(AccelerationMark, StaysForAnIndexWithNoCell) {
    frmMisc_.MarkAccelCell(3);
    for (const int index : {-1, 10, 32767}) {
        frmMisc_.MarkAccelCell(index);
        EXPECT_THAT(coloured(controls::kRed), ElementsAre(3)) << index;
    }
}

}  // namespace
}  // namespace korvane::settings
