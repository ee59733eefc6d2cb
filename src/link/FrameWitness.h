// Those who want to know what the ECU has sent, whatever a frame does in the program.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace korvane::link {

class FrameWitness {
public:
    virtual ~FrameWitness() = default;

    // A whole frame, before it acts. The payload is valid during the call.
    virtual void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) = 0;
    // Another witness waits for the answer to a command from now on.
    virtual void askedByAnother(std::uint8_t command) { static_cast<void>(command); }
};

class FrameWitnesses {
public:
    // A witness removes itself before it goes.
    void add(FrameWitness& witness) { witnesses_.push_back(&witness); }
    void remove(FrameWitness& witness) { std::erase(witnesses_, &witness); }

    void tell(std::uint8_t code, std::span<const std::uint8_t> payload) const {
        for (auto* const witness : witnesses_) {
            witness->frameHeard(code, payload);
        }
    }

    void tellAsked(std::uint8_t command, const FrameWitness& by) const {
        for (auto* const witness : witnesses_) {
            if (witness != &by) {
                witness->askedByAnother(command);
            }
        }
    }

private:
    std::vector<FrameWitness*> witnesses_;
};

}  // namespace korvane::link
