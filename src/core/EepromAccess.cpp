#include "core/EepromAccess.h"

#include "core/Bytes.h"
#include "core/Checked.h"

namespace korvane::core {

namespace {

constexpr int kPauseBetweenBytesMs = 50;

}  // namespace

void EepromAccess::WriteEE(std::int16_t addr, std::int32_t value, bool force16) {
    if (!port_.PortOpen()) {
        return;
    }
    const bool word = checked(tables_.EEParams, addr).is16bit || force16;
    writeByte(addr, lowByte(value));
    if (!word) {
        return;
    }
    pump_.pump();
    pump_.sleep(kPauseBetweenBytesMs);
    pump_.pump();
    writeByte(std::int32_t{addr} + 1, highByte(value));
}

void EepromAccess::writeCell(std::int16_t addr, std::uint8_t data) {
    static_cast<void>(checked(tables_.EEParams, addr));
    writeByte(addr, data);
}

void EepromAccess::ReadEE(std::int16_t addr, std::int32_t, bool suppress) {
    if (asked && !suppress) {
        asked(addr);
    }
    ask('R', addr, suppress);
}

void EepromAccess::ReadEE16(std::int16_t addr, std::int32_t, bool suppress) {
    ask('U', addr, suppress);
}

void EepromAccess::ask(std::uint8_t command, std::int16_t addr, bool suppress) {
    if (!suppress) {
        send({command, lowByte(addr), highByte(addr), complement(command)});
    }
}

void EepromAccess::writeByte(std::int32_t addr, std::uint8_t data) {
    send({'W', lowByte(addr), highByte(addr), data, data, complement('W')});
    if (written && port_.PortOpen()) {
        written(addr, data);
    }
}

void EepromAccess::send(std::initializer_list<std::uint8_t> frame) {
    // The port may have been closed since the last frame, and the device may be removed between two bytes of this one.
    // The user has been told of that, and the rest of the frame is skipped as with a closed port.
    for (const std::uint8_t byte : frame) {
        if (port_.PortOpen()) {
            port_.Output(byte);
        }
    }
}

}  // namespace korvane::core
