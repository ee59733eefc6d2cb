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
    std::vector<std::string> failures;  // in words, one a try at most

    void add(const FaultRow& other);
};

// An operation with nothing going wrong.
struct Reference {
    EcuState before, wanted;
    CellSet written;
    long bytes = 0;    // to the ECU
    long answers = 0;  // bytes from it
    std::vector<Storing> storings;
    std::string words;
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

[[nodiscard]] FaultRow rowOf(const Operation& operation, const Reference& reference, const std::vector<Try>& tries);

}  // namespace korvane::proof
