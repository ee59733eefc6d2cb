#include <gtest/gtest.h>

#include "ecu/engine/Noise.h"

namespace korvane::ecu {
namespace {

TEST(Noise, IsTheSameForTheSameSeed) {
    Noise one(7);
    Noise two(7);
    Noise other(8);
    for (int i = 0; i < 100; ++i) {
        const auto number = one.next();
        EXPECT_EQ(number, two.next());
        EXPECT_NE(number, other.next());
    }
}

TEST(Noise, UniformNumbersFillZeroToOne) {
    Noise noise(1);
    double sum = 0.0;
    for (int i = 0; i < 10000; ++i) {
        const double number = noise.uniform();
        ASSERT_GE(number, 0.0);
        ASSERT_LT(number, 1.0);
        sum += number;
    }
    EXPECT_NEAR(sum / 10000, 0.5, 0.01);
}

TEST(Noise, BellHasMeanZeroAndDeviationOne) {
    Noise noise(1);
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < 10000; ++i) {
        const double number = noise.bell();
        ASSERT_LE(number * number, 3.47 * 3.47);
        sum += number;
        squares += number * number;
    }
    EXPECT_NEAR(sum / 10000, 0.0, 0.03);
    EXPECT_NEAR(squares / 10000, 1.0, 0.04);
}

TEST(Noise, ChancesComeTrueAsOftenAsTheySay) {
    Noise noise(1);
    int count = 0;
    for (int i = 0; i < 10000; ++i) {
        count += noise.happens(0.2) ? 1 : 0;
        EXPECT_FALSE(noise.happens(0.0));
        EXPECT_TRUE(noise.happens(1.0));
    }
    EXPECT_NEAR(count, 2000, 150);
}

TEST(Noise, AnImpossibleChanceDrawsNoNumber) {
    Noise one(3);
    Noise two(3);
    EXPECT_FALSE(one.happens(0.0));
    EXPECT_EQ(one.next(), two.next());
}

}  // namespace
}  // namespace korvane::ecu
