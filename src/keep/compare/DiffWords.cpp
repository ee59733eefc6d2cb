#include "keep/compare/DiffWords.h"

#include <array>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/grid/StatusWords.h"
#include "platform/RuntimeError.h"

namespace korvane::keep {

namespace {

using Byte = std::optional<std::uint8_t>;

constexpr std::array<MapTitle, kMapCount> kTitles{{
    {"Fuel", "fuel", "ms", &maps::MapUnits::fuel},
    {"Ignition", "ignition", "degrees", &maps::MapUnits::ignition},
    {"PWM", "PWM", "ms", &maps::MapUnits::pwm},
}};

constexpr const char* kUnknown = "?";
constexpr const char* kNotKnown = "not known";

Sign signOf(double number) {
    return number > 0 ? Sign::Up : number < 0 ? Sign::Down : Sign::None;
}

// Nothing where the unit has no number for it.
std::optional<double> numberOf(const ComparedMap& map, std::uint8_t count, Unit unit) {
    try {
        return unit == Unit::Counts ? count : (map.units.*mapTitle(map.map).number)(count);
    } catch (const platform::RuntimeError&) {
        return {};
    }
}

std::optional<double> deltaOf(const ComparedMap& map, std::uint8_t left, std::uint8_t right, Unit unit) {
    const auto old = numberOf(map, left, unit);
    const auto current = numberOf(map, right, unit);
    return old && current ? std::optional(core::toCurrency(*current - *old)) : std::nullopt;
}

std::string numberText(const ComparedMap& map, const Byte& byte, Unit unit) {
    const auto number = byte ? numberOf(map, *byte, unit) : std::nullopt;
    return number ? core::textOf(*number) : kUnknown;
}

std::string deltaText(const ComparedMap& map, std::uint8_t left, std::uint8_t right, Unit unit) {
    const auto delta = deltaOf(map, left, right, unit);
    return delta ? signedText(*delta) : kUnknown;
}

// "2.312 ms (56)"
std::string valueWords(const ComparedMap& map, const Byte& byte) {
    return byte ? numberText(map, byte, Unit::Tuner) + ' ' + std::string(mapTitle(map.map).unit) + " (" +
                      core::textOf(int{*byte}) + ')'
                : kNotKnown;
}

std::string deltaWords(const ComparedMap& map, const Byte& left, const Byte& right) {
    if (!left || !right) {
        return {};
    }
    if (*left == *right) {
        return ", no difference";
    }
    return ", difference " + deltaText(map, *left, *right, Unit::Tuner) + ' ' + std::string(mapTitle(map.map).unit) +
           " (" + deltaText(map, *left, *right, Unit::Counts) + ')';
}

DiffCell cellOf(const ComparedMap& map, int cell, Unit unit) {
    const auto& left = core::checked(map.left.bytes, cell);
    const auto& right = core::checked(map.right.bytes, cell);
    DiffCell shown;
    shown.left = numberText(map, left, unit);
    shown.right = numberText(map, right, unit);
    if (left && right && *left != *right) {
        shown.delta = deltaText(map, *left, *right, unit);
        shown.sign = signOf(int{*right} - int{*left});
    }
    shown.words = std::string(mapTitle(map.map).title) + ", " + maps::placeWords(map.difference.shape, cell) +
                  ": left " + valueWords(map, left) + ", right " + valueWords(map, right) +
                  deltaWords(map, left, right);
    return shown;
}

std::string number(std::size_t count) {
    return std::to_string(count);
}

std::string onOneSide(int count) {
    return count == 0 ? "" : "; " + std::to_string(count) + (count == 1 ? " is" : " are") + " known on one side only";
}

std::string scaled(const Setting& setting, double count, const core::SharedTables& tables,
                   std::string (*write)(double)) {
    const double shown = setting.codec.shown(count, tables);
    const bool isBare = shown == count && *setting.codec.unit == '\0';
    return isBare ? write(count) : write(shown) + setting.codec.unit + " (" + write(count) + ')';
}

}  // namespace

const MapTitle& mapTitle(std::size_t map) {
    return core::checked(kTitles, map);
}

std::string signedText(double number) {
    return (number > 0 ? "+" : "") + core::textOf(number);
}

std::string_view markOf(Sign sign) {
    return sign == Sign::Up ? "\u25B2" : sign == Sign::Down ? "\u25BC" : "";
}

std::vector<DiffCell> gridOf(const ComparedMap& map, Unit unit) {
    std::vector<DiffCell> cells;
    if (map.difference.isComparable) {
        const int count = map.difference.shape.cells();
        cells.reserve(static_cast<std::size_t>(count));
        for (int cell = 0; cell < count; ++cell) {
            cells.push_back(cellOf(map, cell, unit));
        }
    }
    return cells;
}

std::string summaryOf(const ComparedMap& map) {
    const std::string title = std::string(mapTitle(map.map).title) + ": ";
    if (!map.difference.isComparable) {
        return title + "the left map has " + std::to_string(map.left.size) + " cells, the right one " +
               std::to_string(map.right.size) + ". They stand for other speeds and loads, and are not compared.";
    }
    return title + number(map.difference.cells.size()) + " of " + std::to_string(map.difference.shape.cells()) +
           " cells differ" + onOneSide(map.difference.knownOnOneSide) + '.';
}

std::string summaryOf(const Differences& all) {
    int oneSided = 0;
    for (const auto& setting : all.settings) {
        oneSided += setting.left.has_value() == setting.right.has_value() ? 0 : 1;
    }
    return "Settings: " + std::to_string(all.differentSettings) + " of " + number(all.settings.size()) + " differ" +
           onOneSide(oneSided) + '.';
}

std::string addressText(const Setting& setting) {
    return (setting.isMisc ? "misc " : "") + std::to_string(setting.address);
}

std::string settingText(const Setting& setting, std::optional<std::int32_t> count, const core::SharedTables& tables) {
    return count ? scaled(setting, *count, tables, &core::textOf<double>) : kNotKnown;
}

std::string settingDelta(const Setting& setting, const SettingDifference& difference,
                         const core::SharedTables& tables) {
    if (!difference.differs()) {
        return {};
    }
    const double delta = *difference.right - *difference.left;
    return std::string(markOf(signOf(delta))) + ' ' + scaled(setting, delta, tables, &signedText);
}

}  // namespace korvane::keep
