#include "maps/boxes/ParameterEar.h"

#include "link/Frames.h"

namespace korvane::maps {

ParameterEar::ParameterEar(link::FrameWitnesses& line, fields::Answers& answers) : line_(line), answers_(answers) {
    line_.add(*this);
}

ParameterEar::~ParameterEar() {
    line_.remove(*this);
}

// The value, in one byte or two, and behind it the address.
void ParameterEar::frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) {
    const std::size_t place = code == link::kEepromByteFrame ? 1 : code == link::kEepromWordFrame ? 2 : 0;
    if (place > 0 && payload.size() >= place + 2) {
        answers_.heard(payload[place] + 256 * payload[place + 1]);
    }
}

}  // namespace korvane::maps
