// The ini reader and the preferences: any file gives lines or defaults, and what is written can be read back.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Support.h"
#include "core/files/ChannelFile.h"
#include "core/files/IniFile.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "platform/FilePreferences.h"

namespace {

using namespace korvane;
using fuzz::require;

void readChannels(const std::filesystem::path& folder) {
    const auto tables = std::make_unique<core::SharedTables>();
    platform::QueuedDialogs dialogs;
    core::loadChannelNames(*tables, folder, dialogs);
    require(dialogs.takeMessages().size() <= 1);
    core::loadInjectorSizes(*tables, folder);
}

void replaceSection(const std::filesystem::path& file) {
    const std::vector<std::string> lines{"name", "description", "1.5", "0", "100"};
    std::int16_t before = -1;
    static_cast<void>(core::ReadIniSection(file, "Par3", before));
    const auto status = core::WriteIniSection(file, "Par3", lines);
    std::int16_t error = -1;
    const auto read = core::ReadIniSection(file, "par3", error);
    if (status == core::IniStatus::Done) {
        // A header with more behind its bracket is found by the reader but not replaced by the writer.
        require(error == 0 && (read == lines || before == 0));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const support::TempFolder folder;
    const auto content = fuzz::textOf({data, size});
    const auto file = folder.write("Settings_par.ini", content);
    folder.write("Settings.ini", content);
    readChannels(folder.path());
    replaceSection(file);

    const auto preferencesFile = folder.write("preferences.ini", content);
    platform::FilePreferences preferences(preferencesFile);
    static_cast<void>(preferences.read("Ports", "COM1"));
    preferences.write("Key", "Name", "a text");
    require(platform::FilePreferences(preferencesFile).read("Key", "Name") == "a text");
    return 0;
}
