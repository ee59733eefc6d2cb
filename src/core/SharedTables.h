// What all parts of the program share: the images of the ECU's memory, its identity, the live channels and the datalog.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

#include "core/LogTable.h"
#include "core/ParameterAddresses.h"

namespace korvane::core {

inline constexpr std::size_t kEepromSize = 3001;  // addresses 0 to 3000; the last two are no cells of the ECU
inline constexpr std::size_t kMapSize = 320;      // cells of the large maps; the others use the first 160
inline constexpr std::size_t kChannelCount = 31;
inline constexpr float kAssumedHwVersion = 3.1F;  // until the ECU has named its own

// A parameter's last known value, empty until read. A byte from a byte read, 32 bits from a word read; the rows of the
// firmware version and type hold a float and 32 bits.
using ParameterValue = std::variant<std::monostate, std::uint8_t, std::int32_t, float>;

// One row of the PC's shadow of the EEPROM; its index is the address.
struct EEParam {
    ParameterValue value;
    std::string name;           // empty for an address with no name
    std::int32_t reserved = 0;  // always 0; a column of settings files
    bool is16bit = false;       // stored low byte first here and at the next address; written as two bytes
};

// One live channel: value = (raw + offset) * gain, but for the few channels that have rules of their own.
struct LiveValue {
    std::string name;
    std::string description;
    double limit = 10000.0;
    double gain = 1.0;
    double offset = 0.0;
    double value = 0.0;
    double raw = 0.0;
};

using MapImage = std::array<std::uint8_t, kMapSize>;

// Lives as long as the program and is touched only on its thread. An index that comes from outside goes through
// checked().
struct SharedTables {
    SharedTables() = default;
    SharedTables(const SharedTables&) = delete;
    SharedTables& operator=(const SharedTables&) = delete;
    ~SharedTables() = default;

    // The firmware's identity.
    std::array<std::string, 256> SWTypeNames;  // by type; "-" for a type that is unknown
    std::int32_t Features = -1;                // feature word; -1 enables everything until the ECU has answered
    float HwVersion = kAssumedHwVersion;
    std::int32_t SWType = 0;

    // The PC's shadow of the EEPROM.
    ParameterAddresses addresses;
    std::array<EEParam, kEepromSize> EEParams;
    std::array<std::uint8_t, kEepromSize> EEImage{};  // bytes as last read
    std::array<std::string, kEepromSize> EETime;      // when they were read, "hh:mm:ss"

    std::array<std::uint16_t, 16> BitMask{};  // 2 to the index

    // Milliseconds for one count of the ECU's timers, which derive from its clock of 18.432 MHz.
    double TickA = 0.0;
    double TickB = 0.0;
    double TickC = 0.0;
    double TickD = 0.0;  // of injection times
    double TickE = 0.0;
    double TickF = 0.0;

    // Maps: In as last received, Out as edited.
    MapImage FuelMapIn{};
    MapImage FuelMapOut{};
    MapImage IgnMapIn{};
    MapImage IgnMapOut{};
    MapImage PwmMapIn{};
    MapImage PwmMapOut{};
    std::array<std::uint8_t, 10> MiscBlock{};  // indices 1 to 9 are used

    // Acknowledged halves of a map write: 1 for the first, 10 for the second.
    std::int16_t FuelSendAcks = 0;
    std::int16_t IgnSendAcks = 0;

    // Live data.
    std::array<LiveValue, kChannelCount> liveValues;
    std::int32_t IdlePidWord = 0;
    std::int32_t BoostPidWord = 0;
    std::int16_t AccelWord = 0;
    std::int16_t MapPlace = 0;      // the map cell that the ECU runs in
    std::int16_t PrevMapPlace = 0;  // the one marked last
    std::int16_t ThrottleMin = 0;   // the throttle's byte when closed and when fully open
    std::int16_t ThrottleMax = 0;

    // The datalog's rows that have not been written yet.
    LogTable logData;
    std::int32_t logDataCount = 0;

    // Preferences and state that windows share.
    bool useSound = false;
    std::int32_t InjOff_type = 0;  // not 0: the injection offset counts in map counts
    std::int32_t Inj8ms_mode = 0;
    float OldInjectorSize = 450.0F;  // ccm per minute
    float NewInjectorSize = 550.0F;
    bool ignWindowOpen = false;  // frmMaps_QV_ign serves the dispatcher
    std::string SaveFileName;    // the settings file chosen last for writing
    std::string LoadFileName;    // and for reading
};

}  // namespace korvane::core
