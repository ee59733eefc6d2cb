#include "keep/compare/Source.h"

#include <array>

#include "core/Checked.h"
#include "platform/RuntimeError.h"

namespace korvane::keep {

namespace {

struct Word {
    Source::Kind kind;
    std::string_view script;
    std::string_view shown;
};

constexpr std::array<Word, kSourceKinds> kWords{{
    {Source::Kind::Ecu, "ecu", "ECU, as last received"},
    {Source::Kind::Desk, "maps", "Working maps"},
    {Source::Kind::Tune, "tune", "Tune file"},
    {Source::Kind::Image, "image", "EEPROM image"},
    {Source::Kind::PointEcu, "point", "Restore point: the ECU"},
    {Source::Kind::PointDesk, "point-maps", "Restore point: the working maps"},
    {Source::Kind::Proposal, "proposal", "Proposal of the steady agent"},
}};

[[noreturn]] void refuse(std::string_view text) {
    throw platform::RuntimeError(
        platform::kErrorTypeMismatch,
        "\"" + std::string(text) +
            "\" is no side of a comparison: ecu, maps, tune PATH, image PATH, point NAME, point-maps NAME");
}

}  // namespace

std::string_view nameOf(Source::Kind kind) {
    return core::checked(kWords, static_cast<int>(kind)).shown;
}

Source sourceOf(std::string_view text) {
    const auto blank = text.find(' ');
    const auto script = text.substr(0, blank);
    const auto what = blank == std::string_view::npos ? std::string_view() : text.substr(blank + 1);
    for (const auto& word : kWords) {
        const Source source{word.kind, std::string(what)};
        if (word.script == script && source.isSingle() == what.empty()) {
            return source;
        }
    }
    refuse(text);
}

}  // namespace korvane::keep
