#include "LiveBench.h"
#include "live/Lamps.h"

namespace korvane::live {
namespace {

using controls::Picture;

class LampsTest : public LiveBench {
protected:
    // Bit n is set if lamp n is green. A lamp in any other colour than grey and green fails the test.
    [[nodiscard]] int lit() {
        int bits = 0;
        for (int n = 0; n < 16; ++n) {
            const Picture shown = window_.imgLed(n).Shown;
            EXPECT_TRUE(shown == Picture::Green || shown == Picture::Grey) << n;
            bits |= shown == Picture::Green ? 1 << n : 0;
        }
        return bits;
    }
    void showFlags(double value) {
        channel(22).value = value;
        update();
    }
    void decodeFlags(int flags) {
        decode({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, static_cast<std::uint8_t>(flags / 256),
                static_cast<std::uint8_t>(flags % 256)});
    }
};

TEST_F(LampsTest, HaveTheirCaptions) {
    const std::vector<std::string> captions{
        "0",    "Choke", "StartHelp",  "Injection",    "Accelpump", "Ignition", "IgnChargeError", "IgnSparkError",
        "Idle", "9",     "Motorbrake", "Launch / ALS", "Stopped",   "Running",  "RPM Shift",      "RPM Limiter"};
    ASSERT_EQ(window_.lblLED.count(), 16);
    ASSERT_EQ(window_.imgLed.count(), 16);
    for (int n = 0; n < 16; ++n) {
        EXPECT_EQ(window_.lblLED(n).Caption.get(), captions[static_cast<std::size_t>(n)]);
    }
}

TEST_F(LampsTest, AreLaidOutFromTopToBottomAllGreyAndVisible) {
    layOutLamps(window_, 768 * 15);
    EXPECT_EQ(lit(), 0);
    for (int n = 0; n < 16; ++n) {
        auto& lamp = window_.imgLed(n);
        EXPECT_EQ(lamp.Height.get(), 255) << "11520 / 45 is 256, which is cut to 255";
        EXPECT_EQ(lamp.Width.get(), 255);
        EXPECT_EQ(lamp.Left.get(), window_.imgLed(0).Left.get());
        EXPECT_EQ(lamp.Top.get(), window_.imgLed(0).Top.get() + n * 275);
        EXPECT_TRUE(lamp.Visible);
        EXPECT_EQ(window_.lblLED(n).Left.get(), lamp.Left + 255 + 300);
        EXPECT_EQ(window_.lblLED(n).Top.get(), lamp.Top.get());
    }
    EXPECT_EQ(window_.FrameLeds.Height.get(), window_.imgLed(0).Top + 15 * 275 + 255 + 400);
}

TEST_F(LampsTest, OfALowScreenAreA45thOfItsHeight) {
    layOutLamps(window_, 600 * 15);
    EXPECT_EQ(window_.imgLed(3).Height.get(), 200);
    EXPECT_EQ(window_.imgLed(3).Top.get(), window_.imgLed(0).Top + 3 * 220);
    EXPECT_EQ(window_.lblLED(3).Left.get(), window_.imgLed(3).Left + 200 + 300);
    EXPECT_EQ(window_.FrameLeds.Height.get(), window_.imgLed(0).Top + 15 * 220 + 200 + 400);
}

TEST_F(LampsTest, LampNShowsBitN) {
    for (int n = 0; n < 16; ++n) {
        decodeFlags(1 << n);
        EXPECT_EQ(lit(), 1 << n);
    }
    decodeFlags(0xA5C3);
    EXPECT_EQ(lit(), 0xA5C3);
    decodeFlags(0);
    EXPECT_EQ(lit(), 0);
}

TEST_F(LampsTest, TheHighestBitLightsTheRpmLimiterAlone) {
    decodeFlags(0x8000);
    EXPECT_EQ(lit(), 0x8000);
    EXPECT_EQ(window_.lblLED(15).Caption.get(), "RPM Limiter");
}

TEST_F(LampsTest, TheErrorBitsLightGreenToo) {
    decodeFlags(0x00C0);
    EXPECT_EQ(window_.imgLed(6).Shown.get(), Picture::Green);
    EXPECT_EQ(window_.imgLed(7).Shown.get(), Picture::Green);
}

TEST_F(LampsTest, AGainOnChannel22ChangesWhichLampsLight) {
    channel(22).gain = 4;
    decodeFlags(0x0003);
    EXPECT_EQ(lit(), 0x000C);
    channel(22).gain = 1;
    channel(22).offset = 1;
    decodeFlags(0x0003);
    EXPECT_EQ(lit(), 0x0004);
}

TEST_F(LampsTest, OnlyTheLow16BitsCount) {
    showFlags(0x50001);
    EXPECT_EQ(lit(), 1);
    showFlags(-1);
    EXPECT_EQ(lit(), 0xFFFF);
}

TEST_F(LampsTest, FlagsAreRoundedToAWholeNumber) {
    showFlags(2.5);
    EXPECT_EQ(lit(), 2);
    showFlags(3.5);
    EXPECT_EQ(lit(), 4);
}

TEST_F(LampsTest, FlagsThatNo32BitsHoldLightNoLamp) {
    showFlags(0x11);
    showFlags(3e9);
    EXPECT_EQ(lit(), 0);
}

TEST_F(LampsTest, KeepTheirStateWhenFramesStop) {
    decodeFlags(0x2000);
    pump_.wait(60000);
    EXPECT_EQ(lit(), 0x2000);
}

}  // namespace
}  // namespace korvane::live
