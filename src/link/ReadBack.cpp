#include "link/ReadBack.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/Numbers.h"
#include "link/Frames.h"

namespace korvane::link {

namespace {

constexpr std::size_t kMiscBytes = 9;
constexpr std::size_t kPwmCells = EcuMap::kHalf;

}  // namespace

std::string_view wordsOf(ReadEnd end) {
    switch (end) {
        case ReadEnd::Silent:
            return "no answer";
        case ReadEnd::Damaged:
            return "damaged answer";
        case ReadEnd::Closed:
            return "the port is closed";
        case ReadEnd::Restarted:
            return "the ECU restarted";
        case ReadEnd::Stopped:
            return "on request";
        case ReadEnd::Answered:
            break;
    }
    return "";
}

ReadBack::ReadBack(platform::EventPump& pump, ConnectionPanel& connection) : pump_(pump), connection_(connection) {
    connection_.witnesses.add(*this);
    connection_.MSComm1.addObserver(*this);
    closed_ = !connection_.MSComm1.PortOpen();
}

ReadBack::~ReadBack() {
    connection_.MSComm1.removeObserver(*this);
    connection_.witnesses.remove(*this);
    connection_.diversion.giveUp(*this);
}

ReadEnd ReadBack::map(const MapCommands& commands, std::size_t cells, Bytes& bytes) {
    bytes_.assign(cells, std::nullopt);
    auto end = half(commands.ask, 0);
    if (end == ReadEnd::Answered && cells > EcuMap::kHalf) {
        end = half(commands.askSecondHalf, EcuMap::kHalf);
    }
    bytes = std::move(bytes_);
    return end;
}

ReadEnd ReadBack::half(std::uint8_t command, std::size_t first) {
    return block({&command, 1}, 1, first, EcuMap::kHalf);
}

ReadEnd ReadBack::pwmTable(Bytes& bytes) {
    constexpr std::array<std::uint8_t, 3> kRequest{kAskPwmTable, 0, complement(kAskPwmTable)};
    bytes_.assign(kPwmCells, std::nullopt);
    const auto end = block(kRequest, static_cast<int>(kPwmCells), 0, kPwmCells);
    bytes = std::move(bytes_);
    return end;
}

ReadEnd ReadBack::miscBlock(Bytes& bytes) {
    constexpr std::array<std::uint8_t, 1> kRequest{kAskMiscBlock};
    bytes_.assign(kMiscBytes, std::nullopt);
    const auto end = block(kRequest, 1, 0, kMiscBytes);
    bytes = std::move(bytes_);
    return end;
}

// The reply has the code of the request.
ReadEnd ReadBack::block(std::span<const std::uint8_t> request, int replies, std::size_t first, std::size_t count) {
    const ReplyKey key{request.front()};
    return read({key, replies, first, count, kPatience, kMapAttempts, [&] {
                     connection_.diversion.askedOrdinarily(key);
                     connection_.MSComm1.Output(request);
                 }});
}

ReadEnd ReadBack::cell(core::EepromAccess& eeprom, int address, std::uint8_t& byte) {
    bytes_.assign(1, std::nullopt);
    const auto end = read({{kEepromByteFrame, address}, 1, 0, 1, kCellPatience, kCellAttempts, [&] {
                               eeprom.ReadEE(core::toInt16(address));
                           }});
    byte = bytes_.front().value_or(byte);
    return end;
}

ReadEnd ReadBack::cell(core::EepromAccess& eeprom, int address, std::uint8_t sent, std::uint8_t& byte) {
    const auto end = cell(eeprom, address, byte);
    return end == ReadEnd::Answered && byte != sent ? cell(eeprom, address, byte) : end;
}

ReadEnd ReadBack::read(const Question& question) {
    auto end = ReadEnd::Silent;
    for (int i = 0; i < question.attempts; ++i) {
        end = attempt(question);
        if (end != ReadEnd::Silent && end != ReadEnd::Damaged) {
            break;
        }
    }
    key_.reset();
    return end;
}

ReadEnd ReadBack::attempt(const Question& question) {
    if (const auto end = interruption()) {
        return *end;
    }
    key_ = question.key;
    first_ = question.first;
    count_ = question.count;
    damaged_ = false;
    lastSign_ = pump_.now();
    question.ask();
    connection_.diversion.expect(question.key, question.replies, *this);
    while (!isWhole(question)) {
        if (damaged_ || pump_.now() - lastSign_ >= question.patience) {
            return damaged_ ? ReadEnd::Damaged : ReadEnd::Silent;
        }
        pump_.wait(kTurn);
        if (const auto end = interruption()) {
            return *end;
        }
    }
    return ReadEnd::Answered;
}

bool ReadBack::isWhole(const Question& question) const {
    const auto asked = std::span(bytes_).subspan(question.first, question.count);
    return std::all_of(asked.begin(), asked.end(), [](const auto& byte) { return byte.has_value(); });
}

std::optional<ReadEnd> ReadBack::interruption() const {
    if (closed_) {
        return ReadEnd::Closed;
    }
    if (restarted_) {
        return ReadEnd::Restarted;
    }
    return unwanted && unwanted() ? std::optional(ReadEnd::Stopped) : std::nullopt;
}

ReadEnd ReadBack::restart() {
    const auto until = pump_.now() + kRestartPatience;
    while (!restarted_) {
        if (closed_) {
            return ReadEnd::Closed;
        }
        if (unwanted && unwanted()) {
            return ReadEnd::Stopped;
        }
        if (pump_.now() >= until) {
            return ReadEnd::Silent;
        }
        pump_.wait(kTurn);
    }
    restarted_ = false;
    return ReadEnd::Answered;
}

// One to an earlier attempt is as good; one to an earlier question says nothing any more.
void ReadBack::replyTaken(std::uint8_t code, std::span<const std::uint8_t> payload) {
    if (key_ != keyOf(code, payload)) {
        return;
    }
    lastSign_ = pump_.now();
    if (code == kAskPwmTable && payload.size() >= 2) {
        if (payload[0] < bytes_.size()) {
            bytes_[payload[0]] = payload[1];
        }
        return;
    }
    if (payload.size() < count_) {
        damaged_ = true;
        return;
    }
    std::copy_n(payload.begin(), count_, bytes_.begin() + static_cast<std::ptrdiff_t>(first_));
}

void ReadBack::frameHeard(std::uint8_t code, std::span<const std::uint8_t>) {
    restarted_ = restarted_ || code == kDeviceStartedFrame;
}

void ReadBack::propertyChanged(controls::Object&, const void* property) {
    closed_ = closed_ || property == connection_.MSComm1.portOpenProperty();
}

}  // namespace korvane::link
