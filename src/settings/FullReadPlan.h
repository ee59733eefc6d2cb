// What the read of all settings asks for, in its order.
#pragma once

#include "fields/ReadPlan.h"

namespace korvane::settings {

inline constexpr int kFullReadPause = 150;  // ms

inline constexpr fields::Captions kFullReadCaptions{"Receiving data from target device!:  Loading.. ",
                                                    "Receiving data from target device!:  Received 100%"};

// The percentages do not rise steadily. The poll is stopped meanwhile.
[[nodiscard]] fields::ReadPlan fullReadPlan();

}  // namespace korvane::settings
