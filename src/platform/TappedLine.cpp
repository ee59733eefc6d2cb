#include "platform/TappedLine.h"

#include <string_view>
#include <utility>

namespace korvane::platform {

namespace {

constexpr std::size_t kKeptBytes = std::size_t{1} << 20U;

}  // namespace

TappedLine::TappedLine(SerialLine& line, const EventPump& pump, Inject inject)
    : line_(line), pump_(pump), inject_(std::move(inject)) {}

bool TappedLine::traceTo(const std::filesystem::path& file) {
    trace_.open(file, std::ios::binary | std::ios::trunc);
    return trace_.is_open();
}

std::vector<TappedLine::Write> TappedLine::takeSent() {
    std::vector<Write> writes;
    writes.reserve(marks_.size());
    auto next = sent_.begin();
    for (const auto& mark : marks_) {
        const auto end = next + static_cast<std::ptrdiff_t>(mark.count);
        writes.push_back({mark.milliseconds, {next, end}});
        next = end;
    }
    marks_.clear();
    sent_.clear();
    return writes;
}

std::vector<std::uint8_t> TappedLine::takeSentBytes() {
    std::vector<std::uint8_t> bytes(sent_.begin(), sent_.end());
    marks_.clear();
    sent_.clear();
    return bytes;
}

bool TappedLine::inject(std::span<const std::uint8_t> bytes) {
    if (!inject_) {
        return false;
    }
    inject_(bytes);
    return true;
}

void TappedLine::open(int port, int baud, LineListener& listener) {
    LineListener* const before = std::exchange(listener_, &listener);
    try {
        line_.open(port, baud, *this);
    } catch (...) {
        listener_ = before;
        throw;
    }
}

void TappedLine::close() {
    line_.close();
    listener_ = nullptr;
}

void TappedLine::write(std::span<const std::uint8_t> bytes) {
    record(bytes);
    trace('>', bytes);
    line_.write(bytes);
}

void TappedLine::lineReceived(std::span<const std::uint8_t> bytes) {
    trace('<', bytes);
    if (listener_ != nullptr) {
        listener_->lineReceived(bytes);
    }
}

void TappedLine::lineLost(const std::string& reason) {
    if (LineListener* const listener = std::exchange(listener_, nullptr); listener != nullptr) {
        listener->lineLost(reason);
    }
}

void TappedLine::record(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return;
    }
    sent_.insert(sent_.end(), bytes.begin(), bytes.end());
    marks_.push_back({pump_.milliseconds(), bytes.size()});
    while (sent_.size() > kKeptBytes && marks_.size() > 1) {
        sent_.erase(sent_.begin(), sent_.begin() + static_cast<std::ptrdiff_t>(marks_.front().count));
        marks_.pop_front();
    }
}

// Flushed with each chunk, so that a look at the file shows the line as it is.
void TappedLine::trace(char direction, std::span<const std::uint8_t> bytes) {
    if (!trace_.is_open() || bytes.empty()) {
        return;
    }
    constexpr std::string_view kDigits = "0123456789abcdef";
    const auto prefix = std::to_string(pump_.milliseconds()) + ' ' + direction + ' ';
    for (const auto byte : bytes) {
        trace_ << prefix << kDigits[byte >> 4U] << kDigits[byte & 0xFU] << '\n';
    }
    trace_.flush();
}

}  // namespace korvane::platform
