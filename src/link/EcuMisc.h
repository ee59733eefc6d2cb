// The misc block that the ECU runs on, as far as this connection has told.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "controls/Object.h"

namespace korvane::link {

// MiscBlock(1) to MiscBlock(9).
using MiscBytes = std::array<std::uint8_t, 9>;

// Observers are told with each block.
class EcuMisc : public controls::Object {
public:
    // The ECU has sent it, or it was sent to the ECU, which does not acknowledge it.
    void has(const MiscBytes& bytes) { set(bytes); }
    void forget() { set({}); }

    [[nodiscard]] const std::optional<MiscBytes>& bytes() const { return bytes_; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void set(const std::optional<MiscBytes>& bytes) {
        bytes_ = bytes;
        changed(this);
    }

    std::optional<MiscBytes> bytes_;
};

}  // namespace korvane::link
