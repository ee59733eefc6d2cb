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
#include "platform/Files.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;
using Cells = std::span<const std::uint8_t>;

constexpr std::int16_t kSmallMap = 160;
constexpr std::int16_t kLargeMap = 320;
constexpr std::size_t kSmallRow = 16;
constexpr std::size_t kLargeRow = 20;

void writeRow(const LineSink& write, Cells cells) {
    std::string line;
    for (const std::uint8_t cell : cells) {
        line += ' ';
        line += numberText(cell).view();
        line += ' ';
    }
    write(line);
}

void writeTable(const LineSink& write, std::string_view header, Cells cells, std::size_t row) {
    write(header);
    for (std::size_t first = 0; first < cells.size(); first += row) {
        writeRow(write, cells.subspan(first, row));
    }
}

void writeMaps(const LineSink& write, const MapImages& tables, std::int16_t mapSize) {
    const Cells fuel(tables.FuelMapOut);
    const Cells ignition(tables.IgnMapOut);
    if (mapSize == kSmallMap) {
        writeTable(write, "Injection", fuel.first(kSmallMap), kSmallRow);
        writeTable(write, "Ignition", ignition.first(kSmallMap), kSmallRow);
    } else if (mapSize == kLargeMap) {
        writeTable(write, "Injection_320", fuel, kLargeRow);
        writeTable(write, "Ignition_320", ignition, kLargeRow);
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

void writeParameters(const LineSink& write, const EepromShadow& tables) {
    write("PARAMS");
    for (int address = 1; std::cmp_less(address, tables.EEParams.size()); ++address) {
        const EEParam& row = checked(tables.EEParams, address);
        if (isWritten(row)) {
            write(textOf(address) + '#' + textOf(row.reserved) + '#' + std::visit(ValueText(), row.value) + '#' +
                  row.name);
        }
    }
}

void writeLines(const LineSink& write, const SharedTables& tables, std::int16_t mapSize) {
    writeMaps(write, tables, mapSize);
    const Cells misc = Cells(tables.MiscBlock).subspan(1);
    writeTable(write, "Misc", misc, misc.size());
    writeTable(write, "PWM", Cells(tables.PwmMapOut).first(kSmallMap), kSmallRow);
    writeParameters(write, tables);
}

// Not of the place: whoever may write there can't.
bool isOfWriting(const RuntimeError& failure) {
    return failure.number() == kErrorDiskFull || failure.number() == kErrorDeviceIo;
}

// What is about to be cut gets a name of its own beside it. Where the folder takes none it stays.
void setAside(const fs::path& path) {
    std::error_code error;
    const auto file = fs::canonical(path, error);
    if (!error && fs::file_size(file, error) > 0 && !error) {
        const auto stem = file.stem().string() + ".older-";
        auto name = platform::unusedName(file.parent_path(), stem);
        static_cast<void>(platform::moveFile(file, name += file.extension()));
    }
}

void writeInPlace(const fs::path& path, const std::function<void(const LineSink&)>& lines) {
    OutputFile file(path, OutputFile::Mode::Replace);
    lines([&file](std::string_view line) { file.writeLine(line); });
    file.close();
}

bool tellingFailure(platform::Dialogs& dialogs, const std::function<void()>& save) {
    try {
        save();
        return true;
    } catch (const RuntimeError& failure) {
        dialogs.show({"", std::string("Error save: ") + failure.what()});
        return false;
    }
}

}  // namespace

bool SaveSettingsFile(const fs::path& path, const SharedTables& tables, std::int16_t mapSize,
                      platform::Dialogs& dialogs, const platform::DiskFlush& toDisk) {
    return tellingFailure(dialogs, [&] {
        const auto lines = [&](const LineSink& write) { writeLines(write, tables, mapSize); };
        try {
            replaceLines(path, lines, toDisk);
        } catch (const RuntimeError& failure) {
            if (isOfWriting(failure)) {
                setAside(path);
            }
            writeInPlace(path, lines);
        }
    });
}

bool ReplaceSettingsFile(const fs::path& path, const SharedTables& tables, std::int16_t mapSize,
                         platform::Dialogs& dialogs, const platform::DiskFlush& toDisk) {
    return tellingFailure(dialogs, [&] {
        replaceLines(
            path, [&](const LineSink& write) { writeLines(write, tables, mapSize); }, toDisk);
    });
}

}  // namespace korvane::core
