// An operation with one thing going wrong, at each byte of it in turn: what the ECU has afterwards.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "Operations.h"
#include "WayBack.h"

namespace korvane::proof {

// A cell of the table: one operation, one fault.
struct FaultRow {
    Fault fault = Fault::None;
    int tried = 0;
    std::array<int, kOutcomes> outcomes{};
    int silent = 0;  // tries after which the ECU has not the new values and the program says what it says on success
    int asked = 0;   // tries after which the program was asked for the way back
    int unseen = 0;  // of these: a cell has another byte, which no read shows
    int stuck = 0;   // of these: a cell has another byte than it should, and nobody knew the old one
    std::vector<std::string> failures;  // in words
};

[[nodiscard]] Reference referenceOf(const Operation& operation);

// Which of all tries are run.
struct Choice {
    long step = 1;  // every so many bytes, and the last one
    long part = 0;  // of `parts` that run side by side
    long parts = 1;
};
// The faults that the operation can meet, with their tries in the order of the bytes.
[[nodiscard]] std::vector<std::vector<Try>> triesOf(const Operation& operation, const Reference& reference);
[[nodiscard]] std::vector<Try> chosen(const std::vector<Try>& tries, const Choice& choice);

// The program is asked for the way back after every `asking`th try.
[[nodiscard]] FaultRow rowOf(const Operation& operation, const Reference& reference, const std::vector<Try>& tries,
                             int asking = 1);

}  // namespace korvane::proof
