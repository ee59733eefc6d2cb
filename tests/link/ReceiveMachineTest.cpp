#include <algorithm>
#include <gmock/gmock.h>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "link/ReceiveMachine.h"

namespace korvane::link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Bytes = std::vector<std::uint8_t>;

const std::set<int> kAccepted{121, 153, 82,  97,  247, 65, 248, 102, 245, 70,
                              246, 170, 109, 101, 108, 83, 112, 84,  85,  33};

struct Frame {
    int command;
    Bytes payload;
    bool operator==(const Frame&) const = default;
};

Bytes bytesOf(const Frame& frame, int complementError = 0) {
    Bytes bytes{static_cast<std::uint8_t>(frame.command), static_cast<std::uint8_t>(frame.payload.size())};
    bytes.reserve(frame.payload.size() + 3);
    bytes.insert(bytes.end(), frame.payload.begin(), frame.payload.end());
    bytes.push_back(static_cast<std::uint8_t>((255 - frame.command) ^ complementError));
    return bytes;
}

void append(Bytes& to, const Bytes& more) {
    to.insert(to.end(), more.begin(), more.end());
}

// Feeds a chunk as the receive event does: each whole frame is taken before the next byte.
void feed(ReceiveMachine& machine, std::span<const std::uint8_t> chunk, std::vector<Frame>& frames) {
    while (!chunk.empty()) {
        chunk = chunk.subspan(machine.consume(chunk));
        if (machine.rxReady()) {
            frames.push_back({machine.rxCommand(), {machine.payload().begin(), machine.payload().end()}});
            machine.frameDone();
        }
    }
}

std::vector<Frame> framesOf(const Bytes& stream, const std::vector<std::size_t>& chunkSizes) {
    ReceiveMachine machine;
    std::vector<Frame> frames;
    std::span<const std::uint8_t> rest(stream);
    for (std::size_t i = 0; !rest.empty(); ++i) {
        const auto size = std::min(chunkSizes[i % chunkSizes.size()], rest.size());
        feed(machine, rest.first(size), frames);
        rest = rest.subspan(size);
    }
    return frames;
}

std::vector<Frame> framesOf(const Bytes& stream) {
    return framesOf(stream, {stream.size()});
}

// The receive loop byte by byte, as simply as it can be written.
std::vector<Frame> framesByTheRule(const Bytes& stream) {
    std::vector<Frame> frames;
    std::size_t i = 0;
    while (i < stream.size()) {
        const int command = stream[i++];
        if (!kAccepted.contains(command) || i == stream.size()) {
            continue;
        }
        const std::size_t length = stream[i++];
        if (stream.size() - i < length + 1) {
            break;
        }
        const auto at = [&](std::size_t index) { return stream.begin() + static_cast<std::ptrdiff_t>(index); };
        Bytes payload(at(i), at(i + length));
        i += length;
        if (stream[i++] == 255 - command) {
            frames.push_back({command, length == 0 ? Bytes{0} : payload});
        }
    }
    return frames;
}

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    std::uint8_t byte() { return static_cast<std::uint8_t>(below(256)); }
    Bytes bytes(int count) {
        Bytes all;
        for (int i = 0; i < count; ++i) {
            all.push_back(byte());
        }
        return all;
    }
    int command() { return *std::next(kAccepted.begin(), below(20)); }
    std::uint8_t noCommand() {
        std::uint8_t noise = byte();
        while (kAccepted.contains(noise)) {
            noise = byte();
        }
        return noise;
    }

private:
    std::mt19937 engine_;
};

// Good frames, frames with a wrong complement, and noise in which no byte is a command.
Bytes mixedStream(Random& random, std::vector<Frame>& good) {
    Bytes stream;
    for (int i = 0; i < 400; ++i) {
        for (int noise = random.below(4); noise > 0; --noise) {
            stream.push_back(random.noCommand());
        }
        const int length = i % 7 == 0 ? 255 : i % 5 == 0 ? 0 : random.below(30);
        const Frame frame{random.command(), random.bytes(length)};
        if (random.below(5) == 0) {
            append(stream, bytesOf(frame, 1 << random.below(8)));
        } else {
            append(stream, bytesOf(frame));
            good.push_back({frame.command, length == 0 ? Bytes{0} : frame.payload});
        }
    }
    return stream;
}

