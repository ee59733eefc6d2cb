#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "analysis/steady/FirmwareGuess.h"

namespace korvane::steady {
namespace {

// Duty in whole counts of an ECU whose pulse is the first or the second of two that differ by a few per cent.
Firmware guessed(bool interpolates, double apart, int frames) {
    FirmwareGuess guess;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    for (int i = 0; i < frames; ++i) {
        const double four = 4.6 + 0.3 * uniform(random);
        const double one = four + apart * uniform(random);
        const double rpm = 4000.0 + 2000.0 * uniform(random);
        guess.add(std::round(std::exp(interpolates ? four : one) * rpm / 4000.0), rpm, one, four);
    }
    return guess.firmware();
}

TEST(FirmwareGuess, SeesWhatTheDutyFollows) {
    EXPECT_EQ(guessed(true, 0.05, 400), Firmware::FourBytes);
    EXPECT_EQ(guessed(false, 0.05, 400), Firmware::OneByte);
}

TEST(FirmwareGuess, WaitsForSomeFrames) {
    EXPECT_EQ(guessed(true, 0.05, 250), Firmware::Unknown);
}

TEST(FirmwareGuess, WaitsLongerWhereBothAreAlike) {
    EXPECT_EQ(guessed(true, 0.001, 2000), Firmware::Unknown);
    EXPECT_NE(guessed(true, 0.001, 4000), Firmware::Unknown);
}

TEST(FirmwareGuess, LeavesOutPulsesThatAreTooShortOrFull) {
    FirmwareGuess guess;
    for (int i = 0; i < 5000; ++i) {
        guess.add(i % 2 == 0 ? 5.0 : 255.0, 3000.0, 4.0, 4.1);
    }
    EXPECT_EQ(guess.firmware(), Firmware::Unknown);
}

}  // namespace
}  // namespace korvane::steady
