// What the program sends to the ECU: the command bytes by name, and how a command ends. Reads and writes of single
// EEPROM cells are core::EepromAccess.
#pragma once

#include <array>
#include <cstdint>

#include "core/Bytes.h"

namespace korvane::link {

inline constexpr std::uint8_t kAskLiveData = 'x';
inline constexpr std::uint8_t kAskIdentity = 'y';
inline constexpr std::uint8_t kRestartDevice = 'X';

// The fuel and the ignition map: both halves of a large one, or the first alone, which is a whole ordinary map.
struct MapCommands {
    std::uint8_t ask;
    std::uint8_t askSecondHalf;
    std::uint8_t send;
    std::uint8_t sendSecondHalf;
    std::uint8_t store;       // what was sent goes to the EEPROM
    std::uint8_t changeCell;  // of the running engine
};
inline constexpr MapCommands kFuelMap{'f', 245, 'F', 246, 'c', 'g'};
inline constexpr MapCommands kIgnitionMap{'a', 247, 'A', 248, 'b', 'i'};

// The PWM table, which is sent cell by cell, the misc block, and the settings block, which is only asked for.
inline constexpr std::uint8_t kAskPwmTable = 'p', kSendPwmCell = 'P', kStorePwmTable = 'o';
inline constexpr std::uint8_t kAskMiscBlock = 'm', kSendMiscBlock = 'M', kStoreMiscBlock = 'd';
inline constexpr std::uint8_t kAskSettingsBlock = 'e';

// The ECU stores the throttle's present value as one of its two ends.
inline constexpr std::uint8_t kThrottleIsClosed = '(', kThrottleIsOpen = ')';

// Of the ignition box: its debug words; sparks that clean the plugs.
inline constexpr std::uint8_t kAskIgnitionDebug = 'S', kCleanPlugs = '!';

// A command of several bytes ends with the complement of its first byte, and so does every frame.
using core::complement;

// The bytes of a frame besides its payload: code, length and complement.
inline constexpr int kFrameOverhead = 3;

// On the line, with the start and the stop bit.
inline constexpr int kBitsPerByte = 10;

[[nodiscard]] constexpr std::array<std::uint8_t, 2> shortCommand(std::uint8_t command) {
    return {command, complement(command)};
}

// Asks the ECU for its identity. The ECU changes nothing for it.
inline constexpr std::array<std::uint8_t, 3> kIdentityRequest{kAskIdentity, 0, complement(kAskIdentity)};

// One cell of a map or table. Cell and value are sent twice, so that the ECU can check them:
//
//     command  cell  cell  value  value  ~command
[[nodiscard]] constexpr std::array<std::uint8_t, 6> cellCommand(std::uint8_t command, std::uint8_t cell,
                                                                std::uint8_t value) {
    return {command, cell, cell, value, value, complement(command)};
}

}  // namespace korvane::link
