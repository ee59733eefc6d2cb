// The steady agent at the map windows: its box, its key, what the tuner allows it.
#include <gtest/gtest.h>

#include "MapsBench.h"
#include "maps/steady/ErrorSum.h"
#include "maps/steady/FrmSteady.h"
#include "maps/steady/SteadyTuner.h"
#include "support/MemoryPreferences.h"

namespace korvane::maps {
namespace {

class FakeSteady : public SteadyTuner {
public:
    explicit FakeSteady(platform::PreferencesStore& preferences) : choices_(preferences) {}

    bool start(const MapGeometry& geometry, const void* window) override {
        cells = geometry.cells();
        window_ = refuses ? nullptr : window;
        return !refuses;
    }
    void stop() override {
        window_ = nullptr;
        ++stops;
    }
    [[nodiscard]] bool isOn(const void* window) const override { return window_ == window; }
    void closes(const void* window) override {
        if (window_ == window) {
            stop();
        }
    }
    std::string putBack(const MapGeometry&) override { return "Put back"; }
    std::string newBaseline(const MapGeometry&) override { return "New"; }
    [[nodiscard]] std::string state() const override { return "working"; }
    [[nodiscard]] std::string whyStopped() const override { return ""; }
    [[nodiscard]] std::string cellWords(int cell) const override { return "cell " + std::to_string(cell); }
    [[nodiscard]] std::string cellReasons(int cell) const override { return std::to_string(cell) + " fuel cut"; }
    [[nodiscard]] const ErrorTrend& errors() const override { return trend; }
    [[nodiscard]] std::string zoneWords(std::size_t zone) const override { return "zone " + std::to_string(zone); }
    [[nodiscard]] std::vector<std::string> sampleWords() const override { return samples; }
    [[nodiscard]] SteadyChoices& choices() override { return choices_; }

    int cells = 0;
    int stops = 0;
    bool refuses = false;
    std::vector<std::string> samples{"7 used"};
    ErrorTrend trend;

private:
    SteadyChoices choices_;
    const void* window_ = nullptr;
};

class SteadyBoxTest : public MapsBench {
protected:
    SteadyBoxTest() {
        context_.steady = &steady_;
        eeprom_.storing = [this](std::string_view what) { stored_.emplace_back(what); };
        window_.show();
        window_.chkInjAnal.press();
    }

    FakeSteady steady_{machine_.preferences};
    BenchWindow window_{machine_.machine, context_, kOrdinaryMaps};
    std::vector<std::string> stored_;
};

TEST_F(SteadyBoxTest, ATickStartsItBehindARestorePointAndAnUntickStopsIt) {
    openPort();
    EXPECT_TRUE(window_.chkSteadyAgent.Visible);
    EXPECT_EQ(window_.chkSteadyAgent.Caption.get(), "Steady agent");
    window_.chkSteadyAgent.press();
    EXPECT_TRUE(steady_.isOn(&window_));
    EXPECT_EQ(steady_.cells, 160);
    EXPECT_THAT(stored_, testing::ElementsAre("steady agent"));
    window_.chkSteadyAgent.press();
    EXPECT_FALSE(steady_.isOn(&window_));
}

TEST_F(SteadyBoxTest, OnlyOneOfBothAgentsIsTicked) {
    window_.chkUseTuningAgent.press();
    window_.chkSteadyAgent.press();
    EXPECT_EQ(window_.chkUseTuningAgent.Value.get(), 0);
    EXPECT_FALSE(analyser_.agentEnable);
    window_.chkUseTuningAgent.press();
    EXPECT_EQ(window_.chkSteadyAgent.Value.get(), 0);
    EXPECT_FALSE(steady_.isOn(&window_));
    EXPECT_TRUE(analyser_.agentEnable);
}

TEST_F(SteadyBoxTest, WhereItRefusesTheBoxIsUntickedAgain) {
    steady_.refuses = true;
    window_.chkSteadyAgent.press();
    EXPECT_EQ(window_.chkSteadyAgent.Value.get(), 0);
}

TEST_F(SteadyBoxTest, TheBoxFollowsAnAgentThatStopsByItself) {
    window_.chkSteadyAgent.press();
    steady_.stop();
    window_.AnalyserPane::tickPane();
    EXPECT_EQ(window_.chkSteadyAgent.Value.get(), 0);
    EXPECT_EQ(steady_.stops, 1) << "it is not stopped again";
}

TEST_F(SteadyBoxTest, WithoutTheAnalyserItIsHiddenAndStops) {
    window_.chkSteadyAgent.press();
    window_.chkInjAnal.press();
    EXPECT_FALSE(window_.chkSteadyAgent.Visible);
    EXPECT_FALSE(steady_.isOn(&window_));
}

TEST_F(SteadyBoxTest, TheCloseOfTheWindowStopsIt) {
    window_.chkSteadyAgent.press();
    EXPECT_TRUE(window_.unload());
    EXPECT_FALSE(steady_.isOn(&window_));
}

TEST_F(SteadyBoxTest, F8PutsBackAndSaysSo) {
    EXPECT_TRUE(window_.offerKey(119, 0));
    EXPECT_EQ(window_.HistoryNote.get(), "Put back");
    EXPECT_FALSE(window_.offerKey(119, controls::kShiftMask));
}

TEST_F(SteadyBoxTest, TheStatusOfACellSaysWhatTheAgentKnows) {
    const auto words = window_.AnalyserPane::cellStatus(17);
    EXPECT_TRUE(words.ends_with("; steady agent: cell 17")) << words;
}

TEST_F(SteadyBoxTest, TheTipOfACellSaysWhatTheAgentKnowsBesideTheTarget) {
    window_.analys(17).ToolTipText = "12.5";
    EXPECT_EQ(window_.analys.tip(17), "Steady agent: cell 17\nRejected while the engine ran here: 17 fuel cut");
    EXPECT_EQ(window_.analys(17).ToolTipText.get(), "12.5");
}

class FrmSteadyTest : public MapsBench {
protected:
    FrmSteadyTest() {
        tables_.MapPlace = 41;
        window_.show();
    }

