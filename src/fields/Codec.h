// A number as a box shows it and as the ECU keeps it, in both directions.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "core/tables/SharedTables.h"

namespace korvane::fields {

inline constexpr int kByteValues = 256;

enum class Width {
    Byte,
    Word,  // 16 bits in one call; the parameter is marked as 16 bits
    UnsignedWord,
    TwoBytes,  // 16 bits in two calls: the low byte, then the high byte to the next address
};

// What one count is in the unit of the box: a number, or one of the time units.
using Factor = std::variant<double, double core::SharedTables::*>;

struct Codec {
    Width width = Width::Byte;
    Factor factor = 1.0;
    const char* unit = "";  // behind the range, for messages

    // With four decimals at most.
    [[nodiscard]] double shown(double count, const core::SharedTables& tables) const;
    // The count, before it is narrowed to the width.
    [[nodiscard]] double counted(double shown, const core::SharedTables& tables) const;
    // The count as it is stored, rounded half to even; RuntimeError 6 for one that does not fit the width.
    [[nodiscard]] std::int32_t stored(double shown, const core::SharedTables& tables) const;
    // What fits: "from 0 to 255".
    [[nodiscard]] std::string range(const core::SharedTables& tables) const;
};

inline constexpr Codec kByte{};
inline constexpr Codec kWord{Width::Word};
inline constexpr Codec kUnsignedWord{Width::UnsignedWord};
inline constexpr Codec kTwoBytes{Width::TwoBytes};

}  // namespace korvane::fields
