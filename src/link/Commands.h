// What the program sends to the ECU: the command bytes by name, and how a command closes. Reads and writes of single
// EEPROM cells are core::EepromAccess.
#pragma once

#include <array>
#include <cstdint>

namespace korvane::link {

// The maps and blocks that are asked for come as frames of the same code.
enum Command : std::uint8_t {
    kAskLiveData = 'x',
    kAskIdentity = 'y',
    kRestartDevice = 'X',

    kAskFuelMap = 'f',
    kAskFuelSecondHalf = 245,
    kSendFuelMap = 'F',
    kSendFuelSecondHalf = 246,
    kStoreFuelMap = 'c',
    kChangeFuelCell = 'g',

    kAskIgnitionMap = 'a',
    kAskIgnitionSecondHalf = 247,
    kSendIgnitionMap = 'A',
    kSendIgnitionSecondHalf = 248,
    kStoreIgnitionMap = 'b',
    kChangeIgnitionCell = 'i',

    kAskPwmTable = 'p',
    kSendPwmCell = 'P',
    kStorePwmTable = 'o',

    kAskMiscBlock = 'm',
    kSendMiscBlock = 'M',
    kStoreMiscBlock = 'd',

    kAskSettingsBlock = 'e',
    kThrottleIsClosed = '(',
    kThrottleIsOpen = ')',
};

// A command of several bytes closes with the complement of the byte that opened it, and so does every frame.
[[nodiscard]] constexpr std::uint8_t complement(std::uint8_t command) {
    return static_cast<std::uint8_t>(~command & 0xFF);
}

[[nodiscard]] constexpr std::array<std::uint8_t, 2> shortCommand(std::uint8_t command) {
    return {command, complement(command)};
}

// One cell of a map or table. Cell and value go twice, so that the ECU can check them:
//
//     command  cell  cell  value  value  ~command
[[nodiscard]] constexpr std::array<std::uint8_t, 6> cellCommand(std::uint8_t command, std::uint8_t cell,
                                                                std::uint8_t value) {
    return {command, cell, cell, value, value, complement(command)};
}

}  // namespace korvane::link
