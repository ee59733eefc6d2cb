// A restore point as the bytes of its file. docs/file-formats.md has the format byte by byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "keep/point/Snapshot.h"

namespace korvane::keep {

inline constexpr std::size_t kLargestPoint = 8192;  // bytes; one with everything known is smaller
inline constexpr std::size_t kLongestReason = 255;  // bytes; what is longer is cut

// What a list shows of a point.
struct PointHead {
    platform::WallTime time;
    std::string reason;
    EcuIdentity ecu;

    friend bool operator==(const PointHead&, const PointHead&) = default;
};

// Either what was in the bytes, or in plain words what is wrong with them.
template <class What>
struct Decoded {
    std::optional<What> content;
    std::string damage;  // empty with a content
};

[[nodiscard]] std::string encodePoint(const Snapshot& point);

// The ECU that the first bytes of a file name, whatever has become of the rest: good for leaving points of other ECUs
// out without reading them. Nothing if they are no beginning of a point.
inline constexpr std::size_t kBytesToEcu = 35;
[[nodiscard]] std::optional<EcuIdentity> ecuAtFront(std::string_view bytes);

// Any bytes may be given. Both find the same damage.
[[nodiscard]] Decoded<PointHead> decodeHead(std::string_view bytes);
[[nodiscard]] Decoded<Snapshot> decodePoint(std::string_view bytes);

}  // namespace korvane::keep
