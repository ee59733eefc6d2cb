#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "analysis/steady/FirmwareGuess.h"

namespace korvane::steady {
namespace {

// Duty in whole counts of an ECU whose pulse is the first or the second of two that differ by a few per cent.
FirmwareGuess guessOf(bool interpolates, double apart, int frames) {
    FirmwareGuess guess;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    for (int i = 0; i < frames; ++i) {
        const double four = 4.6 + 0.3 * uniform(random);
        const double one = four + apart * uniform(random);
        const double rpm = 4000.0 + 2000.0 * uniform(random);
        guess.add(std::round(std::exp(interpolates ? four : one) * rpm / 4000.0), rpm, one, four);
    }
    return guess;
}

Firmware guessed(bool interpolates, double apart, int frames) {
    return guessOf(interpolates, apart, frames).firmware();
}

TEST(FirmwareGuess, SeesWhatTheDutyFollows) {
    EXPECT_EQ(guessed(true, 0.05, 400), Firmware::FourBytes);
    EXPECT_EQ(guessed(false, 0.05, 400), Firmware::OneByte);
}

TEST(FirmwareGuess, WaitsForSomeFrames) {
    EXPECT_EQ(guessed(true, 0.05, 250), Firmware::Unknown);
}

TEST(FirmwareGuess, WaitsLongerWhereBothAreAlike) {
    // Duty in whole counts of about 100 varies by 0.28 per cent. Pulses that are apart by up to 0.25 make the variances
    // differ by a quarter: enough, but only with many frames.
    EXPECT_EQ(guessed(true, 0.0025, 2000), Firmware::Unknown);
    EXPECT_EQ(guessed(true, 0.0025, 6000), Firmware::FourBytes);
}

TEST(FirmwareGuess, DecidesNothingWhereBothAreEven) {
    EXPECT_EQ(guessed(true, 0.0003, 20000), Firmware::Unknown);
    EXPECT_EQ(guessed(false, 0.0003, 20000), Firmware::Unknown);
}

TEST(FirmwareGuess, TellsHowFarAPulseIsOff) {
    const FirmwareGuess guess = guessOf(true, 0.05, 1000);
    const double rpm = 4000.0;
    // A pulse of 4.6 gives this duty; a tenth more fuel is 0.095 in the logarithm.
    const double duty = std::exp(4.6);
    ASSERT_TRUE(guess.off(duty, rpm, 4.7, 4.6).has_value());
    EXPECT_NEAR(*guess.off(duty, rpm, 4.7, 4.6), 0.0, 0.003);
    EXPECT_NEAR(*guess.off(1.1 * duty, rpm, 4.7, 4.6), std::log(1.1), 0.003);
    EXPECT_FALSE(guess.off(5.0, rpm, 4.7, 4.6).has_value()) << "too short";
    EXPECT_FALSE(FirmwareGuess().off(duty, rpm, 4.7, 4.6).has_value()) << "not known yet";
}

TEST(FirmwareGuess, IsNotMisledByEnrichments) {
    FirmwareGuess guess = guessOf(true, 0.05, 3000);
    for (int i = 0; i < 50; ++i) {
        guess.add(1.4 * std::exp(4.6), 4000.0, 4.6, 4.6);
    }
    EXPECT_NEAR(*guess.off(std::exp(4.6), 4000.0, 4.6, 4.6), 0.0, 0.006);
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
