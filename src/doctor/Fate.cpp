#include "doctor/Fate.h"

#include <algorithm>
#include <functional>

#include "link/Commands.h"
#include "link/Frames.h"

namespace korvane::doctor {

namespace {

constexpr std::size_t kShortIdentity = 4;
constexpr std::size_t kFrameOverhead = link::kFrameOverhead;

using Payload = std::span<const std::uint8_t>;

// How long the frame is that begins at the front; 0 if none does.
std::size_t frameLength(Payload bytes) {
    if (bytes.size() < kFrameOverhead || !link::kIsFrameCode[bytes[0]]) {
        return 0;
    }
    const std::size_t length = bytes[1] + kFrameOverhead;
    return length <= bytes.size() && bytes[length - 1] == link::complement(bytes[0]) ? length : 0;
}

// Unlike the receiver, which waits for the end of whatever begins like a frame, this looks at every place: a frame
// behind noise is found.
void forEachFrame(Payload bytes, const std::function<void(std::uint8_t code, Payload payload)>& visit) {
    while (!bytes.empty()) {
        const auto length = frameLength(bytes);
        if (length > 0) {
            visit(bytes[0], bytes.subspan(2, length - kFrameOverhead));
        }
        bytes = bytes.subspan(std::max<std::size_t>(length, 1));
    }
}

int word(Payload bytes, std::size_t at) {
    return bytes[at] * 256 + bytes[at + 1];
}

std::optional<Identity> identityIn(Payload bytes) {
    std::optional<Identity> found;
    forEachFrame(bytes, [&](std::uint8_t code, Payload payload) {
        if (code == link::kIdentityFrame && payload.size() >= kShortIdentity) {
            found = Identity{word(payload, 2), std::nullopt};
            if (payload.size() > kShortIdentity) {
                found->type = payload[kShortIdentity];
            }
        }
    });
    return found;
}

bool isEcho(Payload answer) {
    const auto& request = link::kIdentityRequest;
    return answer.size() >= request.size() && std::equal(request.begin(), request.end(), answer.begin());
}

Fate fateWithoutIdentity(Payload idle, Payload answer) {
    if (isEcho(answer)) {
        return Fate::Echo;
    }
    if (framesIn(answer) > 0) {
        return Fate::OtherFrame;
    }
    if (!idle.empty()) {
        return Fate::Noise;
    }
    return answer.empty() ? Fate::Nothing : Fate::WrongSpeed;
}

}  // namespace

std::string_view nameOf(Fate fate) {
    switch (fate) {
        case Fate::Answer:
            return "answer";
        case Fate::OtherFrame:
            return "other frame";
        case Fate::Echo:
            return "echo";
        case Fate::Noise:
            return "noise";
        case Fate::WrongSpeed:
            return "wrong speed";
        case Fate::Refused:
            return "refused";
        case Fate::Nothing:
            break;
    }
    return "nothing";
}

Reception receptionOf(Payload idle, Payload answer) {
    auto identity = identityIn(answer);
    const Fate fate = identity ? Fate::Answer : fateWithoutIdentity(idle, answer);
    return {fate, std::move(identity)};
}

std::size_t framesIn(Payload bytes) {
    std::size_t count = 0;
    forEachFrame(bytes, [&](std::uint8_t, Payload) { ++count; });
    return count;
}

}  // namespace korvane::doctor
