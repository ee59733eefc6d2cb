#include <gtest/gtest.h>
#include <tuple>
#include <vector>

#include "analysis/steady/Decision.h"

namespace korvane::steady {
namespace {

using enum State;
using enum Action;

std::vector<State> allStates() {
    return {Off, Waiting, Working, Unproved, PuttingBack, Stopped};
}

TEST(SteadyDecision, LearnsOnlyAfterAProofOfLife) {
    EXPECT_EQ(decide(Off, Event::SwitchOn), (Decision{Waiting, Begin}));
    EXPECT_EQ(decide(Waiting, Event::Proved), (Decision{Working, Forget}));
    EXPECT_EQ(decide(Working, Event::Proved), (Decision{Working, Commit}));
    EXPECT_EQ(decide(Working, Event::ProofAged), (Decision{Unproved, None}));
    EXPECT_EQ(decide(Unproved, Event::Proved), (Decision{Working, Forget}));
}

TEST(SteadyDecision, PutsBackAndStopsForAFault) {
    for (const State state : {Waiting, Working, Unproved}) {
        EXPECT_EQ(decide(state, Event::Fault), (Decision{PuttingBack, PutBack}));
    }
    EXPECT_EQ(decide(PuttingBack, Event::Done), (Decision{Stopped, None}));
}

TEST(SteadyDecision, GoesOnAfterAStopOnlyByTheSwitch) {
    for (const Event event : {Event::SwitchOff, Event::Proved, Event::ProofAged, Event::Fault, Event::Done}) {
        const Decision decision = decide(Stopped, event);
        EXPECT_TRUE(decision.next == Stopped || decision.next == Off);
        EXPECT_EQ(decision.action, None);
    }
    EXPECT_EQ(decide(Stopped, Event::SwitchOn), (Decision{Waiting, Begin}));
}

TEST(SteadyDecision, PutsTheWholeMapBackFromEveryState) {
    for (const State state : allStates()) {
        EXPECT_EQ(decide(state, Event::PutBack), (Decision{PuttingBack, PutBack}));
    }
}

TEST(SteadyDecision, DoesNothingWhileItIsOffButBeginAndPutBack) {
    for (const Event event : {Event::SwitchOff, Event::Proved, Event::ProofAged, Event::Fault, Event::Done}) {
        EXPECT_EQ(decide(Off, event), (Decision{Off, None}));
    }
}

TEST(SteadyDecision, FinishesPuttingBackWhateverComes) {
    for (const Event event : {Event::SwitchOn, Event::SwitchOff, Event::Proved, Event::ProofAged, Event::Fault}) {
        EXPECT_EQ(decide(PuttingBack, event), (Decision{PuttingBack, None}));
    }
}

TEST(SteadyDecision, HasAWordForEachState) {
    for (const State state : allStates()) {
        EXPECT_FALSE(wordsOf(state).empty());
    }
}

}  // namespace
}  // namespace korvane::steady
