#include "ecu/server/EcuSettings.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "ecu/memory/EepromFile.h"
#include "ecu/server/NumberText.h"

namespace korvane::ecu {

namespace {

using Reader = bool (*)(EcuSettings&, std::string_view);

template <typename Value>
Value& valueIn(EcuSettings& settings, Value EcuSettings::*member) {
    return settings.*member;
}
template <typename Value>
Value& valueIn(EcuSettings& settings, Value EngineConditions::*member) {
    return settings.conditions.*member;
}

template <typename Value>
Value& valueIn(EcuSettings& settings, Value WiringFaults::*member) {
    return settings.wiring.*member;
}

template <auto Member, int Low, int High>
bool readInt(EcuSettings& settings, std::string_view value) {
    const auto number = parseNumber<int>(value, Low, High);
    if (number) {
        valueIn(settings, Member) = *number;
    }
    return number.has_value();
}

template <auto Member, int High>
bool readReal(EcuSettings& settings, std::string_view value) {
    const auto number = parseNumber<double>(value, 0.0, High);
    if (number) {
        valueIn(settings, Member) = *number;
    }
    return number.has_value();
}

template <auto Member>
bool readChance(EcuSettings& settings, std::string_view value) {
    return readReal<Member, 1>(settings, value);
}

template <auto Member>
bool readSwitch(EcuSettings& settings, std::string_view value) {
    valueIn(settings, Member) = value == "1";
    return value == "0" || value == "1";
}

template <auto Member, const auto& All>
bool readName(EcuSettings& settings, std::string_view value) {
    for (const auto& [name, meaning] : All) {
        if (name == value) {
            valueIn(settings, Member) = meaning;
            return true;
        }
    }
    return false;
}

bool readSpeed(EcuSettings& settings, std::string_view value) {
    constexpr std::array kSpeeds{0, 9600, 19200, 38400, 57600, 76800, 115200, 230400};
    const auto speed = parseNumber<int>(value);
    const bool known = speed && std::ranges::find(kSpeeds, *speed) != kSpeeds.end();
    if (known) {
        settings.wiring.speed = *speed;
    }
    return known;
}

constexpr std::string_view kUsual = "usual";

// What `kUsual` leaves to the engine.
template <auto Member, Reader Read>
bool readUnlessUsual(EcuSettings& settings, std::string_view value) {
    if (value == kUsual) {
        valueIn(settings, Member).reset();
        return true;
    }
    return Read(settings, value);
}

bool readLambdaDelay(EcuSettings& settings, std::string_view value) {
    const auto delay = parseTransportDelay(value);
    if (delay) {
        settings.conditions.lambdaDelay = delay;
    }
    return delay.has_value();
}

using NamedFault = std::pair<std::string_view, LambdaFault>;
constexpr std::array kLambdaFaults = {
    NamedFault{"none", LambdaFault::None},     NamedFault{"stuck", LambdaFault::Stuck},
    NamedFault{"lean", LambdaFault::Lean},     NamedFault{"rich", LambdaFault::Rich},
    NamedFault{"absent", LambdaFault::Absent}, NamedFault{"slow", LambdaFault::Slow}};

using NamedPattern = std::pair<std::string_view, MapFault>;
constexpr std::array kMapFaults = {NamedPattern{"smooth", MapFault::Smooth}, NamedPattern{"rich", MapFault::Rich},
                                   NamedPattern{"lean", MapFault::Lean}, NamedPattern{"checker", MapFault::Checker},
                                   NamedPattern{"none", MapFault::None}};

using NamedNeed = std::pair<std::string_view, bool>;
constexpr std::array kNeeds = {NamedNeed{"cell", false}, NamedNeed{"place", true}};

bool readSeed(EcuSettings& settings, std::string_view value) {
    const auto number = parseNumber<std::uint64_t>(value);
    if (number) {
        settings.seed = *number;
    }
    return number.has_value();
}

bool readDrive(EcuSettings& settings, std::string_view value) {
    const auto drive = parseDrive(value);
    if (drive) {
        settings.drive = *drive;
    }
    return drive.has_value();
}

template <auto Member>
bool readFile(EcuSettings& settings, std::string_view value) {
    settings.*Member = value;
    return !value.empty();
}

template <auto Member>
bool readCountdown(EcuSettings& settings, std::string_view value) {
    const auto number = parseNumber<std::int64_t>(value, 0, std::int64_t{1} << 40);
    if (number) {
        settings.*Member = *number == 0 ? std::nullopt : number;
    }
    return number.has_value();
}

std::optional<std::uint8_t> halfByName(std::string_view name) {
    using Half = std::pair<std::string_view, std::uint8_t>;
    constexpr std::array kHalves = {Half{"F", 70}, Half{"A", 65}, Half{"246", 246}, Half{"248", 248}};
    const auto* found = std::ranges::find(kHalves, name, &Half::first);
    return found == kHalves.end() ? std::nullopt : std::optional(found->second);
}

template <auto Member>
bool readHalves(EcuSettings& settings, std::string_view value) {
    std::vector<std::uint8_t> halves;
    while (value != "none") {
        const std::size_t plus = value.find('+');
        const auto half = halfByName(value.substr(0, plus));
        if (!half) {
            return false;
        }
        halves.push_back(*half);
        if (plus == std::string_view::npos) {
            break;
        }
        value.remove_prefix(plus + 1);
    }
    settings.*Member = std::move(halves);
    return true;
}

struct Key {
    KeyHelp help;
    Reader read;
};

constexpr std::string_view kHalfValues = "F, A, 246 and 248 joined by +, or none";
constexpr std::string_view kEepromKey = "eeprom";

const std::array<Key, 37>& keys() {
    static constexpr std::array<Key, 37> kKeys = {{
        {{"type", "0 to 255", "firmware type; 11 is the default"}, readInt<&EcuSettings::type, 0, 255>},
        {{"version", "0 to 65535", "firmware version in thousandths; 3386 is the default"},
         readInt<&EcuSettings::version, 0, 65535>},
        {{"features", "0 to 65535", "feature word; 65535 is the default"}, readInt<&EcuSettings::features, 0, 65535>},
        {{"identity", "4 or 5", "length of the identity reply"}, readInt<&EcuSettings::identityLength, 4, 5>},
        {{"payload", "13 to 19", "length of the live payload"}, readInt<&EcuSettings::payloadLength, 13, 19>},
        {{"seed", "a whole number from 0", "of all noise and all faults"}, readSeed},
        {{"drive", "lap, idle, pull, cruise, off or rpm:load:throttle", "what the engine does"}, readDrive},
        {{"interpolate", "0 or 1", "the firmware takes the fuel from four cells instead of one"},
         readSwitch<&EngineConditions::interpolate>},
        {{"need", "cell or place", "what the fuel that the engine needs depends on"},
         readName<&EngineConditions::needByPlace, kNeeds>},
        {{"mapfault", "smooth, rich, lean, checker or none", "pattern of the stored fuel map's error"},
         readName<&EcuSettings::mapFault, kMapFaults>},
        {{"lambdadelay", "idle:full with 0 to 2000 each, or usual", "milliseconds from the cylinders to the sensor"},
         readUnlessUsual<&EngineConditions::lambdaDelay, readLambdaDelay>},
        {{"lambdalag", "0 to 10000", "time constant of the lambda sensor in milliseconds; 60 is the default"},
         readReal<&EngineConditions::lambdaLagMs, 10000>},
        {{"lambdanoise", "0 to 20, or usual", "noise of the lambda sensor in percent of its reading"},
         readUnlessUsual<&EngineConditions::lambdaNoise, readReal<&EngineConditions::lambdaNoise, 20>>},
        {{"lambdafault", "none, stuck, lean, rich, absent or slow", "what is wrong with the lambda sensor"},
         readName<&EngineConditions::lambdaFault, kLambdaFaults>},
        {{"wetting", "0 to 90", "percent of the fuel that wets the walls of the intake; 0 is the default"},
         readReal<&EngineConditions::wetting, 90>},
        {{"wettingtime", "0 to 10", "time constant with which that fuel evaporates, in seconds; 0.5 is the default"},
         readReal<&EngineConditions::wettingTime, 10>},
        {{"enrichment", "0 to 100", "percent more fuel that acceleration brings; it fades; 0 is the default"},
         readReal<&EngineConditions::enrichment, 100>},
        {{"coldstart", "0 or 1", "the engine is cold, warms up slowly and is lean while it does"},
         readSwitch<&EngineConditions::coldStart>},
        {{"throttlenoise", "0 to 20", "noise of the throttle sensor in percent of its travel; 0 is the default"},
         readReal<&EngineConditions::throttleNoise, 20>},
        {{kEepromKey, "a file", "the EEPROM at the start, one number a line"}, nullptr},
        {{"save", "a file", "where the EEPROM goes at the end"}, readFile<&EcuSettings::saveFile>},
        {{"wear", "a file", "where the number of writes of each EEPROM cell goes at the end"},
         readFile<&EcuSettings::wearFile>},
        {{"lose", "0 to 1", "chance for a byte towards the PC to get lost"}, readChance<&EcuSettings::lose>},
        {{"flip", "0 to 1", "chance for a byte towards the PC to get one bit flipped"}, readChance<&EcuSettings::flip>},
        {{"add", "0 to 1", "chance for a stray byte before a byte towards the PC"}, readChance<&EcuSettings::add>},
        {{"speed", "0, 9600, 19200, 38400, 57600, 76800, 115200 or 230400",
          "baud rate at which it speaks and hears; 0 for that of the PC"},
         readSpeed},
        {{"echo", "0 or 1", "the PC hears what it sends, and nothing reaches the ECU"},
         readSwitch<&WiringFaults::echo>},
        {{"stray", "0 to 1000", "bytes a second that the PC hears and nobody sent"},
         readInt<&WiringFaults::stray, 0, 1000>},
        {{"ignfault", "0 to 1", "chance for a debug word of the ignition box to be damaged"},
         readChance<&EcuSettings::ignitionFault>},
        {{"late", "0 to 10000", "milliseconds by which every answer comes later"},
         readInt<&EcuSettings::lateMs, 0, 10000>},
        {{"silent", "0 or 1", "hears and says nothing"}, readSwitch<&EcuSettings::silent>},
        {{"refuse", kHalfValues, "map halves that are answered with status 0"}, readHalves<&EcuSettings::refused>},
        {{"mute", kHalfValues, "map halves that are not acknowledged"}, readHalves<&EcuSettings::muted>},
        {{"restart", "a whole number; 0 for never", "restarts after so many more bytes from the PC"},
         readCountdown<&EcuSettings::restartAfter>},
        {{"cut", "a whole number; 0 for never", "its power ends after so many more bytes from the PC"},
         readCountdown<&EcuSettings::cutAfter>},
        {{"power", "0 or 1", "without power it neither hears nor says anything"}, readSwitch<&EcuSettings::powered>},
        {{"alarm", "0 or 1", "sends the alarm frame now"}, readSwitch<&EcuSettings::alarm>},
    }};
    return kKeys;
}

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

}  // namespace

std::vector<KeyHelp> keyHelp() {
    std::vector<KeyHelp> all;
    for (const Key& key : keys()) {
        all.push_back(key.help);
    }
    return all;
}

std::string parseKey(EcuSettings& settings, std::string_view key, std::string_view value) {
    const auto& all = keys();
    const auto* found = std::ranges::find_if(all, [key](const Key& row) { return row.help.key == key; });
    if (found == all.end()) {
        return "the virtual ECU has no key " + quoted(key);
    }
    if (key == kEepromKey) {
        return readEepromFile(value, settings.eeprom);
    }
    EcuSettings changed = settings;
    if (!found->read(changed, value)) {
        return std::string(key) + " takes " + std::string(found->help.values) + ", not " + quoted(value);
    }
    settings = std::move(changed);
    return {};
}

std::string parseKeyList(EcuSettings& settings, std::string_view list) {
    EcuSettings changed = settings;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        const std::string_view pair = list.substr(0, comma);
        const std::size_t equals = pair.find('=');
        if (equals == std::string_view::npos) {
            return "KEY=VALUE is wanted where " + quoted(pair) + " stands";
        }
        std::string error = parseKey(changed, pair.substr(0, equals), pair.substr(equals + 1));
        if (!error.empty()) {
            return error;
        }
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
    }
    settings = std::move(changed);
    return {};
}

}  // namespace korvane::ecu
