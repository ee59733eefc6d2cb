// The keys of a hard engine must not move a byte for those who don't use them. The digests are of the virtual ECU
// before it had these keys; a change that is meant to change the engine for everybody has to renew them.
#include <gtest/gtest.h>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

// FNV-1a over whole numbers, low byte first.
class Digest {
public:
    void add(std::uint64_t number, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            value_ = (value_ ^ (number & 0xFFU)) * 0x100000001B3U;
            number >>= 8U;
        }
    }
    [[nodiscard]] std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325U;
};

constexpr Micros kPause = 75'000;

// When each byte came and what it was, up to the next poll.
void addAnswers(Wire& wire, Digest& digest) {
    for (auto due = wire.ecu.nextDue(); due && *due < wire.now + kPause; due = wire.ecu.nextDue()) {
        Bytes bytes;
        wire.ecu.take(*due, bytes);
        digest.add(static_cast<std::uint64_t>(*due), 8);
        for (const std::uint8_t byte : bytes) {
            digest.add(byte, 1);
        }
    }
}

void ask(Wire& wire, int turn) {
    wire.ecu.receive(turn % 8 == 7 ? 'S' : 'x', wire.now);
    if (turn == 1000) {
        for (const std::uint8_t byte : Bytes{'g', 84, 84, 120, 120, 0x98}) {
            wire.ecu.receive(byte, wire.now);
        }
    }
}

std::uint64_t digestOf(std::string_view list) {
    constexpr int kTurns = 5334;  // 400 s
    Wire wire(list);
    Digest digest;
    for (int turn = 0; turn < kTurns; ++turn) {
        ask(wire, turn);
        addAnswers(wire, digest);
        wire.now += kPause;
    }
    for (const std::uint8_t cell : wire.ecu.eeprom()) {
        digest.add(cell, 1);
    }
    return digest.value();
}

TEST(UnchangedStream, EveryByteComesAsItDidAndWhenItDid) {
    for (const auto& [list, digest] : {std::pair{"", 0x2013DEC289D87664U},
                                       {"seed=7", 0x741BFC0C5DCFA8B3U},
                                       {"type=14", 0x2C3D9B5FDAAE6486U},
                                       {"type=31", 0x266DA5F9BD8E85CEU},
                                       {"drive=pull,lose=0.01,flip=0.01,add=0.01", 0x2183AA4B0F2FABD6U},
                                       {"drive=cruise", 0x0773E5A6299F78EAU},
                                       {"drive=idle", 0x7E5D478835CDF722U},
                                       {"drive=6000:120:80,ignfault=0.1", 0x85209AD95143BB47U}}) {
        EXPECT_EQ(digestOf(list), digest) << list;
    }
}

}  // namespace
}  // namespace korvane::ecu::test
