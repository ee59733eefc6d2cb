// Colours in blue-green-red order: red is 255, blue 0xFF0000. The top bit marks a colour of the system's palette.
#pragma once

#include <cstdint>

namespace korvane::controls {

using Color = std::uint32_t;

inline constexpr Color kBlack = 0x000000;
inline constexpr Color kWhite = 0xFFFFFF;
inline constexpr Color kRed = 0x0000FF;
inline constexpr Color kGreen = 0x00FF00;
inline constexpr Color kBlue = 0xFF0000;
inline constexpr Color kYellow = 0x00FFFF;
inline constexpr Color kCyan = 0xFFFF00;
inline constexpr Color kMagenta = 0xFF00FF;
inline constexpr Color kDarkGrey = 0x808080;  // colour 8 of the sixteen

inline constexpr Color kSystemColor = 0x80000000;
inline constexpr Color kWindowBackground = 0x80000005;
inline constexpr Color kWindowText = 0x80000008;
inline constexpr Color kButtonFace = 0x8000000F;
inline constexpr Color kButtonText = 0x80000012;

[[nodiscard]] constexpr bool isSystemColor(Color color) {
    return (color & kSystemColor) != 0;
}

}  // namespace korvane::controls
