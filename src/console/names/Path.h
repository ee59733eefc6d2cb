// Names as commands write them: frmMaps.txtFuel(17).Text, frmBigText#2, logData(0,3).
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::console {

struct Segment {
    std::string name;
    std::optional<int> instance;  // behind #, from 1
    bool indexed = false;
    std::vector<int> indices;

    [[nodiscard]] bool isPlain() const { return !instance && !indexed; }
};

struct Path {
    std::string text;
    std::vector<Segment> segments;  // at least one
};

// Raises ConsoleError for what is no name.
[[nodiscard]] Path parsePath(std::string_view text);

// "frmMaps.txtFuel(17)": the segments as written.
[[nodiscard]] std::string written(std::span<const Segment> segments);

}  // namespace korvane::console
