// From an 'R' payload to the live channels.
#pragma once

#include <cstdint>
#include <span>

#include "core/tables/LiveTable.h"

namespace korvane::live {

// What the values depend on besides the payload.
struct DecodeRules {
    float HwVersion;           // from 1.14 on the temperatures have an offset
    std::int16_t ThrottleMin;  // the throttle's byte when closed and when fully open
    std::int16_t ThrottleMax;
};

// Sets raw and value of the channels that the payload has; their gains and offsets apply, and the others keep what they
// hold. A payload has 19 bytes, or fewer from older firmware. One too short for a channel that is due ends with
// RuntimeError 9, and the channels before it are set. Byte 6 of the payload becomes the throttle in percent.
void decodeLive(std::span<std::uint8_t> payload, const DecodeRules& rules,
                std::span<core::LiveValue, core::kChannelCount> channels);

}  // namespace korvane::live
