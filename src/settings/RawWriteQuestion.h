// What a user is asked before a raw write to an address that is hardly meant.
#pragma once

#include <optional>
#include <string_view>

#include "platform/Dialogs.h"

namespace korvane::settings {

// `address` is the text of the box, `bytes` how many addresses the write begins with it. Nothing for an address of the
// EEPROM.
[[nodiscard]] std::optional<platform::Question> rawWriteQuestion(std::string_view address, int bytes);

}  // namespace korvane::settings
