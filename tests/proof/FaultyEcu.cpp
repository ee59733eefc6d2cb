#include "FaultyEcu.h"

#include <array>
#include <numeric>
#include <stdexcept>
#include <string>

#include "ecu/memory/Eeprom.h"

namespace korvane::proof {

namespace {

std::uint8_t withBitFlipped(std::uint8_t byte, long count) {
    return static_cast<std::uint8_t>(byte ^ (1U << static_cast<unsigned>(count % 8)));
}

void setKey(ecu::VirtualEcu& ecu, std::string_view key, std::string_view value, platform::Micros at) {
    if (const std::string error = ecu.set(key, value, at); !error.empty()) {
        throw std::logic_error(error);
    }
}

}  // namespace

std::string_view nameOf(Fault fault) {
    constexpr std::array<std::string_view, 12> kNames = {
        "none",      "cable pulled", "ECU restarted",    "program killed",      "power cut", "power cut while storing",
        "byte lost", "byte flipped", "answer byte lost", "answer byte flipped", "refused",   "not acknowledged"};
    return kNames.at(static_cast<std::size_t>(fault));
}

void FaultyEcu::arm(const Try& what, platform::Micros now, std::function<void()> struck) {
    try_ = what;
    struck_ = std::move(struck);
    armed_ = true;
    heard_ = 0;
    said_ = 0;
    storings_.clear();
    cellsWritten_ = cellsWritten();
    writesBefore_.assign(ecu_.writes().begin(), ecu_.writes().end());
    const std::string byte = std::to_string(what.byte);
    if (what.fault == Fault::Restarted) {
        setKey(ecu_, "restart", byte, now);
    } else if (what.fault == Fault::Cut) {
        setKey(ecu_, "cut", byte, now);
    } else if (what.fault == Fault::Refused) {
        setKey(ecu_, "refuse", what.halves, now);
    } else if (what.fault == Fault::NotAcknowledged) {
        setKey(ecu_, "mute", what.halves, now);
    }
}

void FaultyEcu::receive(std::uint8_t byte, platform::Micros at) {
    if (!plugged_) {
        return;
    }
    cutIfDue(at);
    heard_ += armed_ ? 1 : 0;
    if (!hits(Fault::Lost, heard_)) {
        ecu_.receive(hits(Fault::Flipped, heard_) ? withBitFlipped(byte, heard_) : byte, at);
        noteStoring(at);
    }
    if (hits(Fault::Pulled, heard_) || hits(Fault::Killed, heard_)) {
        plugged_ = false;
        struck_();
    }
}

void FaultyEcu::noteStoring(platform::Micros at) {
    const auto cells = static_cast<int>(cellsWritten() - cellsWritten_);
    if (!armed_ || cells <= 0) {
        return;
    }
    cellsWritten_ = cellsWritten();
    storings_.push_back({heard_, cells});
    if (hits(Fault::CutWhileStoring, heard_)) {
        // In the middle of erasing and of programming in turn.
        const platform::Micros part = ecu::Eeprom::kWriteTime * (try_.cell % 2 == 0 ? 1 : 3) / 4;
        cutAt_ = at + try_.cell * ecu::Eeprom::kWriteTime + part;
    }
}

void FaultyEcu::cutIfDue(platform::Micros at) {
    if (cutAt_ && at >= *cutAt_) {
        setKey(ecu_, "power", "0", *cutAt_);
        cutAt_.reset();
    }
}

std::optional<platform::Micros> FaultyEcu::nextDue() const {
    const auto due = plugged_ ? ecu_.nextDue() : std::nullopt;
    return cutAt_ && (!due || *cutAt_ < *due) ? cutAt_ : due;
}

void FaultyEcu::take(platform::Micros at, std::vector<std::uint8_t>& out) {
    cutIfDue(at);
    if (!plugged_) {
        return;
    }
    taken_.clear();
    ecu_.take(at, taken_);
    for (const std::uint8_t byte : taken_) {
        said_ += armed_ ? 1 : 0;
        if (!hits(Fault::AnswerLost, said_)) {
            out.push_back(hits(Fault::AnswerFlipped, said_) ? withBitFlipped(byte, said_) : byte);
        }
    }
}

bool FaultyEcu::hits(Fault fault, long count) const {
    return armed_ && try_.fault == fault && try_.byte == count;
}

std::bitset<ecu::kEepromCells> FaultyEcu::written() const {
    std::bitset<ecu::kEepromCells> cells;
    for (std::size_t i = 0; i < writesBefore_.size(); ++i) {
        cells.set(i, ecu_.writes()[i] != writesBefore_[i]);
    }
    return cells;
}

std::uint64_t FaultyEcu::cellsWritten() const {
    const auto writes = ecu_.writes();
    return std::accumulate(writes.begin(), writes.end(), std::uint64_t{0});
}

}  // namespace korvane::proof
