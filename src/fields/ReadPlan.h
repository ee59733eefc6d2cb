// Which parameters a read asks for, in their order.
#pragma once

#include <optional>
#include <span>

#include "fields/Captions.h"
#include "fields/Field.h"

namespace korvane::fields {

// `cells` addresses from `first` + `offset` on, each asked for by itself.
struct ReadStep {
    Address first;
    int offset = 0;
    int cells = 1;
    bool word = false;
    int waits = 1;  // behind each of its reads
    Percent percent = {};
};

struct ReadPlan {
    std::span<const ReadStep> steps;
    int pause = 0;  // ms, one wait
    Captions captions = {};
    // If set, the poll is stopped meanwhile and has this interval (ms), in case it is started in between.
    std::optional<int> pollInterval = {};

    [[nodiscard]] int reads() const;
};

constexpr ReadStep one(Address address, double percent = -1.0) {
    return {.first = address, .percent = {percent}};
}

constexpr ReadStep next(Address address, double percent = -1.0) {
    return {.first = address, .offset = 1, .percent = {percent}};
}

constexpr ReadStep range(Address address, int cells, Percent percent = {}) {
    return {.first = address, .cells = cells, .percent = percent};
}

constexpr ReadStep word(Address address, double percent = -1.0) {
    return {.first = address, .word = true, .percent = {percent}};
}

constexpr ReadStep twice(ReadStep step) {
    step.waits = 2;
    return step;
}

}  // namespace korvane::fields
