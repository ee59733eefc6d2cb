#include "settings/RawWriteQuestion.h"

#include <string>

#include "core/Numbers.h"
#include "core/tables/EepromShadow.h"
#include "fields/BoxMarks.h"

namespace korvane::settings {

namespace {

constexpr int kLastAddress = static_cast<int>(core::kEepromSize) - 1;

platform::Question question(const std::string& what) {
    return {"EEPROM write", what + " Write anyway?", "Write", "Do not write", {}};
}

}  // namespace

std::optional<platform::Question> rawWriteQuestion(std::string_view address, int bytes) {
    if (address.find_first_not_of(" \t") == std::string_view::npos) {
        return question("The address is empty and counts as 0.");
    }
    if (fields::countsAsZero(address)) {
        return question("The address is no number and counts as 0.");
    }
    if (core::toInt(core::val(address)) + bytes - 1 > kLastAddress) {
        return question("The address is above " + std::to_string(kLastAddress) + ", the last of the EEPROM.");
    }
    return std::nullopt;
}

}  // namespace korvane::settings
