#include "MapsBench.h"
#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/panes/AnalyserPane.h"

namespace korvane::maps {
namespace {

using controls::kKeyDown;
using controls::kKeyLeft;
using controls::kKeyRight;
using controls::kKeyUp;
using controls::Picture;
using testing::ElementsAre;
using testing::IsEmpty;

// Notes the order in which the pane asks for things.
class JournalAnalyser : public FakeAnalyser {
public:
    void ClearTables() override { journal.emplace_back("clear"); }
    void setLogData(bool on) override { journal.emplace_back(on ? "gather" : "gather no more"); }
    void setAgentEnable(bool on) override { journal.emplace_back(on ? "agent" : "no agent"); }
    void Setpoint(float value, std::int32_t index) override {
        FakeAnalyser::Setpoint(value, index);
        if (onSetpoint) {
            onSetpoint(index);
        }
    }

    std::vector<std::string> journal;
    std::function<void(int)> onSetpoint;
};

class AnalyserPaneBench : public MapsBench {
protected:
    explicit AnalyserPaneBench(MapGeometry shape) : window_(machine_.machine, paneContext_, shape) {
        window_.showFrames = [this](bool shown) { journal().emplace_back(shown ? "frames" : "no frames"); };
        window_.show();
        window_.fillTargets();
    }

    // No key asks for a cell that does not exist.
    ~AnalyserPaneBench() override { EXPECT_THAT(machine_.log.lines, IsEmpty()); }

    std::vector<std::string>& journal() { return noting_.journal; }
    controls::TextBox& box(int cell) { return window_.analys(cell); }
    void gathered(int cell, float mean, float proposal) {
        core::checked(noting_.averages, cell) = mean;
        core::checked(noting_.proposals, cell) = proposal;
    }
    // The colour of a cell whose mean lies so far from its target.
    controls::Color colorOf(float proposal) {
        gathered(17, 12.5F, proposal);
        window_.paint();
        return box(17).BackColor;
    }
    void key(int cell, int keyCode) {
        window_.setFocus(&box(cell));
        box(cell).keyDown(keyCode, 0);
    }
    // Where the focus is after a key.
    [[nodiscard]] int focusAfter(int cell, int keyCode) {
        key(cell, keyCode);
        for (int at = 0; at < window_.analys.geometry.cells(); ++at) {
            if (window_.activeControl() == &box(at)) {
                return at;
            }
        }
        return -1;
    }
    struct Move {
        int from;
        int keyCode;
        int to;
    };
    void expectMoves(const std::vector<Move>& moves) {
        for (const auto& [from, keyCode, to] : moves) {
            EXPECT_EQ(focusAfter(from, keyCode), to) << "from " << from;
        }
    }
    // The text after a step from `target`, which the tool-tip and the analyser must hold as well.
    std::string stepped(const std::string& target, int keyCode) {
        box(17).ToolTipText = target;
        key(17, keyCode);
        EXPECT_EQ(box(17).ToolTipText.get(), box(17).Text.get());
        EXPECT_EQ(core::textOf(noting_.setpoints[17]), box(17).Text.get());
        return box(17).Text;
    }

