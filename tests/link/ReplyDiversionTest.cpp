#include <gmock/gmock.h>

#include "LinkBench.h"
#include "link/ReadBack.h"
#include "link/ReplyDiversion.h"

namespace korvane::link {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

struct Taker : ReplyTaker {
    void replyTaken(std::uint8_t code, std::span<const std::uint8_t> payload) override {
        taken.emplace_back(code, payload.size());
    }
    std::vector<std::pair<int, std::size_t>> taken;
};

class ReplyDiversionTest : public LinkBench {
protected:
    ReplyDiversionTest() {
        openMapWindow();
        openSettings();
        tables_.FuelMapOut.fill(7);
    }

    Taker taker_;
};

TEST_F(ReplyDiversionTest, AReplyThatIsExpectedTellsWhatTheEcuHasAndActsNowhere) {
    panel_.diversion.expect({'f'}, 1, taker_);
    command('f', half(10));
    EXPECT_THAT(taker_.taken, ElementsAre(std::pair(int{'f'}, 160U)));
    EXPECT_THAT(tables_.FuelMapOut, Each(7));
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_EQ(panel_.ecuMaps.fuel.working(3), 13);
    command('f', half(20));
    EXPECT_EQ(tables_.FuelMapOut[3], 23);
}

TEST_F(ReplyDiversionTest, AnEepromByteFillsTheShadowAndNoBox) {
    panel_.diversion.expect({'T', 0x102}, 1, taker_);
    command('T', {9, 0x03, 0x01});  // another address
    journal_.clear();
    command('T', {5, 0x02, 0x01});
    EXPECT_THAT(journal_, IsEmpty());
    EXPECT_EQ(tables_.EEImage[0x102], 5);
    EXPECT_NE(tables_.EETime[0x102], "");
    EXPECT_EQ(std::get<std::uint8_t>(tables_.EEParams[0x102].value), 5);
    EXPECT_EQ(panel_.ecuEeprom.cells()[0x102], (EepromCell{5, Known::Told}));
    EXPECT_EQ(tables_.EEImage[0x103], 9);
}

TEST_F(ReplyDiversionTest, OneThatIsTooShortActsNowhereEither) {
    panel_.diversion.expect({'f'}, 1, taker_);
    command('f', {1, 2, 3});
    EXPECT_THAT(tables_.FuelMapOut, Each(7));
    EXPECT_THAT(taker_.taken, ElementsAre(std::pair(int{'f'}, 3U)));
    EXPECT_EQ(panel_.ecuMaps.fuel.working(0), std::nullopt);
}

TEST_F(ReplyDiversionTest, ALateOneActsNowhereUnlessTheSameWasAskedForInTheOrdinaryWay) {
    panel_.diversion.expect({'f'}, 1, taker_);
    panel_.diversion.giveUp(taker_);
    command('f', half(10));
    EXPECT_THAT(taker_.taken, IsEmpty());
    EXPECT_THAT(tables_.FuelMapOut, Each(7));

    panel_.diversion.expect({'f'}, 1, taker_);
    panel_.diversion.giveUp(taker_);
    panel_.diversion.askedOrdinarily({'a'});
    panel_.diversion.askedOrdinarily({'f'});
    command('f', half(10));
    EXPECT_EQ(tables_.FuelMapOut[0], 10);
}

TEST_F(ReplyDiversionTest, OneThatIsStillAwaitedComesBeforeAnOrdinaryOne) {
    panel_.diversion.expect({'m'}, 1, taker_);
    panel_.diversion.askedOrdinarily({'m'});
    command('m', {1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_THAT(journal_, IsEmpty());
    command('m', {1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_THAT(journal_, ElementsAre("map.LoadMisc false"));
}

TEST_F(ReplyDiversionTest, TheFirstHalfOfALargeMapAsksForNoSecondOne) {
    tables_.SWType = 14;
    panel_.diversion.expect({'a'}, 1, taker_);
    command('a', half(10));
    EXPECT_THAT(journal_, IsEmpty());
}

class ReadBackTest : public ReplyDiversionTest {
protected:
    void answerAt(int milliseconds, int code, const Bytes& payload) {
        virtual_.at(milliseconds, [this, code, payload] { command(code, payload); });
    }

    ReadBack line_{pump_, panel_};
    ReadBack::Bytes bytes_;
};

TEST_F(ReadBackTest, WaitsForTheAnswer) {
    answerAt(500, 'f', half(10));
    EXPECT_EQ(line_.map(kFuelMap, 160, bytes_), ReadEnd::Answered);
    EXPECT_THAT(journal_, ElementsAre("send 102"));
    EXPECT_EQ(bytes_.at(159), 169);
    EXPECT_LT(pump_.milliseconds(), 510);
}

TEST_F(ReadBackTest, AsksAgainAfterTwoSecondsOfSilenceAndOnceOnly) {
    EXPECT_EQ(line_.map(kFuelMap, 320, bytes_), ReadEnd::Silent);
    EXPECT_THAT(journal_, ElementsAre("send 102", "send 102"));
    EXPECT_EQ(pump_.milliseconds(), 4000);
}

TEST_F(ReadBackTest, AsksAgainForAnAnswerThatIsTooShort) {
    answerAt(10, 'm', {1, 2});
    answerAt(20, 'm', {1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(line_.miscBlock(bytes_), ReadEnd::Answered);
    EXPECT_EQ(bytes_.at(8), 9);
}

TEST_F(ReadBackTest, ATableMayComeInTwoAnswersThatLackCells) {
    const auto answer = [this](int from, int missing) {
        for (int cell = 0; cell < 160; ++cell) {
            if (cell != missing) {
                answerAt(from + cell, 'p', {static_cast<std::uint8_t>(cell), static_cast<std::uint8_t>(cell + 1)});
            }
        }
    };
    answer(100, 80);
    answer(2500, 90);
    EXPECT_EQ(line_.pwmTable(bytes_), ReadEnd::Answered);
    EXPECT_EQ(bytes_.at(80), 81);
    EXPECT_EQ(bytes_.at(90), 91);
}

TEST_F(ReadBackTest, ACellIsAskedForThreeTimesHalfASecondEach) {
    core::EepromAccess eeprom(panel_.MSComm1, pump_, tables_);
    std::uint8_t byte = 1;
    EXPECT_EQ(line_.cell(eeprom, 600, byte), ReadEnd::Silent);
    EXPECT_EQ(pump_.milliseconds(), 1500);
    EXPECT_EQ(byte, 1);
    answerAt(1600, 'T', {77, 0x58, 0x02});
    EXPECT_EQ(line_.cell(eeprom, 600, byte), ReadEnd::Answered);
    EXPECT_EQ(byte, 77);
}

TEST_F(ReadBackTest, AClosedPortARestartAndAnUnwantedReadEndIt) {
    virtual_.at(300, [this] { line_.unwanted = [] { return true; }; });
    EXPECT_EQ(line_.miscBlock(bytes_), ReadEnd::Stopped);
    EXPECT_LE(pump_.milliseconds(), 305);
    line_.unwanted = nullptr;
    answerAt(400, 170, {0});
    EXPECT_EQ(line_.miscBlock(bytes_), ReadEnd::Restarted);
    EXPECT_EQ(line_.restart(), ReadEnd::Answered);
    virtual_.at(500, [this] {
        panel_.MSComm1.setPortOpen(false);
        panel_.MSComm1.setPortOpen(true);
    });
    EXPECT_EQ(line_.miscBlock(bytes_), ReadEnd::Closed);
    EXPECT_LE(pump_.milliseconds(), 505);
}

TEST_F(ReadBackTest, ARestartThatDoesNotComeIsWaitedForFiveSeconds) {
    EXPECT_EQ(line_.restart(), ReadEnd::Silent);
    EXPECT_EQ(pump_.milliseconds(), 5000);
}

TEST_F(ReadBackTest, AQuietLineLeavesThePollAsItWas) {
    for (const bool polls : {true, false}) {
        panel_.TimerRequestData.Enabled = polls;
        {
            const QuietLine quiet(panel_);
            EXPECT_FALSE(panel_.TimerRequestData.Enabled);
            EXPECT_TRUE(panel_.linkState.isBusy());
        }
        EXPECT_EQ(panel_.TimerRequestData.Enabled.get(), polls);
        EXPECT_FALSE(panel_.linkState.isBusy());
    }
}

class StoreTest : public testing::Test {
protected:
    void send(std::uint8_t byte) {
        for (std::size_t cell = 0; cell < 160; ++cell) {
            map_.sending(cell, byte);
        }
    }
    void read(std::uint8_t byte) { map_.read(0, Bytes(160, byte)); }

    EcuMap map_;
};

TEST_F(StoreTest, IsAcknowledgedWhenTheOrderWentOutAndTheHalfIsAcknowledgedInEitherOrder) {
    EXPECT_EQ(map_.store(), Store::Nothing);
    send(9);
    EXPECT_EQ(map_.store(), Store::NotOrdered);
    map_.stored();
    EXPECT_EQ(map_.store(), Store::Ordered);
    map_.acknowledged(0);
    EXPECT_EQ(map_.store(), Store::Acknowledged);

    send(10);
    map_.acknowledged(0);
    EXPECT_EQ(map_.store(), Store::NotOrdered);
    map_.stored();
    EXPECT_EQ(map_.store(), Store::Acknowledged);
    map_.changed(3, 11);
    EXPECT_EQ(map_.store(), Store::NotOrdered);
}

TEST_F(StoreTest, ARestartAndAReadTellWhetherItWasKept) {
    for (const bool kept : {true, false}) {
        read(5);
        send(9);
        map_.acknowledged(0);
        map_.stored();
        read(9);  // before the restart it says nothing
        EXPECT_EQ(map_.store(), Store::Acknowledged);
        map_.restarted();
        EXPECT_EQ(map_.store(), Store::Acknowledged);
        map_.read(0, Bytes(100, 9));
        EXPECT_EQ(map_.store(), Store::Acknowledged);
        map_.read(100, Bytes(60, kept ? 9 : 5));
        EXPECT_EQ(map_.store(), kept ? Store::Seen : Store::NotKept);
    }
}

TEST_F(StoreTest, WhatWasNotOrderedIsLostWithARestart) {
    send(9);
    map_.acknowledged(0);
    map_.restarted();
    EXPECT_EQ(map_.store(), Store::Lost);
    map_.forget();
    EXPECT_EQ(map_.store(), Store::Nothing);
}

TEST_F(StoreTest, OfAMapThatWasOnlyReadItIsNotKnown) {
    read(5);
    EXPECT_EQ(map_.store(), Store::Unknown);
    map_.restarted();
    EXPECT_EQ(map_.store(), Store::AsStored);
    read(5);
    EXPECT_EQ(map_.store(), Store::AsStored);
    map_.reconnected();
    EXPECT_EQ(map_.store(), Store::Unknown);
    map_.changed(3, 6);
    EXPECT_EQ(map_.store(), Store::NotOrdered);
}

TEST_F(StoreTest, AfterARestartTheEcuRunsOnWhatIsStoredThoughNothingWasRead) {
    map_.restarted();
    EXPECT_EQ(map_.store(), Store::AsStored);
}

TEST_F(StoreTest, OneCellThatWasSentAloneIsLostWithARestartThoughTheMapBeforeItWasStored) {
    read(5);
    send(9);
    map_.acknowledged(0);
    map_.stored();
    map_.changed(3, 10);
    map_.restarted();
    EXPECT_EQ(map_.store(), Store::Lost);
    EXPECT_EQ(map_.working(3), 9);
}

// A new connection is no restart: only a read tells which byte the ECU runs on.
TEST_F(StoreTest, OverANewConnectionAReadTellsWhetherWhatWasNotStoredIsStillThere) {
    for (const bool still : {true, false}) {
        EcuMap map;
        map.read(0, Bytes(160, 5));
        map.changed(3, 9);
        map.reconnected();
        EXPECT_EQ(map.store(), Store::InDoubt);
        EXPECT_EQ(map.working(3), 5);
        map.read(0, Bytes(3, 5));
        EXPECT_EQ(map.store(), Store::InDoubt);
        map.read(3, Bytes(1, still ? 9 : 5));
        EXPECT_EQ(map.store(), still ? Store::NotOrdered : Store::Lost);
        EXPECT_EQ(map.working(3), still ? 9 : 5);
        EXPECT_EQ(map.kept(3), 5);
    }
}

TEST_F(StoreTest, OverSeveralConnectionsItStaysInDoubt) {
    read(5);
    map_.changed(3, 9);
    map_.reconnected();
    map_.reconnected();
    EXPECT_EQ(map_.store(), Store::InDoubt);
    read(9);
    EXPECT_EQ(map_.store(), Store::NotOrdered);
    EXPECT_EQ(map_.kept(3), 5);
}

TEST_F(StoreTest, ARestartEndsTheDoubt) {
    read(5);
    map_.changed(3, 9);
    map_.reconnected();
    map_.restarted();
    EXPECT_EQ(map_.store(), Store::Lost);
    read(9);  // stored by somebody else
    EXPECT_EQ(map_.store(), Store::Lost);
    EXPECT_EQ(map_.kept(3), 9);
}

TEST_F(StoreTest, ASendEndsTheDoubt) {
    read(5);
    map_.changed(3, 9);
    map_.reconnected();
    send(9);
    map_.acknowledged(0);
    map_.stored();
    EXPECT_EQ(map_.store(), Store::Acknowledged);
    read(9);
    EXPECT_EQ(map_.store(), Store::Acknowledged);
    EXPECT_EQ(map_.kept(3), 9);
}

TEST_F(StoreTest, OfADoubtfulByteTheOrderToStoreStoresItToo) {
    read(5);
    map_.changed(3, 9);
    map_.reconnected();
    map_.changed(4, 9);
    map_.stored();
    read(9);
    EXPECT_EQ(map_.kept(3), 9);
}

TEST_F(StoreTest, ANewConnectionIsNoRestartThatShowsWhatWasStored) {
    send(9);
    map_.acknowledged(0);
    map_.stored();
    map_.reconnected();
    read(9);
    EXPECT_EQ(map_.store(), Store::Acknowledged);
}

TEST_F(StoreTest, WhatTheEepromGotByOtherWaysIsNothingThatWasSent) {
    read(5);
    map_.keeps(3, 9);
    map_.reconnected();
    EXPECT_EQ(map_.store(), Store::Unknown);
    read(5);
    EXPECT_EQ(map_.store(), Store::Unknown);
    EXPECT_EQ(map_.kept(3), 9);
    map_.restarted();
    EXPECT_EQ(map_.store(), Store::AsStored);
    EXPECT_EQ(map_.working(3), 9);
}

TEST_F(StoreTest, CellsThatTheEepromDoesNotKeepSayNothing) {
    EcuMap pwm{64};
    pwm.sending(61, 9);
    pwm.sending(64, 9);
    pwm.stored();
    pwm.acknowledged(0);
    pwm.restarted();
    pwm.read(61, Bytes{1});
    EXPECT_EQ(pwm.store(), Store::Acknowledged);
    pwm.read(64, Bytes{9});
    EXPECT_EQ(pwm.store(), Store::Seen);
}

}  // namespace
}  // namespace korvane::link
