// One value that a save has sent, and what the ECU has told of its cells since.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "controls/Controls.h"
#include "core/tables/SharedTables.h"
#include "fields/Codec.h"

namespace korvane::fields {

// One value of a save, in one byte or, low byte first, in two.
struct SavedValue {
    std::string label;  // empty for one that nobody has to name
    int address = 0;
    int bytes = 1;
    std::int32_t value = 0;
    Codec codec = {};                        // how people read it
    const controls::TextBox* box = nullptr;  // that shows it, if one does
};

struct SentValue {
    SavedValue value;
    std::array<std::optional<std::uint8_t>, 2> back;

    [[nodiscard]] bool isBack() const { return back[0] && (value.bytes == 1 || back[1]); }
    [[nodiscard]] std::uint8_t byte(std::size_t index) const;
    [[nodiscard]] bool isSame() const;
    // As the width of the value has it: a signed word may be below 0.
    [[nodiscard]] std::int32_t told() const;
    // A count as people read it.
    [[nodiscard]] std::string shown(std::int32_t count, const core::SharedTables& tables) const;
};

}  // namespace korvane::fields