    JournalAnalyser noting_;
    MapContext paneContext_{tables_, main_, noting_, frm3Dmap_, frmInjScale_, eeprom_};
    BenchWindow window_;
};

class AnalyserPaneTest : public AnalyserPaneBench {
protected:
    AnalyserPaneTest() : AnalyserPaneBench(kOrdinaryMaps) {}
};

class LargeAnalyserPaneTest : public AnalyserPaneBench {
protected:
    LargeAnalyserPaneTest() : AnalyserPaneBench(kLargeMaps) {}
};

TEST_F(AnalyserPaneTest, EveryCellStartsAtTheDefaultTarget) {
    for (int cell = 0; cell < 160; ++cell) {
        EXPECT_EQ(box(cell).Text.get(), "12.5");
        EXPECT_EQ(box(cell).ToolTipText.get(), "12.5");
        EXPECT_TRUE(box(cell).Locked);
    }
}

TEST_F(AnalyserPaneTest, ATickClearsShowsAndGathersInThisOrder) {
    window_.chkInjAnal.press();
    EXPECT_THAT(journal(), ElementsAre("clear", "frames", "gather"));
}

TEST_F(AnalyserPaneTest, ATickBringsTheBoxesAndAGreyLamp) {
    window_.imgAgentLed.Shown = Picture::Red;
    window_.chkInjAnal.press();
    for (const controls::Control* shown : std::initializer_list<controls::Control*>{
             &window_.chkModifyInjSetpoint, &window_.chkUseTuningAgent, &window_.chkSimplemode, &window_.imgAgentLed}) {
        EXPECT_TRUE(shown->Visible) << shown->name();
    }
    EXPECT_EQ(window_.imgAgentLed.Shown.get(), Picture::Grey);
    EXPECT_EQ(window_.imgAgentLed.Left.get(), 200);
    EXPECT_EQ(window_.imgAgentLed.Top.get(), 200);
    EXPECT_TRUE(window_.btnloadLambdaSetpoint.Enabled && window_.btnSaveLambdaSetpoint.Enabled);
}

TEST_F(AnalyserPaneTest, AnUntickStopsTheAgentAndTheGatheringInThisOrder) {
    window_.chkInjAnal.press();
    window_.chkUseTuningAgent.press();
    journal().clear();
    window_.chkInjAnal.press();
    ASSERT_GE(journal().size(), 3U);
    EXPECT_EQ(journal().front(), "no frames");
    EXPECT_EQ(journal()[1], "no agent");
    EXPECT_EQ(journal().back(), "gather no more");
    EXPECT_EQ(window_.chkUseTuningAgent.Value.get(), 0);
}

// As they are in a window just opened.
TEST_F(AnalyserPaneTest, AnUntickTakesTheBoxesAway) {
    for (int turn = 0; turn < 2; ++turn) {
        for (const controls::Control* hidden :
             std::initializer_list<controls::Control*>{&window_.chkModifyInjSetpoint, &window_.chkUseTuningAgent,
                                                       &window_.chkSimplemode, &window_.imgAgentLed}) {
            EXPECT_FALSE(hidden->Visible) << hidden->name();
        }
        EXPECT_FALSE(window_.btnloadLambdaSetpoint.Enabled || window_.btnSaveLambdaSetpoint.Enabled);
        window_.chkInjAnal.press();
        window_.chkInjAnal.press();
    }
}

TEST_F(AnalyserPaneTest, TheAgentsStopIsAskedForAlsoWhenItsBoxIsNotTicked) {
    window_.chkInjAnal.press();
    journal().clear();
    window_.chkInjAnal.press();
    EXPECT_THAT(journal(), ElementsAre("no frames", "no agent", "gather no more"));
}

TEST_F(AnalyserPaneTest, TheAgentsBoxesPassOnTheirState) {
    window_.chkUseTuningAgent.press();
    window_.chkUseTuningAgent.press();
    EXPECT_THAT(journal(), ElementsAre("agent", "no agent"));
    window_.chkSimplemode.press();
    EXPECT_TRUE(noting_.simpleMode);
    window_.chkSimplemode.press();
    EXPECT_FALSE(noting_.simpleMode);
}

TEST_F(AnalyserPaneTest, AMeanIsCutToHundredths) {
    gathered(17, 12.349F, 0.0F);
    gathered(18, 13.0F, 0.0F);
    window_.paint();
    EXPECT_EQ(box(17).Text.get(), "12.34");
    EXPECT_EQ(box(18).Text.get(), "13");
}

TEST_F(AnalyserPaneTest, ACellWithoutSamplesIsWhite) {
    gathered(17, 0.0F, 2.0F);  // what a clear leaves behind
    window_.paint();
    EXPECT_EQ(box(17).Text.get(), "0");
    EXPECT_EQ(box(17).BackColor.get(), controls::kWhite);
}

// Blue-green-red: red stands in the low byte.
TEST_F(AnalyserPaneTest, OnTargetIsGreen) {
    EXPECT_EQ(colorOf(0.0F), 0x00FF17U);  // 23
}

// 0.5 * 250 + 23 = 148 = 0x94, to both sides.
TEST_F(AnalyserPaneTest, BetweenGreenAndYellowRedRises) {
    EXPECT_EQ(colorOf(0.5F), 0x00FF94U);
    EXPECT_EQ(colorOf(-0.5F), 0x00FF94U);
}

// 0.749 * 250 + 23 = 210.25, cut; 255 - 0.75 * 70 = 202.5, cut.
TEST_F(AnalyserPaneTest, AtThreeQuartersGreenBeginsToFall) {
    EXPECT_EQ(colorOf(0.749F), 0x00FF00U + 210);
    EXPECT_EQ(colorOf(0.75F), 202U * 256 + 255);
}

// 255 - 2 * 70 = 115; 255 - 4 * 70 would be below 0.
TEST_F(AnalyserPaneTest, FarOffIsRedAndNoColourRunsOver) {
    EXPECT_EQ(colorOf(-2.0F), 115U * 256 + 255);
    EXPECT_EQ(colorOf(4.0F), 255U);
    EXPECT_EQ(colorOf(1e30F), 255U);
}

TEST_F(AnalyserPaneTest, WhileTheyAreModifiedTargetsStandOnWhite) {
    EXPECT_NE(colorOf(1.0F), controls::kWhite);
    box(17).ToolTipText = "13.2";
    window_.chkModifyInjSetpoint.press();
    window_.paint();
    EXPECT_EQ(box(17).Text.get(), "13.2");
    EXPECT_EQ(box(17).BackColor.get(), controls::kWhite);
    EXPECT_EQ(box(18).Text.get(), "12.5");
}

TEST_F(AnalyserPaneTest, ArrowsMoveTheFocusInsideTheGrid) {
    expectMoves({{17, kKeyLeft, 16}, {17, kKeyUp, 1}, {17, kKeyRight, 18}, {17, kKeyDown, 33}});
}

TEST_F(AnalyserPaneTest, ArrowsDoNotWrap) {
    expectMoves(
        {{16, kKeyLeft, 16}, {15, kKeyUp, 15}, {31, kKeyRight, 31}, {144, kKeyDown, 144}, {143, kKeyDown, 159}});
}

TEST_F(LargeAnalyserPaneTest, ArrowsKnowTheLargeGrid) {
    expectMoves({{16, kKeyLeft, 15},
                 {20, kKeyLeft, 20},
                 {39, kKeyRight, 39},
                 {20, kKeyUp, 0},
                 {299, kKeyDown, 319},
                 {300, kKeyDown, 300}});
}

TEST_F(LargeAnalyserPaneTest, AllItsCellsAreFilledAndPainted) {
    EXPECT_EQ(box(319).ToolTipText.get(), "12.5");
    gathered(319, 12.5F, 0.0F);
    window_.paint();
    EXPECT_EQ(box(319).BackColor.get(), 0x00FF17U);
}

TEST_F(AnalyserPaneTest, PlusAndMinusStepByATenth) {
    EXPECT_EQ(stepped("12.5", controls::kKeyPlus), "12.6");
    EXPECT_EQ(stepped("12.5", controls::kKeyMinus), "12.4");
}

TEST_F(AnalyserPaneTest, SixtyStepsShowSixtyTenths) {
    box(17).ToolTipText = "10";
    for (int tenths = 101; tenths <= 160; ++tenths) {
        key(17, controls::kKeyPlus);
        const std::string fraction = tenths % 10 == 0 ? "" : "." + std::to_string(tenths % 10);
        EXPECT_EQ(box(17).Text.get(), std::to_string(tenths / 10) + fraction);
    }
    for (int step = 0; step < 60; ++step) {
        key(17, controls::kKeyMinus);
    }
    EXPECT_EQ(box(17).Text.get(), "10");
}

TEST_F(AnalyserPaneTest, TargetsStopAtTenAndSixteen) {
    EXPECT_EQ(stepped("16", controls::kKeyPlus), "16");
    EXPECT_EQ(stepped("10", controls::kKeyMinus), "10");
    EXPECT_EQ(stepped("15.9", controls::kKeyPlus), "16");
    EXPECT_EQ(stepped("18", controls::kKeyPlus), "16") << "a file may hold more";
    EXPECT_EQ(stepped("2", controls::kKeyMinus), "10");
    EXPECT_EQ(stepped("18", controls::kKeyMinus), "17.9");
}

TEST_F(AnalyserPaneTest, ATargetComesFromTheToolTipNotFromTheText) {
    box(17).Text = "14.7";  // a mean
    EXPECT_EQ(stepped("12.5", controls::kKeyPlus), "12.6");
}

TEST_F(AnalyserPaneTest, ACellIsOpenOnlyWhileItIsWritten) {
    bool lockedInside = true;
    noting_.onSetpoint = [&](int cell) { lockedInside = box(cell).Locked; };
    key(17, controls::kKeyPlus);
    EXPECT_FALSE(lockedInside);
    EXPECT_TRUE(box(17).Locked);
}

TEST_F(AnalyserPaneTest, OtherKeysDoNothing) {
    key(17, 65);
    EXPECT_EQ(box(17).Text.get(), "12.5");
    EXPECT_EQ(noting_.setpoints[17], 0.0F);
    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace korvane::maps
