#include "analysis/UnsentEdits.h"

#include <algorithm>

namespace korvane::analysis {

void UnsentEdits::add(std::size_t cell, platform::Micros now) {
    std::erase(edits_, cell);
    edits_.push_back(cell);
    since_ = now;
}

std::vector<std::size_t> UnsentEdits::late(platform::Micros now, const std::function<bool(std::size_t)>& arrived) {
    const auto gone = std::erase_if(edits_, [&](std::size_t cell) { return arrived(cell); });
    since_ = gone > 0 ? now : since_;
    return now - since_ >= kPatience ? edits_ : std::vector<std::size_t>();
}

std::string wordsOfUnsent(const std::vector<std::size_t>& cells) {
    constexpr std::size_t kNamed = 3;
    std::string words = "cells of the fuel map were changed and not sent";
    for (std::size_t i = 0; cells.size() > 1 && i < std::min(cells.size(), kNamed); ++i) {
        words += (i == 0 ? ": " : ", ") + std::to_string(cells[i] + 1);
    }
    return cells.size() > kNamed ? words + " and " + std::to_string(cells.size() - kNamed) + " more" : words;
}

}  // namespace korvane::analysis
