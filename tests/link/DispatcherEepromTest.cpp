#include <gmock/gmock.h>

#include "LinkBench.h"

namespace korvane::link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EepromReplyTest : public LinkBench {
protected:
    [[nodiscard]] core::ParameterValue value(std::size_t address) const { return tables_.EEParams.at(address).value; }
};

TEST_F(EepromReplyTest, AByteIsStoredAtItsAddressWithTheTime) {
    pump_.wait(5000);
    command('T', {200, 0x01, 0x02});
    EXPECT_EQ(tables_.EEImage[0x201], 200);
    EXPECT_EQ(tables_.EETime[0x201], "12:00:05");
    EXPECT_EQ(value(0x201), core::ParameterValue(std::uint8_t{200}));
    EXPECT_EQ(tables_.EETime[0x202], "");
    EXPECT_EQ(tables_.EETime[0x200], "");
}

TEST_F(EepromReplyTest, AWordIsStoredLowByteFirstWithTheTimeAtBothAddresses) {
    pump_.wait(61000);
    command('U', {0x34, 0x12, 0xFF, 0x01});
    EXPECT_EQ(tables_.EEImage[511], 0x34);
    EXPECT_EQ(tables_.EEImage[512], 0x12);
    EXPECT_EQ(tables_.EETime[511], "12:01:01");
    EXPECT_EQ(tables_.EETime[512], "12:01:01");
    EXPECT_EQ(value(511), core::ParameterValue(std::int32_t{0x1234}));
    EXPECT_EQ(value(512), core::ParameterValue());
}

TEST_F(EepromReplyTest, AWordOfAllOnesIsNotNegative) {
    command('U', {255, 255, 10, 0});
    EXPECT_EQ(value(10), core::ParameterValue(std::int32_t{65535}));
}

TEST_F(EepromReplyTest, AByteReplyOfOneOrTwoBytesStoresAtAddress0) {
    command('T', {77});
    EXPECT_EQ(tables_.EEImage[0], 77);
    EXPECT_EQ(value(0), core::ParameterValue(std::uint8_t{77}));
    command('T', {78, 5});
    EXPECT_EQ(tables_.EEImage[0], 78);
    EXPECT_EQ(tables_.EEImage[5], 0);
}

TEST_F(EepromReplyTest, AnEmptyByteReplyStoresZeroAtAddress0) {
    tables_.EEImage[0] = 9;
    command('T', {0});
    EXPECT_EQ(tables_.EEImage[0], 0);
}

TEST_F(EepromReplyTest, AByteIsShownBySettingsAndIgnitionWindowButNeverByTheMapWindow) {
    openMapWindow();
    openIgnitionWindow();
    openSettings();
    command('T', {200, 14, 0});
    EXPECT_THAT(journal_,
                ElementsAre("misc.UpdateReadEE 200 14 byte", "ign.UpdateReadEE 200 14 byte", "misc.TextArvo 200"));
}

TEST_F(EepromReplyTest, AWordIsShownByAllThreeInOrder) {
    openMapWindow();
    openIgnitionWindow();
    openSettings();
    command('U', {1, 2, 14, 0});
    EXPECT_THAT(journal_, ElementsAre("misc.UpdateReadEE 513 14 word", "ign.UpdateReadEE 513 14 word",
                                      "map.UpdateReadEE 513 14 word", "misc.TextArvo 513"));
}

TEST_F(EepromReplyTest, WithOnlyTheMapWindowOpenItGetsWordsAlone) {
    openMapWindow();
    command('T', {1, 14, 0});
    EXPECT_THAT(journal_, IsEmpty());
    command('U', {1, 0, 14, 0});
    EXPECT_THAT(journal_, ElementsAre("map.UpdateReadEE 1 14 word"));
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(EepromReplyTest, WithNoMapWindowTheTextBoxOfSettingsIsSetAllTheSame) {
    openSettings();
    command('U', {1, 1, 0, 0});
    EXPECT_THAT(journal_, ElementsAre("misc.UpdateReadEE 257 0 word", "misc.TextArvo 257"));
}

TEST_F(EepromReplyTest, TheLastAddressTakesAByte) {
    command('T', {7, 0xB8, 0x0B});
    EXPECT_EQ(tables_.EEImage[3000], 7);
    EXPECT_EQ(value(3000), core::ParameterValue(std::uint8_t{7}));
}

TEST_F(EepromReplyTest, AnAddressBehindTheLastOneFailsAndShowsNothing) {
    openSettings();
    command('T', {7, 0xB9, 0x0B});
    command('T', {7, 0xFF, 0xFF});
    command('U', {7, 7, 0xB9, 0x0B});
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort, kTooShort, kTooShort));
}

// Row 3000 holds the firmware type, 0 before any identity.
TEST_F(EepromReplyTest, AWordAtTheLastAddressStoresItsLowByteAndFailsAtTheNextIndex) {
    openSettings();
    command('U', {7, 8, 0xB8, 0x0B});
    EXPECT_EQ(tables_.EEImage[3000], 7);
    EXPECT_EQ(value(3000), core::ParameterValue(std::int32_t{0}));
    EXPECT_EQ(tables_.EETime[3000], "");
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort));
}

TEST_F(EepromReplyTest, AShortWordReplyStoresNothing) {
    openSettings();
    tables_.EEImage[0] = 9;
    for (const Bytes& payload : {Bytes{1}, Bytes{1, 2}, Bytes{1, 2, 0}}) {
        command('U', payload);
    }
    EXPECT_EQ(tables_.EEImage[0], 9);
    EXPECT_EQ(value(0), core::ParameterValue());
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_THAT(log_.lines, ElementsAre(kTooShort, kTooShort, kTooShort));
}

TEST_F(EepromReplyTest, RepliesSendNothing) {
    command('T', {1, 2, 0});
    command('U', {1, 2, 3, 0});
    EXPECT_EQ(panel_.MSComm1.OutBufferCount(), 0);
}

}  // namespace
}  // namespace korvane::link