TEST(ReceiveMachine, HasTheStateOfALineThatHasSaidNothing) {
    const ReceiveMachine machine;
    EXPECT_EQ(machine.rxPosition(), 0);
    EXPECT_EQ(machine.rxCommand(), 0);
    EXPECT_EQ(machine.rxLength(), 0);
    EXPECT_FALSE(machine.rxReady());
}

TEST(ReceiveMachine, AcceptsTheTwentyCommandsAndNoOtherByte) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto code = static_cast<std::uint8_t>(byte);
        ReceiveMachine machine;
        EXPECT_EQ(machine.consume(Bytes{code}), 1U);
        EXPECT_EQ(machine.rxPosition(), kAccepted.contains(byte) ? 1 : 0) << byte;
        EXPECT_EQ(machine.rxCommand(), kAccepted.contains(byte) ? byte : 0) << byte;
        EXPECT_FALSE(machine.rxReady());
    }
}

TEST(ReceiveMachine, TheStepsOfOneFrameAreSeenInItsState) {
    ReceiveMachine machine;
    machine.consume(Bytes{'T'});
    EXPECT_EQ(machine.rxPosition(), 1);
    EXPECT_EQ(machine.rxTotal(), 20);
    machine.consume(Bytes{3});
    EXPECT_EQ(machine.rxPosition(), 2);
    EXPECT_EQ(machine.rxLength(), 3);
    EXPECT_EQ(machine.rxTotal(), 5);
    machine.consume(Bytes{9, 8});
    EXPECT_EQ(machine.rxPosition(), 4);
    EXPECT_THAT(machine.payload(), ElementsAre(9, 8, 0));
    machine.consume(Bytes{7});
    EXPECT_EQ(machine.rxPosition(), 5);
    EXPECT_FALSE(machine.rxReady());
    machine.consume(Bytes{0xAB});
    EXPECT_EQ(machine.rxPosition(), 0);
    EXPECT_TRUE(machine.rxReady());
    EXPECT_EQ(machine.rxCommand(), 'T');
    EXPECT_THAT(machine.payload(), ElementsAre(9, 8, 7));
}

TEST(ReceiveMachine, StopsBehindAWholeFrameAndLeavesTheRestOfTheBytes) {
    ReceiveMachine machine;
    EXPECT_EQ(machine.consume(Bytes{'y', 0, 0x86, 'y', 0, 0x86}), 3U);
    EXPECT_TRUE(machine.rxReady());
}

TEST(ReceiveMachine, AFrameThatIsDoneLeavesNoCommandAndNoLength) {
    ReceiveMachine machine;
    machine.consume(Bytes{'T', 1, 5, 0xAB});
    machine.frameDone();
    EXPECT_EQ(machine.rxCommand(), 0);
    EXPECT_EQ(machine.rxLength(), 0);
    EXPECT_FALSE(machine.rxReady());
    EXPECT_EQ(machine.rxPosition(), 0);
}

TEST(ReceiveMachine, AnEmptyPayloadIsOneZeroByte) {
    EXPECT_EQ(framesOf({'y', 0, 0x86}), (std::vector<Frame>{{'y', {0}}}));
}

TEST(ReceiveMachine, ALengthByteAllocatesThePayloadAnewFilledWithZeros) {
    ReceiveMachine machine;
    machine.consume(Bytes{'T', 3, 7, 7, 7, 0xAB});
    machine.frameDone();
    machine.consume(Bytes{'U', 5});
    EXPECT_THAT(machine.payload(), ElementsAre(0, 0, 0, 0, 0));
    machine.consume(Bytes{1, 2, 3, 4, 5, 0xAA});
    machine.frameDone();
    machine.consume(Bytes{'y', 0});
    EXPECT_THAT(machine.payload(), ElementsAre(0));
}

