// The ini reader and the preferences: any file gives lines or defaults, and what is written can be read back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "core/ChannelFile.h"
#include "core/IniFile.h"
#include "core/Module1.h"
#include "core/SharedTables.h"
#include "platform/FilePreferences.h"
#include "platform/QueuedDialogs.h"

namespace {

using namespace korvane;

// In memory where the system has such a place; gone with its owner.
class Folder {
public:
    Folder() { std::filesystem::create_directories(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }

    const std::filesystem::path path = (std::filesystem::exists("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                                            : std::filesystem::temp_directory_path()) /
                                       ("korvane-fuzz-ini-" + std::to_string(getpid()));
};

// One for the whole run of the target.
const std::filesystem::path& folder() {
    static const Folder folder;
    return folder.path;
}

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void write(const std::filesystem::path& file, const std::uint8_t* data, std::size_t size) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

void readChannels() {
    const auto tables = std::make_unique<core::SharedTables>();
    platform::QueuedDialogs dialogs;
    core::loadChannelNames(*tables, folder(), dialogs);
    require(dialogs.takeMessages().size() <= 1);
    core::loadInjectorSizes(*tables, folder());
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
    const auto file = folder() / "Settings_par.ini";
    write(file, data, size);
    write(folder() / "Settings.ini", data, size);
    readChannels();
    replaceSection(file);

    const auto preferencesFile = folder() / "preferences.ini";
    write(preferencesFile, data, size);
    platform::FilePreferences preferences(preferencesFile);
    static_cast<void>(preferences.read("Ports", "COM1"));
    preferences.write("Key", "Name", "a text");
    require(platform::FilePreferences(preferencesFile).read("Key", "Name") == "a text");
    std::filesystem::remove(preferencesFile.string() + ".damaged");
    return 0;
}
