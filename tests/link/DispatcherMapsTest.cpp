#include <algorithm>
#include <array>
#include <gmock/gmock.h>

#include "LinkBench.h"

namespace korvane::link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::array<int, 4> kAcknowledgements{'F', 246, 'A', 248};

class MapFrameTest : public LinkBench {
protected:
    // Whether cells 0 to 159 (or 160 to 319) count up from `first`.
    static bool holds(const core::MapImage& image, std::size_t offset, int first) {
        const Bytes expected = half(first);
        return std::equal(expected.begin(), expected.end(), image.begin() + static_cast<std::ptrdiff_t>(offset));
    }
    [[nodiscard]] static int sum(const core::MapImage& image, std::size_t offset) {
        int total = 0;
        for (std::size_t i = offset; i < offset + 160; ++i) {
            total += image.at(i);
        }
        return total;
    }
};

struct MapHalf {
    const char* name;
    int code;
    core::MapImage core::SharedTables::*in;
    core::MapImage core::SharedTables::*out;
    std::size_t offset;
    const char* drawn;
    const char* caption;
};

class MapHalfTest : public MapFrameTest, public testing::WithParamInterface<MapHalf> {
protected:
    // What else than the half's own cells is not zero, over all images.
    [[nodiscard]] int sumOfOthers() const {
        int total = 0;
        for (const auto image : {&core::SharedTables::FuelMapIn, &core::SharedTables::FuelMapOut,
                                 &core::SharedTables::IgnMapIn, &core::SharedTables::IgnMapOut}) {
            const bool own = image == GetParam().in || image == GetParam().out;
            total += sum(tables_.*image, 160 - GetParam().offset) + (own ? 0 : sum(tables_.*image, GetParam().offset));
        }
        return total;
    }
};

TEST_P(MapHalfTest, FillsItsCellsOfBothImagesAndTheWindow) {
    const auto& [name, code, in, out, offset, drawn, caption] = GetParam();
    openMapWindow();
    pump_.wait(1000);
    command(code, half(3));
    EXPECT_TRUE(holds(tables_.*in, offset, 3));
    EXPECT_TRUE(holds(tables_.*out, offset, 3));
    EXPECT_EQ(sumOfOthers(), 0);
    EXPECT_THAT(journal_, ElementsAre(drawn, caption));
}

using Tables = core::SharedTables;
INSTANTIATE_TEST_SUITE_P(Frames, MapHalfTest,
                         testing::Values(MapHalf{"FirstFuel", 'f', &Tables::FuelMapIn, &Tables::FuelMapOut, 0,
                                                 "map.populateFuel", "map.caption Received 50% Fuel map 12:00:01"},
                                         MapHalf{"SecondFuel", 245, &Tables::FuelMapIn, &Tables::FuelMapOut, 160,
                                                 "map.populateFuel", "map.caption Received 100% Fuel map 12:00:01"},
                                         MapHalf{"FirstIgnition", 'a', &Tables::IgnMapIn, &Tables::IgnMapOut, 0,
                                                 "map.populateIGN", "map.caption Received Ignition map 12:00:01"},
                                         MapHalf{"SecondIgnition", 247, &Tables::IgnMapIn, &Tables::IgnMapOut, 160,
                                                 "map.populateIGN", "map.caption Received Ignition map 12:00:01"}),
                         [](const auto& half) { return std::string(half.param.name); });

TEST_F(MapFrameTest, TheLargeFirmwareTypesAreAskedForTheirSecondHalf) {
    openMapWindow();
    for (const int type : {14, 15, 213}) {
        tables_.SWType = type;
        journal_.clear();
        command('a', half(0));
        EXPECT_EQ(std::count(journal_.begin(), journal_.end(), "send 247"), 1) << type;
        EXPECT_EQ(journal_.size(), 3U) << type;
        journal_.clear();
        command('f', half(0));
        EXPECT_THAT(journal_,
                    ElementsAre("map.populateFuel", "send 245", "map.caption Received 50% Fuel map 12:00:00"));
    }
}

TEST_F(MapFrameTest, NoOtherFirmwareTypeIsAsked) {
    openMapWindow();
    for (int type = 0; type < 256; ++type) {
        if (type != 14 && type != 15 && type != 213) {
            tables_.SWType = type;
            command('a', half(0));
            command('f', half(0));
        }
    }
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
    EXPECT_EQ(std::count(journal_.begin(), journal_.end(), "map.caption Received 50% Fuel map 12:00:00"), 253);
}

TEST_F(MapFrameTest, SecondHalvesAskForNothing) {
    openMapWindow();
    tables_.SWType = 14;
    command(247, half(0));
    command(245, half(0));
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
}

TEST_F(MapFrameTest, AnOpenIgnitionWindowTakesIgnitionMapsAndLeavesFuelToTheMapWindow) {
    openMapWindow();
    openIgnitionWindow();
    command('a', half(0));
    command(247, half(0));
    command('f', half(0));
    EXPECT_THAT(journal_, ElementsAre("ign.populateIGN", "ign.caption Received Ignition map 12:00:00",
                                      "ign.populateIGN", "ign.caption Received Ignition map 12:00:00",
                                      "map.populateFuel", "map.caption Received 50% Fuel map 12:00:00"));
}

