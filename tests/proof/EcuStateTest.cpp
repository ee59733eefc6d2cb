#include <gtest/gtest.h>

#include "EcuState.h"

namespace korvane::proof {
namespace {

constexpr std::size_t kWritten = 345;  // the cell of the operation
constexpr std::size_t kOther = 346;

class Outcomes : public testing::Test {
protected:
    Outcomes() {
        wanted_.stored[kWritten] = 9;
        written_.set(kWritten);
        now_ = before_;
    }
    [[nodiscard]] Outcome outcome() const { return outcomeOf(before_, wanted_, written_, now_); }

    EcuState before_;
    EcuState wanted_;
    CellSet written_;
    EcuState now_;
};

TEST_F(Outcomes, AreOldWhereNothingHasChanged) {
    EXPECT_EQ(outcome(), Outcome::Old);
}

TEST_F(Outcomes, AreNewWhereAllIsAsWanted) {
    now_ = wanted_;
    EXPECT_EQ(outcome(), Outcome::New);
}

TEST_F(Outcomes, AreMixedWhereACellIsNeither) {
    now_.stored[kWritten] = 8;
    EXPECT_EQ(outcome(), Outcome::Mixed);
}

TEST_F(Outcomes, AreMixedWhereSomeCellsAreOldAndSomeNew) {
    wanted_.stored[kOther] = 7;
    written_.set(kOther);
    now_.stored[kOther] = 7;
    EXPECT_EQ(outcome(), Outcome::Mixed);
}

TEST_F(Outcomes, AreMixedWhereACellThatIsWrittenWithItsValueIsDamaged) {
    written_.set(kOther);
    now_.stored[kOther] = 1;
    EXPECT_EQ(outcome(), Outcome::Mixed);
}

TEST_F(Outcomes, AreElsewhereWhereACellOfNoConcernHasChanged) {
    now_ = wanted_;
    now_.stored[kOther] = 1;
    EXPECT_EQ(outcome(), Outcome::Elsewhere);
}

TEST_F(Outcomes, AreNotStoredWhereTheEngineRunsOnSomethingElse) {
    now_.working.fuel[5] = 1;
    EXPECT_EQ(outcome(), Outcome::NotStored);
    now_ = wanted_;
    now_.working.misc[0] = 1;
    EXPECT_EQ(outcome(), Outcome::NotStored);
}

TEST_F(Outcomes, AreThoseOfTheEepromBehindARestart) {
    before_.working.fuel[5] = 1;
    wanted_.working.fuel[5] = 1;
    EXPECT_EQ(outcome(), Outcome::Old) << "the restart has dropped what was not stored";
}

TEST_F(Outcomes, AreOldOrNewWithTheWorkingMemoryThatGoesWithIt) {
    before_.working.fuel[5] = 1;
    wanted_.working.fuel[5] = 2;
    now_.working.fuel[5] = 1;
    EXPECT_EQ(outcome(), Outcome::Old);
    now_.working.fuel[5] = 2;
    EXPECT_EQ(outcome(), Outcome::NotStored);
    now_.stored = wanted_.stored;
    EXPECT_EQ(outcome(), Outcome::New);
}

}  // namespace
}  // namespace korvane::proof
