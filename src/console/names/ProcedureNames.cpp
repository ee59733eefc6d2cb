// The procedures that no control reaches; declared in Registry.h.
#include <memory>

#include "console/ConsoleError.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"
#include "core/files/IniFile.h"
#include "platform/Texts.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;

bool flagAt(Arguments arguments, std::size_t index) {
    return arguments.size() > index && truth(arguments[index]);
}

Json readIniSection(const std::filesystem::path& folder, Arguments arguments) {
    std::int16_t error = 0;
    const auto lines = core::ReadIniSection(folder / platform::trimmed(text(arguments[0])), text(arguments[1]), error);
    return Json::Object{{"error", error}, {"lines", Json::Array(lines.begin(), lines.end())}};
}

// An argument that is no array reaches the procedure as such; it answers with a status of its own.
Json writeIniSection(const std::filesystem::path& folder, Arguments arguments) {
    std::vector<std::string> lines;
    const auto* array = arguments[2].asArray();
    if (array != nullptr) {
        for (const auto& line : *array) {
            lines.push_back(line.asText() != nullptr ? *line.asText() : writeJson(line));
        }
    }
    const auto given = array != nullptr ? std::optional(std::span<const std::string>(lines)) : std::nullopt;
    return static_cast<int>(
        core::WriteIniSection(folder / platform::trimmed(text(arguments[0])), text(arguments[1]), given));
}

}  // namespace

void registerProcedures(Names& names, Procedures procedures) {
    const auto shared = std::make_shared<Procedures>(std::move(procedures));
    names.addProcedure("WriteEE", "ADDR VALUE [FORCE16]", [shared](Arguments arguments) -> Answer {
        const auto address = wholeOf<std::int16_t>(arguments[0]);
        const auto value = wholeOf<std::int32_t>(arguments[1]);
        shared->eeprom.announceStore("EEPROM address " + std::to_string(address),
                                     {core::Overwritten::Part::Settings, {address}});
        shared->eeprom.WriteEE(address, value, flagAt(arguments, 2));
        return {};
    });
    names.addProcedure("ReadEE", "ADDR [UNUSED] [SUPPRESS]", [shared](Arguments arguments) -> Answer {
        shared->eeprom.ReadEE(wholeOf<std::int16_t>(arguments[0]), 0, flagAt(arguments, 2));
        return {};
    });
    names.addProcedure("ReadEE16", "ADDR [UNUSED] [SUPPRESS]", [shared](Arguments arguments) -> Answer {
        shared->eeprom.ReadEE16(wholeOf<std::int16_t>(arguments[0]), 0, flagAt(arguments, 2));
        return {};
    });
    names.addProcedure("ReadIniSection", "FILE SECTION",
                       [shared](Arguments arguments) { return readIniSection(shared->folder, arguments); });
    names.addProcedure("WriteIniSection", "FILE SECTION LINES",
                       [shared](Arguments arguments) { return writeIniSection(shared->folder, arguments); });
    names.addProcedure("ComplementDigits", "TEXT",
                       [](Arguments arguments) { return Json(core::ComplementDigits(text(arguments[0]))); });
    names.addProcedure("pushTrendSample", "VALUE SERIES TREND", [shared](Arguments arguments) -> Answer {
        shared->pushTrendSample(realNumber(arguments[0]), wholeOf<int>(arguments[1]), wholeOf<int>(arguments[2]));
        return {};
    });
}

}  // namespace korvane::console
