// What a full read asks for, in its order.
#pragma once

#include <span>

#include "core/ParameterAddresses.h"

namespace korvane::settings {

// `cells` addresses from `first` + `offset` on, each asked for by itself.
struct ReadRow {
    int core::ParameterAddresses::*first;
    int offset = 0;
    int cells = 1;
    bool word = false;
    int waits = 1;  // behind each of its reads

    // The percentage behind cell i is `percent` + i * `percentStep`; below 0 the caption stays.
    double percent = -1.0;
    double percentStep = 0.0;
};

// The percentages do not rise steadily.
[[nodiscard]] std::span<const ReadRow> readList();

// The reads of the whole list.
[[nodiscard]] int readCount();

}  // namespace korvane::settings
