#include "core/files/ChannelFile.h"

#include <cmath>
#include <limits>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/IniFile.h"
#include "core/tables/ModuleReg.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kChannelFile = "Settings_par.ini";
constexpr std::string_view kInjectorFile = "Settings.ini";

// From this channel on a missing section is not reported: older files end there.
constexpr std::size_t kFirstQuietChannel = 20;

std::string sectionOf(std::size_t channel) {
    return "Par" + std::to_string(channel);
}

void setDefaults(LiveValue& channel, std::size_t number) {
    channel.name = "name_" + std::to_string(number);
    channel.description.clear();
    channel.gain = 1.0;
    channel.offset = 0.0;
    channel.limit = 10000.0;
}

void setFields(LiveValue& channel, std::span<const std::string> lines) {
    const auto text = [&](std::size_t line, std::string& field) {
        if (line < lines.size()) {
            field = lines[line];
        }
    };
    const auto number = [&](std::size_t line, double& field) {
        if (line < lines.size()) {
            field = val(lines[line]);
        }
    };
    text(0, channel.name);
    text(1, channel.description);
    number(2, channel.gain);
    number(3, channel.offset);
    number(4, channel.limit);
}

void tellOfDefaults(platform::Dialogs& dialogs) {
    dialogs.show({std::string(kProgramTitle), std::string(kNoChannelFile)});
}

float injectorSize(const fs::path& file, std::string_view section, float otherwise) {
    std::int16_t error = 0;
    const auto lines = ReadIniSection(file, section, error);
    if (error != 0 || lines.empty()) {
        return otherwise;
    }
    const double size = val(lines.front());
    return std::abs(size) <= static_cast<double>(std::numeric_limits<float>::max()) ? static_cast<float>(size)
                                                                                    : otherwise;
}

}  // namespace

void loadChannelNames(LiveTable& tables, const fs::path& folder, platform::Dialogs& dialogs) {
    bool missing = false;
    for (std::size_t i = 0; i < kChannelCount; ++i) {
        LiveValue& channel = tables.liveValues.at(i);
        setDefaults(channel, i);
        if (missing) {
            continue;
        }
        std::int16_t error = 0;
        const auto lines = ReadIniSection(folder / kChannelFile, sectionOf(i), error);
        missing = error != 0;
        if (!missing) {
            setFields(channel, lines);
        } else if (i < kFirstQuietChannel) {
            tellOfDefaults(dialogs);
        }
    }
}

void SaveParDef(const LiveTable& tables, const fs::path& folder, int channel) {
    const LiveValue& values = checked(tables.liveValues, channel);
    const std::array<std::string, 5> lines = {values.name, values.description, textOf(values.gain),
                                              textOf(values.offset), textOf(values.limit)};
    static_cast<void>(WriteIniSection(folder / kChannelFile, sectionOf(static_cast<std::size_t>(channel)), lines));
}

void loadInjectorSizes(MapImages& tables, const fs::path& folder) {
    tables.OldInjectorSize = injectorSize(folder / kInjectorFile, "OldInjector", 450.0F);
    tables.NewInjectorSize = injectorSize(folder / kInjectorFile, "NewInjector", 550.0F);
}

}  // namespace korvane::core
