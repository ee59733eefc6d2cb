// What became of one identity request.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace korvane::doctor {

enum class Fate {
    Answer,      // the ECU named itself
    OtherFrame,  // a whole frame came, but no identity: an ECU that does not know the request
    Echo,        // the request came back
    Noise,       // bytes came before anything was sent, and no frame
    WrongSpeed,  // bytes came in answer, and no frame
    Nothing,
    Refused,  // the device does not run at that speed
};

// "answer", "other frame", "echo", "noise", "wrong speed", "nothing", "refused".
[[nodiscard]] std::string_view nameOf(Fate fate);

struct Identity {
    int version = 0;          // in thousandths
    std::optional<int> type;  // of the firmware; old firmware does not tell

    friend bool operator==(const Identity&, const Identity&) = default;
};

// What the bytes of an idle line, and those after the request, are.
struct Reception {
    Fate fate = Fate::Nothing;
    std::optional<Identity> identity;  // of an answer
};

[[nodiscard]] Reception receptionOf(std::span<const std::uint8_t> idle, std::span<const std::uint8_t> answer);

// How many whole frames are in it.
[[nodiscard]] std::size_t framesIn(std::span<const std::uint8_t> bytes);

}  // namespace korvane::doctor
