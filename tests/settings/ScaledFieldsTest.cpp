#include "MiscBench.h"
#include "support/PropertyWatch.h"
#include "support/Typing.h"

namespace korvane::settings {
namespace {

using controls::kKeyDown;
using controls::kKeyLeft;
using controls::kKeyMinus;
using controls::kKeyPlus;
using controls::kKeyRight;
using controls::kKeyUp;

class ScaledFieldsTest : public MiscBench {
protected:
    ScaledFieldsTest() { show(); }

    // What a key leaves of a raw byte, and how that is shown.
    static void expectKey(controls::TextBox& box, const std::string& raw, int keyCode, const std::string& tag,
                          const std::string& text) {
        box.Tag = raw;
        box.keyDown(keyCode, 0);
        EXPECT_EQ(box.Tag.get(), tag) << box.path();
        EXPECT_EQ(box.Text.get(), text) << box.path();
    }

    // From just below the limit up, over it, down, and at the bottom.
    static void expectRange(controls::TextBox& box, int limit, const std::string& atLimit, const std::string& below,
                            const std::string& one) {
        const std::string top = std::to_string(limit);
        const std::string next = std::to_string(limit - 1);
        expectKey(box, next, kKeyPlus, top, atLimit);
        expectKey(box, top, kKeyPlus, top, atLimit);
        expectKey(box, "255", kKeyPlus, top, atLimit);
        expectKey(box, top, kKeyMinus, next, below);
        expectKey(box, "0", kKeyPlus, "1", one);
        expectKey(box, "1", kKeyMinus, "0", "0");
        expectKey(box, "0", kKeyMinus, "0", "0");
        expectKey(box, "-5", kKeyMinus, "0", "0");
    }

