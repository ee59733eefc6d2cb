// Continues SettingsFile: the writer, which shares nothing with the reader but the format.
#include <span>
#include <string_view>
#include <utility>
#include <variant>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/SettingsFile.h"
#include "core/files/TextFile.h"
#include "core/tables/SharedTables.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;
using Cells = std::span<const std::uint8_t>;

constexpr std::int16_t kSmallMap = 160;
constexpr std::int16_t kLargeMap = 320;
constexpr std::size_t kSmallRow = 16;
constexpr std::size_t kLargeRow = 20;

void writeRow(OutputFile& file, Cells cells) {
    std::string line;
    for (const std::uint8_t cell : cells) {
        line += ' ';
        line += numberText(cell).view();
        line += ' ';
    }
    file.writeLine(line);
}

void writeTable(OutputFile& file, std::string_view header, Cells cells, std::size_t row) {
    file.writeLine(header);
    for (std::size_t first = 0; first < cells.size(); first += row) {
        writeRow(file, cells.subspan(first, row));
    }
}

void writeMaps(OutputFile& file, const MapImages& tables, std::int16_t mapSize) {
    const Cells fuel(tables.FuelMapOut);
    const Cells ignition(tables.IgnMapOut);
    if (mapSize == kSmallMap) {
        writeTable(file, "Injection", fuel.first(kSmallMap), kSmallRow);
        writeTable(file, "Ignition", ignition.first(kSmallMap), kSmallRow);
    } else if (mapSize == kLargeMap) {
        writeTable(file, "Injection_320", fuel, kLargeRow);
        writeTable(file, "Ignition_320", ignition, kLargeRow);
    }
}

struct ValueText {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(std::uint8_t value) const { return textOf(int{value}); }
    std::string operator()(std::int32_t value) const { return textOf(value); }
    std::string operator()(float value) const { return textOf(value); }
};

bool isWritten(const EEParam& row) {
    return !row.name.empty() || !std::holds_alternative<std::monostate>(row.value);
}

void writeParameters(OutputFile& file, const EepromShadow& tables) {
    file.writeLine("PARAMS");
    for (int address = 1; std::cmp_less(address, tables.EEParams.size()); ++address) {
        const EEParam& row = checked(tables.EEParams, address);
        if (isWritten(row)) {
            file.writeLine(textOf(address) + '#' + textOf(row.reserved) + '#' + std::visit(ValueText(), row.value) +
                           '#' + row.name);
        }
    }
}

}  // namespace

bool SaveSettingsFile(const fs::path& path, const SharedTables& tables, std::int16_t mapSize,
                      platform::Dialogs& dialogs) {
    try {
        OutputFile file(path, OutputFile::Mode::Replace);
        writeMaps(file, tables, mapSize);
        const Cells misc = Cells(tables.MiscBlock).subspan(1);
        writeTable(file, "Misc", misc, misc.size());
        writeTable(file, "PWM", Cells(tables.PwmMapOut).first(kSmallMap), kSmallRow);
        writeParameters(file, tables);
        file.close();
        return true;
    } catch (const RuntimeError& failure) {
        dialogs.show({"", std::string("Error save: ") + failure.what()});
        return false;
    }
}

}  // namespace korvane::core
