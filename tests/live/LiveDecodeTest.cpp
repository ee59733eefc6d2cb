#include <gmock/gmock.h>
#include <map>
#include <set>

#include "LiveBench.h"

namespace korvane::live {
namespace {

using testing::DoubleEq;
using testing::IsEmpty;

// rpm 2500, water 130, air 75, 13.8 V, load 120, throttle 64, lambda 128, duty 55, accel 7, place 33, flags 0xA55A,
// idle 100, boost 200, K-type 40, advance 85, channel 15 with 0x412.
const Bytes kPayload{9, 196, 130, 75, 138, 120, 64, 128, 55, 7, 33, 0xA5, 0x5A, 100, 200, 40, 85, 0x34, 0x12};

class LiveDecodeTest : public LiveBench {
protected:
    [[nodiscard]] static Bytes with(std::size_t index, int byte) {
        Bytes payload = kPayload;
        payload.at(index) = static_cast<std::uint8_t>(byte);
        return payload;
    }
    void decodeWith(std::size_t index, int byte) { decode(with(index, byte)); }
    void setVersion(float version) { tables_.HwVersion = version; }
    void calibrateThrottle(std::int16_t closed, std::int16_t open) {
        tables_.ThrottleMin = closed;
        tables_.ThrottleMax = open;
    }
    // Byte 6 of the payload and the channel after the decode of a throttle byte.
    [[nodiscard]] std::pair<int, double> throttle(int byte) {
        Bytes payload = with(6, byte);
        live_.decodeLivePacket(payload);
        return {payload[6], value(5)};
    }
};

TEST_F(LiveDecodeTest, EveryChannelFollowsItsFormula) {
    calibrateThrottle(20, 240);
    decode(kPayload);
    const std::map<std::size_t, double> expected{{0, 2500},  // 9 * 256 + 196
                                                 {1, 80},    // 130 - 50
                                                 {2, 25},    // 75 - 50
                                                 {3, 13.8},  // 138 / 10
                                                 {4, 1.28},  // 120 * 5 / 255 + 0.2 = 2.5529 V, / 0.02 = 127.6 kPa
                                                 {5, 20},    // 100 * 44 / 220.001 = 19.9999
                                                 {6, 15},    // half of 5 V
                                                 {7, 55},    {8, 100}, {9, 200},    {10, 200},  // 40 * 4 * 1.25
                                                 {11, 17},                                      // 85 / 5
                                                 {15, 1042},                                    // 4 * 256 + 18
                                                 {20, 7},    {21, 33}, {22, 42330}, {23, 16}};
    for (const auto& [number, wanted] : expected) {
        EXPECT_THAT(value(number), DoubleEq(wanted)) << number;
    }
    for (const std::size_t number : {12U, 13U, 14U, 16U, 17U, 18U, 19U, 24U, 25U, 26U, 27U, 28U, 29U, 30U}) {
        EXPECT_EQ(value(number), 0) << number;
    }
}

TEST_F(LiveDecodeTest, OffsetsAreAddedBeforeTheGain) {
    calibrateThrottle(20, 240);
    scaleAll(2, 3);
    decode(kPayload);
    const std::map<std::size_t, double> expected{{0, 5006},  {1, 166}, {2, 56},  {3, 33.6},   {4, 8.56}, {5, 46},
                                                 {6, 36},    {7, 116}, {8, 206}, {9, 406},    {10, 406}, {11, 40},
                                                 {15, 2090}, {20, 20}, {21, 33}, {22, 84666}, {23, 16}};
    for (const auto& [number, wanted] : expected) {
        EXPECT_THAT(value(number), DoubleEq(wanted)) << number;
    }
}

TEST_F(LiveDecodeTest, RawValuesKnowNoOffsetAndNoGain) {
    scaleAll(2, 3);
    decode(kPayload);
    const std::map<std::size_t, double> expected{{0, 2500},  {1, 80}, {2, 25},  {3, 13.8},  {4, 120},  {5, 64},
                                                 {6, 128},   {7, 55}, {8, 100}, {9, 200},   {10, 200}, {11, 17},
                                                 {15, 1042}, {20, 7}, {21, 33}, {22, 42330}};
    for (const auto& [number, wanted] : expected) {
        EXPECT_THAT(raw(number), DoubleEq(wanted)) << number;
    }
}

TEST_F(LiveDecodeTest, WordsReachTheirLargest) {
    decode({255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255});
    EXPECT_EQ(value(0), 65535);
    EXPECT_EQ(value(22), 65535);
}

TEST_F(LiveDecodeTest, TemperaturesLose50FromVersion114On) {
    setVersion(1.13F);
    decode(kPayload);
    EXPECT_EQ(value(1), 130);
    EXPECT_EQ(value(2), 75);
    EXPECT_EQ(raw(1), 130);
    setVersion(1140 / 1000.0F);
    decode(kPayload);
    EXPECT_EQ(value(1), 80);
    EXPECT_EQ(value(2), 25);
    EXPECT_EQ(raw(1), 80);
}

TEST_F(LiveDecodeTest, BeforeTheIdentityTheNewerRuleHolds) {
    EXPECT_FLOAT_EQ(tables_.HwVersion, 3.1F);
    decodeWith(2, 0);
    EXPECT_EQ(value(1), -50);
}

TEST_F(LiveDecodeTest, PressureIsRoundedToWholeKilopascals) {
    const std::map<int, double> expected{{0, 0.1},     // 0.2 V
                                         {1, 0.11},    // 0.2196 V: 10.98 kPa
                                         {51, 0.6},    // 1.2 V
                                         {128, 1.35},  // 2.7098 V: 135.49
                                         {204, 2.1},   // 4.2 V
                                         {255, 2.6}};  // 5.2 V
    for (const auto& [byte, bar] : expected) {
        decodeWith(5, byte);
        EXPECT_THAT(value(4), DoubleEq(bar)) << byte;
        EXPECT_EQ(raw(4), byte);
    }
}

TEST_F(LiveDecodeTest, LambdaIsRoundedToFourDecimalsTiesToEven) {
    const std::map<int, double> expected{{0, 10},
                                         {1, 10.0391},     // 10.0390625
                                         {4, 10.1562},     // 10.15625: a tie, down to the even digit
                                         {12, 10.4688},    // 10.46875: a tie, up to the even digit
                                         {255, 19.9609}};  // 19.9609375
    for (const auto& [byte, lambda] : expected) {
        decodeWith(7, byte);
        EXPECT_THAT(value(6), DoubleEq(lambda)) << byte;
        EXPECT_EQ(raw(6), byte);
    }
}

TEST_F(LiveDecodeTest, TheOffsetOfLambdaIsRoundedByItself) {
    channel(6).offset = 1.23456;
    channel(6).gain = 10;
    decodeWith(7, 1);
    EXPECT_THAT(value(6), DoubleEq((10.0391 + 1.2346) * 10));
}

TEST_F(LiveDecodeTest, ThrottleIsAShareOfItsCalibratedRange) {
    calibrateThrottle(20, 240);
    EXPECT_EQ(throttle(130), std::pair(50, 50.0));
    EXPECT_EQ(throttle(240), std::pair(100, 100.0));
    EXPECT_EQ(throttle(20), std::pair(0, 0.0));
    EXPECT_EQ(throttle(21), std::pair(0, 0.0));  // 0.45
    EXPECT_EQ(throttle(22), std::pair(1, 1.0));  // 0.91
}

TEST_F(LiveDecodeTest, BelowItsRangeThrottleIs0AndAboveIt100) {
    calibrateThrottle(100, 200);
    EXPECT_EQ(throttle(0), std::pair(0, 0.0));
    EXPECT_EQ(throttle(99), std::pair(0, 0.0));
    EXPECT_EQ(throttle(255), std::pair(100, 100.0));  // 155
    EXPECT_EQ(raw(5), 255);
}

TEST_F(LiveDecodeTest, AnUncalibratedThrottleKeepsItsByteUpTo100) {
    EXPECT_EQ(throttle(1), std::pair(1, 1.0));  // 100000 is no byte
    EXPECT_EQ(throttle(0), std::pair(0, 0.0));
    EXPECT_EQ(throttle(100), std::pair(100, 100.0));
    EXPECT_EQ(throttle(101), std::pair(100, 100.0));
    EXPECT_EQ(throttle(255), std::pair(100, 100.0));
}

TEST_F(LiveDecodeTest, AnOverflowOfTheByteKeepsItAndTheCapAppliesToIt) {
    calibrateThrottle(10, 20);
    EXPECT_EQ(throttle(35), std::pair(100, 100.0));  // 249.98 is a byte still
    EXPECT_EQ(throttle(36), std::pair(36, 36.0));    // 259.97 is none
    EXPECT_EQ(throttle(200), std::pair(100, 100.0));
}

TEST_F(LiveDecodeTest, AThrottleCalibratedTheWrongWayRoundKeepsItsByte) {
    calibrateThrottle(200, 100);
    EXPECT_EQ(throttle(210), std::pair(100, 100.0));  // -10 is no byte, and 210 is capped
    EXPECT_EQ(throttle(50), std::pair(0, 0.0));
}

TEST_F(LiveDecodeTest, ThrottleHasOffsetAndGain) {
    calibrateThrottle(20, 240);
    channel(5).offset = -10;
    channel(5).gain = 0.5;
    EXPECT_EQ(throttle(130), std::pair(50, 20.0));
}

TEST_F(LiveDecodeTest, EachSelectorSetsItsMultiplexedChannelAndNoOther) {
    for (int selector = 0; selector < 16; ++selector) {
        for (auto& row : tables_.liveValues) {
            row.value = -1;
        }
        Bytes payload = with(17, selector * 16 + 0xF);
        payload[18] = 0xFE;
        decode(payload);
        const auto number = static_cast<std::size_t>(12 + selector);
        EXPECT_EQ(value(number), number == 23 ? 16 : 0xFFE) << selector;
        for (const std::size_t other : {12U, 13U, 14U, 15U, 16U, 17U, 18U, 19U, 24U, 25U, 26U, 27U}) {
            if (other != number) {
                EXPECT_EQ(value(other), -1) << selector << " sets " << other;
            }
        }
    }
}

TEST_F(LiveDecodeTest, TheUpperFourBitsAllSetSelectChannel27) {
    Bytes payload = with(17, 0xF0);
    payload[18] = 5;
    decode(payload);
    EXPECT_EQ(value(27), 5);
}

TEST_F(LiveDecodeTest, AMultiplexedChannelStaysUntilItsNextTurn) {
    decodeWith(17, 0x00);
    decodeWith(17, 0x15);
    EXPECT_EQ(value(12), 0x12);
    EXPECT_EQ(value(13), 0x512);
}

TEST_F(LiveDecodeTest, AMultiplexedChannelHasItsOwnScale) {
    channel(19).gain = 0.5;
    channel(19).offset = 2;
    Bytes payload = with(17, 0x70);
    payload[18] = 10;
    decode(payload);
    EXPECT_EQ(raw(19), 10);
    EXPECT_EQ(value(19), 6);
}

// The channels that a payload of so many bytes sets, and whether the displays are updated.
struct ShortPayload {
    std::size_t length;
    std::set<std::size_t> channels;
    bool shown;
};

std::set<std::size_t> plus(std::set<std::size_t> some, std::initializer_list<std::size_t> more) {
    some.insert(more);
    return some;
}

std::vector<ShortPayload> shortPayloads() {
    const std::set<std::size_t> upTo6{0, 1, 2, 3, 4};
    const std::set<std::size_t> upTo11 = plus(upTo6, {5, 6, 7, 20, 21});
    const std::set<std::size_t> fixed = plus(upTo11, {22});
    return {{0, {}, false},
            {1, {}, false},
            {2, {0}, false},
            {3, {0, 1}, false},
            {4, {0, 1, 2}, false},
            {5, {0, 1, 2, 3}, false},
            {6, upTo6, false},
            {7, plus(upTo6, {5}), false},
            {8, plus(upTo6, {5, 6}), false},
            {9, plus(upTo6, {5, 6, 7}), false},
            {10, plus(upTo6, {5, 6, 7, 20}), false},
            {11, upTo11, false},
            {12, upTo11, false},
            {13, plus(fixed, {23}), true},
            {14, plus(fixed, {8}), false},
            {15, plus(fixed, {8, 9, 23}), true},
            {16, plus(fixed, {8, 9, 10, 23}), true},
            {17, plus(fixed, {8, 9, 10, 11, 23}), true},
            {18, plus(fixed, {8, 9, 10, 11, 23}), true},
            {19, plus(fixed, {8, 9, 10, 11, 15, 23}), true}};
}

TEST_F(LiveDecodeTest, APayloadOfEachLengthSetsWhatItHas) {
    for (const auto& expected : shortPayloads()) {
        for (auto& row : tables_.liveValues) {
            row.value = -1;
        }
        trends_.samples.clear();
        const Bytes payload(kPayload.begin(), kPayload.begin() + static_cast<std::ptrdiff_t>(expected.length));
        if (expected.shown) {
            EXPECT_NO_THROW(decode(payload)) << expected.length;
        } else {
            EXPECT_THROW(decode(payload), platform::RuntimeError) << expected.length;
        }
        for (std::size_t number = 0; number < core::kChannelCount; ++number) {
            EXPECT_EQ(value(number) != -1, expected.channels.contains(number))
                << "channel " << number << " of " << expected.length << " bytes";
        }
        EXPECT_EQ(!trends_.samples.empty(), expected.shown) << expected.length;
    }
}

TEST_F(LiveDecodeTest, MoreThan19BytesCountAs19) {
    Bytes payload = kPayload;
    payload.resize(255, 0xFF);
    decode(payload);
    EXPECT_EQ(value(15), 1042);
}

TEST_F(LiveDecodeTest, TheDecodeEndsWithOneUpdateOfTheDisplays) {
    decode(kPayload);
    EXPECT_EQ(label(0), "2500");
    EXPECT_EQ(trends_.samples.size(), 10U);
}

}  // namespace
}  // namespace korvane::live
