#include "analysis/steady/Verdict.h"

#include <array>

namespace korvane::steady {

namespace {

constexpr std::array<std::string_view, kVerdicts> kWords = {
    "used",
    "link late",
    "engine stopped, cranking or just started",
    "engine cold",
    "choke or start help",
    "ECU's own lambda correction",
    "RPM limiter or launch control",
    "fuel cut",
    "exhaust not yet clear after fuel cut",
    "outside the map",
    "map place not understood",
    "acceleration enrichment",
    "injected fuel is not that of the map",
    "lambda absent or at its rich end",
    "lambda at the end of its range",
    "lambda out of range",
    "lambda stuck",
    "not yet known whether the ECU interpolates",
    "lambda not yet seen to follow a fuel cut",
    "too far from what was expected",
    "cells are being put back",
};

}  // namespace

std::string_view wordsOf(Verdict verdict) {
    return kWords.at(static_cast<std::size_t>(verdict));
}

}  // namespace korvane::steady
