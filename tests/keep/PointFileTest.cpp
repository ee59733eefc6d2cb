#include <gtest/gtest.h>
#include <limits>

#include "keep/PointSamples.h"
#include "keep/point/Checksum.h"
#include "keep/point/PointFile.h"

namespace korvane::keep {
namespace {

using namespace std::string_literals;

// A file with other content and the checksum that belongs to it.
std::string closed(std::string bytes) {
    bytes.resize(bytes.size() - 8);
    const auto sum = checksumOf(bytes);
    for (unsigned i = 0; i < 8; ++i) {
        bytes += static_cast<char>(sum >> (8 * i));
    }
    return bytes;
}

TEST(PointFileTest, GivesBackWhatWasWritten) {
    for (const auto& point : {fullPoint(), partPoint(), Snapshot()}) {
        const auto read = decodePoint(encodePoint(point));
        EXPECT_EQ(read.damage, "");
        ASSERT_TRUE(read.content);
        EXPECT_EQ(*read.content, point);
    }
}

TEST(PointFileTest, GivesTheHeadAlone) {
    const auto read = decodeHead(encodePoint(fullPoint()));
    ASSERT_TRUE(read.content);
    EXPECT_EQ(*read.content, (PointHead{{2026, 5, 6, 17, 8, 59}, "before storing: fuel map", {11, 3.386F, 0x1234}}));
}

TEST(PointFileTest, ACutPointOfALaterVersionIsToldAsSuch) {
    auto later = encodePoint(fullPoint());
    later[8] = 2;
    for (std::size_t size = 0; size < later.size(); ++size) {
        EXPECT_EQ(decodeHead(later.substr(0, size)).damage,
                  size < 12 ? "cut off" : "of a later version of the program, and cut off")
            << size;
    }
}

TEST(PointFileTest, TheFirstBytesNameTheEcu) {
    const auto bytes = encodePoint(fullPoint());
    EXPECT_EQ(ecuAtFront(bytes.substr(0, 35)), fullPoint().ecu);
    EXPECT_EQ(ecuAtFront(bytes.substr(0, 34)), std::nullopt);
    EXPECT_EQ(ecuAtFront("x" + bytes), std::nullopt);
    auto later = bytes;
    later[8] = 2;
    EXPECT_EQ(ecuAtFront(later), std::nullopt);
}

// 16 bytes before the content and 8 behind it; time 7, ECU 12, reason 1 + 7, misc 10; each map 40 + 320, twice, and
// 320; EEPROM 3001 + 751.
TEST(PointFileTest, HasTheSizeOfItsParts) {
    EXPECT_EQ(encodePoint(partPoint()).size(), 16U + 7 + 12 + 8 + 10 + 3 * 1040 + 3752 + 8);
}

TEST(PointFileTest, FitsIntoTwoBlocksWithTheLongestReason) {
    auto point = fullPoint();
    point.reason = std::string(1000, 'x');
    const auto bytes = encodePoint(point);
    EXPECT_LE(bytes.size(), kLargestPoint);
    EXPECT_EQ(decodeHead(bytes).content->reason, std::string(255, 'x'));
}

TEST(PointFileTest, CutsAReasonBetweenCharacters) {
    auto point = partPoint();
    point.reason.clear();
    for (int i = 0; i < 200; ++i) {
        point.reason += "\xC3\xA4";
    }
    EXPECT_EQ(decodeHead(encodePoint(point)).content->reason, point.reason.substr(0, 254));
}

TEST(PointFileTest, WritesTheBytesOfTheFormat) {
    const auto bytes = encodePoint(partPoint());
    EXPECT_EQ(bytes.substr(0, 16), "KVPOINT\x1A\x01\0\0\0\x15\x1B\0\0"s);  // 6933 bytes
    EXPECT_EQ(bytes.substr(16, 7), "\xE9\x07\x0C\x1F\0\0\x01"s);           // 2025-12-31 0:00:01
    EXPECT_EQ(bytes.substr(23, 12), "\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF"s);  // type, hardware, features
    EXPECT_EQ(bytes.substr(35, 8),
              "\x07"
              "by hand");
    EXPECT_EQ(bytes.substr(43, 10), std::string(10, '\0'));            // no misc block
    EXPECT_EQ(bytes.substr(53, 41), "\x01"s + std::string(40, '\0'));  // working cell 0 is 0
    EXPECT_EQ(bytes[53 + 360 + 19], '\x80');                           // kept cell 159 is known
    EXPECT_EQ(bytes[53 + 360 + 40 + 159], '\xFF');
    EXPECT_EQ(bytes[53 + 2 * 1040 + 720 + 64], '\x03');  // PWM on the desk
    EXPECT_EQ(bytes[53 + 3120 + 3000], '\xC8');
    EXPECT_EQ(bytes[53 + 3120 + 3001], '\x01');        // address 0: told
    EXPECT_EQ(bytes[53 + 3120 + 3001 + 750], '\x02');  // address 3000: sent
}

// Worked out by hand: one word of zeros leaves start times factor, and its high half.
TEST(PointFileTest, HasTheChecksumOfItsRule) {
    EXPECT_EQ(checksumOf(""), 0xCBF29CE484222325U);
    EXPECT_EQ(checksumOf("\0"s), checksumOf(std::string(8, '\0')));
    const std::uint64_t product = 0xCBF29CE484222325U * 0x9E3779B97F4A7C15U;
    EXPECT_EQ(checksumOf(std::string(8, '\0')), product ^ (product >> 32U));
    EXPECT_NE(checksumOf("12345678"), checksumOf("12345687"));
}

TEST(PointFileTest, FindsAChangedBitInEveryByte) {
    const auto whole = encodePoint(fullPoint());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            auto bytes = whole;
            bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << bit));
            const auto head = decodeHead(bytes);
            ASSERT_FALSE(head.content) << at;
            ASSERT_NE(head.damage, "") << at;
        }
    }
}

