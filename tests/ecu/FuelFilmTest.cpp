#include <gtest/gtest.h>

#include "ecu/engine/FuelFilm.h"

namespace korvane::ecu {
namespace {

constexpr int kSecond = 200;  // steps of 5 ms
constexpr double kTime = 0.5;

double passed(FuelFilm& film, double injected, double share, int steps) {
    double rate = 0.0;
    for (int i = 0; i < steps; ++i) {
        rate = film.pass(injected, share, kTime);
    }
    return rate;
}

TEST(FuelFilm, DryWallsLetAllFuelPass) {
    FuelFilm film;
    EXPECT_EQ(film.pass(3.7, 0.0, kTime), 3.7);
}

TEST(FuelFilm, AStepComesInPartAtOnceAndInPartWithTheTimeConstant) {
    FuelFilm film;
    EXPECT_NEAR(film.pass(10.0, 0.3, kTime), 7.0, 0.05);
    EXPECT_NEAR(passed(film, 10.0, 0.3, kSecond / 2), 7.0 + 3.0 * 0.632, 0.02);
    EXPECT_NEAR(passed(film, 10.0, 0.3, 10 * kSecond), 10.0, 1e-6);
    EXPECT_NEAR(film.pass(0.0, 0.3, kTime), 3.0, 0.05) << "only what evaporates";
}

TEST(FuelFilm, NothingGetsLost) {
    FuelFilm film;
    double in = 0.0;
    double out = 0.0;
    for (int i = 0; i < kSecond; ++i) {
        in += 0.01 * i;
        out += film.pass(0.01 * i, 0.4, kTime);
    }
    for (int i = 0; i < 20 * kSecond; ++i) {
        out += film.pass(0.0, 0.4, kTime);
    }
    EXPECT_NEAR(out, in, 1e-6);
}

}  // namespace
}  // namespace korvane::ecu
