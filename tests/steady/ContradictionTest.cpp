#include <gtest/gtest.h>

#include "analysis/steady/Contradiction.h"

namespace korvane::steady {
namespace {

bool proofAfter(Contradiction& found, int agreeing, int against) {
    for (int i = 0; i < agreeing; ++i) {
        found.agreed();
    }
    for (int i = 0; i < against; ++i) {
        found.contradicted();
    }
    return found.atProof();
}

int proofsUntilForgotten(Contradiction& found, int agreeing, int against) {
    int proofs = 1;
    while (!proofAfter(found, agreeing, against) && proofs < 100) {
        ++proofs;
    }
    return proofs;
}

TEST(Contradiction, IsFoundAtTheEighthProofInARow) {
    Contradiction found;
    EXPECT_EQ(proofsUntilForgotten(found, 10, 11), 8);
    found.reset();
    EXPECT_EQ(proofsUntilForgotten(found, 0, 1), 8);
}

TEST(Contradiction, NeedsMoreSamplesThanAgree) {
    Contradiction found;
    EXPECT_EQ(proofsUntilForgotten(found, 10, 10), 100);
    EXPECT_EQ(proofsUntilForgotten(found, 0, 0), 100);
}

TEST(Contradiction, BeginsAnewAfterAProofWithoutOne) {
    Contradiction found;
    for (int proof = 0; proof < 7; ++proof) {
        EXPECT_FALSE(proofAfter(found, 0, 100));
    }
    EXPECT_FALSE(proofAfter(found, 5, 5)) << "the samples before the last proof do not count";
    EXPECT_EQ(proofsUntilForgotten(found, 0, 100), 8);
}

}  // namespace
}  // namespace korvane::steady