    FakeSteady steady_{machine_.preferences};
    FrmSteady window_{machine_.machine, steady_, tables_};
};

TEST_F(FrmSteadyTest, ShowsStateZonesSamplesAndTheCellOfTheEngine) {
    EXPECT_EQ(window_.lblState.Caption.get(), "working");
    EXPECT_EQ(window_.lblZone(3).Caption.get(), "zone 3");
    EXPECT_EQ(window_.lblCell.Caption.get(), "Cell 42: cell 41");
    steady_.samples = {"8 used", "3 engine cold"};
    machine_.pump.wait(600);
    ASSERT_EQ(window_.lstSamples.ListCount(), 2);
    EXPECT_EQ(window_.lstSamples.List(1), "3 engine cold");
}

TEST_F(FrmSteadyTest, BoxesBeginAsRememberedAndAreTakenWithinTheirRange) {
    EXPECT_EQ(window_.txtRich.Text.get(), "15");
    EXPECT_EQ(window_.txtLean.Text.get(), "5");
    EXPECT_EQ(window_.txtDelay(0).Text.get(), "");
    window_.txtRich.Text = "12.5";
    EXPECT_EQ(steady_.choices().RichAuthority.get(), 12.5);
    window_.txtRich.Text = "51";
    EXPECT_EQ(steady_.choices().RichAuthority.get(), 12.5);
    EXPECT_EQ(window_.lblNote.Caption.get(), "0 to 50");
    window_.txtDelay(2).Text = "140";
    EXPECT_EQ(steady_.choices().FixedDelayMs[2].get(), 140.0);
    window_.txtDelay(2).Text = "";
    EXPECT_EQ(steady_.choices().FixedDelayMs[2].get(), 0.0);
    window_.chkCarry.press();
    EXPECT_TRUE(steady_.choices().Carry);
}

// The "1" of "15" would cut the authority to 1 per cent.
TEST_F(FrmSteadyTest, WhatIsTypedIsTakenByEnterOrWhenTheFocusLeaves) {
    constexpr int kKeyReturn = 13;
    window_.setFocus(&window_.txtRich);
    window_.txtRich.Text = "2";
    EXPECT_EQ(steady_.choices().RichAuthority.get(), 15.0);
    machine_.pump.wait(1100);
    EXPECT_EQ(window_.txtRich.Text.get(), "2") << "nobody writes there meanwhile";
    window_.txtRich.Text = "20";
    window_.txtRich.KeyDown('0', 0);
    EXPECT_EQ(steady_.choices().RichAuthority.get(), 15.0);
    window_.txtRich.KeyDown(kKeyReturn, 0);
    EXPECT_EQ(steady_.choices().RichAuthority.get(), 20.0);
    window_.setFocus(&window_.txtDelay(1));
    window_.txtDelay(1).Text = "180";
    EXPECT_EQ(steady_.choices().FixedDelayMs[1].get(), 0.0);
    window_.setFocus(&window_.txtLean);
    EXPECT_EQ(steady_.choices().FixedDelayMs[1].get(), 180.0);
}

TEST_F(FrmSteadyTest, ABoxShowsWhatHoldsOnceNobodyTypesThere) {
    window_.setFocus(&window_.txtLean);
    window_.txtLean.Text = "80";
    window_.setFocus(&window_.txtRich);
    EXPECT_EQ(window_.lblNote.Caption.get(), "0 to 50");
    EXPECT_EQ(window_.txtLean.Text.get(), "5");
    window_.txtRich.Text = "20";
    window_.leaveBox();
    EXPECT_EQ(steady_.choices().RichAuthority.get(), 20.0) << "another window";
    steady_.choices().FixedDelayMs[0] = 90.0;
    machine_.pump.wait(600);
    EXPECT_EQ(window_.txtDelay(0).Text.get(), "90");
}

TEST_F(FrmSteadyTest, TheErrorsOfTheRunAreDrawnAndTold) {
    steady_.trend.begin("Steady agent", 100.0);
    steady_.trend.add(100.0, 4.0, 8.0);
    steady_.trend.add(220.0, 1.26, 3.0);
    window_.picErrors.Width = 6000;
    window_.picErrors.Height = 2210;
    machine_.pump.wait(600);
    EXPECT_EQ(window_.lblErrors.Caption.get(), "Steady agent, 2 min: mean error 1.3 %, worst cell 3 %");
    const auto& drawing = window_.picErrors.drawing();
    std::vector<std::vector<controls::Point>> lines;
    for (const auto& shape : drawing.shapes()) {
        if (shape.kind == controls::Drawing::Kind::Polyline) {
            const auto points = drawing.pointsOf(shape);
            lines.emplace_back(points.begin(), points.end());
        }
    }
    // 2000 twips are 10 per cent.
    EXPECT_THAT(lines, testing::Contains(testing::ElementsAre(controls::Point{0, 400}, controls::Point{6000, 1400})));
    EXPECT_THAT(lines, testing::Contains(testing::ElementsAre(controls::Point{0, 1200}, controls::Point{6000, 1748})));
}

TEST_F(FrmSteadyTest, TheReasonsOfTheCellOfTheEngineAreShown) {
    EXPECT_EQ(window_.lblReasons.Caption.get(), "Rejected while the engine ran there: 41 fuel cut");
}

TEST(ErrorTrendTest, ALongRunKeepsItsStartAndItsEnd) {
    ErrorTrend trend;
    trend.begin("x", 10.0);
    for (double second = 10.0; second < 36010.0; second += 1.0) {
        if (trend.isDue(second)) {
            trend.add(second, 1.0, 2.0);
        }
    }
    EXPECT_LE(trend.points().size(), ErrorTrend::kMost);
    EXPECT_GE(trend.points().size(), ErrorTrend::kMost / 2);
    EXPECT_EQ(trend.points().front().seconds, 0.0);
    EXPECT_GT(trend.points().back().seconds, 35700.0);
}

TEST(ErrorSumTest, IsWeightedAndKnowsTheWorst) {
    ErrorSum sum;
    EXPECT_TRUE(sum.isEmpty());
    sum.add(-6.0, 1.0);
    sum.add(2.0, 3.0);
    EXPECT_EQ(sum.mean(), 3.0);
    EXPECT_EQ(sum.worst(), 6.0);
}

TEST_F(FrmSteadyTest, F8PutsBackAsTheButtonDoes) {
    EXPECT_FALSE(window_.offerKey(kPutBackKey, 1)) << "with Shift";
    EXPECT_FALSE(window_.offerKey(kPutBackKey - 1, 0));
    EXPECT_EQ(window_.lblNote.Caption.get(), "");
    EXPECT_TRUE(window_.offerKey(kPutBackKey, 0));
    EXPECT_EQ(window_.lblNote.Caption.get(), "Put back");
}

TEST_F(FrmSteadyTest, ButtonsSayWhatCameOfThem) {
    window_.btnPutBack.press();
    EXPECT_EQ(window_.lblNote.Caption.get(), "Put back");
    window_.btnNewBaseline.press();
    EXPECT_EQ(window_.lblNote.Caption.get(), "New");
}

TEST(SteadyChoicesTest, AreRememberedAndBegin15RicherAnd5Leaner) {
    support::MemoryPreferences preferences;
    {
        SteadyChoices choices(preferences);
        EXPECT_EQ(choices.RichAuthority.get(), 15.0);
        EXPECT_EQ(choices.LeanAuthority.get(), 5.0);
        EXPECT_FALSE(choices.Carry);
        EXPECT_EQ(choices.FixedDelayMs[2].get(), 0.0);
        choices.RichAuthority = 12.5;
        choices.LeanAuthority = 3.0;
        choices.Carry = true;
        choices.FixedDelayMs[2] = 150.0;
    }
    const SteadyChoices again(preferences);
    EXPECT_EQ(again.RichAuthority.get(), 12.5);
    EXPECT_EQ(again.LeanAuthority.get(), 3.0);
    EXPECT_TRUE(again.Carry);
    EXPECT_EQ(again.FixedDelayMs[2].get(), 150.0);
    EXPECT_EQ(again.FixedDelayMs[1].get(), 0.0);
}

TEST(SteadyChoicesTest, ARememberedNumberOutOfRangeIsBounded) {
    support::MemoryPreferences preferences;
    preferences.write("Software\\KorvaneTuner\\Settings", "SteadyRichAuthority", "900");
    EXPECT_EQ(SteadyChoices(preferences).RichAuthority.get(), 50.0);
}

}  // namespace
}  // namespace korvane::maps
