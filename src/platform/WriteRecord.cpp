#include "platform/WriteRecord.h"

namespace korvane::platform {

namespace {

constexpr unsigned kBits = 7;
constexpr std::uint8_t kMore = 0x80;

}  // namespace

void WriteRecord::add(std::int64_t milliseconds, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return;
    }
    const std::size_t before = record_.size();
    append(static_cast<std::uint64_t>(milliseconds - last_));
    append(bytes.size());
    record_.insert(record_.end(), bytes.begin(), bytes.end());
    last_ = milliseconds;
    const std::size_t newest = record_.size() - before;
    while (record_.size() > kLimit && record_.size() > newest) {
        static_cast<void>(takeFirst());
    }
}

std::vector<WriteRecord::Write> WriteRecord::take() {
    std::vector<Write> writes;
    while (!record_.empty()) {
        writes.push_back(takeFirst());
    }
    return writes;
}

void WriteRecord::append(std::uint64_t number) {
    for (; number >= kMore; number >>= kBits) {
        record_.push_back(static_cast<std::uint8_t>(number | kMore));
    }
    record_.push_back(static_cast<std::uint8_t>(number));
}

std::uint64_t WriteRecord::takeNumber() {
    std::uint64_t number = 0;
    std::uint8_t byte = kMore;
    for (unsigned shift = 0; (byte & kMore) != 0; shift += kBits) {
        byte = record_.front();
        record_.pop_front();
        number |= std::uint64_t{byte} % kMore << shift;
    }
    return number;
}

WriteRecord::Write WriteRecord::takeFirst() {
    first_ += static_cast<std::int64_t>(takeNumber());
    const auto count = static_cast<std::ptrdiff_t>(takeNumber());
    const auto end = record_.begin() + count;
    Write write{first_, {record_.begin(), end}};
    record_.erase(record_.begin(), end);
    return write;
}

}  // namespace korvane::platform