TEST(ReceiveMachine, TheLongestFrameArrivesWhole) {
    Bytes payload;
    for (int i = 0; i < 255; ++i) {
        payload.push_back(static_cast<std::uint8_t>(255 - i));
    }
    ReceiveMachine machine;
    machine.consume(Bytes{'e', 255});
    EXPECT_EQ(machine.rxLength(), 255);
    EXPECT_EQ(machine.rxTotal(), 257);
    EXPECT_EQ(framesOf(bytesOf({'e', payload})), (std::vector<Frame>{{'e', payload}}));
}

TEST(ReceiveMachine, AWrongComplementDropsTheFrameAndTheNextOneComes) {
    ReceiveMachine machine;
    machine.consume(Bytes{'R', 2, 1, 2, 0xAC});
    EXPECT_FALSE(machine.rxReady());
    EXPECT_EQ(machine.rxPosition(), 0);
    EXPECT_EQ(machine.rxCommand(), 0);
    EXPECT_EQ(machine.rxLength(), 0);
    EXPECT_EQ(framesOf({'R', 2, 1, 2, 0xAC, 'R', 2, 3, 4, 0xAD}), (std::vector<Frame>{{'R', {3, 4}}}));
}

TEST(ReceiveMachine, TellsOfEachDroppedFrameAndOfNoOther) {
    ReceiveMachine machine;
    std::vector<std::string> told;
    machine.frameDropped = [&told](const DroppedFrame& frame) { told.push_back(textOf(frame)); };
    Bytes stream = bytesOf({'R', Bytes(13, 0)}, 1);
    append(stream, bytesOf({'T', {7, 1, 0}}));
    append(stream, bytesOf({170, {}}, 0xFF));
    std::vector<Frame> frames;
    feed(machine, stream, frames);
    EXPECT_THAT(told, ElementsAre("dropped a frame 'R' of length 13: complement AC instead of AD",
                                  "dropped a frame AA of length 0: complement AA instead of 55"));
}

TEST(ReceiveMachine, EachWrongComplementIsFound) {
    for (int wrong = 0; wrong < 256; ++wrong) {
        const auto frames = framesOf({'m', 1, 5, static_cast<std::uint8_t>(wrong)});
        EXPECT_EQ(frames.size(), wrong == 0x92 ? 1U : 0U) << wrong;
    }
}

TEST(ReceiveMachine, TheComplementIsThatOfTheCommandForEachOfThem) {
    for (const int command : kAccepted) {
        EXPECT_EQ(framesOf(bytesOf({command, {1, 2}})), (std::vector<Frame>{{command, {1, 2}}})) << command;
    }
}

TEST(ReceiveMachine, SkipsWhatIsNoCommandByteByByte) {
    EXPECT_EQ(framesOf({0x00, 0x00, 'R', 0, 0xAD}), (std::vector<Frame>{{'R', {0}}}));
}

TEST(ReceiveMachine, ACommandMayStandInThePayloadOrAsTheLength) {
    EXPECT_EQ(framesOf({'T', 3, 'R', 0, 0xAD, 0xAB}), (std::vector<Frame>{{'T', {'R', 0, 0xAD}}}));
    EXPECT_EQ(framesOf(bytesOf({'T', Bytes('R', 1)})), (std::vector<Frame>{{'T', Bytes('R', 1)}}));
}

// Behind the stray command the first 'y' counts as a length of 121. The 121 bytes behind it and the one that is tested
// as the complement are lost: 41 of 60 frames of three bytes.
TEST(ReceiveMachine, AStrayCommandInNoiseSwallowsFramesUntilItsComplementFails) {
    Bytes stream{'R'};
    for (int i = 0; i < 60; ++i) {
        append(stream, {'y', 0, 0x86});
    }
    ReceiveMachine machine;
    std::vector<Frame> frames;
    feed(machine, std::span(stream).first(1 + 1 + 121), frames);
    EXPECT_THAT(frames, IsEmpty());
    EXPECT_EQ(machine.rxPosition(), 123);
    feed(machine, std::span(stream).subspan(1 + 1 + 121), frames);
    EXPECT_EQ(frames.size(), 19U);
}

