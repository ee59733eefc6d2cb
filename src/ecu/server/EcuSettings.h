// The keys of the virtual ECU.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ecu/engine/Drive.h"
#include "ecu/engine/EngineConditions.h"
#include "ecu/engine/EngineNeed.h"
#include "ecu/server/Wiring.h"

namespace korvane::ecu {

struct EcuSettings {
    int type = 11;           // firmware type, 0 to 255
    int version = 3386;      // shown as 3.386
    int features = 65535;    // feature word, 16 bits
    int identityLength = 5;  // 5, or 4 without the type
    int payloadLength = 19;  // of a live frame, 13 to 19
    std::uint64_t seed = 1;
    Drive drive;
    EngineConditions conditions;
    MapFault mapFault = MapFault::Smooth;
    std::vector<std::uint8_t> eeprom;  // cells at the start, from cell 0; the rest has factory contents
    std::string saveFile;              // where the EEPROM goes at the end; empty: nowhere
    std::string wearFile;              // where the counts of its writes go
    double lose = 0.0;                 // chances for each byte towards the PC
    double flip = 0.0;
    double add = 0.0;
    WiringFaults wiring;
    double ignitionFault = 0.0;  // chance for each debug word of the ignition box to be damaged
    int lateMs = 0;
    bool silent = false;
    std::vector<std::uint8_t> refused;         // map halves ('F', 'A', 246, 248) that are answered with status 0
    std::vector<std::uint8_t> muted;           // map halves that are not acknowledged
    std::optional<std::int64_t> restartAfter;  // bytes from the PC
    std::optional<std::int64_t> cutAfter;      // bytes from the PC
    bool powered = true;
    bool alarm = false;  // send the alarm frame now
};

struct KeyHelp {
    std::string_view key;
    std::string_view values;
    std::string_view meaning;
};

// All keys, in the order in which a user should see them.
[[nodiscard]] std::vector<KeyHelp> keyHelp();

// Reads `value` into the setting that `key` names. Returns an empty text, or one sentence that says what is wrong
// (unknown key, bad value, a file that can't be read); `settings` is unchanged then.
[[nodiscard]] std::string parseKey(EcuSettings& settings, std::string_view key, std::string_view value);

// Reads KEY=VALUE pairs with commas between them; an empty text gives no pair. Returns as parseKey() does; the first
// wrong pair counts, and `settings` is unchanged then.
[[nodiscard]] std::string parseKeyList(EcuSettings& settings, std::string_view list);

}  // namespace korvane::ecu