TEST(PointFileTest, FindsEveryOtherValueOfAByteOfTheHead) {
    const auto whole = encodePoint(partPoint());
    for (std::size_t at = 0; at < 53; ++at) {
        for (int other = 1; other < 256; ++other) {
            auto bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] + other);
            ASSERT_FALSE(decodePoint(bytes).content) << at;
        }
    }
}

TEST(PointFileTest, FindsACutAtEveryLength) {
    const auto whole = encodePoint(fullPoint());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto read = decodePoint(std::string_view(whole).substr(0, size));
        ASSERT_FALSE(read.content) << size;
        ASSERT_EQ(read.damage, "cut off") << size;
    }
}

TEST(PointFileTest, SaysWhatIsWrong) {
    const auto whole = encodePoint(partPoint());
    EXPECT_EQ(decodeHead("").damage, "cut off");
    EXPECT_EQ(decodeHead("Injection\r\n").damage, "no restore point");
    EXPECT_EQ(decodeHead(std::string(5000, 'x')).damage, "no restore point");
    EXPECT_EQ(decodeHead(whole + "x").damage, "damaged: longer than it was written");
    EXPECT_EQ(decodeHead(whole + std::string(3000, '\0')).damage, "damaged: longer than it was written");
    auto bytes = whole;
    bytes[2000] = static_cast<char>(bytes[2000] + 1);
    EXPECT_EQ(decodeHead(bytes).damage, "damaged");
}

TEST(PointFileTest, KnowsALaterVersion) {
    auto bytes = encodePoint(partPoint());
    bytes[8] = 2;
    EXPECT_EQ(decodeHead(bytes).damage, "damaged");  // the version alone was changed
    EXPECT_EQ(decodeHead(closed(bytes)).damage, "of a later version of the program");
    bytes.resize(20000);
    EXPECT_EQ(decodeHead(bytes).damage, "of a later version of the program");
}

TEST(PointFileTest, TakesNoValuesThatNobodyWrites) {
    constexpr auto kStrange = "holds values that no restore point has";
    const auto with = [](std::size_t at, char byte) {
        auto bytes = encodePoint(partPoint());
        bytes[at] = byte;
        return decodePoint(closed(bytes)).damage;
    };
    EXPECT_EQ(with(18, 2), kStrange);                      // February 31st
    EXPECT_EQ(with(18, 0), kStrange);                      // no month
    EXPECT_EQ(with(20, 24), kStrange);                     // no hour
    EXPECT_EQ(with(35, 8), kStrange);                      // a reason that is longer than its text
    EXPECT_EQ(with(53 + 3120 + 3001 + 100, 3), kStrange);  // a cell that is told and sent at once
    auto bytes = encodePoint(partPoint());
    bytes[29] = '\x80';
    bytes[30] = '\x7F';
    EXPECT_EQ(decodePoint(closed(bytes)).damage, kStrange);  // hardware version infinity
}

TEST(PointFileTest, ShowsAReasonOnOneLine) {
    auto point = partPoint();
    point.reason = "a\nb\xFF";
    EXPECT_EQ(decodeHead(encodePoint(point)).content->reason, "a?b?");
}

}  // namespace
}  // namespace korvane::keep
