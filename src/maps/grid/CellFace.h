// How a cell of a map grid looks.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "controls/Controls.h"

namespace korvane::maps {

struct CellFace {
    controls::Color color;  // of the text
    std::string_view text;
    std::string_view toolTip;
};

// Unlocks a cell while the object exists.
class Unlocked {
public:
    explicit Unlocked(controls::TextBox& cell) : cell_(cell) { cell_.Locked = false; }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;
    ~Unlocked() { cell_.Locked = true; }

private:
    controls::TextBox& cell_;
};

// Whether a cell is unlocked while its face is rewritten, as those of an edited image are.
enum class Rewrite { Locked, Unlocked };

// Blue for a byte that was edited since it was received.
[[nodiscard]] constexpr controls::Color editColor(std::uint8_t received, std::uint8_t edited) {
    return received == edited ? controls::kBlack : controls::kBlue;
}

inline void showFace(controls::TextBox& cell, const CellFace& face, Rewrite rewrite) {
    std::optional<Unlocked> unlocked;
    if (rewrite == Rewrite::Unlocked) {
        unlocked.emplace(cell);
    }
    cell.ForeColor = face.color;
    cell.Text = face.text;
    cell.ToolTipText = face.toolTip;
}

}  // namespace korvane::maps
