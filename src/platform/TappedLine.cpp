#include "platform/TappedLine.h"

#include <string_view>
#include <utility>

namespace korvane::platform {

TappedLine::TappedLine(SerialLine& line, const EventPump& pump, Inject inject)
    : line_(line), pump_(pump), inject_(std::move(inject)) {}

bool TappedLine::traceTo(const std::filesystem::path& file, std::function<void()> failed) {
    trace_.open(file, std::ios::binary | std::ios::trunc);
    traceFailed_ = std::move(failed);
    return trace_.is_open();
}

std::vector<std::uint8_t> TappedLine::takeSentBytes() {
    std::vector<std::uint8_t> bytes;
    for (const auto& write : sent_.take()) {
        bytes.insert(bytes.end(), write.bytes.begin(), write.bytes.end());
    }
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
    sent_.add(pump_.milliseconds(), bytes);
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

// Flushed with each chunk, so that the file is up to date whenever it is read.
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
    if (!trace_) {
        trace_.close();
        traceFailed_();
    }
}

}  // namespace korvane::platform