TEST(ReceiveMachine, AFrameCutOffStaysOpenAndTheNextBytesCompleteIt) {
    ReceiveMachine machine;
    std::vector<Frame> frames;
    feed(machine, Bytes{'R', 5, 1, 2}, frames);
    feed(machine, Bytes{'y', 0, 0x86, 0xAD}, frames);
    EXPECT_EQ(frames, (std::vector<Frame>{{'R', {1, 2, 'y', 0, 0x86}}}));
}

// The frame that ends while another one is handled forgets the command of the one that has begun meanwhile.
TEST(ReceiveMachine, AFrameThatBeganInsideAnotherOnesHandlerIsLost) {
    ReceiveMachine machine;
    machine.consume(Bytes{'y', 0, 0x86});
    machine.consume(Bytes{'T', 3, 7});
    EXPECT_FALSE(machine.rxReady());
    machine.frameDone();
    EXPECT_EQ(machine.rxPosition(), 3);
    std::vector<Frame> frames;
    feed(machine, Bytes{1, 0, 0xAB}, frames);
    EXPECT_THAT(frames, IsEmpty());
    EXPECT_EQ(machine.rxPosition(), 0);
    feed(machine, Bytes{'T', 1, 9, 0xAB}, frames);
    EXPECT_EQ(frames, (std::vector<Frame>{{'T', {9}}}));
}

TEST(ReceiveMachine, AnySplitOfAStreamGivesTheSameFrames) {
    Random random(1);
    std::vector<Frame> good;
    const Bytes stream = mixedStream(random, good);
    EXPECT_EQ(framesOf(stream), good);
    for (std::size_t size = 1; size <= 300; ++size) {
        ASSERT_EQ(framesOf(stream, {size}), good) << "chunks of " << size;
    }
    for (int round = 0; round < 50; ++round) {
        std::vector<std::size_t> sizes;
        for (int i = 0; i < 40; ++i) {
            sizes.push_back(static_cast<std::size_t>(1 + random.below(20)));
        }
        ASSERT_EQ(framesOf(stream, sizes), good) << "round " << round;
    }
}

TEST(ReceiveMachine, AShortStreamSplitAtEachPairOfPlacesGivesTheSameFrames) {
    Bytes stream{0, 'T', 2, 4, 5, 0xAB, 9};
    append(stream, bytesOf({'U', {1, 2, 3}}, 4));
    append(stream, {'!', 0, 0xDE, 170, 1, 'y', 0x55});
    const std::vector<Frame> expected{{'T', {4, 5}}, {'!', {0}}, {170, {'y'}}};
    for (std::size_t first = 1; first < stream.size(); ++first) {
        for (std::size_t second = 1; first + second < stream.size(); ++second) {
            ASSERT_EQ(framesOf(stream, {first, second, stream.size()}), expected) << first << " " << second;
        }
    }
}

TEST(ReceiveMachine, AnyBytesAreReadByTheRule) {
    Random random(2);
    for (int round = 0; round < 300; ++round) {
        Bytes stream = random.bytes(300);
        for (auto& byte : stream) {
            // Short lengths and complements turn up more often than by chance, so that frames end.
            const int kind = random.below(4);
            byte = kind == 0   ? static_cast<std::uint8_t>(random.below(4))
                   : kind == 1 ? static_cast<std::uint8_t>(random.below(2) == 0 ? 'y' : 0x86)
                               : byte;
        }
        ASSERT_EQ(framesOf(stream), framesByTheRule(stream)) << "round " << round;
        ASSERT_EQ(framesOf(stream, {1}), framesByTheRule(stream)) << "round " << round;
    }
}

}  // namespace
}  // namespace korvane::link
