#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "ecu/CommandParser.h"

namespace korvane::ecu {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

// Notes what the parser hands on: the command's code and body in one row, an unknown byte after a 0.
class Parser : public testing::Test, protected CommandHandler {
protected:
    void command(std::uint8_t code, std::span<const std::uint8_t> body, Micros at) override {
        Bytes row = {code};
        row.insert(row.end(), body.begin(), body.end());
        heard_.push_back(row);
        last_ = at;
    }
    void unknown(std::uint8_t code, Micros at) override {
        heard_.push_back({0, code});
        last_ = at;
    }

    void feed(const Bytes& bytes, Micros gap = 100) {
        for (const std::uint8_t byte : bytes) {
            now_ += gap;
            parser_.feed(byte, now_, *this);
        }
    }
    void silence(Micros time) {
        now_ += time;
        parser_.settle(now_, *this);
    }

    CommandParser parser_;
    std::vector<Bytes> heard_;
    Micros now_ = 0;
    Micros last_ = 0;
};

TEST_F(Parser, SingleBytesAreCommandsAtOnce) {
    feed({'x', 'a', 247, 'f', 245, 'm', 'b', 'c', 'd', 'e'});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'x'}, Bytes{'a'}, Bytes{247}, Bytes{'f'}, Bytes{245}, Bytes{'m'}, Bytes{'b'},
                                    Bytes{'c'}, Bytes{'d'}, Bytes{'e'}));
}

TEST_F(Parser, PairsNeedTheirComplement) {
    feed({'X', 0xA7, '(', 0xD7, ')', 0xD6});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'X'}, Bytes{'('}, Bytes{')'}));
    feed({'X', 0xA6, 'x'});
    EXPECT_EQ(heard_.size(), 4U);
    EXPECT_EQ(heard_.back(), Bytes{'x'}) << "the wrong complement is gone with its command";
}

TEST_F(Parser, CountedFormsNeedLengthAndComplement) {
    feed({'y', 0, 0x86, 'S', 0, 0xAC, '!', 1, 25, 0xDE});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'y'}, Bytes{'S'}, Bytes({'!', 25})));
    heard_.clear();
    feed({'y', 0, 0x87, 'y', 1, '!', 0});
    EXPECT_THAT(heard_, IsEmpty());
    feed({'x'});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'x'}));
}

TEST_F(Parser, FixedBodiesHaveTheirLength) {
    feed({'W', 1, 2, 3, 4, 0xA8, 'R', 5, 6, 0xAD, 'U', 7, 8, 0xAA});
    feed({'i', 1, 1, 2, 2, 0x96, 'g', 3, 3, 4, 4, 0x98, 'P', 5, 5, 6, 6, 0xAF});
    feed({'M', 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xB2});
    EXPECT_THAT(heard_, ElementsAre(Bytes({'W', 1, 2, 3, 4}), Bytes({'R', 5, 6}), Bytes({'U', 7, 8}),
                                    Bytes({'i', 1, 1, 2, 2}), Bytes({'g', 3, 3, 4, 4}), Bytes({'P', 5, 5, 6, 6}),
                                    Bytes({'M', 1, 2, 3, 4, 5, 6, 7, 8, 9})));
}

TEST_F(Parser, ABodyMayHoldBytesThatLookLikeCommands) {
    feed({'W', 'x', 'x', 'x', 'x', 0xA8});
    EXPECT_THAT(heard_, ElementsAre(Bytes({'W', 'x', 'x', 'x', 'x'})));
}

TEST_F(Parser, MapHalvesHave160Bytes) {
    for (const auto& [code, end] : {std::pair<int, int>{'A', 0xBE}, {248, 0x07}, {'F', 0xB9}, {246, 0x09}}) {
        heard_.clear();
        feed({static_cast<std::uint8_t>(code)});
        feed(Bytes(160, 'x'), 1100);
        EXPECT_THAT(heard_, IsEmpty());
        feed({static_cast<std::uint8_t>(end)});
        ASSERT_EQ(heard_.size(), 1U);
        EXPECT_EQ(heard_[0].size(), 161U);
        EXPECT_EQ(heard_[0][0], code);
    }
}

TEST_F(Parser, AWrongComplementDropsTheFrameAndNothingElse) {
    feed({'W', 1, 0, 9, 9, 0xA9, 'x'});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'x'}));
}

TEST_F(Parser, AnUnfinishedFrameIsGivenUpAfterAWhile) {
    feed({'F', 1, 2, 3});
    silence(200'001);
    feed({'x'});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'x'}));
}

TEST_F(Parser, ASlowFrameIsNotGivenUp) {
    feed({'W', 1, 0, 9, 9, 0xA8}, 150'000);
    EXPECT_THAT(heard_, ElementsAre(Bytes({'W', 1, 0, 9, 9})));
}

TEST_F(Parser, PwmRequestsComeInTwoForms) {
    feed({'p', 0, 0x8F});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'p'}));
    feed({'p'});
    EXPECT_EQ(heard_.size(), 1U);
    EXPECT_EQ(parser_.shortFormEnd(), now_ + 50'000);
    const Micros sent = now_;
    silence(60'000);
    EXPECT_THAT(heard_, ElementsAre(Bytes{'p'}, Bytes{'p'}));
    EXPECT_EQ(last_, sent + 50'000) << "it is over when the silence is, not when somebody looks";
    EXPECT_EQ(parser_.shortFormEnd(), std::nullopt);
}

TEST_F(Parser, AnotherCommandEndsTheShortForm) {
    feed({'p', 'x', 'o', 'p', 'y', 0, 0x86});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'p'}, Bytes{'x'}, Bytes{'o'}, Bytes{'p'}, Bytes{'y'}));
}

TEST_F(Parser, AWrongComplementDropsTheLongFormToo) {
    feed({'p', 0, 0x00});
    silence(1'000'000);
    EXPECT_THAT(heard_, IsEmpty());
}

TEST_F(Parser, EndOfPwmComesInTwoForms) {
    feed({'o', 0x90, 'x'});
    EXPECT_THAT(heard_, ElementsAre(Bytes{'o'}, Bytes{'x'}));
    feed({'o'});
    silence(50'000);
    EXPECT_EQ(heard_.back(), Bytes{'o'});
}

TEST_F(Parser, WhatBeginsNoCommandIsUnknown) {
    feed({0, 'l', 170, 'T', 255});
    EXPECT_THAT(heard_, ElementsAre(Bytes({0, 0}), Bytes({0, 'l'}), Bytes({0, 170}), Bytes({0, 'T'}), Bytes({0, 255})));
}

}  // namespace
}  // namespace korvane::ecu
