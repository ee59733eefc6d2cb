// A line in memory that notes what is handed to it and when.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/EventPump.h"
#include "platform/virtual/MemoryLine.h"

namespace korvane::support {

class NotingLine : public platform::MemoryLine {
public:
    struct Note {
        std::int64_t ms;
        std::uint8_t byte;
    };

    NotingLine(platform::EventPump& pump, platform::LineDevice& device) : MemoryLine(pump, &device), pump_(pump) {}

    void write(std::span<const std::uint8_t> bytes) override {
        for (const auto byte : bytes) {
            notes.push_back({pump_.milliseconds(), byte});
        }
        MemoryLine::write(bytes);
    }

    // What has gone out since the last call, each command behind its moment: "50 392=7" writes 7 to 392, "R 507" and
    // "U 1005" ask for a byte and a word, anything else is shown in decimal.
    std::vector<std::string> sent() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < notes.size();) {
            const std::size_t size = std::min(sizeOf(notes[i].byte), notes.size() - i);
            lines.push_back(std::to_string(notes[i].ms) + " " + textOf(std::span(notes).subspan(i, size)));
            i += size;
        }
        notes.clear();
        return lines;
    }

    std::vector<Note> notes;

private:
    static std::size_t sizeOf(std::uint8_t command) {
        return command == 'W' ? 6 : command == 'R' || command == 'U' ? 4 : 1;
    }

    static std::string textOf(std::span<const Note> bytes) {
        const int command = bytes[0].byte;
        if (bytes.size() == 1) {
            return std::to_string(command);
        }
        const bool whole = bytes.size() == sizeOf(bytes[0].byte) && bytes.back().byte == 255 - command;
        const bool equal = command != 'W' || (whole && bytes[3].byte == bytes[4].byte);
        if (!whole || !equal) {
            return "broken";
        }
        const std::string addr = std::to_string(bytes[1].byte + 256 * bytes[2].byte);
        return command == 'W' ? addr + "=" + std::to_string(bytes[3].byte) : static_cast<char>(command) + (" " + addr);
    }

    platform::EventPump& pump_;
};

}  // namespace korvane::support
