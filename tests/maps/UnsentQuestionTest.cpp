#include "EditingBench.h"
#include "core/tables/ModuleReg.h"
#include "maps/notes/UnsentQuestion.h"

namespace korvane::maps {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UnsentQuestionTest : public GridEditingTest {
protected:
    [[nodiscard]] bool mayLeave() { return mayLeaveUnsent({&window_}); }
    void edit(int cells) {
        for (int cell = 0; cell < cells; ++cell) {
            key(window_.fuel, cell, kKeyPlus);
        }
    }
};

TEST_F(UnsentQuestionTest, WithoutEditsNobodyIsAsked) {
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_TRUE(mayLeave());
    EXPECT_THAT(machine_.dialogs.takeQuestions(), IsEmpty());
}

TEST_F(UnsentQuestionTest, AsksWithTheNumberOfCells) {
    edit(12);
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_FALSE(mayLeave());
    const auto questions = machine_.dialogs.takeQuestions();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_EQ(questions.front().text, "12 fuel cells are not in the ECU");
    EXPECT_EQ(questions.front().yes, "Close");
    EXPECT_EQ(questions.front().no, "Keep open");
}

TEST_F(UnsentQuestionTest, YesLetsTheWindowGo) {
    edit(1);
    machine_.dialogs.answerQuestion({true, false});
    EXPECT_TRUE(mayLeave());
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_FALSE(mayLeave());
}

TEST_F(UnsentQuestionTest, TheBoxStopsTheQuestionForGood) {
    edit(1);
    machine_.dialogs.answerQuestion({true, true});
    EXPECT_TRUE(mayLeave());
    EXPECT_EQ(core::RegReadString(machine_.preferences, core::kSettingsKey, "AskUnsent"), "0");
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_TRUE(mayLeave());
    EXPECT_EQ(machine_.dialogs.takeQuestions().size(), 1U);
}

TEST_F(UnsentQuestionTest, ABoxThatIsTickedWithKeepOpenStopsItToo) {
    edit(1);
    machine_.dialogs.answerQuestion({false, true});
    EXPECT_FALSE(mayLeave());
    EXPECT_TRUE(mayLeave());
}

TEST_F(UnsentQuestionTest, WithoutAUserTheWindowGoes) {
    edit(3);
    EXPECT_TRUE(mayLeave());
    EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(UnsentQuestionTest, WindowsOfOneMapShareItsCells) {
    BenchWindow other(machine_.machine, context_, kOrdinaryMaps);
    edit(4);
    key(window_.ign, 0, kKeyPlus);
    EXPECT_THAT(unsentMaps({&window_, &other}), ElementsAre(UnsentMap{"fuel", 4}, UnsentMap{"ignition", 1}));
}

TEST_F(UnsentQuestionTest, SettingsThatAreNotSavedAreNamedToo) {
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_FALSE(mayLeaveUnsent(machine_.machine, {}, 2));
    edit(12);
    machine_.dialogs.answerQuestion({true, false});
    EXPECT_TRUE(mayLeaveUnsent(machine_.machine, {&window_}, 1));
    const auto questions = machine_.dialogs.takeQuestions();
    ASSERT_EQ(questions.size(), 2U);
    EXPECT_EQ(questions[0].text, "2 settings boxes are not saved");
    EXPECT_EQ(questions[1].text, "12 fuel cells are not in the ECU, and 1 settings box is not saved");
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_TRUE(mayLeaveUnsent(machine_.machine, {}, 0));
}

TEST_F(UnsentQuestionTest, BoxesOfTheMiscBlockCountAsCellsDo) {
    main_.ecuMisc.has({0x34, 0x21, 0x28, 0x23, 0, 0, 10, 153, 6});
    tables_.MiscBlock = {0, 0x34, 0x21, 0x28, 0x23, 0, 0, 10, 153, 6};
    window_.showMiscOfFile();
    EXPECT_THAT(unsentMaps({&window_}), IsEmpty());
    window_.txtMisc(0).Text = "8000";
    window_.CheckMisc(3).Value = 1;
    edit(1);
    machine_.dialogs.answerQuestion({false, false});
    EXPECT_FALSE(mayLeave());
    EXPECT_EQ(machine_.dialogs.takeQuestions().front().text, "1 fuel cell and 2 misc boxes are not in the ECU");
}

TEST(UnsentText, CountsEachMap) {
    EXPECT_EQ(unsentText({{"fuel", 1}}), "1 fuel cell is not in the ECU");
    EXPECT_EQ(unsentText({{"fuel", 12}, {"PWM", 1}}), "12 fuel cells and 1 PWM cell are not in the ECU");
    EXPECT_EQ(unsentText({{"fuel", 2}, {"ignition", 3}, {"PWM", 4}}),
              "2 fuel cells, 3 ignition cells and 4 PWM cells are not in the ECU");
}

}  // namespace
}  // namespace korvane::maps
