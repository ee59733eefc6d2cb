// Where one side of a comparison comes from.
#pragma once

#include <string>
#include <string_view>

namespace korvane::keep {

struct Source {
    // In the order of the lists of the window.
    enum class Kind { Ecu, Desk, Tune, Image, PointEcu, PointDesk, Proposal };

    Kind kind = Kind::Ecu;
    std::string what;  // path of a file, name of a restore point; else empty

    [[nodiscard]] bool isFile() const { return kind == Kind::Tune || kind == Kind::Image; }
    [[nodiscard]] bool isPoint() const { return kind == Kind::PointEcu || kind == Kind::PointDesk; }
    // The ECU and the desk go on changing.
    [[nodiscard]] bool isLive() const { return kind == Kind::Ecu || kind == Kind::Desk; }
    // There is no more than one of its kind.
    [[nodiscard]] bool isSingle() const { return isLive() || kind == Kind::Proposal; }

    friend bool operator==(const Source&, const Source&) = default;
};

// What the lists call it.
[[nodiscard]] std::string_view nameOf(Source::Kind kind);
inline constexpr int kSourceKinds = 7;

// As scripts write it: "ecu", "maps", "tune PATH", "image PATH", "point NAME", "point-maps NAME", "proposal".
// RuntimeError, with a sentence for the user, for another text.
[[nodiscard]] Source sourceOf(std::string_view text);

}  // namespace korvane::keep
