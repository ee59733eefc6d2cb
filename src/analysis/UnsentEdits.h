// Edits of the fuel map by others that are not known to have reached the engine.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/EventPump.h"

namespace korvane::analysis {

// A window sends what was undone one cell after the other: they are late when none has arrived for a while.
class UnsentEdits {
public:
    static constexpr platform::Micros kPatience = platform::kMicrosPerSecond / 2;

    void reset() { edits_.clear(); }
    void add(std::size_t cell, platform::Micros now);
    // Forgets those of which `arrived` says so. The others, if they are late.
    [[nodiscard]] std::vector<std::size_t> late(platform::Micros now, const std::function<bool(std::size_t)>& arrived);

private:
    std::vector<std::size_t> edits_;
    platform::Micros since_ = 0;  // of the last edit or arrival
};

// Why the agent stops for them; several are named, counted from 1.
[[nodiscard]] std::string wordsOfUnsent(const std::vector<std::size_t>& cells);

}  // namespace korvane::analysis
