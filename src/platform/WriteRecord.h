// A bounded record of what was written to a line, and when.
//
//   delta   milliseconds since the write before, 7 bits a byte, lowest first, bit 7: another byte follows
//   count   of bytes, in the same form
//   bytes   as written
//
// The writes follow each other without anything between them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

namespace korvane::platform {

class WriteRecord {
public:
    struct Write {
        std::int64_t milliseconds;
        std::vector<std::uint8_t> bytes;
    };

    static constexpr std::size_t kLimit = std::size_t{1} << 20U;  // bytes of the record

    // Times never decrease. A write without bytes is not recorded. The oldest writes go when the limit is passed; the
    // newest always stays.
    void add(std::int64_t milliseconds, std::span<const std::uint8_t> bytes);

    // All writes, oldest first; the record is empty afterwards.
    [[nodiscard]] std::vector<Write> take();

private:
    void append(std::uint64_t number);
    [[nodiscard]] std::uint64_t takeNumber();
    [[nodiscard]] Write takeFirst();

    std::deque<std::uint8_t> record_;
    std::int64_t first_ = 0;  // ms of the write before the first in the record
    std::int64_t last_ = 0;   // ms of the last
};

}  // namespace korvane::platform