    void focusOnPage(int tab, controls::Control& control) {
        frmMisc_.tbsOptions.SelectedItem = tab;
        frmMisc_.setFocus(&control);
        ASSERT_EQ(frmMisc_.activeControl(), &control);
    }
};

// 200 / 72 ms, 199 / 72 ms and 1 / 72 ms.
TEST_F(ScaledFieldsTest, StartHelpAndChokeStepInCountsUpTo200) {
    expectRange(frmMisc_.txtStart, 200, "2.7778", "2.7639", "0.0139");
    expectRange(frmMisc_.txtRyyppy, 200, "2.7778", "2.7639", "0.0139");
}

TEST_F(ScaledFieldsTest, ChargeTimeStepsInFiftiethsOfAMillisecond) {
    expectRange(frmMisc_.txtchargetime, 250, "5", "4.98", "0.02");
}

TEST_F(ScaledFieldsTest, VoltageCorrectionStepsInCountsUpTo50) {
    for (auto& box : frmMisc_.txtVolt) {
        expectRange(box, 50, "0.6944", "0.6806", "0.0139");
    }
}

TEST_F(ScaledFieldsTest, AntilagStepsInItsOwnUnits) {
    expectRange(frmMisc_.txtALS_fuel, 15, "75", "70", "5");
    expectRange(frmMisc_.txtALS_ign_retard, 15, "67.5", "63", "4.5");
}

TEST_F(ScaledFieldsTest, AnyOtherKeyOnlyShowsTheByteAnew) {
    expectKey(frmMisc_.txtStart, "72", 'A', "72", "1");
    expectKey(frmMisc_.txtStart, "255", 13, "255", "3.5417");
    expectKey(frmMisc_.txtchargetime, "", 'A', "", "0");
}

// Only rows of boxes take the arrows.
TEST_F(ScaledFieldsTest, ASingleBoxDoesNotStepByArrows) {
    expectKey(frmMisc_.txtStart, "72", kKeyUp, "72", "1");
    expectKey(frmMisc_.txtStart, "72", kKeyDown, "72", "1");
}

TEST_F(ScaledFieldsTest, ArrowsStepTheBoxesOfARow) {
    expectKey(frmMisc_.txtVolt(2), "36", kKeyUp, "37", "0.5139");
    expectKey(frmMisc_.txtVolt(2), "36", kKeyDown, "35", "0.4861");
}

TEST_F(ScaledFieldsTest, ArrowsMoveRoundTheVoltageBoxes) {
    focusOnPage(2, frmMisc_.txtVolt(3));
    frmMisc_.txtVolt(3).keyDown(kKeyRight, 0);
    EXPECT_EQ(frmMisc_.activeControl(), &frmMisc_.txtVolt(0));
    frmMisc_.txtVolt(0).keyDown(kKeyRight, 0);
    EXPECT_EQ(frmMisc_.activeControl(), &frmMisc_.txtVolt(1));
    frmMisc_.txtVolt(1).keyDown(kKeyLeft, 0);
    frmMisc_.txtVolt(0).keyDown(kKeyLeft, 0);
    EXPECT_EQ(frmMisc_.activeControl(), &frmMisc_.txtVolt(3));
}

TEST_F(ScaledFieldsTest, ArrowsMoveRoundTheAccelerationBoxes) {
    focusOnPage(2, frmMisc_.txtAccel(9));
    frmMisc_.txtAccel(9).keyDown(kKeyRight, 0);
    EXPECT_EQ(frmMisc_.activeControl(), &frmMisc_.txtAccel(0));
    frmMisc_.txtAccel(0).keyDown(kKeyLeft, 0);
    EXPECT_EQ(frmMisc_.activeControl(), &frmMisc_.txtAccel(9));
    frmMisc_.txtAccel(9).keyDown(kKeyLeft, 0);
    EXPECT_EQ(frmMisc_.activeControl(), &frmMisc_.txtAccel(8));
}

class Acceleration : public ScaledFieldsTest {
protected:
    void expectStep(const std::string& before, int keyCode, const std::string& after) {
        auto& box = frmMisc_.txtAccel(4);
        box.Text = before;
        box.keyDown(keyCode, 0);
        EXPECT_EQ(box.Text.get(), after) << before;
        EXPECT_EQ(box.Tag.get(), "");
        EXPECT_TRUE(box.Locked);
    }
};

// 36 counts are 0.5 ms, 100 are 1.3889 ms.
TEST_F(Acceleration, StepsTheCountsOfItsText) {
    expectStep("0.5", kKeyPlus, "0.5139");
    expectStep("0.5139", kKeyMinus, "0.5");
    expectStep("0.5", kKeyUp, "0.5139");
    expectStep("0.5", kKeyDown, "0.4861");
}

TEST_F(Acceleration, StaysInItsRange) {
    expectStep("1.375", kKeyPlus, "1.3889");
    expectStep("1.3889", kKeyPlus, "1.3889");
    expectStep("3", kKeyPlus, "1.3889");
    expectStep("0", kKeyMinus, "0");
    expectStep("-2", kKeyMinus, "0");
}

TEST_F(Acceleration, TakesTheNearestCount) {
    expectStep("0.506", kKeyPlus, "0.5139");  // 36.43 counts
    expectStep("abc", kKeyPlus, "0.0139");
}

TEST_F(Acceleration, LeavesItsTextToOtherKeys) {
    expectStep("0.506", 'A', "0.506");
    expectStep("", 13, "");
}

TEST_F(Acceleration, KeepsATextTooLargeForItsCounts) {
    expectStep("1e9", kKeyPlus, "1e9");
    EXPECT_EQ(virtual_.log.lines.size(), 1U);
}

TEST_F(ScaledFieldsTest, CannotBeTypedInto) {
    auto& w = frmMisc_;
    std::vector<controls::TextBox*> boxes{&w.txtStart, &w.txtRyyppy, &w.txtchargetime, &w.txtALS_fuel,
                                          &w.txtALS_ign_retard};
    for (auto* row : {&w.txtVolt, &w.txtAccel}) {
        for (auto& box : *row) {
            boxes.push_back(&box);
        }
    }
    for (auto* box : boxes) {
        EXPECT_TRUE(box->Locked) << box->path();
        EXPECT_NE(box->BackColor.get(), w.txtInjMode.BackColor.get()) << box->path();
    }
    w.txtStart.Tag = "72";
    support::typeCharacter(w.txtStart, '5');
    EXPECT_EQ(w.txtStart.Text.get(), "1");
    EXPECT_TRUE(w.txtStart.Locked);
}

TEST_F(ScaledFieldsTest, AreUnlockedAroundEachChange) {
    bool unlocked = false;
    auto& box = frmMisc_.txtStart;
    const support::PropertyWatch watch(box, &box.Text, [&] { unlocked = !box.Locked; });
    frmMisc_.txtStart.keyDown(kKeyPlus, 0);
    EXPECT_TRUE(unlocked);
    EXPECT_TRUE(frmMisc_.txtStart.Locked);
}

}  // namespace
}  // namespace korvane::settings
