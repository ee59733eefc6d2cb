#include <gmock/gmock.h>

#include "LinkBench.h"

namespace korvane::link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotingWitness : public FrameWitness {
public:
    explicit NotingWitness(Journal& journal) : journal_(journal) {}

    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override {
        journal_.push_back("heard " + std::to_string(code) + " of " + std::to_string(payload.size()));
    }

    void askedByAnother(std::uint8_t command) override { journal_.push_back("asked " + std::to_string(command)); }

private:
    Journal& journal_;
};

class FrameWitnessTest : public LinkBench {
protected:
    FrameWitnessTest() { panel_.witnesses.add(witness_); }

    NotingWitness witness_{journal_};
};

TEST_F(FrameWitnessTest, HearsAFrameBeforeItActs) {
    openMapWindow();
    command('f', half(1));
    EXPECT_THAT(journal_,
                ElementsAre("heard 102 of 160", "map.populateFuel", "map.caption Received 50% Fuel map 12:00:00"));
}

TEST_F(FrameWitnessTest, HearsAFrameThatFailsAsWell) {
    command('f', half(1));
    EXPECT_THAT(journal_, ElementsAre("heard 102 of 160"));
    EXPECT_THAT(log_.lines, ElementsAre(kNoWindow));
}

TEST_F(FrameWitnessTest, HearsNothingOfCodesThatAreNoFrames) {
    command('Q', {1});
    EXPECT_THAT(journal_, IsEmpty());
}

TEST_F(FrameWitnessTest, HearsWhatAnotherWitnessAsks) {
    NotingWitness other(journal_);
    panel_.witnesses.add(other);
    panel_.witnesses.tellAsked('f', witness_);
    EXPECT_THAT(journal_, ElementsAre("asked 102")) << "the other one alone";
}

TEST_F(FrameWitnessTest, HearsNothingAfterItIsRemoved) {
    panel_.witnesses.remove(witness_);
    command('R', {1});
    EXPECT_THAT(journal_, IsEmpty());
}

}  // namespace
}  // namespace korvane::link
