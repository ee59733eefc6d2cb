// What several targets need: a claim, an input as decisions, and a program on a machine in memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "program/Program.h"
#include "support/VirtualMachine.h"

namespace korvane::fuzz {

using Bytes = std::span<const std::uint8_t>;

inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

inline std::string_view textOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// An input as a row of decisions; behind its end all bytes are zero.
class Script {
public:
    explicit Script(Bytes bytes) : rest_(bytes) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    std::uint8_t next() {
        const auto taken = bytes(1);
        return taken.empty() ? std::uint8_t{0} : taken.front();
    }
    // Fewer at the end.
    Bytes bytes(std::size_t count) {
        const auto taken = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return taken;
    }

private:
    Bytes rest_;
};

// The program on a machine in memory with `device` at the other end of its line; its message about a folder without
// files has been removed.
struct ProgramRun : support::VirtualMachine {
    explicit ProgramRun(platform::LineDevice* device = nullptr) : VirtualMachine(device) {
        program.start();
        static_cast<void>(dialogs.takeMessages());
    }

    program::Program program{machine};
};

}  // namespace korvane::fuzz