TEST_F(MapFrameTest, WithoutAMapWindowTheImagesAreFilledAndNothingIsAsked) {
    tables_.SWType = 14;
    command('a', half(1));
    command(247, half(2));
    command('f', half(3));
    command(245, half(4));
    EXPECT_TRUE(holds(tables_.IgnMapIn, 0, 1));
    EXPECT_TRUE(holds(tables_.IgnMapOut, 160, 2));
    EXPECT_TRUE(holds(tables_.FuelMapIn, 0, 3));
    EXPECT_TRUE(holds(tables_.FuelMapOut, 160, 4));
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
    EXPECT_THAT(log_.lines, ElementsAre(kNoWindow, kNoWindow, kNoWindow, kNoWindow));
}

TEST_F(MapFrameTest, AShortHalfFillsAsFarAsItGoesAndUpdatesNoWindow) {
    openMapWindow();
    tables_.SWType = 14;
    command('f', Bytes(159, 9));
    command(245, Bytes(1, 8));
    command('a', Bytes(100, 7));
    command(247, Bytes(2, 6));
    EXPECT_EQ(tables_.FuelMapIn[158], 9);
    EXPECT_EQ(tables_.FuelMapOut[158], 9);
    EXPECT_EQ(tables_.FuelMapIn[159], 0);
    EXPECT_EQ(tables_.FuelMapIn[160], 8);
    EXPECT_EQ(tables_.FuelMapOut[161], 0);
    EXPECT_EQ(tables_.IgnMapOut[99], 7);
    EXPECT_EQ(tables_.IgnMapIn[100], 0);
    EXPECT_EQ(tables_.IgnMapIn[161], 6);
    EXPECT_EQ(tables_.IgnMapIn[162], 0);
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort, kTooShort, kTooShort, kTooShort));
}

TEST_F(MapFrameTest, MoreThan160BytesFillOneHalfOnly) {
    openMapWindow();
    command('f', Bytes(255, 9));
    EXPECT_EQ(tables_.FuelMapIn[159], 9);
    EXPECT_EQ(tables_.FuelMapIn[160], 0);
}

TEST_F(MapFrameTest, EachAcknowledgementSetsItsCaptionAndCounts) {
    openMapWindow();
    command('F', {1});
    EXPECT_EQ(tables_.FuelSendAcks, 1);
    command(246, {255});
    EXPECT_EQ(tables_.FuelSendAcks, 11);
    command('A', {2});
    EXPECT_EQ(tables_.IgnSendAcks, 1);
    command(248, {1});
    EXPECT_EQ(tables_.IgnSendAcks, 11);
    EXPECT_THAT(journal_,
                ElementsAre("map.caption Sent 50% of Inj map 12:00:00", "map.caption Sent 100% of Inj map 12:00:00",
                            "map.caption Sent 50% of Ign map 12:00:00", "map.caption Sent 100% of Ign map 12:00:00"));
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
}

TEST_F(MapFrameTest, WithoutAMapWindowOnlyTheFirstFuelHalfIsCounted) {
    for (const int code : kAcknowledgements) {
        command(code, {1});
    }
    EXPECT_EQ(tables_.FuelSendAcks, 1);
    EXPECT_EQ(tables_.IgnSendAcks, 0);
    EXPECT_THAT(log_.lines, ElementsAre(kNoWindow, kNoWindow, kNoWindow, kNoWindow));
}

TEST_F(MapFrameTest, AnOpenIgnitionWindowDoesNotTakeAcknowledgements) {
    openMapWindow();
    openIgnitionWindow();
    command('A', {1});
    EXPECT_THAT(journal_, ElementsAre("map.caption Sent 50% of Ign map 12:00:00"));
}

TEST_F(MapFrameTest, ARefusedHalfIsToldAndCountsNothing) {
    openMapWindow();
    for (const int code : kAcknowledgements) {
        command(code, {0});
        const auto messages = dialogs_.takeMessages();
        ASSERT_EQ(messages.size(), 1U);
        EXPECT_EQ(messages[0].title, "Virhe");
        EXPECT_EQ(messages[0].text, "Tiedon lähetys epäonnistui. Lähetä data uudelleen");
        EXPECT_EQ(messages[0].icon, platform::MessageIcon::Exclamation);
    }
    EXPECT_EQ(tables_.FuelSendAcks, 0);
    EXPECT_EQ(tables_.IgnSendAcks, 0);
    EXPECT_THAT(journal_, IsEmpty());
}

TEST_F(MapFrameTest, ARefusalIsToldWithoutAMapWindowToo) {
    command('A', {0});
    EXPECT_EQ(dialogs_.takeMessages().size(), 1U);
    EXPECT_THAT(log_.lines, IsEmpty());
}

}  // namespace
}  // namespace korvane::link
