// What came back for an identity request.
#include <gtest/gtest.h>
#include <vector>

#include "doctor/Fate.h"

namespace korvane::doctor::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kEnd = 0x86;  // the complement of 'y'
const Bytes kRequest{'y', 0, kEnd};
const Bytes kIdentity{'y', 5, 0, 1, 13, 58, 14, kEnd};  // 13 * 256 + 58 = 3386

Bytes joined(Bytes one, const Bytes& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

TEST(FateTest, AnIdentityIsAnAnswer) {
    const auto reception = receptionOf({}, kIdentity);
    EXPECT_EQ(reception.fate, Fate::Answer);
    EXPECT_EQ(reception.identity, (Identity{3386, 14}));
}

TEST(FateTest, AnOldIdentityHasNoType) {
    EXPECT_EQ(receptionOf({}, Bytes{'y', 4, 0, 1, 4, 116, kEnd}).identity, (Identity{1140, std::nullopt}));
}

TEST(FateTest, AnIdentityOfThreeBytesIsNone) {
    EXPECT_EQ(receptionOf({}, Bytes{'y', 3, 0, 1, 4, kEnd}).fate, Fate::OtherFrame);
}

TEST(FateTest, AnIdentityBehindWhatBeginsLikeALongFrameIsFound) {
    EXPECT_EQ(receptionOf({}, joined({'R', 200}, kIdentity)).fate, Fate::Answer);
}

TEST(FateTest, AnIdentityWithAWrongEndIsNoFrame) {
    auto broken = kIdentity;
    broken.back() ^= 1U;
    EXPECT_EQ(receptionOf({}, broken).fate, Fate::WrongSpeed);
}

TEST(FateTest, ACutIdentityIsNoFrame) {
    EXPECT_EQ(receptionOf({}, std::span(kIdentity).first(7)).fate, Fate::WrongSpeed);
}

TEST(FateTest, TheRequestItselfIsAnEcho) {
    EXPECT_EQ(receptionOf({}, kRequest).fate, Fate::Echo);
}

TEST(FateTest, AnAnswerBehindTheEchoIsAnAnswer) {
    EXPECT_EQ(receptionOf({}, joined(kRequest, kIdentity)).fate, Fate::Answer);
}

TEST(FateTest, AnotherFrameIsToldFromAnAnswer) {
    EXPECT_EQ(receptionOf({}, Bytes{153, 0, 102}).fate, Fate::OtherFrame);
}

TEST(FateTest, BytesOfAnIdleLineAreNoise) {
    EXPECT_EQ(receptionOf(Bytes{7}, Bytes{}).fate, Fate::Noise);
    EXPECT_EQ(receptionOf(Bytes{7}, Bytes{7}).fate, Fate::Noise);
}

TEST(FateTest, AnAnswerInNoiseIsAnAnswer) {
    EXPECT_EQ(receptionOf(Bytes{7}, kIdentity).fate, Fate::Answer);
}

TEST(FateTest, BytesInAnswerAloneAreOfAnotherSpeed) {
    EXPECT_EQ(receptionOf({}, Bytes{7}).fate, Fate::WrongSpeed);
}

TEST(FateTest, ASilentLineHasNothing) {
    EXPECT_EQ(receptionOf({}, {}).fate, Fate::Nothing);
}

TEST(FateTest, WholeFramesAreCounted) {
    EXPECT_EQ(framesIn({}), 0U);
    EXPECT_EQ(framesIn(joined(kIdentity, joined({1, 2, 3}, kRequest))), 2U);
}

}  // namespace
}  // namespace korvane::doctor::test
