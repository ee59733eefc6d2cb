// Passes the ECU's replies to reads of parameters on to Answers, also those that no window shows.
#pragma once

#include <cstdint>
#include <span>

#include "fields/Answers.h"
#include "link/FrameWitness.h"

namespace korvane::maps {

class ParameterEar : private link::FrameWitness {
public:
    // Both outlive it.
    ParameterEar(link::FrameWitnesses& line, fields::Answers& answers);
    ParameterEar(const ParameterEar&) = delete;
    ParameterEar& operator=(const ParameterEar&) = delete;
    ~ParameterEar() override;

private:
    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;

    link::FrameWitnesses& line_;
    fields::Answers& answers_;
};

}  // namespace korvane::maps
